"""What is being written stays as it is, on all threads, and the interpreter's end does not harm it."""

import copy
import io
import os
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import zipfile

from charts import make_chart
from quillon.chart import (
    BarChart, Color, DataLabelFormat, DataPoint, DataPointShapeFormat, DataSeries, DataSeriesShapeFormat, DataSet,
    PieChart, PlotArea, SolidFillFormat, Text, Title,
)
from quillon.report import Document

BUSY = "^.*: the chart is being written; change it when that is done.$"


def make_full_chart():
    chart = make_chart(colour="red")
    chart.PlotArea = PlotArea()
    chart.DataSet[0].LabelFormat = DataLabelFormat()
    chart.DataSet[0][0].Format = DataPointShapeFormat("red")
    return chart


#: A change to each object that a chart holds, and of each kind.
CHANGES = [
    lambda chart: setattr(chart, "ChartTitle", None),
    lambda chart: setattr(chart.DataSet, "Categories", []),
    lambda chart: chart.DataSet.appendSeries(DataSeries()),
    lambda chart: chart.DataSet.add_series("South", [1, 2]),
    lambda chart: setattr(chart.DataSet[0], "Name", ""),
    lambda chart: chart.DataSet[0].appendPoint(1),
    lambda chart: chart.DataSet[0].appendPoint(DataPoint()),
    lambda chart: chart.DataSet[0].extend([1]),
    lambda chart: setattr(chart.DataSet[0][1], "Value", 1),
    lambda chart: setattr(chart.DataSet[0][0].Format.Border, "Width", 1),
    lambda chart: setattr(chart.DataSet[0].Format.Fill, "Color", "blue"),
    lambda chart: setattr(chart.DataSet[0].Format.Fill.Color, "Color", "blue"),
    lambda chart: chart.DataSet[0].Format.replace_fill(SolidFillFormat("blue")),
    lambda chart: setattr(chart.DataSet[0].LabelFormat.Options.ContentOptions, "ContainsValue", True),
    lambda chart: setattr(chart.DataSet[0].LabelFormat.ShapeFormat.Fill, "Transparency", 1),
    lambda chart: setattr(chart.PlotArea, "X", "1in"),
    lambda chart: setattr(chart.PlotArea.Format.Border, "Color", "blue"),
    lambda chart: chart.ChartTitle.Text.appendText(Text("x")),
    lambda chart: setattr(chart.ChartTitle.Text[0], "Content", "x"),
    lambda chart: setattr(chart.ChartTitle.Text.Color, "Color", "blue"),
    lambda chart: chart.ChartTitle.Text.Color._fill({"form": ("blue", False)}),
]


def run(code, **options):
    """Run code in an interpreter of its own, which must end well and in time."""
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=60, **options)


class Changes(unittest.TestCase):
    def while_written(self, chart, act):
        """Act after the chart was written, and before the one behind it is."""
        document = Document()
        for item in (chart, make_chart()):
            document.add_chart(item)
        return document.to_bytes(lambda done, total: act() if done == 1 else None)

    def test_of_a_chart_that_is_being_written_are_refused(self):
        chart = make_full_chart()
        before = copy.deepcopy(chart)

        def meddle():
            for number, change in enumerate(CHANGES):
                with self.subTest(change=number):
                    self.assertRaisesRegex(RuntimeError, BUSY, change, chart)

        self.while_written(chart, meddle)
        self.assertTrue(chart.equals(before))
        for change in CHANGES[1:]:
            if change is not CHANGES[2]:  # The set has a filled series, and takes no empty one.
                change(copy.deepcopy(before))

    def test_of_what_another_chart_shares_are_refused_and_of_all_else_allowed(self):
        chart, other = make_full_chart(), BarChart()
        other.DataSet = chart.DataSet
        text, fill = Text("elsewhere"), SolidFillFormat("red")
        chart.ChartTitle.Text.Color = fill.Color

        def meddle():
            self.assertRaisesRegex(RuntimeError, BUSY, other.DataSet[0].extend, [1])
            self.assertRaisesRegex(RuntimeError, "^Format.Color: the chart is", setattr, fill, "Color", "blue")
            fill.Transparency = 10
            other.ChartTitle = Title("Other")
            text.Content = "changed"
            self.assertEqual((chart.DataSet[0].Size, chart.DataSet.getSeriesCount()), (2, 1))
            repr(chart), copy.deepcopy(chart), DataSet(["a"]).appendSeries(chart.DataSet[0])

        self.while_written(chart, meddle)
        self.assertEqual((fill.Transparency, text.Content), (10, "changed"))

    def test_are_allowed_again_when_the_writing_ends_or_fails(self):
        chart = make_chart([float("inf")])
        document = Document()
        document.add_chart(chart)
        self.assertRaises(ValueError, document.to_bytes)
        chart.DataSet[0][0].Value = 1
        document.to_bytes()
        chart.DataSet[0][0].Value = 2

    def test_on_other_threads_leave_documents_whole(self):
        chart = make_chart(range(300))
        expected = self.while_written(chart, lambda: None)
        is_done, refused, errors = threading.Event(), [], []

        def change():
            while not is_done.is_set():
                try:
                    chart.DataSet[0].Name = chart.DataSet[0].Name
                    chart.ChartTitle = Title("Revenue")
                except RuntimeError as error:
                    refused.append(error)
                except Exception as error:
                    errors.append(error)

        threads = [threading.Thread(target=change) for _ in range(3)]
        for thread in threads:
            thread.start()
        written = {self.while_written(chart, lambda: None) for _ in range(20)}
        is_done.set()
        for thread in threads:
            thread.join()
        self.assertEqual((written, errors), ({expected}, []))
        self.assertTrue(refused)

    def test_in_a_forked_child_are_allowed(self):
        chart, document = make_chart(), Document()
        document.add_chart(chart)

        def fork(done, total):
            # On another thread, so that the child has none that writes.
            forker = threading.Thread(target=lambda: children.append(self.fork(chart, document)))
            forker.start()
            forker.join()

        children = []
        document.to_bytes(fork)
        self.assertEqual(children, [0])

    @unittest.skipIf("libasan" in os.environ.get("LD_PRELOAD", ""), "its allocator does not survive a fork")
    def test_in_children_forked_beside_others_come_to_their_end(self):
        code = """
import os, random, signal, threading, time
from charts import make_chart
from quillon.report import Document
chart = make_chart()
def write():
    document = Document()
    document.add_chart(chart)
    document.to_bytes()
def write_on():
    while True:
        write()
write()
for _ in range(4):
    threading.Thread(target=write_on, daemon=True).start()
for _ in range(60):
    time.sleep(random.random() / 100)
    child = os.fork()
    if child == 0:
        signal.alarm(30)
        write()
        os._exit(0)
    print(os.waitpid(child, 0)[1], end="", flush=True)
"""
        self.assertEqual(run(code).stdout, "0" * 60)

    def fork(self, chart, document):
        child = os.fork()
        if child == 0:
            try:
                chart.DataSet[0].Name = "child"
                document.to_bytes()
                os._exit(0)
            finally:
                os._exit(1)
        return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


class Interpreter(unittest.TestCase):
    def test_ends_well_while_daemon_threads_write(self):
        code = """
import threading, time
from charts import make_chart
from quillon.report import Document
chart = make_chart(range(300))
started = threading.Barrier(4)
def write(progress):
    started.wait()
    while True:
        document = Document()
        document.add_chart(chart)
        document.add_chart(make_chart())
        document.to_bytes(progress)
for progress in (None, None, lambda done, total: sum(range(3000))):
    threading.Thread(target=write, args=[progress], daemon=True).start()
started.wait()
time.sleep(0.05)
print("end")
"""
        # What the interpreter's threads that are left behind hold is nobody's: no leak of ours.
        environment = os.environ | {"ASAN_OPTIONS": "detect_leaks=0"}
        for _ in range(5):
            ended = run(code, env=environment)
            self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (0, "end\n", ""))

    def test_waits_until_a_document_is_written_out(self):
        code = """
import sys, threading
from charts import make_chart
from quillon.report import Document
document = Document()
document.add_chart(make_chart(range(30_000)))
threading.Thread(target=document.save, args=[sys.argv[1]], daemon=True).start()
sys.stdin.read()
"""
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "pipe")
            os.mkfifo(path)
            # A thread that the interpreter leaves behind keeps what it holds.
            environment = os.environ | {"ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"}
            process = subprocess.Popen([sys.executable, "-c", code, path], stdin=subprocess.PIPE, env=environment)
            with process, open(path, "rb") as pipe:
                start = pipe.read(1)
                process.stdin.close()
                # The end of the main thread comes first.
                time.sleep(0.5)
                document = io.BytesIO(start + pipe.read())
        self.assertEqual(process.returncode, 0)
        self.assertIsNone(zipfile.ZipFile(document).testzip())

    def test_of_a_forked_child_ends_while_the_parent_writes(self):
        code = """
import os, sys, threading
from charts import make_chart
from quillon.report import Document
large = Document()
large.add_chart(make_chart(range(20_000)))
threading.Thread(target=large.to_bytes).start()
child = os.fork()
if child == 0:
    sys.exit(7)
print(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]))
"""
        # What the writing thread holds has no owner in the child, where that thread is missing.
        options = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        self.assertEqual(run(code, env={**os.environ, "ASAN_OPTIONS": options}).stdout, "7\n")

    def test_other_than_the_main_one_is_refused(self):
        code = """
import _xxsubinterpreters as interpreters
{first}
interpreter = interpreters.create()
try:
    interpreters.run_string(interpreter, "import quillon.chart")
except interpreters.RunFailedError as error:
    print(error)
import quillon.chart
"""
        # The leak check ends with an error of its own beside a second interpreter.
        options = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        for first in ("", "import quillon.chart"):
            ended = run(code.format(first=first), env={**os.environ, "ASAN_OPTIONS": options})
            self.assertRegex(ended.stdout, "ImportError.*: quillon works in the main interpreter only", ended.stderr)
            self.assertEqual(ended.returncode, 0)

    def test_imports_the_core_again(self):
        code = """
import sys
from quillon import _core
del sys.modules["quillon._core"]
import importlib
again = importlib.import_module("quillon._core")
assert again is not _core and again.Document is _core.Document
"""
        self.assertEqual(run(code).stderr, "")


class Interruptions(unittest.TestCase):
    def test_in_a_sequence_are_not_swallowed(self):
        class Interrupted:
            def stop(self, *_):
                raise KeyboardInterrupt

            __getitem__ = __len__ = stop

        self.assertRaises(KeyboardInterrupt, DataSeries().extend, Interrupted())
        self.assertRaises(KeyboardInterrupt, setattr, DataSet(), "Categories", Interrupted())
        self.assertRaises(KeyboardInterrupt, setattr, Color(), "Color", Interrupted())

    def test_by_a_signal_end_a_writing(self):
        document = Document()
        for _ in range(5):
            document.add_chart(make_chart(range(3000), PieChart))
        before = signal.signal(signal.SIGALRM, signal.default_int_handler)
        self.addCleanup(signal.signal, signal.SIGALRM, before)
        signal.setitimer(signal.ITIMER_REAL, 0.01)
        self.assertRaises(KeyboardInterrupt, document.to_bytes, lambda done, total: None)


class Documents(unittest.TestCase):
    def test_are_never_there_without_their_content(self):
        from quillon import _core

        for make in (lambda: _core.Document.__new__(_core.Document), _core.Document,
                     lambda: object.__new__(_core.Document), lambda: type("D", (_core.Document,), {})):
            self.assertRaises(TypeError, make)
