"""Values between Python and the library, and the errors when they do not fit."""

import array
import collections
import copy
import decimal
import fractions
import unittest

from quillon import _core
from quillon.chart import (
    Color,
    ColumnChart,
    DataLabelContentOptions,
    DataLabelContentSeparator,
    DataPoint,
    DataPointShapeFormat,
    DataSeries,
    DataSet,
    Paragraph,
    PieChartDataSeriesFormatOptions,
    SolidBorderCapType,
    SolidBorderDashType,
    SolidBorderFormat,
    Text,
    Title,
)


class Index:
    def __index__(self):
        return 7


class Broken:
    def __float__(self):
        raise ZeroDivisionError("broken")


class Clearing:
    """Empties the list in which it stands while it is converted."""

    def __init__(self, values):
        self.values = values

    def __float__(self):
        self.values.clear()
        return 1.0


class Conversion(unittest.TestCase):
    def test_values_that_are_taken(self):
        border = SolidBorderFormat()
        rows = [
            (DataPoint(), "Value", [(True, 1.0), (3, 3.0), (Index(), 7.0), (fractions.Fraction(1, 4), 0.25),
                                    (decimal.Decimal("-2.5"), -2.5), (2**70, 2.0**70), (float("inf"), float("inf"))]),
            (border, "Transparency", [(True, 1), (4.0, 4), (Index(), 7), (2**32 - 1, 2**32 - 1)]),
            (DataLabelContentOptions(), "ContainsValue", [(1, True), (0.0, False), (True, True)]),
            (DataSeries(), "Name", [("", ""), ("a\0b", "a\0b"), ("\u00e9\u4e2d\U0001f389", "\u00e9\u4e2d\U0001f389")]),
            (DataSet(), "Categories", [(("a", "b"), ["a", "b"]), ([], []), (None, []), (["x"], ["x"]),
                                       (collections.UserList(["u", "v"]), ["u", "v"])]),
            (border, "DashType", [("DashDot", SolidBorderDashType.DashDot),
                                  (SolidBorderDashType.Dash, SolidBorderDashType.Dash)]),
            (Color(), "Color", [("red", "red"), (None, "red"), (7, "red"), ([], "red")]),
        ]
        for target, name, cases in rows:
            for value, expected in cases:
                with self.subTest(f"{type(target).__name__}.{name}", value=value):
                    setattr(target, name, value)
                    self.assertEqual(getattr(target, name), expected)

    def test_values_that_are_refused(self):
        chart, point, border = ColumnChart(), DataPoint(), SolidBorderFormat()
        options, data, color = DataLabelContentOptions(), DataSet(), Color()
        rows = [
            (chart, "DataSet", TypeError, ["", [], 0, False, Title(), DataSet, object()]),
            (point, "Value", TypeError, ["1", None, [1.0], 1j, object(), DataPoint()]),
            (point, "Value", ValueError, [10**400]),
            (point, "Value", ZeroDivisionError, [Broken()]),
            (border, "Transparency", TypeError, ["1", None, []]),
            (border, "Transparency", ValueError, [-1, 2**32, 10**400, 2.5, float("nan"), float("inf"), -0.5]),
            (border, "DashType", TypeError, [SolidBorderCapType.Flat, 3, None, True]),
            (border, "DashType", ValueError, ["dash", "", "\U0001f389"]),
            (options, "ContainsValue", TypeError, ["true", None]),
            (options, "ContainsValue", ValueError, [2, -1, float("nan")]),
            (DataSeries(), "Name", TypeError, [b"North", None, 1]),
            (DataSeries(), "Name", ValueError, ["\ud800", "ok\udfff"]),
            (data, "Categories", TypeError, ["Q1", b"Q1", {"Q1": 1}, {"Q1"}, collections.UserDict({0: "a"}), 5, [1],
                                             ["a", None], (word for word in "ab"), iter(["a"])]),
            (data, "Categories", ValueError, [["a", "\ud800"]]),
            (color, "Color", TypeError, [object(), b"red", {}, [1, "a"], ["a", 1], [Title(), 1], [[1, 2], 3], 1j,
                                         memoryview(bytes(4)).cast("B", (2, 2))]),
        ]
        for target, name, error, values in rows:
            for value in values:
                before = None if name == "Color" else getattr(target, name)
                with self.subTest(f"{type(target).__name__}.{name}", value=value):
                    self.assertRaises(error, setattr, target, name, value)
                    if name != "Color":
                        self.assertEqual(getattr(target, name), before)

    def test_numbers_of_buffers(self):
        packed = memoryview(array.array("d", [1, 9, 2, 9, 3, 9]))
        rows = [array.array(code, [1, 2, 3]) for code in "bBhHiIlLqQfd"]
        rows += [packed[::2], memoryview(bytes([1, 2, 3])), (1, 2, 3), range(1, 4), collections.deque([1.0, 2.0, 3.0])]
        rows += [memoryview(array.array("d", [3, 2, 1]))[::-1], memoryview(bytes([1, 1, 0])).cast("?"), array.array("d")]
        for values in rows:
            with self.subTest(repr(values)):
                series = DataSeries()
                series.extend(values)
                self.assertEqual([point.Value for point in series], [float(value) for value in values])

    def test_a_sequence_that_changes_while_it_is_read(self):
        values = [0.5]
        values += [Clearing(values), 2.0]
        series = DataSeries()
        series.extend(values)
        self.assertEqual([point.Value for point in series], [0.5, 1.0])

    def test_three_numbers_make_a_colour(self):
        for numbers in [(1, 0.5, 0), array.array("f", [1, 0.5, 0]), [True, 0.5, False]]:
            border = SolidBorderFormat("red")
            border.Color.Color = numbers
            # The library gives no text for such a colour.
            self.assertRaisesRegex(ValueError, "^Invalid color$", getattr, border.Color, "Color")

    def test_objects_and_their_lists(self):
        run = Text("one")
        paragraph = Paragraph(run)
        second = paragraph.appendText(Text("two"))
        self.assertEqual(paragraph.Content, [run, second])
        self.assertEqual(Paragraph().Content, [])
        chart = ColumnChart()
        self.assertIsNone(chart.DataSet)
        chart.DataSet = DataSet()
        chart.DataSet = None
        self.assertIsNone(chart.DataSet)

    def test_objects_whose_library_name_is_not_that_of_their_class(self):
        point = DataPoint()
        point.Format = DataPointShapeFormat("red", "blue")
        self.assertIs(type(point.Format), DataPointShapeFormat)

    def test_enumeration_members_are_those_of_the_class(self):
        options = DataLabelContentOptions()
        options.Separator = DataLabelContentSeparator.NewLine
        self.assertIs(options.Separator, DataLabelContentSeparator.NewLine)


class Errors(unittest.TestCase):
    def test_texts(self):
        series = DataSeries("North")
        series.extend([1, 2])
        data = DataSet()
        data.appendSeries(series)
        other = DataSeries()
        forms = r"\(value: float\) or \(x: float, y: float\) or \(point: DataPoint\)"
        rows = [
            (TypeError, f"^DataSeries.appendPoint: expected {forms}, got \\(str\\).$", lambda: series.appendPoint("")),
            (TypeError, r"got \(int, z=float\)", lambda: series.appendPoint(1, z=2.0)),
            (TypeError, r"got \(int, x=int\)", lambda: series.appendPoint(1, x=2)),
            (TypeError, "^DataSeries.appendPoint: y: expected float, got str.$", lambda: series.appendPoint(1, "2")),
            (TypeError, "^DataSet: categories: item 1: expected str, got int.$", lambda: DataSet(["a", 1])),
            (TypeError, r"^Text: expected \(\) or \(content: str\), got \(str, str\).$", lambda: Text("a", "b")),
            (ValueError, "^appendPoint: expected a DataPoint, got an empty handle.$", lambda: series.appendPoint(None)),
            (ValueError, "^New series size 0 differs from existing series size 2", lambda: data.appendSeries(other)),
            (ValueError, "^Pie explosion percentage must be <= 100.$", lambda: PieChartDataSeriesFormatOptions(101)),
            (ValueError, "expected one of Dash, .*, got \"Dot\"",
             lambda: setattr(SolidBorderFormat(), "DashType", "Dot")),
            (IndexError, "^Data point index out of range.$", lambda: series.getPoint(0)),
            (IndexError, "^Data point index out of range.$", lambda: series.getPoint(3)),
            (IndexError, "^DataSet.getSeries: ", lambda: data.getSeries(2)),
            (ValueError, "index: expected a whole number from 0", lambda: series.getPoint(-1)),
            (AttributeError, "'ColumnChart' object has no attribute 'Titel'",
             lambda: setattr(ColumnChart(), "Titel", "x")),
            (AttributeError, "no attribute 'titel'", lambda: ColumnChart().titel),
            (AttributeError, "^DataSeries.Size: the property is read-only.$", lambda: setattr(series, "Size", 3)),
            (AttributeError, "^DataSeries.Name: a property cannot be deleted.$", lambda: delattr(series, "Name")),
            (AttributeError, "", lambda: setattr(series, "appendPoint", None)),
            (TypeError, "^DataSeries.Name: expected an object of class DataSeries, got ColumnChart.$",
             lambda: DataSeries.Name.__get__(ColumnChart())),
            (TypeError, "^DataSeries.getPoint: expected an object of class DataSeries, got int.$",
             lambda: DataSeries.getPoint(1, 1)),
            (TypeError, "expected an object to call", lambda: DataSeries.getPoint()),
            (TypeError, "no constructor", _core.Handle),
            (TypeError, "cannot pickle", lambda: copy.copy(series)),
        ]
        for error, text, call in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, call)
        self.assertEqual((series.Size, len(data)), (2, 1))

    def test_arguments_by_name(self):
        series = DataSeries(name="North")
        point = series.appendPoint(y=2.0, x=1.0)
        self.assertEqual((point.getX(), point.getY()), (1.0, 2.0))
        self.assertEqual(series.appendPoint(value=3).getY(), 3.0)
        self.assertIs(series.getPoint(index=1), point)
        self.assertIs(DataSeries.getPoint(series, index=1), point)


if __name__ == "__main__":
    unittest.main()
