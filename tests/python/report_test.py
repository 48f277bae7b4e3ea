"""quillon.report: what a document holds, where it is written, what is refused."""

import base64
import datetime
import decimal
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
import quillon.report
from quillon import _core
from quillon.chart import ColumnChart, LineChart, PieChart, Title
from quillon.report import ChartData, ChartWarning, Document, ListItem, Run


KINDS = {"markers": LineChart, "smooth": LineChart}

# One white dot.
IMAGE = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR42mP4DwABAQEAG7buVgAAAABJRU5ErkJggg=="
)


def make_document(*charts, **options):
    document = Document()
    document.add_heading("Sales")
    for chart in charts:
        document.add_chart(chart, **options)
    return document


def add_with(document, **options):
    return lambda chart: document.add_chart(chart, **options)


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

    def test_all_blocks_reach_the_document(self):
        document = Document()
        document.set_properties(title="Sales", author="Ann", keywords="net", language="de-DE")
        document.set_header(["Quillon\t", Run("{page}", bold=True)])
        document.set_footer("Foot")
        document.add_paragraph(["See ", Run(reference="net"), Run("there", italic=True, link="https://example.org")], "Title")
        document.add_heading("Begin")
        document.add_list(["one", ListItem([Run("two", bold=True)], 1)], numbered=True)
        document.add_chart(make_chart())
        document.add_caption("Net", name="net")
        document.add_charts([make_chart(), (make_chart(kind=PieChart), {"legend": "none"})])
        cells = [1.5, None, 2.0, decimal.Decimal("2.50"), datetime.date(2024, 12, 31)]
        document.add_table(list(zip("xyzuv", cells)), ["A", "B"], widths=["3cm", "4cm"])
        document.add_table({"South": [3, 4.5]}, header="When")
        document.add_image(IMAGE, width="1cm", alt_text="Dot")
        document.add_page_break()
        document.add_table_of_contents(2)
        document.start_section(landscape=True, left="2cm")
        data = document.to_bytes()
        main = read_part(data, "word/document.xml")
        self.assertRegex(main, ".*".join([
            '"Title"', "See ", "Abbildung 1", "there", "<w:numPr>", "one", 'w:ilvl w:val="1"', "<w:b/>", "two", "Chart 1", ": Net",
            "Chart 2", "Chart 3", 'w:w="1700"', ">x<", ">1,5<", ">z<", ">2<", ">2,50<", ">31.12.2024<", ">When<", ">South<", ">3,0<", ">4,5<",
            'descr="Dot"', 'w:type="page"', "TOC", 'w:orient="landscape"']))
        self.assertIn("<dc:creator>Ann", read_part(data, "docProps/core.xml"))
        self.assertRegex(read_part(data, "word/header1.xml"), "Quillon.*<w:b/>.*PAGE")
        self.assertIn("Foot", read_part(data, "word/footer1.xml"))

    def test_takes_the_look_of_a_template(self):
        look = Document()
        look.set_header("Letterhead")
        look.add_paragraph("left out")
        with tempfile.TemporaryDirectory() as folder:
            look.save(Path(folder, "look.docx"))
            document = Document(template=Path(folder, "look.docx"))
        document.add_paragraph("kept")
        data = document.to_bytes()
        self.assertIn("Letterhead", read_part(data, "word/header1.xml"))
        self.assertNotIn("left out", read_part(data, "word/document.xml"))

    def test_every_option_is_a_keyword_and_reaches_the_chart(self):
        values = {"flag": True, "number": 2, "integer": 2, "text": "0.0", "texts": ["red"], "pairs": {"North": "red"}}
        odd = {"width": "3in", "height": "2in", "font": "Arial", "label-position": "ctr", "value-max": 9}
        for name, form, choices in _core.options():
            if name == "no-workbook":
                continue
            with self.subTest(name), warnings.catch_warnings():
                warnings.simplefilter("ignore")  # Categories that are not dates have no format.
                options = {name.replace("-", "_"): odd.get(name, choices[-1] if choices else values.get(form))}
                needs = {"labels": "value"} if name.startswith("label-") else {}
                try:
                    changed = make_document(make_chart(), **options, **needs).to_bytes()
                except ValueError as error:  # Refused with its name where it suits no column chart of one series.
                    self.assertIn(name, str(error))
                else:
                    if name not in ("category-format", "category-type"):
                        self.assertNotEqual(changed, make_document(make_chart(), **needs).to_bytes())
        self.assertNotEqual(make_document(make_chart(), workbook=False).to_bytes(), make_document(make_chart()).to_bytes())

    def test_a_chart_takes_its_data_beside_it(self):
        chart, data = ColumnChart(), ChartData.from_dataframe({"North": [1, 2]}, category_format="0")
        document = Document()
        document.add_chart(chart, data)
        self.assertTrue(chart.DataSet.equals(data.data_set))
        self.assertIn("<c:v>2</c:v>", read_part(document.to_bytes(), "word/charts/chart1.xml"))

    def test_the_hurried_make_a_document_and_a_chart_in_one_call(self):
        data = quillon.report.chart({"North": [1, 2.5]}, "Revenue", type="line", heading="Sales", value_title="EUR").to_bytes()
        part = read_part(data, "word/charts/chart1.xml")
        for text in ["<c:lineChart>", "Revenue", "EUR", "<c:v>2.5</c:v>"]:
            self.assertIn(text, part)
        self.assertIn("Sales", read_part(data, "word/document.xml"))
        chart = ColumnChart(title="Revenue", data={"North": [1, 2.5]})
        self.assertEqual((chart.ChartTitle.Text.Content[0].Content, list(chart.DataSet["North"].values)), ("Revenue", [1, 2.5]))
        self.assertEqual(PieChart(title=Title("A"), data=chart.DataSet).DataSet, chart.DataSet)
        self.assertRaises(TypeError, ColumnChart, titel="Revenue")
        self.assertRaises(TypeError, Title, "a", title="b")

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
        for open_file in (quillon.report.open, Document):
            with self.assertRaises(FileNotFoundError):
                open_file(str(self.folder / "missing.docx"))
            self.assertRaises(ValueError, open_file, "a\0b")
            self.assertRaises(ValueError, open_file, str(taken))
        for target, error in [(3, TypeError), (None, TypeError), ("a\0b", ValueError), (io.StringIO(), TypeError)]:
            self.assertRaises(error, make_document().save, target)
        self.assertEqual(list(self.folder.iterdir()), [taken])

    def test_a_warning_names_the_line_and_as_an_error_leaves_no_file(self):
        document = make_document(make_chart(colour="nonsense"))
        path = self.folder / "a.docx"
        with self.assertWarnsRegex(ChartWarning, 'series 1 .*, fill: "nonsense" is not a colour') as caught:
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
            (document.add_heading, ("x", 10**30), ValueError, "add_heading: level: expected 1 to 9"),
            (document.add_heading, (3,), TypeError, "text: expected str, got int"),
            (document.add_paragraph, ("a\0b",), ValueError, r"Paragraph: character 2 \(U\+0000\)"),
            (document.add_paragraph, ("\ud800",), ValueError, "surrogates"),
            (document.add_chart, (None,), TypeError, "expected a chart, got NoneType"),
            (document.add_chart, (chart.DataSet,), TypeError, "expected a chart, got .*DataSet"),
            (document.add_chart, (ColumnChart,), TypeError, "expected a chart, got type"),
            (document.add_chart, (3, {"North": [1]}), TypeError, "expected a chart, got int"),
            (document.add_chart, (chart, 15), TypeError, "^add_chart: expected a data frame, a series, .*, got int"),
            (add_with(document, width=15), (chart,), TypeError, "width: expected str, got int"),
            (add_with(document, height="15"), (chart,), ValueError, 'height: expected one of the units'),
            (add_with(document, legend="up"), (chart,), ValueError, 'legend: expected auto, .*, got "up"'),
            (add_with(document, start_angle=5), (chart,), ValueError, "start-angle is for pie or doughnut charts"),
            (document.add_paragraph, (3,), TypeError, "^add_paragraph: text: expected str, Run or a list of them, got int"),
            (document.set_footer, (["a", 3],), TypeError, "^set_footer: text: expected str or Run, got int"),
            (document.add_paragraph, ("a", "Titel"), ValueError, "Titel"),
            (document.add_list, ([ListItem("a", 9)],), ValueError, "level"),
            (document.add_list, ([ListItem("a", -1)],), ValueError, "add_list: level: expected 0 to 8"),
            (document.add_list, (5,), TypeError, "^add_list: items: expected a list, got int"),
            (document.add_list, ({"a": 1},), TypeError, "^add_list: items: expected a list, got dict"),
            (document.add_list, (["a"], 1), TypeError, "^add_list: numbered: expected bool, got int"),
            (document.add_table, (5, ["A"]), TypeError, "^add_table: expected a list of rows, got int"),
            (document.add_table, ([5], ["A"]), TypeError, "^add_table: expected rows of cells, got int"),
            (document.add_table, ("a",), TypeError, "^add_table: expected a data frame, .* got str"),
            (document.add_charts, (chart,), TypeError, "^add_charts: expected a list of charts, got .*ColumnChart"),
            (document.add_charts, ([(chart, {"value_titel": "a"})],), TypeError, 'there is no option "value_titel"; did you '
             'mean "value_title"'),
            (lambda chart: document.add_chart(chart, value_titel="a"), (chart,), TypeError,
             "^Document.add_chart.* no argument 'value_titel'; did you mean 'value_title'"),
            (lambda chart: document.add_chart(chart, title="a"), (chart,), TypeError, "^Document.add_chart.* the chart's own, as in"),
            (lambda rows: document.add_table(rows, title="a"), ([],), TypeError, "^Document.add_table.* no argument 'title'; did you mean"),
            (lambda chart: document.add_chart(chart, xyzzy="a"), (chart,), TypeError, "unexpected keyword argument 'xyzzy'"),
            (document.add_charts, ([(chart, 5)],), TypeError, r"^add_charts: expected a chart, \(chart, options\) or"),
            (document.add_image, (5,), TypeError, "^add_image: expected a path or bytes, got int"),
            (document.save, (5,), TypeError, "^save: expected a path or a file object opened for bytes, got int"),
            (Document, (5,), TypeError, "^Document: expected a path, got int"),
            (quillon.report.open, (io.StringIO(),), TypeError, "^open: .* got StringIO"),
            (quillon.report.open, (5,), TypeError, "^open: expected a path, bytes or a file object opened for bytes, got int"),
            (add_with(document, gap="x"), (chart,), TypeError, "^add_chart: gap: expected float, got str"),
            (lambda gap: quillon.report.chart({"a": [1]}, gap=gap), ("x",), TypeError, "^chart: gap: expected float, got str"),
            (lambda title: quillon.report.chart({"a": [1]}, title), (5,), TypeError, "^chart: title: expected str, got int"),
            (lambda title: ColumnChart(title=title), (5,), TypeError, "^ColumnChart: title: expected str or Title, got int"),
            (lambda data: ColumnChart(data=data), (5,), TypeError, "^ColumnChart: expected a data frame, .* got int"),
            (lambda title: ColumnChart(titel=title), ("a",), TypeError, "^ColumnChart.* no argument 'titel'; it takes title and"),
            (document.add_table, ([["a"]], ["A", "B"]), ValueError, "row 1"),
            (document.add_table, ([["a"]],), TypeError, "rows need a header row"),
            (document.add_image, (b"no picture",), ValueError, "PNG"),
            (document.add_caption, ("a", "Figure", "no name"), ValueError, "name"),
            (document.add_table_of_contents, (0,), ValueError, "1 to 9"),
            (document.add_charts, ([chart, None],), TypeError, "expected a chart, got NoneType"),
            (Document, (__file__,), ValueError, "report_test.py"),
            (Document, ("no.docx",), FileNotFoundError, "no.docx"),
            (quillon.report.chart, (None,), TypeError, "chart: expected a data frame, .* got None"),
            (lambda data: quillon.report.chart(data, type="donut"), ({"North": [1]},), ValueError,
             'type: expected column, bar, line, pie.*"donut"'),
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
