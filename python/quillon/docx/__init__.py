"""Charts for documents of python-docx.

    import docx
    from quillon.docx import add_chart

    document = docx.Document()
    add_chart(document, chart, width="15cm")
    document.save("sales.docx")

The charts of a document take new data by fill(document, "Revenue", data_frame).
"""

from __future__ import annotations

import io
import weakref
from collections.abc import Sequence
from typing import Any, Literal

import docx.package
from docx.opc.constants import RELATIONSHIP_TYPE
from docx.opc.packuri import PackURI
from docx.opc.part import Part, XmlPart
from docx.oxml import parse_xml
from docx.oxml.ns import qn
from docx.shape import InlineShape
from docx.text.run import Run

from quillon import _core, _options
from quillon._arguments import refuse, suggesting
from quillon._chart_data import take_data
from quillon._warnings import ChartWarning, warn
from quillon.chart import Chart
from quillon.report._template import FillReport, FoundChart, Template
from quillon.report._template import open as open_template

__all__ = ["ChartWarning", "add_chart", "charts", "fill"]

_CHART_TYPE = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml"
_WORKBOOK_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"
_WORKBOOK_ID = "rId1"
_EMU_PER_POINT = 12_700
#: python-docx numbers its drawings upwards from the highest number that it finds.
_HIGHEST_DRAWING = 1_000_000_000


@suggesting
def add_chart(
    target: Any,
    chart: Chart,
    data: Any = None,
    *,
    # options: begin lengths
    type: _options.Type | None = None,
    width: str | float | None = None,
    height: str | float | None = None,
    legend: _options.Legend | None = None,
    alt_text: str | None = None,
    workbook: bool = True,
    float: _options.Float | None = None,
    category_title: str | None = None,
    value_title: str | None = None,
    number_format: str | None = None,
    category_format: str | None = None,
    value_min: float | None = None,
    value_max: float | None = None,
    value_step: float | None = None,
    log: float | None = None,
    reverse: bool = False,
    units: _options.Units | None = None,
    gridlines: _options.Gridlines | None = None,
    no_value_axis: bool = False,
    tick_labels: _options.TickLabels | None = None,
    tick_rotation: float | None = None,
    tick_interval: int | None = None,
    category_type: _options.CategoryType | None = None,
    second: Sequence[str] | None = None,
    second_title: str | None = None,
    second_format: str | None = None,
    second_min: float | None = None,
    second_max: float | None = None,
    second_step: float | None = None,
    second_log: float | None = None,
    x_title: str | None = None,
    x_format: str | None = None,
    x_min: float | None = None,
    x_max: float | None = None,
    x_step: float | None = None,
    x_log: float | None = None,
    labels: _options.Label | Sequence[_options.Label] | None = None,
    label_position: _options.LabelPosition | None = None,
    label_separator: _options.LabelSeparator | None = None,
    label_format: str | None = None,
    gap: int | None = None,
    overlap: int | None = None,
    stacking: _options.Stacking | None = None,
    markers: bool = False,
    smooth: bool = False,
    blank: _options.Blank | None = None,
    colors: Sequence[str] | None = None,
    palette: Sequence[str] | None = None,
    series_colors: dict[str, str] | None = None,
    category_colors: dict[str, str] | None = None,
    dashed: Sequence[str] | None = None,
    hidden: Sequence[str] | None = None,
    start_angle: int | None = None,
    explosion: int | None = None,
    line: Sequence[str] | None = None,
    area: Sequence[str] | None = None,
    column: Sequence[str] | None = None,
    hole: int | None = None,
    filled: bool = False,
    scatter_style: _options.ScatterStyle | None = None,
    size_series: Sequence[str] | None = None,
    totals: Sequence[str] | None = None,
    drop_lines: bool = False,
    high_low_lines: bool = False,
    up_down_bars: bool = False,
    trendline: _options.Trendline | None = None,
    trendline_series: Sequence[str] | None = None,
    order: int | None = None,
    period: int | None = None,
    forecast: float | None = None,
    backcast: float | None = None,
    equation: bool = False,
    r_squared: bool = False,
    error_bars: _options.ErrorBars | None = None,
    error_value: float | None = None,
    plus_series: Sequence[str] | None = None,
    minus_series: Sequence[str] | None = None,
    font: str | None = None,
    font_size: float | None = None,
    frame: bool = False,
    data_table: bool = False,
    # options: end
) -> InlineShape:
    """Add a chart to a document of python-docx, and return its inline shape.

    target: a run takes the chart after its text; a paragraph in a new run; a document, a cell, a header or a footer
        in a new paragraph.
    data, options: as in quillon.report.Document.add_chart. width and height may be lengths of python-docx, as Cm(15).

    The chart is written as it is now. Raises TypeError for another target and for what is not a chart, ValueError for what
    cannot be written; then the document is as it was. Warns with ChartWarning of what is replaced.
    """
    options = _options.given(locals())
    options.update({name: _length(options[name]) for name in ("width", "height") if name in options})
    is_linked = getattr(target, "is_linked_to_previous", False)
    try:
        part = _find_part(target)
        numbers = _numbers_of(part.package)
        chart_bytes, workbook_bytes, markup, sentences = _core.make_chart_parts(
            chart, take_data(chart, data, "add_chart"), options, numbers.chart, _WORKBOOK_ID, _read_theme(part.package)
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
    return InlineShape(drawing[0])


def _read_theme(package: Any) -> bytes:
    """The part with the colours of the document; nothing where it has none."""
    for relationship in package.main_document_part.rels.values():
        if relationship.reltype == RELATIONSHIP_TYPE.THEME and not relationship.is_external:
            theme: bytes = relationship.target_part.blob
            return theme
    return b""


def charts(document: Any) -> list[FoundChart]:
    """The charts of a document of python-docx, those that cannot be filled as well."""
    return _open("charts", document).charts


@suggesting
def fill(
    document: Any,
    chart: str,
    data: Any,
    *,
    match: Literal["name", "position"] = "name",
    title: str = "",
    number_format: str = "",
    totals: Sequence[str] = (),
) -> FillReport:
    """Give a chart of a document of python-docx new data, and return what changed.

    chart: its name, alternative text, tag, title, or number. The rest is as in quillon.report.Template.fill.
    """
    template = _open("fill", document)
    report = template._fill(chart, data, match, title, number_format, totals)
    warn(f'"{report.chart}": {sentence}' for sentence in report.warnings)
    _take_over(document.part.package, docx.package.Package.open(io.BytesIO(template.to_bytes())))
    return report


def _open(place: str, document: Any) -> Template:
    if not hasattr(document, "save") or not hasattr(document, "part"):
        raise refuse(place, "a document of python-docx", document)
    data = io.BytesIO()
    document.save(data)
    return open_template(data.getvalue())


def _take_over(package: Any, filled: Any) -> None:
    """Give the parts of a package what a fill has changed in them."""
    parts = {part.partname: part for part in package.iter_parts()}
    changed = list(filled.iter_parts())
    for part in changed:
        if part.partname not in parts:
            parts[part.partname] = Part(part.partname, part.content_type, part.blob, package)
    for part in changed:
        own = parts[part.partname]
        if isinstance(own, XmlPart):
            _take_over_drawings(own.element, part.element)
        else:
            own._blob = part.blob
        for key, relation in part.rels.items():
            if key not in own.rels:
                own.load_rel(relation.reltype, parts[relation.target_part.partname], key)


def _take_over_drawings(element: Any, filled: Any) -> None:
    """A chart whose part was shared has one of its own now; one that was described by its data is described anew."""
    tags = qn("c:chart"), qn("wp:docPr"), "{*}cNvPr"
    for own, other in zip(element.iter(*tags), filled.iter(*tags)):
        for name in (qn("r:id"), "descr"):
            if other.get(name) is not None:
                own.set(name, other.get(name))


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
