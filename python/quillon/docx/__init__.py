"""Charts for documents of python-docx.

    import docx
    from quillon.docx import add_chart

    document = docx.Document()
    add_chart(document, chart, width="15cm")
    document.save("sales.docx")
"""

from __future__ import annotations

import weakref
from typing import Any

from docx.opc.constants import RELATIONSHIP_TYPE
from docx.opc.packuri import PackURI
from docx.opc.part import Part, XmlPart
from docx.oxml import parse_xml
from docx.oxml.ns import qn
from docx.shape import InlineShape
from docx.text.run import Run

from quillon import _core
from quillon._options import Legend
from quillon._warnings import ChartWarning, warn
from quillon.chart import Chart

__all__ = ["ChartWarning", "add_chart"]

_CHART_TYPE = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml"
_WORKBOOK_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"
_WORKBOOK_ID = "rId1"
_EMU_PER_POINT = 12_700
#: python-docx numbers its drawings upwards from the highest number that it finds.
_HIGHEST_DRAWING = 1_000_000_000


def add_chart(
    target: Any,
    chart: Chart,
    width: str | float | None = None,
    height: str | float | None = None,
    legend: Legend = "auto",
    alt_text: str = "",
    workbook: bool = True,
) -> InlineShape:
    """Add a chart to a document of python-docx, and return its inline shape.

    target: a run takes the chart behind its text; a paragraph in a new run; a document, a cell, a header or a footer
        in a new paragraph.
    width, height: lengths with a unit, as "15cm", or of python-docx, as Cm(15); 6 by 3.5 inches when left out.
    legend, alt_text, workbook: as in quillon.report.Document.add_chart.

    The chart is written as it is now. Raises TypeError for another target and for what is no chart, ValueError for what
    cannot be written; then the document is as it was. Warns with ChartWarning of what is replaced.
    """
    is_linked = getattr(target, "is_linked_to_previous", False)
    try:
        part = _find_part(target)
        numbers = _numbers_of(part.package)
        options = {
            "width": _length(width), "height": _length(height), "legend": legend, "alt_text": alt_text,
            "workbook": workbook,
        }
        chart_bytes, workbook_bytes, markup, sentences = _core.make_chart_parts(
            chart, options, numbers.chart, _WORKBOOK_ID
        )
        warn(sentences)
    except BaseException:
        if is_linked:  # A header that has no part gets one as soon as it is asked for it.
            target.is_linked_to_previous = True
        raise
    name = f"quillonChart{numbers.chart}"
    chart_part = Part(PackURI(f"/word/charts/{name}.xml"), _CHART_TYPE, chart_bytes, part.package)
    part.load_rel(RELATIONSHIP_TYPE.CHART, chart_part, name)
    if workbook:
        sheet = Part(PackURI(f"/word/embeddings/{name}.xlsx"), _WORKBOOK_TYPE, workbook_bytes, part.package)
        chart_part.load_rel(RELATIONSHIP_TYPE.PACKAGE, sheet, _WORKBOOK_ID)
    drawing = parse_xml(markup).find(qn("w:drawing"))
    drawing.find(f".//{qn('c:chart')}").set(qn("r:id"), name)
    drawing.find(f".//{qn('wp:docPr')}").set("id", str(numbers.drawing))
    numbers.advance()
    _make_run(target)._r.append(drawing)
    return InlineShape(drawing.find(qn("wp:inline")))


def _find_part(target: Any) -> Any:
    """The part of the package that holds the target."""
    has_place = isinstance(target, Run) or hasattr(target, "add_run") or hasattr(target, "add_paragraph")
    if has_place and hasattr(target, "part"):
        return target.part
    raise TypeError(
        "add_chart: expected a document, paragraph, run, cell, header or footer of python-docx, got"
        f" {type(target).__name__}."
    )


def _make_run(target: Any) -> Run:
    if isinstance(target, Run):
        return target
    return target.add_run() if hasattr(target, "add_run") else target.add_paragraph().add_run()


def _length(value: str | float | None) -> str | None:
    """python-docx has lengths in English Metric Units."""
    return f"{value / _EMU_PER_POINT!r}pt" if isinstance(value, (int, float)) else value


class _Numbers:
    """The numbers that the next chart of a package gets.

    The package is searched once, for its first chart, so that many charts take no more time each than a few. What
    python-docx adds later cannot meet them: drawings are numbered downwards, and the names of parts are our own.
    """

    def __init__(self, package: Any) -> None:
        parts = list(package.iter_parts())
        self._drawings = {
            drawing.get("id")
            for part in parts
            if isinstance(part, XmlPart)
            for drawing in part.element.iter(qn("wp:docPr"))
        }
        self._names = {name for part in parts for name in (part.partname, *part.rels)}
        self.chart = 0
        self.drawing = _HIGHEST_DRAWING + 1
        self.advance()

    def advance(self) -> None:
        self.chart += 1
        while any(name in self._names for name in self._chart_names()):
            self.chart += 1
        self.drawing -= 1
        while str(self.drawing) in self._drawings:
            self.drawing -= 1

    def _chart_names(self) -> tuple[str, ...]:
        name = f"quillonChart{self.chart}"
        return name, f"/word/charts/{name}.xml", f"/word/embeddings/{name}.xlsx"


_numbers: weakref.WeakKeyDictionary[Any, _Numbers] = weakref.WeakKeyDictionary()


def _numbers_of(package: Any) -> _Numbers:
    if package not in _numbers:
        _numbers[package] = _Numbers(package)
    return _numbers[package]
