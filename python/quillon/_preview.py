"""Pictures of charts, drawn by LibreOffice."""

from __future__ import annotations

import functools
import numbers
import os
import shutil
import signal
import subprocess
import tempfile
from collections.abc import Sequence
from pathlib import Path

from quillon import _core, _options
from quillon._arguments import refuse, suggesting
from quillon._warnings import warn

_EMU_PER_INCH = 914_400
_SECONDS = 120


class PreviewError(RuntimeError):
    """A chart could not be drawn; the text says why."""


class Preview:
    """What every chart can do to be looked at."""

    __slots__ = ()

    @suggesting
    def preview(
        self,
        dpi: int = 96,
        *,
        # options: begin
        type: _options.Type | None = None,
        width: str | None = None,
        height: str | None = None,
        legend: _options.Legend | None = None,
        alt_text: str | None = None,
        workbook: bool = True,
        float: _options.Float | None = None,
        category_title: str | None = None,
        value_title: str | None = None,
        number_format: str | None = None,
        category_format: str | None = None,
        value_min: float | None = None,
        value_max: float | None = None,
        value_step: float | None = None,
        log: float | None = None,
        reverse: bool = False,
        units: _options.Units | None = None,
        gridlines: _options.Gridlines | None = None,
        no_value_axis: bool = False,
        tick_labels: _options.TickLabels | None = None,
        tick_rotation: float | None = None,
        tick_interval: int | None = None,
        category_type: _options.CategoryType | None = None,
        second: Sequence[str] | None = None,
        second_title: str | None = None,
        second_format: str | None = None,
        second_min: float | None = None,
        second_max: float | None = None,
        second_step: float | None = None,
        second_log: float | None = None,
        x_title: str | None = None,
        x_format: str | None = None,
        x_min: float | None = None,
        x_max: float | None = None,
        x_step: float | None = None,
        x_log: float | None = None,
        labels: _options.Label | Sequence[_options.Label] | None = None,
        label_position: _options.LabelPosition | None = None,
        label_separator: _options.LabelSeparator | None = None,
        label_format: str | None = None,
        gap: int | None = None,
        overlap: int | None = None,
        stacking: _options.Stacking | None = None,
        markers: bool = False,
        smooth: bool = False,
        blank: _options.Blank | None = None,
        colors: Sequence[str] | None = None,
        palette: Sequence[str] | None = None,
        series_colors: dict[str, str] | None = None,
        category_colors: dict[str, str] | None = None,
        dashed: Sequence[str] | None = None,
        hidden: Sequence[str] | None = None,
        start_angle: int | None = None,
        explosion: int | None = None,
        line: Sequence[str] | None = None,
        area: Sequence[str] | None = None,
        column: Sequence[str] | None = None,
        hole: int | None = None,
        filled: bool = False,
        scatter_style: _options.ScatterStyle | None = None,
        size_series: Sequence[str] | None = None,
        totals: Sequence[str] | None = None,
        drop_lines: bool = False,
        high_low_lines: bool = False,
        up_down_bars: bool = False,
        trendline: _options.Trendline | None = None,
        trendline_series: Sequence[str] | None = None,
        order: int | None = None,
        period: int | None = None,
        forecast: float | None = None,
        backcast: float | None = None,
        equation: bool = False,
        r_squared: bool = False,
        error_bars: _options.ErrorBars | None = None,
        error_value: float | None = None,
        plus_series: Sequence[str] | None = None,
        minus_series: Sequence[str] | None = None,
        font: str | None = None,
        font_size: float | None = None,
        frame: bool = False,
        data_table: bool = False,
        # options: end
    ) -> bytes:
        """Draw the chart with LibreOffice, and return the picture, a PNG file.

        dpi: dots per inch, 10 to 600.

        The options are those of quillon.report.Document.add_chart.

        Takes some seconds; a chart that has not changed since is not drawn again. Raises PreviewError, which says how
        to install LibreOffice when it is missing.
        """
        if not isinstance(dpi, numbers.Real):
            raise refuse("preview: dpi", "a number", dpi)
        if not 10 <= dpi <= 600:
            raise ValueError(f"dpi: expected 10 to 600, got {dpi}.")
        document, *emu, sentences = _core.make_preview(self, _options.given(locals()))
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
