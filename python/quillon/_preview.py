"""Pictures of charts, drawn by LibreOffice."""

from __future__ import annotations

import functools
import io
import os
import shutil
import signal
import subprocess
import tempfile
import xml.etree.ElementTree as ElementTree
import zipfile
from pathlib import Path

from quillon import _core
from quillon._warnings import warn

_PACKAGE = "http://schemas.openxmlformats.org/package/2006/"
_OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
_WORD = "http://schemas.openxmlformats.org/wordprocessingml/2006/main"
_DRAWING = "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"
_TYPE = "application/vnd.openxmlformats-officedocument."

_EMU_PER_INCH = 914_400
_TWIPS_PER_INCH = 1_440
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
        legend: str = "auto",
    ) -> bytes:
        """Draw the chart with LibreOffice, and return the picture, a PNG file.

        width, height, legend: as in quillon.report.Document.add_chart.
        dpi: dots per inch, 10 to 600.

        Takes some seconds; a chart that has not changed since is not drawn again. Raises PreviewError, which says how
        to install LibreOffice when it is missing.
        """
        if not 10 <= dpi <= 600:
            raise ValueError(f"dpi: expected 10 to 600, got {dpi}.")
        chart, _, run, sentences = _core.make_chart_parts(self, width, height, legend, "", False, 1, "chart")
        warn(sentences)
        return _draw(chart, run, dpi)

    def _repr_png_(self) -> bytes | None:
        """The picture for a notebook; None, for the text in its place, when it cannot be drawn."""
        try:
            return self.preview()
        except Exception:
            return None


@functools.lru_cache(maxsize=8)
def _draw(chart: bytes, run: bytes, dpi: float) -> bytes:
    soffice, pdftoppm = _find_program("soffice"), _find_program("pdftoppm")
    extent = ElementTree.fromstring(run).find(f".//{{{_DRAWING}}}extent")
    width, height = (int(extent.get(key)) / _EMU_PER_INCH for key in ("cx", "cy"))
    with tempfile.TemporaryDirectory(prefix="quillon-preview-") as name:
        folder = Path(name)
        (folder / "chart.docx").write_bytes(_make_package(chart, run, width, height))
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


def _make_package(chart: bytes, run: bytes, width: float, height: float) -> bytes:
    """A document whose page is as wide as the chart and begins with it."""
    page = [round(inches * _TWIPS_PER_INCH) for inches in (width, height + 1)]
    margins = " ".join(f'w:{side}="0"' for side in ("top", "right", "bottom", "left", "header", "footer", "gutter"))
    document = (
        f'<w:document xmlns:w="{_WORD}"><w:body><w:p>{run.decode()}</w:p>'
        f'<w:sectPr><w:pgSz w:w="{page[0]}" w:h="{page[1]}"/><w:pgMar {margins}/></w:sectPr></w:body></w:document>'
    )
    types = (
        f'<Types xmlns="{_PACKAGE}content-types">'
        '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
        f'<Override PartName="/document.xml" ContentType="{_TYPE}wordprocessingml.document.main+xml"/>'
        f'<Override PartName="/chart.xml" ContentType="{_TYPE}drawingml.chart+xml"/></Types>'
    )
    parts = {
        "[Content_Types].xml": types,
        "_rels/.rels": _relate("document", "officeDocument"),
        "document.xml": document,
        "_rels/document.xml.rels": _relate("chart", "chart"),
        "chart.xml": chart,
    }
    content = io.BytesIO()
    with zipfile.ZipFile(content, "w") as package:
        for name, part in parts.items():
            package.writestr(name, part)
    return content.getvalue()


def _relate(target: str, kind: str) -> str:
    return (
        f'<Relationships xmlns="{_PACKAGE}relationships">'
        f'<Relationship Id="{target}" Type="{_OFFICE}/{kind}" Target="{target}.xml"/></Relationships>'
    )
