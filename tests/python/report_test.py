"""quillon.report: what a document holds, where it is written, what is refused."""

import errno
import gc
import io
import os
import sys
import tempfile
import threading
import unittest
import warnings
import zipfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from charts import make_chart
from quillon import _core
from quillon.chart import ColumnChart, PieChart, Title
from quillon.report import ChartWarning, Document


def make_document(*charts, **options):
    document = Document()
    document.add_heading("Sales")
    for chart in charts:
        document.add_chart(chart, **options)
    return document


def read_part(data, name):
    return zipfile.ZipFile(io.BytesIO(data)).read(name).decode()


class Content(unittest.TestCase):
    def test_blocks_and_options_reach_the_document(self):
        document = make_document(make_chart(), width="10cm", height="5cm", legend="left", alt_text="Sales < 3")
        document.add_heading("More", level=2)
        document.add_paragraph("\u00e9\U0001f389")
        document.add_chart(make_chart(kind=PieChart), workbook=False)
        data = document.to_bytes()
        places = ["Heading1", "Sales", 'cx="3600000" cy="1800000"', 'descr="Sales &lt; 3"', "Heading2", "More",
                  "\u00e9\U0001f389", 'cx="5486400" cy="3200400"']
        self.assertRegex(read_part(data, "word/document.xml"), ".*".join(places))
        self.assertIn('<c:legendPos val="l"/>', read_part(data, "word/charts/chart1.xml"))
        self.assertIn("<c:pieChart>", read_part(data, "word/charts/chart2.xml"))
        embedded = [name for name in zipfile.ZipFile(io.BytesIO(data)).namelist() if "embeddings" in name]
        self.assertEqual(embedded, ["word/embeddings/data1.xlsx"])

    def test_a_document_keeps_its_charts_writes_them_as_they_are_then_and_lets_them_go(self):
        before = _core.bound_objects()
        chart = make_chart()
        document = make_document(chart)
        chart.ChartTitle = Title("Later")
        del chart
        gc.collect()
        self.assertIn("Later", read_part(document.to_bytes(), "word/charts/chart1.xml"))
        del document
        gc.collect()
        self.assertEqual(_core.bound_objects(), before)


class Saving(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def test_takes_paths_and_file_objects(self):
        document, memory = make_document(make_chart()), io.BytesIO()
        document.save(memory)
        common = self.folder / "common"
        common.touch()
        paths = [str(self.folder / "a.docx"), self.folder / "b \u00e9.docx", os.fsencode(self.folder) + b"/\xff.docx"]
        for path in paths:
            document.save(path)
            with open(path, "rb") as file:
                self.assertEqual(file.read(), memory.getvalue())
            self.assertEqual(os.stat(path).st_mode, common.stat().st_mode)
        self.assertEqual(len(list(self.folder.iterdir())), len([common, *paths]))

    def test_a_file_object_gets_all_bytes_however_few_it_takes_at_a_time(self):
        class Slow(io.RawIOBase):
            def __init__(self, *counts):
                self.data, self.counts = b"", list(counts)

            def write(self, data):
                count = self.counts.pop(0) if self.counts else min(1000, len(data))
                if isinstance(count, int):
                    self.data += bytes(data[:max(count, 0)])
                return count

        class Silent:
            """Takes everything and does not say so, as many do."""

            def __init__(self):
                self.data = b""

            def write(self, data):
                self.data += data

        document = make_document(make_chart())
        expected = document.to_bytes()
        for file in (Slow(), Slow(1, 2, 3), Silent()):
            document.save(file)
            self.assertEqual(file.data, expected)
        for count in (0, -1, None, len(expected) + 1):
            self.assertRaisesRegex(OSError, f"took {count} of {len(expected)} bytes", document.save, Slow(count))

    def test_what_cannot_be_written_is_refused(self):
        taken = self.folder / "taken"
        taken.mkdir()
        cases = [
            (self.folder / "missing" / "x.docx", FileNotFoundError, errno.ENOENT),
            (taken, IsADirectoryError, errno.EISDIR),
            (str(self.folder / ("n" * 300)), OSError, errno.ENAMETOOLONG),
        ]
        for path, error, number in cases:
            with self.assertRaises(error) as caught:
                make_document().save(path)
            self.assertEqual((caught.exception.errno, caught.exception.filename), (number, str(path)))
        for target, error in [(3, TypeError), (None, TypeError), ("a\0b", ValueError), (io.StringIO(), TypeError)]:
            self.assertRaises(error, make_document().save, target)
        self.assertEqual(list(self.folder.iterdir()), [taken])

    def test_a_warning_names_the_line_and_as_an_error_leaves_no_file(self):
        document = make_document(make_chart(colour="nonsense"))
        path = self.folder / "a.docx"
        with self.assertWarnsRegex(ChartWarning, 'series 1 .*, fill: "nonsense" is no colour') as caught:
            document.save(path)
        self.assertEqual(caught.filename, __file__)
        path.write_text("old")
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            self.assertRaises(ChartWarning, document.save, path)
        self.assertEqual((path.read_text(), list(self.folder.iterdir())), ("old", [path]))


class Refusals(unittest.TestCase):
    def test_say_what_is_wrong(self):
        chart, document = make_chart(), make_document()
        expected = document.to_bytes()
        cases = [
            (document.add_heading, ("x", 0), ValueError, "Heading level: expected 1 to 9, got 0."),
            (document.add_heading, ("x", 10**30), ValueError, "Heading level: expected 1 to 9"),
            (document.add_heading, (3,), TypeError, "text: expected str, got int"),
            (document.add_paragraph, ("a\0b",), ValueError, r"Paragraph: character 2 \(U\+0000\)"),
            (document.add_paragraph, ("\ud800",), ValueError, "surrogates"),
            (document.add_chart, (None,), TypeError, "expected a chart, got NoneType"),
            (document.add_chart, (chart.DataSet,), TypeError, "expected a chart, got .*DataSet"),
            (document.add_chart, (ColumnChart,), TypeError, "expected a chart, got type"),
            (document.add_chart, (chart, 15), TypeError, "width: expected str, got int"),
            (document.add_chart, (chart, None, "15"), ValueError, 'height: expected one of the units'),
            (document.add_chart, (chart, None, None, "up"), ValueError, 'legend: expected auto, .*, got "up"'),
            (make_document(chart).to_bytes, ("no function",), TypeError, "not callable"),
            (make_document(chart, make_chart([float("inf")])).to_bytes, (), ValueError, "chart 2, .* point 1: .* INF"),
        ]
        for act, arguments, error, text in cases:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, act, *arguments)
                self.assertEqual(document.to_bytes(), expected)


class Threads(unittest.TestCase):
    def test_progress_is_told_and_may_stop_the_writing_but_not_meddle(self):
        document = make_document(make_chart(), make_chart())
        meddling = [document.to_bytes, lambda: document.add_paragraph("x"), lambda: document.add_heading("x")]
        progress = []

        def meddle(done, total):
            progress.append((done, total))
            for act in meddling:
                self.assertRaisesRegex(RuntimeError, "the document is being written", act)

        def stop(done, total):
            raise KeyboardInterrupt

        data = document.to_bytes(meddle)
        self.assertEqual(progress, [(1, 2), (2, 2)])
        self.assertRaises(KeyboardInterrupt, document.to_bytes, stop)
        self.assertEqual(document.to_bytes(), data)

    def test_other_threads_run_while_a_document_is_written(self):
        document = make_document(make_chart(range(20_000)))
        steps, is_written = [], threading.Event()

        def step():
            while not is_written.wait(0.0001):
                steps.append(len(steps))

        # Nobody is made to give up the interpreter's lock, so another thread runs only if the writer lets it go.
        self.addCleanup(sys.setswitchinterval, sys.getswitchinterval())
        sys.setswitchinterval(1_000)
        with ThreadPoolExecutor() as pool:
            pool.submit(step)
            before = len(steps)
            try:
                document.to_bytes()
                after = len(steps)
            finally:
                is_written.set()
        self.assertGreater(after, before)

    def test_two_threads_write_two_documents_at_once(self):
        charts = [make_chart(range(50)), make_chart(range(60), PieChart)]
        both = threading.Barrier(2)

        def write(chart):
            return make_document(chart).to_bytes(lambda done, total: both.wait(timeout=60))

        with ThreadPoolExecutor() as pool:
            results = list(pool.map(write, charts))
        self.assertEqual(results, [make_document(chart).to_bytes() for chart in charts])
