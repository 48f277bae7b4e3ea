"""Word documents made of headings, paragraphs and charts.

    from quillon.report import Document

    report = Document()
    report.add_heading("Sales")
    report.add_chart(chart, width="15cm", legend="bottom")
    report.save("sales.docx")
"""

from __future__ import annotations

import errno
import io
import os
from collections.abc import Callable
from typing import Any, BinaryIO

from quillon import _core
from quillon._chart_data import ChartData, SeriesDetails
from quillon._options import Legend
from quillon._preview import PreviewError
from quillon._warnings import ChartWarning, warn
from quillon.chart import Chart

__all__ = ["ChartData", "ChartWarning", "Document", "PreviewError", "SeriesDetails"]

Progress = Callable[[int, int], Any]


class Document:
    """A document whose blocks stand one below the other.

    Equal content gives equal bytes. Other threads run while a document is written; until then, leave the document and
    its charts alone on all of them.
    """

    def __init__(self) -> None:
        self._core = _core.make_document()

    def add_heading(self, text: str, level: int = 1) -> None:
        """Append a heading of level 1 to 9.

        Raises ValueError for another level, and for text that a document cannot hold: control characters other than
        tab and line break.
        """
        self._core.add_heading(text, level)

    def add_paragraph(self, text: str) -> None:
        """Append a paragraph.

        Raises ValueError for text that a document cannot hold.
        """
        self._core.add_paragraph(text)

    def add_chart(
        self,
        chart: Chart,
        width: str | None = None,
        height: str | None = None,
        legend: Legend = "auto",
        alt_text: str = "",
        workbook: bool = True,
    ) -> None:
        """Append a chart, which is written as it is when the document is.

        width, height: lengths with a unit (cm, mm, in, pt) of 0.1 to 22 inches; "6in" and "3.5in" when left out.
        legend: "right", "top", "left", "bottom" or "none"; "auto" is below a pie and several series, none otherwise.
        alt_text: what a screen reader says; made from the chart when left out.
        workbook: whether the document carries the data, for editing in a word processor.

        Raises TypeError for what is no chart, ValueError for a length or legend that is none.
        """
        options = {"width": width, "height": height, "legend": legend, "alt_text": alt_text, "workbook": workbook}
        self._core.add_chart(chart, options)

    def to_bytes(self, progress: Progress | None = None) -> bytes:
        """Write the document, a .docx file, and return its bytes.

        progress: called with the number of charts written and of all charts, after each.

        Raises ValueError that names the chart, series and point that cannot be written. Warns with ChartWarning of
        what is replaced so that the document stays valid.
        """
        data, sentences = self._core.to_bytes(progress)
        warn(sentences)
        return data

    def save(
        self, target: str | bytes | os.PathLike[Any] | BinaryIO, progress: Progress | None = None
    ) -> None:
        """Write the document to a path, or to a file object opened for bytes.

        A file appears at its path when it is complete. Raises and warns as to_bytes(), and OSError for a path that
        cannot be written. Nothing is written where a warning is made an error.
        """
        if isinstance(target, io.TextIOBase):
            raise TypeError("save: expected a file object opened for bytes, got one for text.")
        is_file = hasattr(target, "write")
        path = None if is_file else os.fspath(target)  # type: ignore[arg-type]
        data, sentences = self._core.to_bytes(progress)
        warn(sentences)
        if path is None:
            _write_all(target, data)
        else:
            _core.write_file(path, data)


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
