"""What Python adds: sequences, extend, tables, and what a person sees."""

import array
import csv
import datetime
import importlib
import io
import pydoc
import unittest

from quillon import chart
from quillon.chart import (
    Color, ColumnChart, DataPoint, DataSeries, DataSet, Object, Paragraph, SolidBorderFormat, Text, Title,
    from_dataframe, from_rows,
)

NAN = float("nan")


class Frame(dict):
    """What data frames of any library have in common."""

    columns = property(dict.keys)


class NAType:
    """Named like the missing value of a data frame library."""


class Sequences(unittest.TestCase):
    def setUp(self):
        self.series = DataSeries("North")
        self.points = [self.series.appendPoint(value) for value in (1, 2, 3)]

    def test_positions_count_from_0_as_in_a_list(self):
        for position in (0, 2, -1, -3, True, slice(None), slice(None, None, -1), slice(5, 9), slice(-2, None)):
            self.assertEqual(self.series[position], self.points[position], position)
        for position in (3, -4, 10**30):
            self.assertRaisesRegex(IndexError, "^DataSeries: position", self.series.__getitem__, position)
        self.assertRaises(TypeError, self.series.__getitem__, "North")
        self.assertEqual([*self.series, *reversed(self.series)], self.points + self.points[::-1])
        self.assertIn(self.points[1], self.series)
        self.assertNotIn(DataPoint(2), self.series)

    def test_sets_and_paragraphs_are_sequences_too(self):
        data = DataSet()
        self.assertEqual((bool(data), len(data), list(data)), (True, 0, []))
        data.appendSeries(self.series)
        self.assertIs(data[-1], self.series)
        paragraph = Paragraph("one")
        run = paragraph.appendText(Text("two"))
        self.assertEqual((len(paragraph), paragraph[1], paragraph[-1:]), (2, run, [run]))

    def test_extend_takes_all_values_or_none(self):
        self.series.extend(value / 2 for value in range(3))
        self.series.extend(array.array("f", [7]))
        self.assertEqual([point.Value for point in self.series], [1, 2, 3, 0, 0.5, 1, 7])
        rows = [
            (TypeError, "item 2: expected float, got str", [1, 2, "3"]),
            (TypeError, "got str", "123"),
            (TypeError, "not iterable", 5),
            (ValueError, "item 0: expected a number in the range", [10**400]),
            (TypeError, "got set", {1, 2}),
        ]
        for error, text, values in rows:
            self.assertRaisesRegex(error, text, self.series.extend, values)
        self.assertEqual(self.series.Size, 7)


class Tables(unittest.TestCase):
    def test_rows_and_frames_become_data_sets(self):
        file = io.StringIO("Quarter,North,South\nQ1,1.5,-2\nQ2,,1e3\n")
        frame = Frame({"city": ["Rome", "Oslo"], "n": [1, 2.5], ("2024", "y"): [NAType(), None]})
        frame.index = [("Q", 1), "Q2"]
        rows = [
            (from_rows(csv.reader(file)), ["Q1", "Q2"], {"North": [1.5, NAN], "South": [-2.0, 1000.0]}),
            (from_rows([(2020, True), (2021, None)], names=["N"]), ["2020", "2021"], {"N": [1.0, NAN]}),
            (from_rows([], names=["N"]), [], {"N": []}),
            (from_rows([["Quarter"], ["Q1"]]), ["Q1"], {}),
            (from_dataframe(frame, columns=["n"]), ["Q 1", "Q2"], {"n": [1.0, 2.5]}),
            (from_dataframe(frame, "city"), ["Rome", "Oslo"], {"n": [1.0, 2.5], "2024 y": [NAN, NAN]}),
            (from_dataframe(Frame({"a": ["x"], "b": [1]})), ["x"], {"b": [1.0]}),
            (from_dataframe(Frame({"a": [1], "b": ["x"]}), categories="b"), ["x"], {"a": [1.0]}),
        ]
        for data, categories, values in rows:
            given = {series.Name: [point.Value for point in series] for series in data}
            # As text, in which NaN equals NaN.
            self.assertEqual(str((data.Categories, given)), str((categories, values)))

    def test_what_is_no_table_is_refused(self):
        rows = [
            (from_rows, [], ValueError, "first row"),
            (from_rows, [["", "N"], ["Q1", 1], ["Q2", 2, 3]], ValueError, "row 3: expected 2 cells, got 3"),
            (from_rows, [["", "N"], ["Q1", 1], ["Q2", "1,5"]], ValueError, "'N', value 2: expected .*, got '1,5'"),
            (from_rows, [["", "N"], ["Q1", [1]]], TypeError, r"'N', value 1: expected a number, got \[1\]"),
            (from_rows, [["", "N"], "Q1"], TypeError, "row 2: expected a sequence of cells, got str"),
            (from_dataframe, [], TypeError, "expected an object with columns, got list"),
            (from_dataframe, Frame({}), ValueError, "got no column"),
            (from_dataframe, Frame({"a": ["x"], "b": ["y"]}), ValueError, "'b', value 1: expected .*, got 'y'"),
        ]
        for make, table, error, text in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, f"^{make.__name__}: .*{text}", make, table)


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
        for line in ("A named list of points", "DataSeries(name: str)", "appendPoint(x: float, y: float) -> DataPoint",
                     "int, read-only. The number of points.", "extend(self, values"):
            self.assertIn(line, text)

    def test_a_reload_keeps_the_classes(self):
        self.assertIs(importlib.reload(chart).Object, Object)


class Labels(unittest.TestCase):
    def test_dates_and_missing_values(self):
        labels = {
            datetime.datetime(2024, 1, 1): "2024-01-01",
            datetime.datetime(2024, 1, 1, 6): "2024-01-01 06:00:00",
            datetime.date(2024, 2, 1): "2024-02-01",
            NAType(): "",
            NAN: "",
        }
        frame = Frame({"a": [1] * len(labels)})
        frame.index = list(labels)
        self.assertEqual(from_dataframe(frame).Categories, list(labels.values()))

    def test_one_text_is_no_list_of_names(self):
        for call, table, option in [(from_rows, [["a", 1]], "names"), (from_dataframe, Frame({"a": [1]}), "columns")]:
            self.assertRaisesRegex(TypeError, "expected a list, got str", call, table, **{option: "a"})
