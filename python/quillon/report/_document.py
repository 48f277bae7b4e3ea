"""Documents made of blocks."""

from __future__ import annotations

import dataclasses
import decimal
import numbers
import os
from collections.abc import Callable, Iterable, Sequence
from pathlib import Path
from typing import Any, Literal

from quillon import _core, _options
from quillon import chart as charts
from quillon._arguments import flag, listed, path, refuse, suggesting
from quillon._chart_data import ChartData, as_chart_data, take_data
from quillon._warnings import warn
from quillon.chart import Chart, _cells
from quillon.report._files import Target, require_file, save

Progress = Callable[[int, int], Any]
Paper = Literal["A3", "A4", "A5", "letter", "legal"]


@dataclasses.dataclass
class Run:
    """A stretch of text of one look.

    link: an address that the text leads to.
    reference: the name of a caption, whose label and number, "Figure 2", stand in place of the text and lead to it.
    """

    text: str = ""
    bold: bool = False
    italic: bool = False
    link: str = ""
    reference: str = ""


@dataclasses.dataclass
class ListItem:
    """An item of a list; level: 0 to 8, how far it is indented."""

    text: RichText
    level: int = 0


#: A text, a run, or several of both in a row.
RichText = str | Run | Sequence[str | Run]


class Document:
    """A document whose blocks stand one below the other.

    Equal content gives equal bytes. Other threads run while a document is written; until then, leave the document and
    its charts alone on all of them. Every method raises ValueError for text that a document cannot hold: control
    characters other than tab and line break.
    """

    def __init__(self, template: str | bytes | os.PathLike[Any] | None = None) -> None:
        """template: a document that lends its styles, theme, page setup, headers and footers.

        Its text, and the charts, pictures and comments in it, are left out.
        """
        if template is not None:
            require_file("Document", template)
        self._core = _core.make_document(template)

    def add_heading(self, text: str, level: int = 1) -> None:
        """Append a heading of level 1 to 9."""
        self._core.add_heading(text, level)

    def add_paragraph(self, text: RichText, style: str = "") -> None:
        """Append a paragraph.

        style: the name of a paragraph style, "Title" or one of the template's.
        """
        self._core.add_paragraph(_runs("add_paragraph", text), style)

    def add_list(self, items: Iterable[RichText | ListItem], numbered: bool = False) -> None:
        """Append a list, with bullets or with numbers from 1."""
        given = [item if isinstance(item, ListItem) else ListItem(item) for item in listed("add_list: items", items)]
        rows = [(_runs("add_list", item.text), item.level) for item in given]
        self._core.add_list(rows, flag("add_list: numbered", numbered))

    @suggesting
    def add_chart(
        self,
        chart: Chart,
        data: Any = None,
        *,
        # options: begin
        type: _options.Type | None = None,
        width: str | None = None,
        height: str | None = None,
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
    ) -> None:
        """Append a chart, which is written as it is when the document is.

        data: what the chart shows, where its data set cannot say all of it (dates, levels, number formats); anything
            that ChartData.from_dataframe takes. A chart without a data set gets this one.

        The options are those of docs/options.md. Raises TypeError for what is not a chart, ValueError for an option that
        does not suit the chart, and for a value that is not allowed.
        """
        options = _options.given(locals())
        self._core.add_chart(chart, take_data(chart, data, "add_chart"), options, "add_chart")

    def add_charts(self, charts: Iterable[Chart | tuple[Chart, dict[str, Any]] | tuple[Chart, Any, dict[str, Any]]]) -> None:
        """Append charts in one line. One without a width gets an equal share.

        charts: each a chart, (chart, options), or (chart, data, options) with data as add_chart takes it.
        """
        self._core.add_charts([_placed(one) for one in listed("add_charts", charts, "a list of charts")])

    def add_caption(self, text: str, label: str = "", name: str = "") -> None:
        """Append a caption, which stays on the page of what it belongs to: the chart or image before it, or else the
        table behind it.

        label: what is counted, "Figure 1", "Figure 2". Left out: "Table" above a table and "Figure" elsewhere, in the
            language of the document.
        name: for references to it, Run(reference=name).
        """
        self._core.add_caption(text, label, name)

    @suggesting
    def add_table(
        self,
        table: Any,
        columns: Sequence[str] | None = None,
        *,
        header: str = "",
        widths: Sequence[str] = (),
        style: str = "",
    ) -> None:
        """Append a table.

        table: rows of texts, numbers and dates, with `columns` as their header row; or the data of a chart, as add_chart
            takes it, whose categories stand below `header`. Numbers and dates are written as the language of the document
            has them.
        widths: of the columns, "3cm"; as wide as their texts need when left out.
        style: the name of a table style.
        """
        lengths = listed("add_table: widths", widths)
        if columns is None:
            if isinstance(table, Sequence) and table and isinstance(table[0], (list, tuple)):
                raise TypeError('add_table: rows need a header row, as in add_table(rows, ["Name", "Price"]).')
            self._core.add_data_table(as_chart_data(table, "add_table"), header, lengths, style)
        else:
            rows = [listed("add_table", row, "rows of cells") for row in listed("add_table", table, "a list of rows")]
            cells = [[_cell(cell) for cell in row] for row in rows]
            self._core.add_table(listed("add_table: columns", columns), cells, lengths, style)

    def add_image(
        self, image: str | os.PathLike[str] | bytes, width: str = "", height: str = "", alt_text: str = ""
    ) -> None:
        """Append a picture: the path of a PNG or JPEG file, or its bytes.

        width, height: one length alone keeps the proportions; the picture's own size when both are left out.
        alt_text: what a screen reader says.
        """
        data = image if isinstance(image, bytes) else Path(os.fsdecode(path("add_image", image, "a path or bytes"))).read_bytes()
        self._core.add_image(data, width, height, alt_text)

    def add_page_break(self) -> None:
        """Go on at the top of the next page."""
        self._core.add_page_break()

    @suggesting
    def start_section(
        self,
        *,
        paper: Paper = "A4",
        landscape: bool = False,
        top: str = "1in",
        right: str = "1in",
        bottom: str = "1in",
        left: str = "1in",
    ) -> None:
        """End the pages so far and begin new ones; the first call before any block sets up the first pages."""
        self._core.start_section(paper, flag("start_section: landscape", landscape), (top, right, bottom, left))

    def set_header(self, text: RichText) -> None:
        """Put a line at the top of each page. "{page}" stands for the number of the page, "{pages}" for how many there
        are; a tab goes to the middle, a second one to the right."""
        self._core.set_header(_runs("set_header", text))

    def set_footer(self, text: RichText) -> None:
        """Put a line at the bottom of each page, as set_header does at the top."""
        self._core.set_footer(_runs("set_footer", text))

    def add_table_of_contents(self, levels: int = 3) -> None:
        """Append a table of the headings of levels 1 to `levels`."""
        self._core.add_table_of_contents(levels)

    @suggesting
    def set_properties(
        self, *, title: str = "", author: str = "", keywords: str = "", language: str = ""
    ) -> None:
        """What the document says of itself. language: "de-DE"; English, or the template's, when left out."""
        self._core.set_properties(title, author, keywords, language)

    def to_bytes(self, progress: Progress | None = None) -> bytes:
        """Write the document, a .docx file, and return its bytes.

        progress: called with the number of charts written and of all charts, after each.

        Raises ValueError that names the chart, series and point that cannot be written. Warns with ChartWarning of
        what is replaced so that the document stays valid.
        """
        data, sentences = self._core.to_bytes(progress)
        warn(sentences)
        return data

    def save(self, target: Target, progress: Progress | None = None) -> None:
        """Write the document to a path, or to a file object opened for bytes.

        A file appears at its path when it is complete. Raises and warns as to_bytes(), and OSError for a path that
        cannot be written. Nothing is written where a warning is made an error.
        """
        save(target, lambda: self._core.to_bytes(progress))


@suggesting
def chart(
    data: Any,
    title: str = "",
    *,
    heading: str = "",
    # options: begin
    type: _options.Type | None = None,
    width: str | None = None,
    height: str | None = None,
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
) -> Document:
    """A document with one chart, in one call: quillon.report.chart(frame, "Revenue", type="line").save("revenue.docx").

    data: a data frame or series, a dictionary of lists, an array, chart data, or a data set.

    The options are those of docs/options.md.
    """
    options = _options.given(locals())
    for name, text in [("title", title), ("heading", heading)]:
        if not isinstance(text, str):
            raise refuse(f"chart: {name}", "str", text)
    taken = as_chart_data(data, "chart")
    made = charts.ColumnChart(title=title or None, data=taken)
    document = Document()
    if heading:
        document.add_heading(heading)
    document._core.add_chart(made, taken, options, "chart")
    return document


def _placed(one: Any) -> tuple[Chart, ChartData | None, dict[str, Any]]:
    if not isinstance(one, tuple):
        return one, None, {}
    if not 2 <= len(one) <= 3 or not isinstance(one[-1], dict):
        raise TypeError("add_charts: expected a chart, (chart, options) or (chart, data, options), options a dict.")
    chart, *data, options = one
    return chart, take_data(chart, data[0] if data else None, "add_charts"), options


def _runs(place: str, text: RichText) -> list[tuple[str, bool, bool, str, str]]:
    runs = [text] if isinstance(text, (str, Run)) else listed(f"{place}: text", text, "str, Run or a list of them")
    return [_run(place, run) for run in runs]


def _run(place: str, run: str | Run) -> tuple[str, bool, bool, str, str]:
    if isinstance(run, str):
        return run, False, False, "", ""
    if not isinstance(run, Run):
        raise refuse(f"{place}: text", "str or Run", run)
    return run.text, bool(run.bold), bool(run.italic), run.link, run.reference


def _cell(cell: Any) -> str | tuple[float, str, bool]:
    """A cell as text, or as a number with its format and whether it is a date."""
    date = _cells.as_date(cell)
    if _cells.is_missing(cell):
        return ""
    if date is not None:
        return _cells.serial(date), "", True
    if isinstance(cell, decimal.Decimal) and cell.is_finite():
        return float(cell), "0." + "0" * -int(cell.as_tuple().exponent), False
    if isinstance(cell, numbers.Real) and not isinstance(cell, numbers.Integral):
        # The digits that a number of less precision has.
        return float(str(cell) if hasattr(cell, "dtype") else cell), "", False
    return str(cell)


