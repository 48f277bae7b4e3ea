"""Values between Python and the library, and the errors when they do not fit."""

import array
import collections
import ctypes
import decimal
import unittest

from quillon import _core
from quillon.chart import (
    Color, ColumnChart, DataLabelContentOptions, DataPoint, DataPointShapeFormat, DataSeries, DataSet,
    PieChartDataSeriesFormatOptions, SolidBorderCapType, SolidBorderDashType, SolidBorderFormat, Text, Title,
)


class Index:
    def __index__(self):
        return 7


class Acting:
    """Runs code of its own when it is converted."""

    def __init__(self, act):
        self.act = act

    def __float__(self):
        return self.act()


class Conversion(unittest.TestCase):
    def test_values_that_are_taken(self):
        border, data = SolidBorderFormat(), DataSet()
        rows = [
            (DataPoint(), "Value", [(True, 1), (3, 3), (Index(), 7), (decimal.Decimal("-2.5"), -2.5),
                                    (2**70, 2.0**70), (float("inf"), float("inf"))]),
            (border, "Transparency", [(True, 1), (4.0, 4), (Index(), 7), (2**32 - 1, 2**32 - 1)]),
            (DataLabelContentOptions(), "ContainsValue", [(1, True), (0.0, False), (True, True)]),
            (DataSeries(), "Name", [("", ""), ("a\0b", "a\0b"), ("\u00e9\u4e2d\U0001f389", "\u00e9\u4e2d\U0001f389")]),
            (data, "Categories", [(("a", "b"), ["a", "b"]), ([], []), (["x"], ["x"]), (None, []),
                                  (collections.UserList("uv"), ["u", "v"])]),
            (border, "DashType", [("DashDot", SolidBorderDashType.DashDot)]),
            (Color(), "Color", [("red", "red"), (None, "red"), (7, "red"), ([], "red")]),
            (ColumnChart(), "DataSet", [(None, None), (data, data), (None, None)]),
        ]
        for target, name, cases in rows:
            for value, expected in cases:
                with self.subTest(f"{type(target).__name__}.{name}", value=value):
                    setattr(target, name, value)
                    self.assertEqual(getattr(target, name), expected)

    def test_values_that_are_refused(self):
        point, border, options, data = DataPoint(), SolidBorderFormat(), DataLabelContentOptions(), DataSet()
        rows = [
            (ColumnChart(), "DataSet", TypeError, ["", [], 0, False, Title(), DataSet]),
            (point, "Value", TypeError, ["1", None, [1.0], 1j, DataPoint()]),
            (point, "Value", ValueError, [10**400]),
            (point, "Value", ZeroDivisionError, [Acting(lambda: 1 / 0)]),
            (border, "Transparency", TypeError, ["1", None, []]),
            (border, "Transparency", ValueError, [-1, 2**32, 10**400, 2.5, float("nan"), float("inf"), -0.5]),
            (border, "DashType", TypeError, [SolidBorderCapType.Flat, 3, None, True]),
            (border, "DashType", ValueError, ["dash", "", "\U0001f389"]),
            (options, "ContainsValue", TypeError, ["true", None]),
            (options, "ContainsValue", ValueError, [2, -1, float("nan")]),
            (DataSeries(), "Name", TypeError, [b"North", None, 1]),
            (DataSeries(), "Name", ValueError, ["\ud800", "ok\udfff"]),
            (data, "Categories", TypeError, ["Q1", b"Q1", {"Q1": 1}, collections.UserDict(Q1=1), {"Q1"}, 5, [1],
                                             ["a", None], iter(["a"])]),
            (data, "Categories", ValueError, [["a", "\ud800"]]),
            (Color("red"), "Color", TypeError, [object(), b"red", {}, [1, "a"], ["a", 1], [Title(), 1], [[1, 2], 3], 1j,
                                                memoryview(bytes(4)).cast("B", (2, 2))]),
        ]
        for target, name, error, values in rows:
            for value in values:
                before = getattr(target, name)
                with self.subTest(f"{type(target).__name__}.{name}", value=value):
                    self.assertRaises(error, setattr, target, name, value)
                    self.assertEqual(getattr(target, name), before)

    def test_numbers_of_sequences_and_buffers(self):
        packed = memoryview(array.array("d", [1, 9, 2, 9, 3, 9]))
        rows = [array.array(code, [1, 2, 3]) for code in "bBhHiIlLqQfd"]
        rows += [packed[::2], packed[::-1], memoryview(bytes([1, 1, 0])).cast("?"), array.array("d")]
        rows += [(kind.__ctype_be__ * 2)(1, 2) for kind in (ctypes.c_double, ctypes.c_int16)]
        rows += [(1, 2, 3), range(1, 4), collections.deque([1.0, 2.0, 3.0])]
        for values in rows:
            with self.subTest(repr(values)):
                series = DataSeries()
                series.extend(values)
                self.assertEqual([point.Value for point in series], [float(value) for value in values])

    def test_a_sequence_that_changes_while_it_is_read(self):
        series, values = DataSeries(), [0.5]
        values += [Acting(lambda: float(values.clear() or 1)), 2.0]
        series.extend(values)
        self.assertEqual([point.Value for point in series], [0.5, 1.0])

    def test_three_numbers_make_a_colour(self):
        for numbers in [(1, 0.5, 0), array.array("f", [1, 0.5, 0]), [True, 0.5, False]]:
            color = Color("red")
            color.Color = numbers
            # The library gives no text for such a colour.
            self.assertRaisesRegex(ValueError, "^Invalid color$", getattr, color, "Color")

    def test_a_class_of_another_name_in_the_library(self):
        point = DataPoint()
        point.Format = DataPointShapeFormat("red", "blue")
        self.assertIs(type(point.Format), DataPointShapeFormat)


class Calls(unittest.TestCase):
    def test_errors_say_what_is_wrong(self):
        series, data, chart = DataSeries("North"), DataSet(), ColumnChart()
        series.extend([1, 2])
        data.appendSeries(series)
        forms = r"\(value: float\) or \(x: float, y: float\) or \(point: DataPoint\)"
        rows = [
            (TypeError, f"^DataSeries.appendPoint: expected {forms}, got \\(str\\).$", lambda: series.appendPoint("")),
            (TypeError, r"got \(int, z=float\)", lambda: series.appendPoint(1, z=2.0)),
            (TypeError, "^DataSeries.appendPoint: y: expected float, got str.$", lambda: series.appendPoint(1, "2")),
            (TypeError, "^DataSet: categories: item 1 \\(from 0\\): expected str, got int.$", lambda: DataSet(["a", 1])),
            (TypeError, r"^Text: expected \(\) or \(content: str\), got \(str, str\).$", lambda: Text("a", "b")),
            (ValueError, "^appendPoint: expected a DataPoint, got an empty handle.$", lambda: series.appendPoint(None)),
            (ValueError, "^New series size 0 differs from .* 2. Fill the series before .* add_series",
             lambda: data.appendSeries(DataSeries())),
            (ValueError, "^New series size 1 differs from existing series size 2$", lambda: data.add_series("a", [1])),
            (ValueError, "^Pie explosion percentage must be <= 100.$", lambda: PieChartDataSeriesFormatOptions(101)),
            (ValueError, 'one of Dash, .*, got "Dot"', lambda: setattr(SolidBorderFormat(), "DashType", "Dot")),
            (IndexError, "^Data point index out of range.$", lambda: series.getPoint(3)),
            (IndexError, r"^DataSet.getSeries: the position is out of range: .*\(which is 1\)",
             lambda: data.getSeries(2)),
            (ValueError, "index: expected a whole number from 0", lambda: series.getPoint(-1)),
            (AttributeError, "'ColumnChart' object has no attribute 'Titel'", lambda: setattr(chart, "Titel", "x")),
            (AttributeError, "^DataSeries.Size: the property is read-only.$", lambda: setattr(series, "Size", 3)),
            (AttributeError, "^DataSeries.Name: a property cannot be deleted.$", lambda: delattr(series, "Name")),
            (TypeError, "^DataSeries.Name: expected an object of class DataSeries, got ColumnChart.$",
             lambda: DataSeries.Name.__get__(chart)),
            (TypeError, "^DataSeries.getPoint: expected an object of class DataSeries, got int.$",
             lambda: DataSeries.getPoint(1, 1)),
            (TypeError, "expected an object to call", lambda: DataSeries.getPoint()),
            (TypeError, "no constructor", _core.Handle),
        ]
        for error, text, call in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, call)
        self.assertEqual((series.Size, len(data)), (2, 1))

    def test_arguments_have_names(self):
        series = DataSeries(name="North")
        point = series.appendPoint(y=2.0, x=1.0)
        self.assertEqual((point.getX(), point.getY()), (1.0, 2.0))
        self.assertEqual(series.appendPoint(value=3).getY(), 3.0)
        self.assertIs(DataSeries.getPoint(series, index=1), point)
