"""What charts are made of: a data set, and what it cannot say."""

from __future__ import annotations

import dataclasses
from collections.abc import Callable, Iterable, Sequence
from typing import TYPE_CHECKING, Any, Literal

from quillon import _core
from quillon.chart import _cells, _tables
from quillon.chart._common import same

if TYPE_CHECKING:
    from quillon.chart import DataSet

CategoryKind = Literal["automatic", "text", "date", "number"]


@dataclasses.dataclass
class SeriesDetails:
    """What a data series cannot say of itself.

    number_format: as in a cell of a worksheet, "#,##0.00"; General when empty.
    sizes: one for each point, the sizes of bubbles.
    errors_plus, errors_minus: one for each point, how far the error bar reaches up and down.
    """

    number_format: str = ""
    sizes: Sequence[float] = ()
    errors_plus: Sequence[float] = ()
    errors_minus: Sequence[float] = ()


@dataclasses.dataclass(eq=False)
class ChartData:
    """A data set and what it cannot say. Where chart data is asked for, a data set alone will do.

    category_kind: "automatic" takes categories for dates where there are some, otherwise for text.
    category_values: one for each category where they are dates or numbers, NaN where there is none. A date is its
        number in a worksheet: days since 30 December 1899.
    category_format: as in a cell of a worksheet, "mmm yy"; suits the kind when empty.
    levels: further names for each category, the outermost level first; an empty text goes on with the one before.
    totals: the categories of a waterfall that show a total.
    series: in the order of the data set; may be shorter.
    category_names: what stands above the columns of the levels and of the categories in tables and in the workbook.
    """

    data_set: DataSet
    category_kind: CategoryKind = "automatic"
    category_values: Sequence[float] = ()
    category_format: str = ""
    levels: Sequence[Sequence[str]] = ()
    totals: Sequence[str] = ()
    series: Sequence[SeriesDetails] = ()
    category_names: Sequence[str] = ()

    @classmethod
    def from_dataframe(
        cls,
        table: Any,
        categories: object = None,
        columns: Iterable[object] | None = None,
        category_format: str = "",
    ) -> ChartData:
        """Make chart data from a table in memory, as quillon.chart.from_dataframe does.

        Dates stay dates, and an index of several levels stays one. Categories that are numbers count as such when
        `category_format` says how to write them.
        """
        place = "from_dataframe"
        return cls._from_table(place, _tables.read_table(place, table, categories, columns), category_format)

    @classmethod
    def _from_table(cls, place: str, read: _tables.Table, category_format: str = "") -> ChartData:
        levels: list[list[str]] = []
        if all(isinstance(cell, tuple) and len(cell) > 1 for cell in read.categories):
            levels = _read_levels(read.categories)
            read.categories = [cell[-1] for cell in read.categories]
        kind, values, own_format = _read_values(read.categories, category_format)
        data = _tables.make_set(place, read)
        names = read.category_names if len(read.category_names) == len(levels) + 1 else []
        return cls(data, kind, values, category_format or own_format, levels, category_names=names)

    def check(self) -> ChartData:
        """A copy with the same data set, as the library takes it.

        Raises TypeError or ValueError for a field that is not of its type, and where there is not one value for each
        category or point.
        """
        checked: ChartData = _core.check_chart_data(self)
        return checked

    def equals(self, other: object) -> bool:
        """Whether the other one says the same; missing values equal each other."""
        return isinstance(other, ChartData) and same(_listed(self.check()), _listed(other.check()))


def _listed(data: ChartData) -> dict[str, Any]:
    return {**vars(data), "series": [vars(details) for details in data.series]}


def _read_values(cells: list[Any], category_format: str) -> tuple[CategoryKind, list[float], str]:
    """The kind of categories, their numbers, and the format that suits them."""
    given = [cell for cell in cells if not _cells.is_missing(cell)]
    dates = [_cells.as_date(cell) for cell in given]
    if given and None not in dates:
        values = [_cells.serial(date) if date else float("nan") for date in map(_cells.as_date, cells)]
        return "date", values, _date_format(given, values)
    if given and category_format and all(map(_cells.is_number, given)):
        return "number", [_cells.number(cell, "category") for cell in cells], ""
    return "automatic", [], ""


def _date_format(given: list[Any], values: list[float]) -> str:
    if type(given[0]).__name__ == "Period" and given[0].freqstr == "M":
        return "mmm yyyy"
    return "yyyy-mm-dd hh:mm" if any(value % 1 > 0 for value in values) else ""


def _read_levels(cells: list[tuple[Any, ...]]) -> list[list[str]]:
    """All levels but the innermost; a text stands where it, or one farther out, begins."""
    levels = []
    for depth in range(len(cells[0]) - 1):
        starts = [i == 0 or cell[: depth + 1] != cells[i - 1][: depth + 1] for i, cell in enumerate(cells)]
        levels.append([_cells.label(cell[depth]) if start else "" for cell, start in zip(cells, starts)])
    return levels


def as_chart_data(data: Any, place: str) -> ChartData:
    """Chart data of whatever says as much: chart data, a data set, or what ChartData.from_dataframe takes.

    place: what was called, for refusals.
    """
    from quillon.chart import DataSet

    if isinstance(data, ChartData):
        return data
    if isinstance(data, DataSet):
        return ChartData(data)
    return ChartData._from_table(place, _tables.read_table(place, data, None, None))


def as_fill_data(data: Any, place: str, shows_x: Callable[[], bool]) -> ChartData:
    """Chart data for a chart that exists: names that a table does not say are left to the chart.

    shows_x: whether the chart has X values in place of categories; then series have their own in a column of the table.
    """
    from quillon.chart import DataSet

    if isinstance(data, (ChartData, DataSet)):
        return as_chart_data(data, place)
    read = _tables.read_table(place, data, None, None)
    columns = dict(read.columns)
    if any(f"{name} X" in columns for name in columns) and shows_x():
        return _with_own_x(place, columns)
    filled = ChartData._from_table(place, read)
    if not read.has_categories:
        filled.data_set.Categories = []
    if not read.has_names:
        for series in filled.data_set:
            series.Name = ""
    return filled


def _with_own_x(place: str, columns: dict[str, list[Any]]) -> ChartData:
    """Series with X values of their own."""
    from quillon.chart import DataSeries, DataSet

    data = DataSet()
    for name, cells in columns.items():
        if name.removesuffix(" X") in columns and name.endswith(" X"):
            continue
        if f"{name} X" not in columns:
            raise ValueError(f"{place}: {name!r}: expected a column {name + ' X'!r}, as other series have one.")
        series = DataSeries(name)
        for i, point in enumerate(zip(columns[f"{name} X"], cells), 1):
            series.appendPoint(*(_cells.number(cell, f"{place}: {name!r}, value {i}") for cell in point))
        data.appendSeries(series)
    return ChartData(data)


def take_data(chart: Any, data: Any, place: str) -> ChartData | None:
    """The data to show a chart with; a chart that has no data set yet gets it."""
    if data is None:
        return None
    taken = as_chart_data(data, place)
    if getattr(chart, "DataSet", chart) is None:
        chart.DataSet = taken.data_set
    return taken
