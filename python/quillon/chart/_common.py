"""What all chart objects can do besides what the library tells of them: be shown, compared, copied and pickled."""

from __future__ import annotations

import enum
import reprlib
from collections.abc import Mapping
from typing import Any

from quillon import _core

#: How deep a representation goes, and how many items of a list it shows.
_DEPTH = 3
_ITEMS = 4


def members(cls: type) -> dict[str, _core.Property[Any, Any]]:
    """The properties of a class by name, those of its bases first."""
    return {
        name: member
        for base in reversed(cls.__mro__)
        for name, member in vars(base).items()
        if isinstance(member, _core.Property)
    }


def show(value: object, depth: int) -> str:
    if isinstance(value, Common):
        return value._show(depth)
    if isinstance(value, enum.Enum):
        return value.name
    if isinstance(value, list) and value and isinstance(value[0], Common):
        shown = [show(item, depth) for item in value[:_ITEMS]]
        return f"[{', '.join(shown + ['...'] * (len(value) > _ITEMS))}]"
    return reprlib.repr(value)


def same(one: object, other: object) -> bool:
    """Whether two values have the same content. A value that is missing equals another one."""
    if isinstance(one, Common):
        return one is other or (type(one) is type(other) and same(one._contents(), other._contents()))  # type: ignore
    if isinstance(one, dict) and isinstance(other, dict):
        return one.keys() == other.keys() and all(same(one[key], other[key]) for key in one)
    if isinstance(one, list) and isinstance(other, list):
        return len(one) == len(other) and all(map(same, one, other))
    return one == other or (one != one and other != other)


def make(cls: type, arguments: Mapping[str, Any]) -> Any:
    """A new object for a copy to be written into. A subclass in Python is not asked."""
    made: Any = _core.Handle.__new__(cls)
    _core.Handle.__init__(made, **arguments)
    return made


class Common:
    """What every chart object can do. Two objects are equal to == only if they are one; equals() compares them."""

    __slots__ = ()

    def equals(self, other: object) -> bool:
        """Whether the other object is of the same class and has the same content, in all that it holds."""
        return same(self, other)

    def __repr__(self) -> str:
        return self._show(_DEPTH)

    def __reduce__(self) -> tuple[Any, ...]:
        """For copies and pickles, which walk the tree: an object that stands in two places does so in the copy."""
        return make, (type(self), self._arguments()), (self._contents(), object.__getstate__(self))  # type: ignore[attr-defined]

    def __setstate__(self, state: tuple[dict[str, Any], Any]) -> None:
        contents, own = state
        self._fill(contents)
        for part in own if isinstance(own, tuple) else [own]:
            for name, value in (part or {}).items():
                object.__setattr__(self, name, value)

    def _contents(self) -> dict[str, Any]:
        """All that the object says and holds, by name."""
        return {name: getattr(self, name) for name in members(type(self))}

    def _arguments(self) -> dict[str, Any]:
        """What the constructor must be given, because it cannot be set later."""
        return {}

    def _fill(self, contents: dict[str, Any]) -> None:
        """Say and hold what another object does."""
        known = members(type(self))
        for name, value in contents.items():
            member = known.get(name)
            if member is None or value is None:
                continue
            if isinstance(value, Common) and member.set_type_name != member.type_name:
                getattr(self, name)._fill(value._contents())
            elif member.set_type_name is not None:
                setattr(self, name, value)

    def _show(self, depth: int) -> str:
        brief = self._brief()
        if brief is not None and depth < _DEPTH:
            return f"<{type(self).__name__} {brief!r}>"
        words = self._describe(depth - 1) if depth > 0 else []
        return f"<{' '.join([type(self).__name__, *words])}>"

    def _brief(self) -> str | None:
        """What stands for the whole object inside another one."""
        return None

    def _describe(self, depth: int) -> list[str]:
        words = []
        for name in members(type(self)):
            try:
                value = getattr(self, name)
            except (TypeError, ValueError):  # Not initialised yet; a colour that was set as three numbers.
                continue
            if value is not None:
                words.append(f"{name}={show(value, depth)}")
        return words
