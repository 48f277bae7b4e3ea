"""What callers give, checked; refusals name what was called and what it takes."""

from __future__ import annotations

import os
from collections.abc import Mapping
from typing import Any


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
