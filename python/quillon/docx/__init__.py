"""Charts for documents of python-docx.

    import docx
    from quillon.docx import add_chart

    document = docx.Document()
    add_chart(document, chart, width="15cm")
    document.save("sales.docx")
"""

from __future__ import annotations

from typing import Any

from docx.opc.constants import RELATIONSHIP_TYPE
from docx.opc.packuri import PackURI
from docx.opc.part import Part, XmlPart
from docx.oxml import parse_xml
from docx.oxml.ns import qn
from docx.shape import InlineShape
from docx.text.run import Run

from quillon import _core
from quillon._warnings import ChartWarning, warn
from quillon.chart import Chart

__all__ = ["ChartWarning", "add_chart"]

_CHART_TYPE = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml"
_WORKBOOK_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"
_EMU_PER_POINT = 12_700


def add_chart(
    target: Any,
    chart: Chart,
    width: str | float | None = None,
    height: str | float | None = None,
    legend: str = "auto",
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
        number = _next_drawing_number(part.package)
        chart_bytes, workbook_bytes, markup, sentences = _core.make_chart_parts(
            chart, _length(width), _length(height), legend, alt_text, workbook, number, "rId1"
        )
        warn(sentences)
    except BaseException:
        if is_linked:  # A header that has no part gets one as soon as it is asked for it.
            target.is_linked_to_previous = True
        raise
    chart_part = _add_part(part.package, "/word/charts/chart%d.xml", _CHART_TYPE, chart_bytes)
    drawing = parse_xml(markup).find(qn("w:drawing"))
    reference = drawing.find(f".//{qn('c:chart')}")
    reference.set(qn("r:id"), part.relate_to(chart_part, RELATIONSHIP_TYPE.CHART))
    if workbook:
        sheet = _add_part(part.package, "/word/embeddings/Microsoft_Excel_Sheet%d.xlsx", _WORKBOOK_TYPE, workbook_bytes)
        chart_part.load_rel(RELATIONSHIP_TYPE.PACKAGE, sheet, "rId1")
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


def _next_drawing_number(package: Any) -> int:
    """A number that no drawing of the document has, its headers and footers among them."""
    numbers = [
        int(number)
        for part in package.iter_parts()
        if isinstance(part, XmlPart)
        for number in (drawing.get("id", "") for drawing in part.element.iter(qn("wp:docPr")))
        if number.isdigit()
    ]
    return max(numbers, default=0) + 1


def _add_part(package: Any, name: str, content_type: str, content: bytes) -> Part:
    return Part(PackURI(package.next_partname(name)), content_type, content, package)
