"""What Python adds: sequences, extend, tables, and what a person sees."""

import array
import importlib
import pydoc
import unittest

from quillon import chart
from quillon.chart import DataPoint, DataSeries, DataSet, Object, Paragraph, Text

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

    def test_series_have_names_and_values(self):
        data = DataSet(["a", "b", "c"])
        data.appendSeries(self.series)
        south = data.add_series("South", (4, 5, 6))
        self.assertEqual(south.values, array.array("d", [4, 5, 6]))
        south.values[0] = 7
        self.assertEqual(south[0].Value, 4)
        self.assertIs(data["South"], south)
        self.assertEqual(("South" in data, south in data, "West" in data), (True, True, False))
        rest = data.without("North")
        self.assertEqual((rest.Categories, list(rest), len(data)), (data.Categories, [south], 2))
        self.assertEqual(list(data.without("South", "North")), [])
        for act in (data.__getitem__, data.without):
            self.assertRaisesRegex(KeyError, "no series named 'West'; there are .*'North', 'South'", act, "West")
        for values, error in (([1, 2], ValueError), ([1, 2, "x"], TypeError)):
            self.assertRaises(error, data.add_series, "West", values)
        self.assertEqual(len(data), 2)
        data.add_series("North", [1, 2, 3])
        self.assertRaisesRegex(KeyError, "2 series named 'North'", data.__getitem__, "North")

    def test_extend_takes_all_values_or_none(self):
        self.series.extend(value / 2 for value in range(3))
        self.series.extend(array.array("f", [7]))
        self.assertEqual([point.Value for point in self.series], [1, 2, 3, 0, 0.5, 1, 7])
        rows = [
            (TypeError, r"^extend: item 2 \(from 0\): expected float, got str", [1, 2, "3"]),
            (TypeError, "got str", "123"),
            (TypeError, "^extend: expected numbers, got int", 5),
            (ValueError, r"item 0 \(from 0\): expected a number in the range", [10**400]),
            (TypeError, "got set", {1, 2}),
        ]
        for error, text, values in rows:
            self.assertRaisesRegex(error, text, self.series.extend, values)
        self.assertEqual(self.series.Size, 7)


class WhatAPersonSees(unittest.TestCase):
    def test_help(self):
        text = pydoc.plain(pydoc.render_doc(DataSeries))
        for line in ("A named list of points", "DataSeries(name: str)", "appendPoint(x: float, y: float) -> DataPoint",
                     "int, read-only. The number of points.", "extend(self, values"):
            self.assertIn(line, text)

    def test_a_reload_keeps_the_classes(self):
        self.assertIs(importlib.reload(chart).Object, Object)
