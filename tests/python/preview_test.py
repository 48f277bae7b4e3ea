"""Pictures of charts; the drawing itself is tested where LibreOffice is installed."""

import os
import shutil
import struct
import threading
import unittest
from unittest import mock

from quillon import _preview
from quillon.chart import ColumnChart, DataSeries, DataSet
from quillon.report import PreviewError

CAN_DRAW = shutil.which("soffice") and shutil.which("pdftoppm")


def make_chart(values=(1.5, 2.0)):
    series = DataSeries("North")
    series.extend(values)
    chart = ColumnChart()
    chart.DataSet = DataSet(["Q"] * len(values))
    chart.DataSet.appendSeries(series)
    return chart


def read_size(picture):
    if picture[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("no PNG file")
    return struct.unpack(">II", picture[16:24])


class Preview(unittest.TestCase):
    def setUp(self):
        _preview._draw.cache_clear()

    def test_says_how_to_install_what_is_missing(self):
        with mock.patch.dict(os.environ, PATH="/nonexistent"):
            with self.assertRaisesRegex(PreviewError, "no soffice. .* sudo apt install libreoffice-writer poppler"):
                make_chart().preview()
            self.assertIsNone(make_chart()._repr_png_())

    def test_refuses_what_cannot_be_drawn(self):
        for options in ({"dpi": 0}, {"dpi": 1e9}, {"dpi": float("nan")}, {"width": "1"}, {"legend": "up"}):
            with self.assertRaises(ValueError):
                make_chart().preview(**options)
        with self.assertRaises(TypeError):
            make_chart().preview(dpi="96")
        self.assertIsNone(ColumnChart()._repr_png_())

    def test_says_what_a_program_that_fails_said(self):
        with mock.patch.object(_preview, "_find_program", lambda name: "/bin/false"):
            with self.assertRaisesRegex(PreviewError, "/bin/false failed"):
                make_chart().preview()

    def test_stops_a_program_that_hangs(self):
        with mock.patch.object(_preview, "_SECONDS", 0.2):
            with self.assertRaisesRegex(PreviewError, "sleep was stopped after 0.2 seconds"):
                _preview._run(_preview.Path("/"), "x", ["sleep", "60"])

    @unittest.skipUnless(CAN_DRAW, "LibreOffice is not installed")
    def test_draws_each_chart_once_and_several_at_once(self):
        charts = [make_chart([1, 2]), make_chart([2, 1])]
        pictures = [None, None]

        def draw(number):
            pictures[number] = charts[number].preview(width="4in", height="2in", dpi=50)

        threads = [threading.Thread(target=draw, args=(number,)) for number in range(2)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual([read_size(picture) for picture in pictures], [(200, 100), (200, 100)])
        self.assertNotEqual(pictures[0], pictures[1])
        with mock.patch.dict(os.environ, PATH="/nonexistent"):
            self.assertEqual(charts[0].preview(width="4in", height="2in", dpi=50), pictures[0])
            charts[0].DataSet[0][0].Value = 3
            with self.assertRaises(PreviewError):
                charts[0].preview(width="4in", height="2in", dpi=50)


if __name__ == "__main__":
    unittest.main()
