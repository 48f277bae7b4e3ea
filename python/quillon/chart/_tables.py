"""Data sets from the tables that authors have."""

from __future__ import annotations

import datetime
from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, Any

if TYPE_CHECKING:
    from quillon.chart import DataSet


def from_rows(rows: Iterable[Sequence[object]], names: Iterable[object] | None = None) -> DataSet:
    """Make a data set from the rows of a table: the name of a category, then one number for each series.

    Without `names` the first row has the names of the series, after a cell of any content. A number may be text, as a
    CSV file has it; None, empty text and NaN leave a gap.
    """
    table = [_cells(row, number) for number, row in enumerate(rows, start=1)]
    first_number = 1
    if names is None:
        if not table:
            raise ValueError("from_rows: expected a first row with the names of the series, got no row.")
        names = table.pop(0)[1:]
        first_number = 2
    series_names = [_label(name) for name in _several("from_rows: names", names)]
    for number, row in enumerate(table, start=first_number):
        if len(row) != len(series_names) + 1:
            raise ValueError(f"from_rows: row {number}: expected {len(series_names) + 1} cells, got {len(row)}.")
    columns = [[row[i] for row in table] for i in range(len(series_names) + 1)]
    return _make_set("from_rows", columns[0], zip(series_names, columns[1:]))


def from_dataframe(frame: Any, categories: object = None, columns: Iterable[object] | None = None) -> DataSet:
    """Make a data set from a data frame, of whatever library: one series for each column.

    The names of the categories come from the column `categories`; without it from the index of the frame, or from its
    first column when it has no index. `columns` chooses the columns that become series; without it all others do.
    Missing values leave gaps.
    """
    if not hasattr(frame, "columns"):
        raise TypeError(f"from_dataframe: expected an object with columns, got {type(frame).__name__}.")
    labels = list(frame.columns)
    index = getattr(frame, "index", None)
    if categories is None and (index is None or callable(index)):
        if not labels:
            raise ValueError("from_dataframe: expected a column with the names of the categories, got no column.")
        categories = labels[0]
    names = index if categories is None else frame[categories]
    if columns is None:
        columns = [label for label in labels if label != categories]
    chosen = _several("from_dataframe: columns", columns)
    return _make_set("from_dataframe", names, ((_label(label), frame[label]) for label in chosen))


def _several(place: str, labels: Iterable[object]) -> list[object]:
    if isinstance(labels, str):
        raise TypeError(f"{place}: expected a list, got str.")
    return list(labels)


def _cells(row: Sequence[object], number: int) -> list[object]:
    if isinstance(row, (str, bytes)) or not hasattr(row, "__iter__"):
        raise TypeError(f"from_rows: row {number}: expected a sequence of cells, got {type(row).__name__}.")
    return list(row)


def _make_set(
    place: str, categories: Iterable[object], columns: Iterable[tuple[str, Iterable[object]]]
) -> DataSet:
    from quillon.chart import DataSeries, DataSet

    data = DataSet([_label(category) for category in categories])
    for name, cells in columns:
        series = DataSeries(name)
        series.extend([_number(cell, f"{place}: {name!r}, value {i}") for i, cell in enumerate(cells, start=1)])
        data.appendSeries(series)
    return data


def _label(cell: object) -> str:
    if _is_missing(cell):
        return ""
    if isinstance(cell, datetime.datetime):
        return str(cell).removesuffix(" 00:00:00")
    return " ".join(map(_label, cell)) if isinstance(cell, tuple) else str(cell)


def _is_missing(cell: object) -> bool:
    is_nan = isinstance(cell, float) and cell != cell
    return cell is None or is_nan or type(cell).__name__ in ("NAType", "NaTType")


def _number(cell: Any, place: str) -> float:
    if _is_missing(cell) or (isinstance(cell, str) and not cell.strip()):
        return float("nan")
    try:
        return float(cell)
    except (TypeError, ValueError, OverflowError) as error:
        refusal = TypeError if isinstance(error, TypeError) else ValueError
        raise refusal(f"{place}: expected a number, got {cell!r}.") from None
