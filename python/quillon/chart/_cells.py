"""The cells of tables: what is missing, what is a number or a date, and the text that stands for one."""

from __future__ import annotations

import datetime
from typing import Any

_EPOCH = datetime.datetime(1899, 12, 30)
_MISSING = ("NAType", "NaTType", "MaskedConstant")


def is_missing(cell: Any) -> bool:
    is_nan = isinstance(cell, float) and cell != cell
    return cell is None or is_nan or type(cell).__name__ in _MISSING or is_missing_date(cell)


def is_missing_date(cell: Any) -> bool:
    return type(cell).__name__ == "datetime64" and bool(cell != cell)


def as_date(cell: Any) -> datetime.datetime | None:
    """The date and time of day that a cell is; None for another one. A month or a day is its beginning."""
    if type(cell).__name__ == "datetime64":
        cell = cell.astype("datetime64[us]").item()
    elif type(cell).__name__ == "Period" and cell.freqstr in ("D", "M"):
        cell = cell.to_timestamp()
    if isinstance(cell, datetime.datetime):
        return cell.replace(tzinfo=None)
    return datetime.datetime(cell.year, cell.month, cell.day) if isinstance(cell, datetime.date) else None


def serial(date: datetime.datetime) -> float:
    """The number of a date in a worksheet: days since 30 December 1899, with the time of day as fraction."""
    return (date - _EPOCH) / datetime.timedelta(days=1)


def label(cell: object) -> str:
    if is_missing(cell):
        return ""
    if isinstance(cell, tuple):
        return " ".join(filter(None, map(label, cell)))
    date = as_date(cell)
    return str(cell if date is None or type(cell).__name__ == "Period" else date).removesuffix(" 00:00:00")


def is_number(cell: Any) -> bool:
    """Whether number() takes a cell that is not missing. Text may be one, as in the cells of a CSV file."""
    if as_date(cell) is not None:
        return False
    try:
        float(cell)
    except (TypeError, ValueError, OverflowError):
        return False
    return True


def number(cell: Any, place: str) -> float:
    """A missing one is not a number."""
    if is_missing(cell) or (isinstance(cell, str) and not cell.strip()):
        return float("nan")
    try:
        return float(cell)
    except (TypeError, ValueError, OverflowError) as error:
        refusal = TypeError if isinstance(error, TypeError) else ValueError
        raise refusal(f"{place}: expected a number, got {cell!r}.") from None
