"""What Python adds: sequences, extend, tables, and what a person sees."""

import array
import csv
import datetime
import importlib
import inspect
import io
import math
import pydoc
import unittest

from quillon import chart
from quillon.chart import (
    BarChart,
    Color,
    ColumnChart,
    DataPoint,
    DataSeries,
    DataSet,
    Object,
    Paragraph,
    SolidBorderFormat,
    Text,
    Title,
    from_dataframe,
    from_rows,
)


def values_of(data):
    return {series.Name: [point.Value for point in series] for series in data}


class Frame:
    """What data frames of any library have in common."""

    def __init__(self, columns, index=None):
        self.cells = columns
        self.columns = tuple(columns)
        if index is not None:
            self.index = index

    def __getitem__(self, label):
        return iter(self.cells[label])


class NAType:
    """Named like the missing value of a data frame library."""

    def __float__(self):
        raise TypeError("missing")


class Sequences(unittest.TestCase):
    def setUp(self):
        self.series = DataSeries("North")
        self.points = [self.series.appendPoint(value) for value in (1, 2, 3)]

    def test_positions_count_from_0_as_in_a_list(self):
        positions = [0, 2, -1, -3, True, slice(None), slice(1, None), slice(None, None, -1), slice(5, 9), slice(-2, None)]
        for position in positions:
            with self.subTest(position=position):
                self.assertEqual(self.series[position], self.points[position])
        for position in (3, -4, 10**30):
            self.assertRaisesRegex(IndexError, "^DataSeries: position", self.series.__getitem__, position)
        self.assertRaises(TypeError, self.series.__getitem__, "North")

    def test_iteration(self):
        self.assertEqual(list(self.series), self.points)
        self.assertEqual(list(reversed(self.series)), self.points[::-1])
        self.assertIn(self.points[1], self.series)
        self.assertNotIn(DataPoint(2), self.series)
        first, *_ = self.series
        self.assertIs(first, self.points[0])

    def test_sets_and_paragraphs_are_sequences_too(self):
        data = DataSet()
        self.assertTrue(data)
        self.assertEqual((len(data), list(data)), (0, []))
        self.assertRaises(IndexError, data.__getitem__, 0)
        data.appendSeries(self.series)
        self.assertIs(data[-1], self.series)
        paragraph = Paragraph("one")
        run = paragraph.appendText(Text("two"))
        self.assertEqual((len(paragraph), paragraph[1], paragraph[-1:]), (2, run, [run]))

    def test_extend_takes_all_values_or_none(self):
        self.series.extend(value / 2 for value in range(3))
        self.series.extend(array.array("f", [7]))
        self.assertEqual([point.Value for point in self.series], [1, 2, 3, 0, 0.5, 1, 7])
        rows = [(TypeError, "item 2: expected float, got str", [1, 2, "3"]), (TypeError, "got str", "123"),
                (TypeError, "not iterable", 5), (TypeError, "expected float, got NoneType", [None]),
                (ValueError, "item 0: expected a number in the range", [10**400]), (TypeError, "got set", {1, 2})]
        for error, text, values in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, self.series.extend, values)
        self.assertEqual(self.series.Size, 7)

    def test_extend_many(self):
        many = DataSeries()
        many.extend(range(100_000))
        self.assertEqual((len(many), many[-1].Value), (100_000, 99_999.0))


class Tables(unittest.TestCase):
    def test_rows_with_a_header(self):
        data = from_rows(csv.reader(io.StringIO("Quarter,North,South\nQ1,1.5,-2\nQ2,,1e3\n")))
        self.assertEqual(data.Categories, ["Q1", "Q2"])
        self.assertEqual(str(values_of(data)), "{'North': [1.5, nan], 'South': [-2.0, 1000.0]}")

    def test_rows_with_names(self):
        data = from_rows([(2020, True), (2021, None)], names=["Sales"])
        self.assertEqual(data.Categories, ["2020", "2021"])
        self.assertEqual(values_of(data)["Sales"][0], 1.0)
        self.assertTrue(math.isnan(data[0][1].Value))
        self.assertEqual(values_of(from_rows([], names=["Sales"])), {"Sales": []})
        self.assertEqual(values_of(from_rows([["Quarter"], ["Q1"]])), {})

    def test_rows_that_are_refused(self):
        rows = [
            (ValueError, "first row", []),
            (ValueError, "row 3: expected 2 cells, got 3", [["", "N"], ["Q1", 1], ["Q2", 2, 3]]),
            (ValueError, "'N', value 2: expected a number, got '1,5'", [["", "N"], ["Q1", 1], ["Q2", "1,5"]]),
            (TypeError, "'N', value 1: expected a number, got \\[1\\]", [["", "N"], ["Q1", [1]]]),
            (TypeError, "row 2: expected a sequence of cells, got str", [["", "N"], "Q1"]),
        ]
        for error, text, table in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, "^from_rows: .*" + text, from_rows, table)

    def test_frames(self):
        cells = {"city": ["Rome", "Oslo"], "sales": [1, 2.5], ("2024", "cost"): [NAType(), None]}
        frame = Frame(cells, index=[("Q", 1), "Q2"])
        rows = [
            (from_dataframe(frame, columns=["sales"]), ["Q 1", "Q2"], {"sales": [1.0, 2.5]}),
            (from_dataframe(frame, "city", columns=["sales"]), ["Rome", "Oslo"], {"sales": [1.0, 2.5]}),
            (from_dataframe(Frame({"a": ["x"], "b": [1]})), ["x"], {"b": [1.0]}),
            (from_dataframe(Frame({"a": [1], "b": [2]}, index=range(1))), ["0"], {"a": [1.0], "b": [2.0]}),
            (from_dataframe(Frame({"a": [1], "b": ["x"]}), categories="b"), ["x"], {"a": [1.0]}),
        ]
        for data, categories, values in rows:
            self.assertEqual((data.Categories, values_of(data)), (categories, values))
        self.assertEqual(str(values_of(from_dataframe(frame, "city"))), "{'sales': [1.0, 2.5], '2024 cost': [nan, nan]}")

    def test_frames_that_are_refused(self):
        self.assertRaisesRegex(TypeError, "expected an object with columns, got list", from_dataframe, [])
        self.assertRaisesRegex(ValueError, "got no column", from_dataframe, Frame({}))
        self.assertRaises(KeyError, from_dataframe, Frame({"a": [1]}), categories="b")
        words = Frame({"a": ["x"], "b": ["y"]})
        self.assertRaisesRegex(ValueError, "'b', value 1: expected a number, got 'y'", from_dataframe, words)


class WhatAPersonSees(unittest.TestCase):
    def test_representations(self):
        owner = ColumnChart()
        owner.ChartTitle = Title("Revenue")
        border = SolidBorderFormat("red")
        border.Color.Color = (1, 0, 0)
        rows = [
            (DataSeries("North"), "<DataSeries Name='North' Size=0>"),
            (owner, "<ColumnChart ChartTitle=<Title>>"),
            (Paragraph("one"), "<Paragraph Color=<Color> Content=[1 Text]>"),
            (border.Color, "<Color>"),
            (Color("red"), "<Color Color='red'>"),
        ]
        for value, text in rows:
            self.assertEqual(repr(value), text)
        self.assertIn("DashType=Solid CapType=", repr(border))
        self.assertLess(len(repr(DataSet(["category"] * 1000))), 200)

    def test_help(self):
        text = pydoc.plain(pydoc.render_doc(DataSeries))
        for line in ["A named list of points", "DataSeries(name: str)", "appendPoint(x: float, y: float) -> DataPoint",
                     "int, read-only. The number of points.", "extend(self, values"]:
            self.assertIn(line, text)
        self.assertIn("Appends a new point", pydoc.plain(pydoc.render_doc(DataSeries().appendPoint)))
        self.assertEqual(str(inspect.signature(DataSeries().getPoint)), "(index)")

    def test_names(self):
        self.assertLessEqual({"DataSet", "ChartTitle", "PlotArea"}, set(dir(BarChart())))
        self.assertTrue(all(name in vars(chart) for name in chart.__all__))
        self.assertIs(importlib.reload(chart).Object, Object)


class Labels(unittest.TestCase):
    def test_dates_and_missing_values(self):
        days = [datetime.datetime(2024, 1, 1), datetime.datetime(2024, 1, 1, 6), datetime.date(2024, 2, 1), NAType(), math.nan]
        data = from_dataframe(Frame({"a": [1] * 5}, index=days))
        self.assertEqual(data.Categories, ["2024-01-01", "2024-01-01 06:00:00", "2024-02-01", "", ""])

    def test_one_text_is_no_list_of_names(self):
        for call in (lambda: from_rows([["a", 1]], names="N"), lambda: from_dataframe(Frame({"a": [1]}), columns="a")):
            self.assertRaisesRegex(TypeError, "expected a list, got str", call)


if __name__ == "__main__":
    unittest.main()
