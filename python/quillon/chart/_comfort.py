"""What Python authors expect of an object and the library does not have: bases that chart classes inherit besides."""

from __future__ import annotations

import enum
import operator
import reprlib
from collections.abc import Iterable, Iterator
from typing import TYPE_CHECKING, Any, Generic, SupportsIndex, TypeVar, overload

from quillon import _core
from quillon._preview import Preview

if TYPE_CHECKING:
    from quillon.chart import DataPoint, DataSeries, Text

Item = TypeVar("Item")


def _show(value: object) -> str:
    if isinstance(value, _core.Handle):
        return f"<{type(value).__name__}>"
    if isinstance(value, enum.Enum):
        return value.name
    if isinstance(value, list) and value and isinstance(value[0], _core.Handle):
        return f"[{len(value)} {type(value[0]).__name__}]"
    return reprlib.repr(value)


class Shown:
    """Represented by its class and its properties."""

    __slots__ = ()

    def __repr__(self) -> str:
        words = [type(self).__name__]
        for base in reversed(type(self).__mro__):
            for name, member in vars(base).items():
                if isinstance(member, _core.Property):
                    words.extend(self._describe(name))
        return f"<{' '.join(words)}>"

    def _describe(self, name: str) -> list[str]:
        try:
            value = getattr(self, name)
        except (TypeError, ValueError):  # Not initialised yet; a colour that was set as three numbers.
            return []
        return [] if value is None else [f"{name}={_show(value)}"]


class Items(Generic[Item]):
    """Has items in an order. Positions count from 0, where the library's own methods count from 1."""

    __slots__ = ()

    def __len__(self) -> int:
        raise NotImplementedError

    def _item(self, position: int) -> Item:
        raise NotImplementedError

    @overload
    def __getitem__(self, position: SupportsIndex) -> Item: ...
    @overload
    def __getitem__(self, position: slice) -> list[Item]: ...
    def __getitem__(self, position: SupportsIndex | slice) -> Item | list[Item]:
        size = len(self)
        if isinstance(position, slice):
            return [self._item(i) for i in range(*position.indices(size))]
        index = operator.index(position)
        if not -size <= index < size:
            raise IndexError(f"{type(self).__name__}: position {index} is out of range, there are {size} items.")
        return self._item(index % size)

    def __iter__(self) -> Iterator[Item]:
        position = 0
        while position < len(self):
            yield self._item(position)
            position += 1

    def __contains__(self, item: object) -> bool:
        return any(item is own for own in self)

    def __bool__(self) -> bool:
        """An object is true, also without items, so that `if chart.DataSet` asks whether there is one."""
        return True


class SeriesItems(Items["DataPoint"]):
    """The points of a series."""

    __slots__ = ()

    def __len__(self: Any) -> int:
        return self.Size

    def _item(self: Any, position: int) -> DataPoint:
        return self.getPoint(position + 1)

    def extend(self, values: Iterable[float]) -> None:
        """Append one new point for each value: numbers of a sequence, of a buffer as arrays have it, or any iterable.

        When a value is refused, no point is appended.
        """
        if not hasattr(values, "__len__"):
            values = list(values)
        _core.call_for_each(self, "appendPoint", values)


class SetItems(Items["DataSeries"]):
    """The series of a data set."""

    __slots__ = ()

    def __len__(self: Any) -> int:
        return self.SeriesCount

    def _item(self: Any, position: int) -> DataSeries:
        return self.getSeries(position + 1)


class ParagraphItems(Items["Text"]):
    """The runs of a paragraph."""

    __slots__ = ()

    def __len__(self: Any) -> int:
        return len(self.Content)

    def _item(self: Any, position: int) -> Text:
        return self.Content[position]


#: By the name of the class that inherits them.
bases = {
    "Object": Shown,
    "Chart": Preview,
    "DataSeries": SeriesItems,
    "DataSet": SetItems,
    "Paragraph": ParagraphItems,
}
