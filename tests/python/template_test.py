"""quillon.report.open: documents that exist, their charts and placeholders."""

import gc
import io
import tempfile
import threading
import unittest
import zipfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import quillon.report
from charts import make_chart
from quillon import _core
from quillon.chart import ColumnChart, DataSeries, DataSet, LineChart, PieChart, from_dataframe
from quillon.report import ChartData, ChartWarning, Document, FillReport, Placeholder, SeriesChange

JUNE = {"North": [1, 3], "South": [2, 4]}
JULY = {"South": [20, 40, 60], "East": [0, 1, 2.5]}


def make_template():
    document = Document()
    document.add_paragraph("Report of {{month}}, again {{month}}")
    document.add_chart(ColumnChart(title="Revenue", data=JUNE), colors=["navy", "teal"])
    document.add_paragraph("{{margin}}")
    document.add_paragraph("{{table:margin}}")
    document.add_chart(LineChart(title="Costs", data=JUNE))
    return document.to_bytes()


def read_part(data, name):
    return zipfile.ZipFile(io.BytesIO(data)).read(name).decode()


def values_of(data):
    return {series.Name: list(series.values) for series in data.data_set}


class Templates(unittest.TestCase):
    def setUp(self):
        self.template = quillon.report.open(make_template())

    def test_lists_what_there_is(self):
        first, second = self.template.charts
        self.assertEqual((first.number, first.name, first.title, first.types, first.series, first.points, first.problem),
                         (1, "Chart 1", "Revenue", ["column"], ["North", "South"], 2, ""))
        self.assertEqual((second.types, second.place), (["line"], "body"))
        self.assertEqual(self.template.placeholders, [
            Placeholder("month", "text", "word/document.xml"), Placeholder("margin", "paragraph", "word/document.xml"),
            Placeholder("margin", "table", "word/document.xml")])

    def test_fills_with_all_that_says_data(self):
        import pandas

        expected = {"South": [20, 40, 60], "East": [0, 1, 2.5]}
        for data in [pandas.DataFrame(JULY, index=["1", "2", "3"]), from_dataframe(JULY), ChartData.from_dataframe(JULY)]:
            with self.subTest(type(data)):
                template = self.template.copy()
                report = template.fill("Revenue", data, title="New", number_format="0.0")
                self.assertEqual(report, FillReport(1, "Revenue", [
                    SeriesChange("matched", "South", ""), SeriesChange("renamed", "East", "North")], 2, 3, []))
                self.assertEqual(values_of(template.get_data("1")), expected)
                self.assertEqual(template.charts[0].title, "New")
                self.assertIn("0.0", read_part(template.to_bytes(), "word/charts/chart1.xml"))
        self.assertEqual(values_of(self.template.get_data("Revenue")), JUNE)
        self.assertEqual(self.template.fill("Costs", from_dataframe(JULY), match="position").series,
                         [SeriesChange("renamed", "South", "North"), SeriesChange("renamed", "East", "South")])

    def test_names_that_a_table_leaves_out_are_those_of_the_chart(self):
        import pandas

        self.template.fill("Revenue", pandas.DataFrame(JUNE, index=["May", "Jun"]))
        for table, series in [
            ({"North": [7, 8]}, {"North": [7, 8]}),
            ([5, 6], {"North": [5, 6]}),
            (pandas.DataFrame({"South": [3, 4]}), {"South": [3, 4]}),
            (pandas.DataFrame([[1, 2], [3, 4]]).to_numpy(), {"South": [1, 3], "Series 2": [2, 4]}),
            (pandas.Series([1, 2]), {"South": [1, 2]}),
        ]:
            with self.subTest(table):
                self.assertEqual(self.template.fill("Revenue", table).warnings, [])
                data = self.template.get_data("Revenue")
                self.assertEqual((data.data_set.Categories, values_of(data)), (["May", "Jun"], series))
        self.template.fill("Revenue", {"Jul": 1, "Aug": 2})
        self.assertEqual(self.template.get_data("Revenue").data_set.Categories, ["Jul", "Aug"])
        with self.assertWarnsRegex(ChartWarning, "the data has 3 points and no categories") as caught:
            self.template.fill("Revenue", [1, 2, 3])
        self.assertEqual(caught.filename, __file__)
        with self.assertWarnsRegex(ChartWarning, "holds text") as caught:
            self.template.fill("Revenue", {"North": [1, 2], "Words": ["a", "b"]})
        self.assertEqual(caught.filename, __file__)

    def test_totals_of_a_waterfall_are_those_that_are_named(self):
        def make_data(*values):
            data = DataSet(["Last", "Sales", "This"])
            data.add_series("Change", values)
            return data

        document = Document()
        document.add_chart(ColumnChart(data=make_data(10, 5, 0)), type="waterfall", totals=["Last"])
        template = quillon.report.open(io.BytesIO(document.to_bytes()))
        self.assertEqual(template.get_data("1").totals, ["Last"])
        template.fill("1", make_data(20, 5, 0), totals=["Last", "This"])
        self.assertEqual(template.get_data("1").totals, ["Last", "This"])

    def test_inserts_charts_and_tables_and_replaces_text(self):
        self.template.insert("margin", PieChart(), {"North": [1, 2]}, labels="percent", legend="none")
        self.template.insert_table("margin", {"West": [7, 8]}, number_format="0.00")
        self.assertEqual(self.template.replace("month", "July"), 2)
        self.assertEqual(self.template.placeholders, [])
        self.assertEqual([chart.types for chart in self.template.charts], [["column"], ["pie"], ["line"]])
        main = read_part(self.template.to_bytes(), "word/document.xml")
        self.assertRegex(main, "Report of July, again July.*>West<.*>8.00<")

    def test_gives_data_frames_of_pandas(self):
        import pandas

        dates = pandas.to_datetime(["2024-01-31", "2024-02-29"])
        frame = pandas.DataFrame({"North": [1, float("nan")]}, index=dates)
        self.template.fill("Revenue", frame)
        read = self.template.to_dataframe("Revenue")
        self.assertEqual(list(read.columns), ["North"])
        self.assertEqual(list(read.index), list(dates))
        self.assertTrue(pandas.isna(read["North"].iloc[1]))
        other = pandas.DataFrame(JUNE, index=["a", "b"], dtype=float)
        self.template.fill("Costs", other)
        pandas.testing.assert_frame_equal(self.template.to_dataframe("Costs"), other)
        levels = pandas.MultiIndex.from_tuples([("2023", "Q1"), ("2024", "Q1")], names=["Year", "Quarter"])
        for frame in (pandas.DataFrame({"n": [1.0, 2.0]}, index=levels),
                      pandas.DataFrame({"n": [1.0, 2.0]}, index=pandas.Index(["a", "b"], name="City"))):
            made = Document()
            made.add_chart(ColumnChart(), data=frame)
            pandas.testing.assert_frame_equal(quillon.report.open(made.to_bytes()).to_dataframe("1"), frame)

    def test_series_with_x_values_of_their_own_go_through_data_frames(self):
        import pandas

        data = quillon.report.ChartData(DataSet())
        for name, points in {"North": [(1, 2), (3, float("nan"))], "South": [(2, 5), (4, 6)]}.items():
            series = DataSeries(name)
            for x, y in points:
                series.appendPoint(x, y)
            data.data_set.appendSeries(series)
        document = Document()
        document.add_chart(ColumnChart(), data, type="scatter")
        template = quillon.report.open(document.to_bytes())
        frame = template.to_dataframe("1")
        before = template.to_bytes()
        template.fill("1", frame)
        self.assertEqual(template.to_bytes(), before)
        frame.loc[0, "South X"] = 9
        template.fill("1", frame)
        self.assertEqual(template.to_dataframe("1")["South X"].tolist(), [9, 4])
        self.assertRaisesRegex(ValueError, "'East': expected a column 'East X'", template.fill, "1", frame.assign(East=1))
        self.template.fill("Revenue", {"A": [1, 2], "A X": [3, 4]})
        self.assertEqual(self.template.get_data("Revenue").data_set.SeriesCount, 2)

    def test_saves_to_paths_and_files_and_opens_again(self):
        self.template.fill("Revenue", from_dataframe(JULY))
        memory = io.BytesIO()
        self.template.save(memory)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "\u00e9.docx")
            self.template.save(path)
            self.assertEqual(path.read_bytes(), memory.getvalue())
            self.assertEqual(values_of(quillon.report.open(path).get_data("Revenue")), JULY)

    def test_refuses(self):
        before = self.template.to_bytes()
        for act, arguments, error, text in [
            (quillon.report.open, (__file__,), ValueError, "template_test.py"),
            (quillon.report.open, ("no.docx",), FileNotFoundError, "no.docx"),
            (quillon.report.open, (3,), TypeError, "int"),
            (quillon.report.open, (b"PK",), ValueError, ""),
            (self.template.fill, ("Profit", JULY), ValueError, 'There is no chart "Profit"; the document has 1 "Chart 1"'),
            (self.template.fill, (1, JULY), TypeError, "chart: expected str, got int"),
            (self.template.fill, ("1", 3), TypeError, "expected a data frame"),
            (self.template.insert, ("profit", PieChart(data=JUNE)), ValueError, "profit"),
            (self.template.insert, ("margin", 3), TypeError, "expected a chart, got int"),
            (self.template.replace, ("profit", "a"), ValueError, "profit"),
            (self.template.replace, ("month", "a\0b"), ValueError, ""),
            (_core.Template, (), TypeError, ""),
        ]:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, act, *arguments)
                self.assertEqual(self.template.to_bytes(), before)
        with self.assertRaisesRegex(ValueError, "match: expected name or position"):
            self.template.fill("1", JULY, match="size")

    def test_warns_where_it_is_called(self):
        with self.assertWarnsRegex(ChartWarning, '"nonsense" is not a colour') as caught:
            self.template.insert("margin", make_chart(colour="nonsense"))
        self.assertEqual(caught.filename, __file__)

    def test_threads_fill_copies_at_once_and_are_refused_on_the_same(self):
        def fill(number):
            template = self.template.copy()
            template.fill("Revenue", {"North": [number, 2]})
            return values_of(quillon.report.open(template.to_bytes()).get_data("Revenue"))["North"][0]

        with ThreadPoolExecutor(4) as pool:
            self.assertEqual(list(pool.map(fill, range(20))), list(range(20)))
        many = from_dataframe({f"S{i}": range(2000) for i in range(20)})
        worker = threading.Thread(target=self.template.fill, args=("Revenue", many))
        worker.start()
        refusals = set()
        while worker.is_alive():
            for act in [lambda: self.template.charts, lambda: many[0][0].__setattr__("Value", 1)]:
                try:
                    act()
                except (RuntimeError, AttributeError) as error:
                    refusals.add(str(error))
        worker.join()
        self.assertTrue(all("being written" in text for text in refusals), refusals)
        self.assertEqual(self.template.charts[0].points, 2000)

    def test_lets_its_objects_go(self):
        before = _core.bound_objects()
        data = self.template.get_data("Revenue")
        self.template.fill("Revenue", data)
        del data
        gc.collect()
        self.assertEqual(_core.bound_objects(), before)


if __name__ == "__main__":
    unittest.main()
