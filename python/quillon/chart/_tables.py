"""Data sets from the tables that authors have."""

from __future__ import annotations

import collections
import dataclasses
import numbers
from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

from quillon._arguments import listed
from quillon._warnings import warn
from quillon.chart import _cells

if TYPE_CHECKING:
    from quillon.chart import DataSet

@dataclasses.dataclass
class Table:
    """A table before it becomes a data set: the categories, and the cells of each column by its name.

    has_categories, has_names: whether the table says them; otherwise rows and columns are counted.
    """

    categories: list[Any]
    columns: list[tuple[str, list[Any]]]
    has_categories: bool = True
    has_names: bool = True
    #: What the categories are called, one for each level; empty where they have no name.
    category_names: list[str] = dataclasses.field(default_factory=list)


def from_rows(rows: Iterable[Sequence[object]], names: Iterable[object] | None = None) -> DataSet:
    """Make a data set from the rows of a table: the name of a category, then one number for each series.

    Without `names` the first row has the names of the series, after a cell of any content. A number may be text, as a
    CSV file has it; None, empty text and NaN leave a gap.
    """
    several = listed("from_rows", rows, "a list of rows")
    table = [listed(f"from_rows: row {number}", row, "a list of cells") for number, row in enumerate(several, start=1)]
    first_number = 1
    if names is None:
        if not table:
            raise ValueError("from_rows: expected a first row with the names of the series, got no row.")
        names = table.pop(0)[1:]
        first_number = 2
    series_names = [_cells.label(name) for name in listed("from_rows: names", names)]
    for number, row in enumerate(table, start=first_number):
        if len(row) != len(series_names) + 1:
            raise ValueError(f"from_rows: row {number}: expected {len(series_names) + 1} cells, got {len(row)}.")
    columns = [[row[i] for row in table] for i in range(len(series_names) + 1)]
    return make_set("from_rows", Table(columns[0], list(zip(series_names, columns[1:]))))


def from_dataframe(table: Any, categories: object = None, columns: Iterable[object] | None = None) -> DataSet:
    """Make a data set from a table in memory: one series for each column of numbers.

    table: a data frame or a series of whatever library, a dictionary of columns or of numbers, an array of one or two
        dimensions, or a list of numbers.
    categories: the column that names the categories. Without it they are the index. Where there is none, or one of
        whole numbers without a name, and the first column holds text or dates, they are that column; where there is
        none at all, the rows are counted.
    columns: those that become series. Without it all do that hold numbers; ChartWarning names the others.

    Missing values leave gaps. quillon.report.ChartData.from_dataframe keeps dates and levels of categories besides.
    """
    return make_set("from_dataframe", read_table("from_dataframe", table, categories, columns))


def read_table(place: str, table: Any, categories: object, columns: Iterable[object] | None) -> Table:
    """Read what from_dataframe() takes; place: what was called, for refusals."""
    chosen = None if columns is None else listed(f"{place}: columns", columns)
    try:
        return _read_table(table, categories, chosen)
    except Refused as error:
        raise error.kind(f"{place}: {error}") from None


class Refused(Exception):
    """A table that is refused, before the error says what was called."""

    def __init__(self, kind: type[Exception], sentence: str) -> None:
        super().__init__(sentence)
        self.kind = kind


def _read_table(table: Any, categories: object, chosen: list[Any] | None) -> Table:
    source = _read_source(table)
    if categories is None:
        names, named = _find_categories(source)
    else:
        names, named = source.read(categories), categories
    has_categories = bool(names)
    names = names or list(range(1, len(source.read(source.names[0])) + 1))
    if not names:
        raise Refused(ValueError, "the table has no rows.")
    labels = [name for name in source.names if named is None or name != named] if chosen is None else chosen
    _require_unique(labels)
    read = [(_cells.label(name), source.read(name)) for name in labels]
    called = [named] if named is not None else source.index_names if source.index else []
    category_names = [_cells.label(name) for name in called] if any(name is not None for name in called) else []
    kept = _leave_out_words(read) if chosen is None else read
    return Table(names, kept, has_categories, source.has_names, category_names)


def make_set(place: str, table: Table) -> DataSet:
    from quillon.chart import DataSet

    data = DataSet([_cells.label(category) for category in table.categories])
    for name, cells in table.columns:
        if len(cells) != len(table.categories):
            raise ValueError(f"{place}: {name!r}: expected {len(table.categories)} values, got {len(cells)}.")
        data.add_series(name, [_cells.number(cell, f"{place}: {name!r}, value {i}") for i, cell in enumerate(cells, 1)])
    return data


@dataclasses.dataclass
class _Source:
    """Columns by name; `index` names the rows, if anything does."""

    names: list[Any]
    get: Any
    index: list[Any] | None = None
    #: Of the index, for each of its levels; None where it has none.
    index_names: list[Any] = dataclasses.field(default_factory=list)
    has_names: bool = True

    def is_numbered(self) -> bool:
        """Whether the index may be what is left of a count of rows: whole numbers without a name."""
        unnamed = all(name is None for name in self.index_names)
        return unnamed and all(isinstance(cell, numbers.Integral) for cell in self.index or [])

    def read(self, name: object) -> list[Any]:
        count = self.names.count(name)
        if count == 1:
            return list(self.get(name))
        there = ", ".join(repr(_cells.label(own)) for own in self.names)
        what = f"{count} columns have the name" if count else "there is no column"
        raise Refused(ValueError, f"{what} {_cells.label(name)!r}; the columns are {there}.")


def _read_source(table: Any) -> _Source:
    if hasattr(table, "columns"):
        return _Source(list(table.columns), table.__getitem__, _index_of(table), _index_names(table))
    if isinstance(table, Mapping):
        return _read_mapping(table)
    if getattr(table, "ndim", 1) == 2:
        names = [f"Series {i + 1}" for i in range(table.shape[1])]
        return _Source(names, lambda name: _column(table, name), has_names=False)
    if isinstance(table, (str, bytes)) or not hasattr(table, "__iter__") or getattr(table, "ndim", 1) != 1:
        raise Refused(
            TypeError,
            "expected a data frame, a series, a dictionary, an array or a list of numbers, got"
            f" {type(table).__name__}.",
        )
    if isinstance(table, Sequence) and table and isinstance(table[0], (list, tuple, Mapping)):
        kind = type(table[0]).__name__
        raise Refused(TypeError, f"expected a list of numbers, got one of {kind}; from_rows takes rows.")
    name = getattr(table, "name", None)
    cells = list(table)
    names = ["Series 1" if name is None else name]
    return _Source(names, lambda _: cells, _index_of(table), _index_names(table), has_names=name is not None)


def _column(array: Any, name: str) -> Any:
    return array[:, int(name.removeprefix("Series ")) - 1]


def _read_mapping(table: Mapping[Any, Any]) -> _Source:
    if table and not any(hasattr(value, "__iter__") and not isinstance(value, str) for value in table.values()):
        return _Source(["Series 1"], lambda _: table.values(), list(table), has_names=False)
    if any(isinstance(value, Mapping) for value in table.values()):
        return _read_mappings(table)
    columns = {name: _read_column(name, value) for name, value in table.items()}
    return _Source(list(table), columns.__getitem__, _shared_index(table))


def _read_mappings(table: Mapping[Any, Any]) -> _Source:
    for name, value in table.items():
        if not isinstance(value, Mapping):
            kind = type(value).__name__
            raise Refused(TypeError, f"{name!r}: expected a dictionary, as the others are, got {kind}.")
    keys = list(dict.fromkeys(key for value in table.values() for key in value))
    return _Source(list(table), lambda name: [table[name].get(key) for key in keys], keys)


def _read_column(name: object, column: Any) -> list[Any]:
    if isinstance(column, (str, bytes)) or not hasattr(column, "__iter__"):
        raise Refused(TypeError, f"{name!r}: expected a column of cells, got {type(column).__name__}.")
    return list(column)


def _shared_index(table: Mapping[Any, Any]) -> list[Any] | None:
    """The names of the rows, which are those of all columns that have any."""
    named = {name: index for name, column in table.items() if (index := _index_of(column)) is not None}
    for name, index in named.items():
        if index != next(iter(named.values())):
            first = next(iter(named))
            raise Refused(ValueError, f"{name!r} has other row names than {first!r}; make one data frame of them.")
    return next(iter(named.values()), None)


def _index_of(table: Any) -> list[Any] | None:
    """The names of the rows; None where an index only counts them from 0."""
    index: Any = getattr(table, "index", None)
    is_count = type(index).__name__ == "RangeIndex" and index[:1].tolist() == [0]
    return None if index is None or callable(index) or is_count else list(index)


def _index_names(table: Any) -> list[Any]:
    index = getattr(table, "index", None)
    return list(getattr(index, "names", None) or [getattr(index, "name", None)])


def _find_categories(source: _Source) -> tuple[list[Any], object]:
    """The names of the categories, none where nothing says them, and the name of the column that they come from."""
    if not source.names:
        raise Refused(ValueError, "the table has no columns.")
    if source.index is not None and not source.is_numbered():
        return source.index, None
    first = source.read(source.names[0])
    if any(not _cells.is_missing(cell) and not _cells.is_number(cell) for cell in first):
        return first, source.names[0]
    return source.index or [], None


def _require_unique(names: list[Any]) -> None:
    for name, count in collections.Counter(map(_cells.label, names)).items():
        if count > 1:
            raise Refused(ValueError, f"{count} columns have the name {name!r}; give each a name of its own.")


def _leave_out_words(columns: list[tuple[str, list[Any]]]) -> list[tuple[str, list[Any]]]:
    """The columns that hold numbers. One that holds both is kept, so that the cell which is not a number gets named."""
    kept = []
    for name, cells in columns:
        given = [cell for cell in cells if not _cells.is_missing(cell)]
        if not given or any(map(_cells.is_number, given)):
            kept.append((name, cells))
            continue
        is_date = _cells.as_date(given[0]) is not None
        what = "dates" if is_date else "text" if isinstance(given[0], str) else "no numbers"
        warn([f"{name!r} holds {what} and is left out."])
    if not kept:
        raise Refused(ValueError, "no column holds numbers.")
    return kept
