"""Documents that exist, whose charts and placeholders are filled."""

from __future__ import annotations

import dataclasses
import io
import os
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, BinaryIO, Literal

from quillon import _core, _options
from quillon._arguments import refuse, suggesting
from quillon._chart_data import ChartData, as_chart_data, as_fill_data, take_data
from quillon._warnings import warn
from quillon.chart import Chart
from quillon.report._files import Target, require_file, save

if TYPE_CHECKING:
    import pandas

Change = Literal["matched", "renamed", "added", "removed"]


@dataclasses.dataclass(frozen=True)
class FoundChart:
    """A chart of a document.

    number: from 1, in reading order.
    types: of its groups, "column", "line", "3-D pie" ...
    place: "body", "header, table" ...
    problem: why it cannot be filled; empty when it can.
    """

    number: int
    name: str
    alt_text: str
    title: str
    types: list[str]
    series: list[str]
    points: int
    place: str
    problem: str


@dataclasses.dataclass(frozen=True)
class Placeholder:
    """A name in double braces. A table's stands as {{table:name}}."""

    name: str
    kind: Literal["text", "paragraph", "picture", "table"]
    part: str


@dataclasses.dataclass(frozen=True)
class SeriesChange:
    """What became of a series.

    before: the name it had, where it was renamed; where it was added, that of the series whose look it took.
    """

    change: Change
    name: str
    before: str


@dataclasses.dataclass(frozen=True)
class FillReport:
    """What a fill changed in a chart.

    chart: what it was asked for by; where that is its number, its title, or else its name in the document.
    """

    number: int
    chart: str
    series: list[SeriesChange]
    points_before: int
    points_after: int
    warnings: list[str]


class Template:
    """A document that exists: .docx, .docm, .dotx or .dotm. What a fill need not touch keeps its bytes.

    Charts are found by name, alternative text, tag, title, or number ("2"); they keep their names, so that what was
    filled can be filled again. Other threads run while a document is filled. Every method raises ValueError with the
    list of what there is, for a chart or placeholder that is not there.
    """

    def __init__(self, core: Any) -> None:
        self._core = core

    @property
    def charts(self) -> list[FoundChart]:
        """All charts, those that cannot be filled as well."""
        return [FoundChart(*chart) for chart in self._core.get_charts()]

    @property
    def placeholders(self) -> list[Placeholder]:
        """The names in double braces in the text, and in the alternative texts of pictures."""
        return [Placeholder(*placeholder) for placeholder in self._core.get_placeholders()]

    def get_data(self, chart: str) -> ChartData:
        """The data that a chart shows."""
        data: ChartData = self._core.get_data(chart)
        return data

    def to_dataframe(self, chart: str) -> pandas.DataFrame:
        """The data that a chart shows as a pandas data frame: a column for each series; the categories are the index.

        Dates stay dates, and levels make an index of several. A chart without categories has its X values as index, or
        a column "North X" before each series "North" when they differ, as fill() takes them.
        """
        return _make_frame(self.get_data(chart))

    @suggesting
    def fill(
        self,
        chart: str,
        data: Any,
        *,
        match: Literal["name", "position"] = "name",
        title: str = "",
        number_format: str = "",
        totals: Sequence[str] = (),
    ) -> FillReport:
        """Give a chart new data, and return what changed. The chart keeps its look.

        data: a data frame or series, a dictionary of lists, an array, chart data, or a data set. A table that names no
            categories, or no series, leaves the chart its own. Where a chart shows X values, a column "North X" holds
            those of "North".
        match: how new series and categories find the old ones whose look they take; what is left over by name goes by
            position.
        title, number_format: those of the chart stay when they are left out.
        totals: the categories of a waterfall that show a total; those that did still do when it is left out.

        Warns with ChartWarning of what the author ought to know. When the data is refused, the document is as it was.
        """
        report = self._fill(chart, data, match, title, number_format, totals)
        warn(f'"{report.chart}": {sentence}' for sentence in report.warnings)
        return report

    def _fill(
        self, chart: str, data: Any, match: str, title: str, number_format: str, totals: Sequence[str]
    ) -> FillReport:
        chart_data = as_fill_data(data, "fill", lambda: not self.get_data(chart).data_set.Categories)
        if totals:
            chart_data = dataclasses.replace(chart_data, totals=totals)
        number, name, series, before, after, sentences = self._core.fill(
            chart, chart_data, match, title, number_format
        )
        return FillReport(number, name, [SeriesChange(*row) for row in series], before, after, sentences)

    @suggesting
    def insert(
        self,
        placeholder: str,
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
        """Put a new chart in the place of a paragraph {{placeholder}}, as wide as its column, or of a picture that has
        it as its alternative text, whose size it takes.

        data, options: as in Document.add_chart.
        """
        options = _options.given(locals())
        warn(self._core.insert(placeholder, chart, take_data(chart, data, "insert"), options))

    def insert_table(
        self, placeholder: str, data: Any, *, number_format: str = "", category_format: str = ""
    ) -> None:
        """Put a table of the data in the place of a paragraph {{table:placeholder}}.

        number_format, category_format: as in a cell of a worksheet, "0.0%" and "mmm yy"; those of the data when they
            are left out.
        """
        self._core.insert_table(placeholder, as_chart_data(data, "insert_table"), number_format, category_format)

    def replace(self, placeholder: str, text: str) -> int:
        """Replace {{placeholder}} in running text, and return how often."""
        count: int = self._core.replace(placeholder, text)
        return count

    def copy(self) -> Template:
        """A copy, which is cheap: open once, then copy, fill and save many times, on several threads at once."""
        return Template(self._core.copy())

    def to_bytes(self) -> bytes:
        """The whole file."""
        data: bytes = self._core.to_bytes()
        return data

    def save(self, target: Target) -> None:
        """Write the document to a path, or to a file object opened for bytes, as Document.save does."""
        save(target, lambda: (self._core.to_bytes(), ()))


def open(source: str | os.PathLike[str] | bytes | BinaryIO) -> Template:
    """Open a document that exists: its path, the bytes of the file, or a file object opened for bytes.

    Raises FileNotFoundError, and ValueError that says what is wrong with the file, or what it is instead.
    """
    expected = "a path, bytes or a file object opened for bytes"
    if isinstance(source, io.TextIOBase):
        raise refuse("open", expected, source)
    if not isinstance(source, (str, bytes, os.PathLike)) and hasattr(source, "read"):
        source = source.read()
    if not isinstance(source, bytes):
        require_file("open", source, expected)
    return Template(_core.open_template(source))


def _make_frame(data: ChartData) -> pandas.DataFrame:
    import pandas

    columns = [(series.Name, list(series.values)) for series in data.data_set]
    categories = list(data.data_set.Categories or ())
    if categories:
        index = _make_index(pandas, data, categories)
        frame = pandas.DataFrame(dict(enumerate(values for _, values in columns)), index=index)
        frame.index.names = list(data.category_names) or [None] * frame.index.nlevels
        return frame.set_axis([name for name, _ in columns], axis=1)
    xs = [[point.getX() for point in series] for series in data.data_set]
    if all(x == xs[0] for x in xs):
        frame = pandas.DataFrame(dict(enumerate(values for _, values in columns)), index=xs[0] if xs else [])
        return frame.set_axis([name for name, _ in columns], axis=1)
    parts = [pandas.DataFrame({f"{name} X": x, name: values}) for x, (name, values) in zip(xs, columns)]
    return pandas.concat(parts, axis=1)


def _make_index(pandas: Any, data: ChartData, categories: list[str]) -> Any:
    if data.levels:
        levels = [pandas.Series(level).replace("", None).ffill().tolist() for level in data.levels]
        return pandas.MultiIndex.from_arrays([*levels, categories])
    if data.category_kind == "date" and len(data.category_values) > 0:
        return pandas.to_datetime(pandas.Series(data.category_values), unit="D", origin="1899-12-30").array
    if data.category_kind == "number" and len(data.category_values) > 0:
        return list(data.category_values)
    return categories
