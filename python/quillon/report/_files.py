"""Where documents are written."""

from __future__ import annotations

import errno
import io
import os
from collections.abc import Callable, Iterable
from typing import Any, BinaryIO

from quillon import _core
from quillon._arguments import path
from quillon._warnings import warn

Target = str | bytes | os.PathLike[Any] | BinaryIO


def save(target: Target, make: Callable[[], tuple[bytes, Iterable[str]]]) -> None:
    """Write what `make` makes, with the sentences to warn of, to a path or to a file object opened for bytes."""
    if isinstance(target, io.TextIOBase):
        raise TypeError("save: expected a file object opened for bytes, got one for text.")
    is_file = hasattr(target, "write")
    name = None if is_file else path("save", target, "a path or a file object opened for bytes")
    data, sentences = make()
    warn(sentences)
    if name is None:
        _write_all(target, data)
    else:
        _core.write_file(name, data)


def require_file(place: str, value: Any, expected: str = "a path") -> None:
    """Raise the OSError of a path that leads to no file."""
    name = path(place, value, expected)
    if "\0" not in os.fsdecode(name):
        os.stat(name)


def _write_all(file: Any, data: bytes) -> None:
    """Write to a file object, which may take a part of the bytes at a time. One that gives no number took all."""
    rest: bytes | memoryview = data
    while len(rest) > 0:
        count = file.write(rest)
        if count is None and not isinstance(file, io.RawIOBase):
            return
        if count is None or not 0 < count <= len(rest):
            raise OSError(errno.EAGAIN, f"save: the file object took {count} of {len(rest)} bytes.")
        rest = memoryview(rest)[count:]
