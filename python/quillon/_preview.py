"""Pictures of charts, drawn by LibreOffice."""

from __future__ import annotations

import functools
import os
import shutil
import signal
import subprocess
import tempfile
from pathlib import Path

from quillon import _core
from quillon._options import Legend
from quillon._warnings import warn

_EMU_PER_INCH = 914_400
_SECONDS = 120


class PreviewError(RuntimeError):
    """A chart could not be drawn; the text says why."""


class Preview:
    """What every chart can do to be looked at."""

    __slots__ = ()

    def preview(
        self,
        width: str | None = None,
        height: str | None = None,
        dpi: float = 96,
        legend: Legend = "auto",
    ) -> bytes:
        """Draw the chart with LibreOffice, and return the picture, a PNG file.

        width, height, legend: as in quillon.report.Document.add_chart.
        dpi: dots per inch, 10 to 600.

        Takes some seconds; a chart that has not changed since is not drawn again. Raises PreviewError, which says how
        to install LibreOffice when it is missing.
        """
        if not 10 <= dpi <= 600:
            raise ValueError(f"dpi: expected 10 to 600, got {dpi}.")
        options = {"width": width, "height": height, "legend": legend}
        document, *emu, sentences = _core.make_preview(self, options)
        warn(sentences)
        return _draw(document, *(length / _EMU_PER_INCH for length in emu), dpi)

    def _repr_png_(self) -> bytes | None:
        """The picture for a notebook; None, for the text in its place, when it cannot be drawn."""
        try:
            return self.preview()
        except Exception:
            return None


@functools.lru_cache(maxsize=8)
def _draw(document: bytes, width: float, height: float, dpi: float) -> bytes:
    """The upper left corner of a document, of a size in inches."""
    soffice, pdftoppm = _find_program("soffice"), _find_program("pdftoppm")
    with tempfile.TemporaryDirectory(prefix="quillon-preview-") as name:
        folder = Path(name)
        (folder / "chart.docx").write_bytes(document)
        # A profile of its own, for LibreOffice refuses to start beside another that runs with the same one.
        profile = f"-env:UserInstallation={(folder / 'profile').as_uri()}"
        _run(folder, "chart.pdf", [soffice, profile, "--headless", "--convert-to", "pdf", "chart.docx"])
        size = ["-x", "0", "-y", "0", "-W", str(round(width * dpi)), "-H", str(round(height * dpi))]
        _run(folder, "chart.png", [pdftoppm, "-png", "-singlefile", "-r", str(dpi), *size, "chart.pdf", "chart"])
        return (folder / "chart.png").read_bytes()


def _find_program(name: str) -> str:
    path = shutil.which(name)
    if path is None:
        raise PreviewError(
            f"A preview is drawn by LibreOffice Writer and pdftoppm, and there is no {name}. To install both on Debian"
            " or Ubuntu: sudo apt install libreoffice-writer poppler-utils"
        )
    return path


def _run(folder: Path, result: str, command: list[str]) -> None:
    """Run a program, and all processes that it starts, in the folder, where it makes a file."""
    process = subprocess.Popen(
        command,
        cwd=folder,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        start_new_session=True,
    )
    try:
        output, _ = process.communicate(timeout=_SECONDS)
    except BaseException as error:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        if isinstance(error, subprocess.TimeoutExpired):
            raise PreviewError(f"{command[0]} was stopped after {_SECONDS} seconds.") from None
        raise
    if process.returncode != 0 or not (folder / result).exists():
        raise PreviewError(f"{command[0]} failed: {output.decode(errors='replace').strip()}")
