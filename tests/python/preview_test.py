"""Pictures of charts; the drawing itself is tested where LibreOffice is installed."""

import io
import os
import shutil
import struct
import unittest
import zipfile
from concurrent.futures import ThreadPoolExecutor
from unittest import mock

from charts import make_chart
from quillon import _preview
from quillon.chart import ColumnChart
from quillon.report import PreviewError

WITHOUT_PROGRAMS = mock.patch.dict(os.environ, PATH="/nonexistent")


class Preview(unittest.TestCase):
    def setUp(self):
        _preview._draw.cache_clear()

    def test_says_how_to_install_what_is_missing(self):
        with WITHOUT_PROGRAMS:
            with self.assertRaisesRegex(PreviewError, "no soffice. .* sudo apt install libreoffice-writer poppler"):
                make_chart().preview()
            self.assertIsNone(make_chart()._repr_png_())

    def test_refuses_what_cannot_be_drawn(self):
        for options in ({"dpi": 0}, {"dpi": 1e9}, {"dpi": float("nan")}, {"width": "1"}, {"legend": "up"}):
            self.assertRaises(ValueError, make_chart().preview, **options)
        self.assertIsNone(ColumnChart()._repr_png_())

    def test_shows_every_option(self):
        drawn = []
        with mock.patch.object(_preview, "_draw", lambda document, *size: drawn.append((document, size)) or b""):
            make_chart().preview(width="4in", value_title="EUR", gap=7, labels=["value", "series"])
        (document, size), = drawn
        with zipfile.ZipFile(io.BytesIO(document)) as file:
            part = "".join(file.read(name).decode() for name in file.namelist() if "chart" in name and "xml" in name)
        for text in ["EUR", '<c:gapWidth val="7"/>', '<c:showSerName val="1"/>']:
            self.assertIn(text, part)
        self.assertEqual(size, (4, 3.5, 96))

    def test_tells_of_a_program_that_fails_or_hangs(self):
        cases = [("false", 60, "^false failed"), ("sleep 60", 0.2, "^sleep was stopped after 0.2 seconds")]
        for command, seconds, text in cases:
            with mock.patch.object(_preview, "_SECONDS", seconds), self.assertRaisesRegex(PreviewError, text):
                _preview._run(_preview.Path("/"), "result", command.split())

    @unittest.skipUnless(shutil.which("soffice") and shutil.which("pdftoppm"), "LibreOffice is not installed")
    def test_draws_each_chart_once_and_several_at_once(self):
        def draw(chart):
            return chart.preview(width="4in", height="2in", dpi=50)

        charts = [make_chart([1, 2]), make_chart([2, 1])]
        with ThreadPoolExecutor() as pool:
            pictures = list(pool.map(draw, charts))
        self.assertNotEqual(*pictures)
        for picture in pictures:
            self.assertEqual(struct.unpack(">8s8xII", picture[:24]), (b"\x89PNG\r\n\x1a\n", 200, 100))
        with WITHOUT_PROGRAMS:
            self.assertEqual(draw(charts[0]), pictures[0])
            charts[0].DataSet[0][0].Value = 3
            self.assertRaises(PreviewError, draw, charts[0])
