"""What callers give, checked; refusals name what was called and what it takes."""

from __future__ import annotations

import difflib
import functools
import inspect
import os
from collections.abc import Callable, Mapping
from typing import Any, TypeVar, cast

Function = TypeVar("Function", bound=Callable[..., Any])


_OF_CHART = "the title is the chart's own, as in ColumnChart(title='Sales')"


def suggesting(function: Function) -> Function:
    """Let a misspelt keyword be refused with the name of the one that was probably meant."""
    known = list(inspect.signature(function).parameters)

    @functools.wraps(function)
    def call(*arguments: Any, **keywords: Any) -> Any:
        for name in keywords.keys() - known:
            near = difflib.get_close_matches(name, known, 1)
            # The titles of its axes are near, and not meant.
            hint = _OF_CHART if name == "title" and "chart" in known else f"did you mean {near[0]!r}?" if near else ""
            if hint:
                raise TypeError(f"{function.__qualname__}() has no argument {name!r}; {hint}")
        return function(*arguments, **keywords)

    return cast(Function, call)


def refuse(place: str, expected: str, value: object) -> TypeError:
    """The error of a value of another type."""
    return TypeError(f"{place}: expected {expected}, got {type(value).__name__}.")


def listed(place: str, value: Any, expected: str = "a list") -> list[Any]:
    """The items of a list, or of whatever else can be iterated but a text or a dictionary."""
    if isinstance(value, (str, bytes, Mapping)) or not hasattr(value, "__iter__"):
        raise refuse(place, expected, value)
    return list(value)


def flag(place: str, value: object) -> bool:
    if not isinstance(value, bool):
        raise refuse(place, "bool", value)
    return value


def path(place: str, value: Any, expected: str = "a path") -> str | bytes:
    """The text of a path."""
    try:
        text: str | bytes = os.fspath(value)
    except TypeError:
        raise refuse(place, expected, value) from None
    return text
