"""What Python authors expect of an object and the library does not have: bases that chart classes inherit besides."""

from __future__ import annotations

import array
import operator
import reprlib
from collections.abc import Iterable, Iterator
from typing import TYPE_CHECKING, Any, Generic, SupportsIndex, TypeVar, overload

from quillon import _core
from quillon._arguments import listed, refuse
from quillon._preview import Preview as Preview
from quillon.chart._common import Common as Common
from quillon.chart._common import show

if TYPE_CHECKING:
    from quillon.chart import BorderFormat, DataPoint, DataSeries, DataSet, FillFormat, Text

Item = TypeVar("Item")


class Made(Preview):
    """A chart, which may be made in one call."""

    __slots__ = ()

    def __init__(self: Any, *arguments: Any, title: Any = None, data: Any = None, **others: Any) -> None:
        for name in others:
            raise TypeError(
                f"{type(self).__name__}() has no argument {name!r}; it takes title and data, and options of the "
                "look are for add_chart()."
            )
        _core.Handle.__init__(self, *arguments)
        _fill_chart(self, title, data)


def _fill_chart(chart: Any, title: Any, data: Any) -> None:
    from quillon._chart_data import as_chart_data
    from quillon.chart import Title

    place = type(chart).__name__
    if isinstance(title, str):
        chart.ChartTitle = Title(title)
    elif isinstance(title, Title):
        chart.ChartTitle = title
    elif title is not None:
        raise refuse(f"{place}: title", "str or Title", title)
    if data is not None:
        chart.DataSet = as_chart_data(data, place).data_set


class Items(Generic[Item]):
    """Has items in an order. Positions count from 0, where the library's own methods count from 1."""

    __slots__ = ()
    _positions = "a position"

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
        if not hasattr(position, "__index__"):
            raise refuse(type(self).__name__, self._positions, position)
        index = operator.index(position)
        if not -size <= index < size:
            raise IndexError(f"{type(self).__name__}: position {index} is out of range; the length is {size}.")
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
        size: int = self.Size
        return size

    def _item(self: Any, position: int) -> DataPoint:
        point: DataPoint = self.getPoint(position + 1)
        return point

    @property
    def values(self) -> array.array[float]:
        """The values of all points: a copy, which NumPy takes as an array. Change a value at its point."""
        return array.array("d", _core.read_values(self))

    def extend(self, values: Iterable[float]) -> None:
        """Append one new point for each value: numbers of a sequence, of a buffer as arrays have it, or any iterable.

        What a masked array masks becomes a gap. When a value is refused, no point is appended.
        """
        self._extend("extend", values)

    def _extend(self, place: str, values: Any) -> None:
        if hasattr(values, "mask") and hasattr(values, "filled"):
            values = values.astype("float64").filled(float("nan"))
        elif not hasattr(values, "__len__"):
            values = listed(place, values, "numbers")
        _core.call_for_each(self, "appendPoint", values, place)

    def _contents(self: Any) -> dict[str, Any]:
        return {**Common._contents(self), "points": list(self)}

    def _fill(self: Any, contents: dict[str, Any]) -> None:
        Common._fill(self, contents)
        for point in contents["points"]:
            self.appendPoint(point)

    def _describe(self: Any, depth: int) -> list[str]:
        return [*Common._describe(self, depth), *([reprlib.repr(self.values.tolist())] if _is_filled(self) else [])]


class SetItems(Items["DataSeries"]):
    """The series of a data set, by position or by name."""

    __slots__ = ()
    _positions = "a position or a name"

    def __len__(self: Any) -> int:
        count: int = self.SeriesCount
        return count

    def _item(self: Any, position: int) -> DataSeries:
        series: DataSeries = self.getSeries(position + 1)
        return series

    @overload
    def __getitem__(self, position: SupportsIndex | str) -> DataSeries: ...
    @overload
    def __getitem__(self, position: slice) -> list[DataSeries]: ...
    def __getitem__(self, position: SupportsIndex | slice | str) -> DataSeries | list[DataSeries]:
        if not isinstance(position, str):
            return super().__getitem__(position)
        named = [series for series in self if series.Name == position]
        if len(named) == 1:
            return named[0]
        names = reprlib.repr([series.Name for series in self])
        raise KeyError(f"{len(named) or 'no'} series named {position!r}; there are {names}.")

    def __contains__(self, item: object) -> bool:
        return any(item is own or item == own.Name for own in self)

    def add_series(self: Any, name: str, values: Iterable[float]) -> DataSeries:
        """Append a new series with these values, as DataSeries.extend() takes them, and return it.

        When they are refused, or are not as many as the other series have, the set stays as it is.
        """
        from quillon.chart import DataSeries

        if not isinstance(name, str):
            raise refuse("add_series: name", "str", name)
        series = DataSeries(name)
        series._extend("add_series", values)
        added: DataSeries = self.appendSeries(series)
        return added

    def without(self: Any, *names: str) -> DataSet:
        """A new set with the same categories and with the series that have other names; it shares them."""
        from quillon.chart import DataSet

        left_out = [self[name] for name in names]
        rest = DataSet(self.Categories)
        for series in self:
            if series not in left_out:
                rest.appendSeries(series)
        return rest

    def _contents(self: Any) -> dict[str, Any]:
        return {**Common._contents(self), "series": list(self)}

    def _fill(self: Any, contents: dict[str, Any]) -> None:
        Common._fill(self, contents)
        for series in contents["series"]:
            self.appendSeries(series)

    def _describe(self: Any, depth: int) -> list[str]:
        return [*Common._describe(self, depth), *([show(list(self), depth)] if _is_filled(self) else [])]


def _is_filled(items: Any) -> bool:
    """False also for an object that is not initialised."""
    try:
        return len(items) > 0
    except TypeError:
        return False


class ParagraphItems(Items["Text"]):
    """The runs of a paragraph."""

    __slots__ = ()

    def __len__(self: Any) -> int:
        return len(self.Content)

    def _item(self: Any, position: int) -> Text:
        run: Text = self.Content[position]
        return run

    def _fill(self: Any, contents: dict[str, Any]) -> None:
        Common._fill(self, {"Color": contents["Color"]})
        for run in contents["Content"]:
            self.appendText(run)

    def _brief(self: Any) -> str | None:
        return "".join(run.Content for run in self.Content if run is not None)


class Words:
    """A run."""

    __slots__ = ()

    def _brief(self: Any) -> str | None:
        text: str = self.Content
        return text


class Heading:
    """A title, whose paragraph is given to its constructor."""

    __slots__ = ()

    def _arguments(self: Any) -> dict[str, Any]:
        return {"paragraph": self.Text}

    def _fill(self: Any, contents: dict[str, Any]) -> None:
        pass

    def _brief(self: Any) -> str | None:
        return None if self.Text is None else self.Text._brief()


class Point:
    """A point, whose X coordinate is given to its constructor."""

    __slots__ = ()

    def __reduce__(self: Any) -> tuple[Any, ...]:
        made = Common.__reduce__(self)
        return made if not self.getX() else (make_point, (self.getX(),), *made[2:])

    def _contents(self: Any) -> dict[str, Any]:
        return {**Common._contents(self), "X": self.getX()}


def make_point(x: float) -> DataPoint:
    point: DataPoint = _core.make_point(x, 0.0)
    return point


class Shape:
    """A shape format, whose border and fill may be of several kinds."""

    __slots__ = ()

    def replace_fill(self, fill: FillFormat) -> None:
        """Give the shape a fill of another kind: format.replace_fill(GradientFillFormat("red"))."""
        _core.replace_fill(self, fill)

    def replace_border(self, border: BorderFormat) -> None:
        """Give the shape a border of another kind: format.replace_border(GradientBorderFormat("red"))."""
        _core.replace_border(self, border)

    def _fill(self: Any, contents: dict[str, Any]) -> None:
        self.replace_fill(contents["Fill"])
        self.replace_border(contents["Border"])


class Colour:
    """A colour, which remembers whether it was set as three numbers."""

    __slots__ = ()

    def _contents(self) -> dict[str, Any]:
        return {"form": _core.read_color(self)}

    def _fill(self, contents: dict[str, Any]) -> None:
        _core.write_color(self, *contents["form"])

    def _brief(self) -> str | None:
        return _core.read_color(self)[0]


#: By the name of the class that inherits them.
bases = {
    "Object": Common,
    "Chart": Made,
    "DataPoint": Point,
    "DataSeries": SeriesItems,
    "DataSet": SetItems,
    "Color": Colour,
    "ShapeFormat": Shape,
    "Text": Words,
    "Paragraph": ParagraphItems,
    "Title": Heading,
}
