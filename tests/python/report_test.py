"""quillon.report: what a document holds, where it is written, what is refused."""

import errno
import gc
import io
import os
import sys
import tempfile
import threading
import time
import unittest
import warnings
import zipfile
from pathlib import Path

from quillon import _core
from quillon.chart import ColumnChart, DataSeries, DataSeriesShapeFormat, DataSet, PieChart, Title
from quillon.report import ChartWarning, Document


def make_chart(values=(1.5, 2.0), kind=ColumnChart, colour=None):
    series = DataSeries("North")
    series.extend(values)
    if colour:
        series.Format = DataSeriesShapeFormat(colour)
    chart = kind()
    chart.DataSet, chart.ChartTitle = DataSet(["Q"] * len(values)), Title("Revenue")
    chart.DataSet.appendSeries(series)
    return chart


def make_document(chart=None, **options):
    document = Document()
    document.add_heading("Sales")
    if chart is not None:
        document.add_chart(chart, **options)
    return document


def read_part(data, name):
    return zipfile.ZipFile(io.BytesIO(data)).read(name).decode()


class Content(unittest.TestCase):
    def test_blocks_and_options_reach_the_document(self):
        document = make_document(make_chart(), width="10cm", height="5cm", legend="left", alt_text="Sales < 3")
        document.add_heading("More", level=2)
        document.add_paragraph("first\nsecond \u00e9\U0001f389")
        document.add_chart(make_chart(kind=PieChart), workbook=False)
        data = document.to_bytes()
        text = read_part(data, "word/document.xml")
        places = [text.find(part) for part in (
            'w:val="Heading1"', "Sales</w:t>", 'cx="3600000" cy="1800000"', 'w:val="Heading2"', "<w:br/>",
            "second \u00e9\U0001f389", 'cx="5486400" cy="3200400"')]
        self.assertEqual(places, sorted(places))
        self.assertNotIn(-1, places)
        self.assertIn('descr="Sales &lt; 3"', text)
        self.assertIn('<c:legendPos val="l"/>', read_part(data, "word/charts/chart1.xml"))
        self.assertIn("<c:pieChart>", read_part(data, "word/charts/chart2.xml"))
        embedded = [name for name in zipfile.ZipFile(io.BytesIO(data)).namelist() if "embeddings" in name]
        self.assertEqual(embedded, ["word/embeddings/data1.xlsx"])

    def test_a_chart_is_written_as_it_is_when_the_document_is(self):
        chart = make_chart()
        document = make_document(chart)
        chart.ChartTitle = Title("Later")
        del chart
        gc.collect()
        self.assertIn("Later", read_part(document.to_bytes(), "word/charts/chart1.xml"))

    def test_a_document_keeps_its_charts_and_lets_them_go(self):
        before = _core.bound_objects()
        document = make_document(make_chart())
        gc.collect()
        document.to_bytes()
        del document
        gc.collect()
        self.assertEqual(_core.bound_objects(), before)


class Saving(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def test_takes_paths_and_file_objects(self):
        document = make_document(make_chart())
        expected = document.to_bytes()
        paths = [str(self.folder / "a.docx"), self.folder / "b \u00e9.docx", os.fsencode(self.folder) + b"/\xff.docx"]
        for path in paths:
            document.save(path)
            with open(path, "rb") as file:
                self.assertEqual(file.read(), expected)
            self.assertEqual(os.stat(path).st_mode & 0o777, 0o666 & ~self.read_umask())
        memory = io.BytesIO()
        document.save(memory)
        self.assertEqual(memory.getvalue(), expected)
        self.assertEqual(len(list(self.folder.iterdir())), len(paths))

    @staticmethod
    def read_umask():
        mask = os.umask(0)
        os.umask(mask)
        return mask

    def test_a_path_that_cannot_be_written_is_an_os_error(self):
        (self.folder / "taken").mkdir()
        cases = [
            (self.folder / "missing" / "x.docx", FileNotFoundError, errno.ENOENT),
            (self.folder / "taken", IsADirectoryError, errno.EISDIR),
            (str(self.folder / ("n" * 300)), OSError, errno.ENAMETOOLONG),
        ]
        for path, kind, number in cases:
            with self.assertRaises(kind) as caught:
                make_document().save(path)
            self.assertEqual((caught.exception.errno, caught.exception.filename), (number, str(path)))
        self.assertEqual([path.name for path in self.folder.iterdir()], ["taken"])

    def test_a_link_stays_one_and_a_device_what_it_is(self):
        path, link, pipe = (self.folder / name for name in ("a.docx", "link.docx", "pipe"))
        path.write_text("old")
        link.symlink_to(path)
        os.mkfifo(pipe)
        make_document().save(link)
        self.assertTrue(link.is_symlink() and path.read_bytes() == make_document().to_bytes())
        self.assertRaises(OSError, make_document().save, pipe)

    def test_what_is_no_target_is_refused(self):
        cases = [(3, TypeError), (None, TypeError), ("a\0b", ValueError), (io.StringIO(), TypeError)]
        for target, kind in cases:
            with self.assertRaises(kind):
                make_document().save(target)

    def test_a_warning_names_the_line_and_as_an_error_leaves_no_file(self):
        document = make_document(make_chart(colour="nonsense"))
        path = self.folder / "a.docx"
        with self.assertWarnsRegex(ChartWarning, 'series 1 .*, fill: "nonsense" is no colour') as caught:
            document.save(path)
        self.assertEqual(caught.filename, __file__)
        path.write_text("old")
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            with self.assertRaises(ChartWarning):
                document.save(path)
        self.assertEqual(path.read_text(), "old")
        self.assertEqual(list(self.folder.iterdir()), [path])


class Refusals(unittest.TestCase):
    def test_say_what_is_wrong(self):
        chart = make_chart()
        cases = [
            (lambda d: d.add_heading("x", 0), ValueError, "Heading level: expected 1 to 9, got 0."),
            (lambda d: d.add_heading("x", 10**30), ValueError, "Heading level: expected 1 to 9"),
            (lambda d: d.add_heading("x", "1"), TypeError, "integer"),
            (lambda d: d.add_heading(3), TypeError, "text: expected str, got int"),
            (lambda d: d.add_paragraph("a\0b"), ValueError, r"Paragraph: character 2 \(U\+0000\)"),
            (lambda d: d.add_paragraph("\ud800"), ValueError, "surrogates"),
            (lambda d: d.add_chart("chart"), TypeError, "expected a chart, got str"),
            (lambda d: d.add_chart(None), TypeError, "expected a chart, got NoneType"),
            (lambda d: d.add_chart(chart.DataSet), TypeError, "expected a chart, got .*DataSet"),
            (lambda d: d.add_chart(ColumnChart), TypeError, "expected a chart, got type"),
            (lambda d: d.add_chart(chart, width="15"), ValueError, 'Length "15": expected one of the units'),
            (lambda d: d.add_chart(chart, width=15), TypeError, "width: expected str, got int"),
            (lambda d: d.add_chart(chart, legend="up"), ValueError, 'legend: expected auto, .*, got "up"'),
            (lambda d: d.add_chart(chart, alt_text="\1"), ValueError, "Alternative text: character 1"),
        ]
        for act, kind, pattern in cases:
            document = make_document()
            expected = document.to_bytes()
            with self.assertRaisesRegex(kind, pattern):
                act(document)
            self.assertEqual(document.to_bytes(), expected)

    def test_name_the_chart_that_cannot_be_written(self):
        document = make_document(make_chart())
        document.add_chart(make_chart([1, float("inf")]))
        with self.assertRaisesRegex(ValueError, r'chart 2, series 1 \("North"\), point 2: the value is INF'):
            document.to_bytes()
        with self.assertRaisesRegex(ValueError, "chart 1: "):
            make_document(ColumnChart()).to_bytes()


class Threads(unittest.TestCase):
    def test_progress_is_told_and_may_stop_the_writing(self):
        document = make_document(make_chart())
        document.add_chart(make_chart())
        calls = []
        data = document.to_bytes(lambda done, total: calls.append((done, total)))
        self.assertEqual(calls, [(1, 2), (2, 2)])

        def stop(done, total):
            raise KeyboardInterrupt

        with self.assertRaises(KeyboardInterrupt):
            document.to_bytes(stop)
        with self.assertRaises(TypeError):
            document.to_bytes("no function")
        self.assertEqual(document.to_bytes(), data)

    def test_a_document_that_is_being_written_is_left_alone(self):
        document = make_document(make_chart())
        refused = []

        def meddle(done, total):
            for act in (document.to_bytes, lambda: document.add_paragraph("x"), lambda: document.add_heading("x")):
                with self.assertRaisesRegex(RuntimeError, "the document is being written"):
                    act()
                refused.append(act)

        data = document.to_bytes(meddle)
        self.assertEqual(len(refused), 3)
        self.assertEqual(document.to_bytes(), data)

    def test_other_threads_run_while_a_document_is_written(self):
        # Nobody is made to give up the interpreter's lock, so another thread runs only if the writer lets it go.
        document = make_document(make_chart(range(20_000)))
        steps, stop = [0], threading.Event()

        def step():
            while not stop.is_set():
                steps[0] += 1
                time.sleep(0.0001)

        interval = sys.getswitchinterval()
        thread = threading.Thread(target=step)
        thread.start()
        try:
            sys.setswitchinterval(1_000)
            before = steps[0]
            document.to_bytes()
            after = steps[0]
        finally:
            sys.setswitchinterval(interval)
            stop.set()
            thread.join()
        self.assertGreater(after, before)

    def test_two_threads_write_two_documents_at_once(self):
        charts = [make_chart(range(50)), make_chart(range(60), PieChart)]
        expected = [make_document(chart).to_bytes() for chart in charts]
        both = threading.Barrier(2)
        results = [None, None]

        def write(number):
            document = make_document(charts[number])
            results[number] = document.to_bytes(lambda done, total: both.wait(timeout=60))

        threads = [threading.Thread(target=write, args=(number,)) for number in range(2)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(results, expected)


if __name__ == "__main__":
    unittest.main()
