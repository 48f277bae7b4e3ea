"""Tables of rows, of data frames and of arrays, and what they give: data sets and chart data."""

import csv
import datetime
import io
import unittest
import warnings

import numpy
import pandas

from quillon import _core
from quillon.chart import DataSeries, DataSet, from_dataframe, from_rows
from quillon.report import ChartData, ChartWarning, SeriesDetails

NAN = float("nan")


class Frame(dict):
    """What data frames of any library have in common."""

    columns = property(dict.keys)


class NAType:
    """Named like the missing value of a data frame library."""


class Tables(unittest.TestCase):
    def test_rows_and_frames_become_data_sets(self):
        file = io.StringIO("Quarter,North,South\nQ1,1.5,-2\nQ2,,1e3\n")
        frame = Frame({"city": ["Rome", "Oslo"], "n": [1, 2.5], ("2024", "y"): [NAType(), None]})
        frame.index = [("Q", 1), "Q2"]
        cities = pandas.DataFrame({"city": ["Rome", "Oslo"], "n": [1, 2]})
        by_number = pandas.DataFrame({"city": ["Rome"], "n": [1]}, index=pandas.Index([7], name="number"))
        by_year = pandas.Series([1, 2, 3], [["Rome", "Rome", "Oslo"], [2023, 2024, 2024]])
        rows = [
            (from_rows(csv.reader(file)), ["Q1", "Q2"], {"North": [1.5, NAN], "South": [-2.0, 1000.0]}),
            (from_rows([(2020, True), (2021, None)], names=["N"]), ["2020", "2021"], {"N": [1.0, NAN]}),
            (from_rows([], names=["N"]), [], {"N": []}),
            (from_rows([["Quarter"], ["Q1"]]), ["Q1"], {}),
            (from_dataframe(frame, columns=["n"]), ["Q 1", "Q2"], {"n": [1.0, 2.5]}),
            (from_dataframe(frame, "city"), ["Rome", "Oslo"], {"n": [1.0, 2.5], "2024 y": [NAN, NAN]}),
            (from_dataframe(Frame({"a": ["x", 3], "b": [1, 2]})), ["x", "3"], {"b": [1.0, 2.0]}),
            (from_dataframe(Frame({"a": [1], "b": ["x"]}), categories="b"), ["x"], {"a": [1.0]}),
            (from_dataframe({"n": [1, 2], "m": [3, 4]}), ["1", "2"], {"n": [1.0, 2.0], "m": [3.0, 4.0]}),
            (from_dataframe({"Q1": 1, "Q2": None}), ["Q1", "Q2"], {"Series 1": [1.0, NAN]}),
            (from_dataframe({"n": {"Q1": 1, "Q2": 2}, "m": {"Q2": 3}}), ["Q1", "Q2"], {"n": [1.0, 2.0], "m": [NAN, 3.0]}),
            (from_dataframe({"n": {"Q1": 1}, "m": {"Q2": 3}}), ["Q1", "Q2"], {"n": [1.0, NAN], "m": [NAN, 3.0]}),
            (from_dataframe([1, 2]), ["1", "2"], {"Series 1": [1.0, 2.0]}),
            (from_dataframe(iter([1, 2])), ["1", "2"], {"Series 1": [1.0, 2.0]}),
            (from_dataframe(numpy.ma.array([1, 2], mask=[0, 1])), ["1", "2"], {"Series 1": [1.0, NAN]}),
            (from_dataframe(numpy.array([[1, 2], [3, 4]])), ["1", "2"], {"Series 1": [1.0, 3.0], "Series 2": [2.0, 4.0]}),
            (from_dataframe(pandas.Series([1, 2], ["a", "b"], name="n")), ["a", "b"], {"n": [1.0, 2.0]}),
            (from_dataframe(pandas.Series([1, 2])), ["1", "2"], {"Series 1": [1.0, 2.0]}),
            (from_dataframe(cities), ["Rome", "Oslo"], {"n": [1.0, 2.0]}),
            (from_dataframe(cities[cities.n > 1]), ["Oslo"], {"n": [2.0]}),
            (from_dataframe(pandas.DataFrame({"n": [1, 2]}, index=[2023, 2024])), ["2023", "2024"], {"n": [1.0, 2.0]}),
            (from_dataframe(by_number, columns=["n"]), ["7"], {"n": [1.0]}),
            (from_dataframe(pandas.DataFrame({"n": [1, pandas.NA]})), ["1", "2"], {"n": [1.0, NAN]}),
            (from_dataframe(by_year.unstack()), ["Oslo", "Rome"], {"2023": [NAN, 1.0], "2024": [3.0, 2.0]}),
            (from_dataframe(by_year.to_frame("n").unstack()), ["Oslo", "Rome"],
             {"n 2023": [NAN, 1.0], "n 2024": [3.0, 2.0]}),
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
            (from_rows, [["", "N"], "Q1"], TypeError, "row 2: expected a list of cells, got str"),
            (from_dataframe, 5, TypeError, "expected a data frame, .* got int"),
            (from_dataframe, "text", TypeError, "got str"),
            (from_dataframe, numpy.zeros((2, 2, 2)), TypeError, "got ndarray"),
            (from_dataframe, numpy.float64(3), TypeError, "got float64"),
            (from_dataframe, {}, ValueError, "the table has no columns"),
            (from_dataframe, pandas.DataFrame(), ValueError, "the table has no columns"),
            (from_dataframe, pandas.DataFrame({"a": [], "b": []}), ValueError, "the table has no rows"),
            (from_dataframe, [], ValueError, "the table has no rows"),
            (from_dataframe, {"a": ["x"], "b": ["y"]}, ValueError, "no column holds numbers"),
            (from_dataframe, ["x", "y"], ValueError, "no column holds numbers"),
            (from_dataframe, [[1, 2], [3, 4]], TypeError, "got one of list; from_rows takes rows"),
            (from_dataframe, {"a": ["x", "y"], "b": [1, "y"]}, ValueError, "'b', value 2: expected .*, got 'y'"),
            (from_dataframe, {"a": {"x": 1}, "b": [1]}, TypeError, "'b': expected a dictionary, .* got list"),
            (from_dataframe, {"a": [1], "b": 1}, TypeError, "'b': expected a column of cells, got int"),
            (from_dataframe, {"a": pandas.Series([1, 2], ["x", "y"]), "b": pandas.Series([1, 2], ["y", "x"])}, ValueError,
             "'b' has other row names than 'a'"),
            (from_dataframe, {"a": ["x", "y"], "b": [1]}, ValueError, "'b': expected 2 values, got 1"),
            (from_dataframe, {"a": ["x"], 1: [1], "1": [1]}, ValueError, "2 columns have the name '1'; give each"),
            (from_dataframe, pandas.DataFrame([["x", 1, 2]], columns=list("abb")), ValueError, "2 columns have the name 'b'"),
        ]
        for make, table, error, text in rows:
            with self.subTest(text), warnings.catch_warnings():
                warnings.simplefilter("ignore", ChartWarning)
                self.assertRaisesRegex(error, f"^{make.__name__}: .*{text}", make, table)
        frame = pandas.DataFrame({"a": ["x"], "b": [1]})
        for options in ({"columns": ["c"]}, {"categories": "c"}):
            with self.assertRaisesRegex(ValueError, "there is no column 'c'; the columns are 'a', 'b'"):
                from_dataframe(frame, **options)

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

    def test_columns_without_numbers_are_left_out_with_a_note(self):
        frame = pandas.DataFrame({"city": ["Rome"], "n": [1], "note": ["x"], "day": [datetime.date(2024, 1, 1)], "e": [None],
                                  "wait": [pandas.Timedelta(hours=1)]})
        for make in (from_dataframe, lambda table: ChartData.from_dataframe(table).data_set):
            with self.assertWarns(ChartWarning) as caught:
                data = make(frame)
            self.assertEqual([series.Name for series in data], ["n", "e"])
            self.assertEqual([str(item.message) for item in caught.warnings],
                             ["'note' holds text and is left out.",
                              "'day' holds dates and is left out.",
                              "'wait' holds no numbers and is left out."])
            self.assertEqual({item.filename for item in caught.warnings}, {__file__})
        self.assertRaisesRegex(ValueError, "'note', value 1: expected a number", from_dataframe, frame, columns=["note"])

    def test_masked_arrays_keep_their_mask(self):
        for kind in (int, float):
            series = DataSeries("s")
            series.extend(numpy.ma.array([1, 2, 3], mask=[0, 1, 0], dtype=kind))
            self.assertEqual(str(series.values.tolist()), "[1.0, nan, 3.0]")
        self.assertEqual(numpy.asarray(series.values).dtype, float)


class Data(unittest.TestCase):
    def test_of_frames_keeps_dates_levels_and_formats(self):
        day = datetime.datetime(2024, 2, 29, 12)
        months = pandas.period_range("2024-01", periods=2, freq="M")
        three = pandas.MultiIndex.from_tuples([("2023", "H1", "Q1"), ("2023", "H1", "Q2"), ("2024", "H1", "Q1")])
        levels = pandas.MultiIndex.from_tuples([("2023", "Q1"), ("2023", "Q2"), ("2024", "Q2"), ("2024", "Q2")])
        rows = [
            (pandas.to_datetime(["2024-01-01", None]), "", "date", [45292, NAN], "", []),
            ([datetime.date(1900, 3, 1), None], "d.m.yy", "date", [61, NAN], "d.m.yy", []),
            ([day, day], "", "date", [45351.5] * 2, "yyyy-mm-dd hh:mm", []),
            (pandas.to_datetime(["2024-01-01", "2024-07-01"]).tz_localize("Europe/Rome"), "", "date", [45292, 45474], "", []),
            (months, "", "date", [45292, 45323], "mmm yyyy", []),
            (months.asfreq("Q"), "", "automatic", [], "", []),
            ([2023, 2024], "", "automatic", [], "", []),
            ([2023, 2024], "0", "number", [2023, 2024], "0", []),
            (["a", day], "", "automatic", [], "", []),
            (three, "", "automatic", [], "", [["2023", "", "2024"], ["H1", "", "H1"]]),
            (levels, "", "automatic", [], "", [["2023", "", "2024", ""]]),
        ]
        for index, given_format, kind, values, own_format, levels in rows:
            frame = pandas.DataFrame({"n": [1] * len(index)}, index=pandas.Index(index, dtype=getattr(index, "dtype", object)))
            data = ChartData.from_dataframe(frame, category_format=given_format)
            read = (data.category_kind, list(map(float, data.category_values)), data.category_format, data.levels)
            self.assertEqual(str(read), str((kind, list(map(float, values)), own_format, levels)))
            self.assertTrue(data.check().equals(data))
        self.assertEqual(data.data_set.Categories, ["Q1", "Q2", "Q2", "Q2"])
        dates = {"day": numpy.array(["2024-01-01", "NaT"], "datetime64[ns]"), "n": [1, 2]}
        data = ChartData.from_dataframe(dates)
        self.assertEqual((data.data_set.Categories, data.category_values[0]), (["2024-01-01", ""], 45292))

    def test_categories_keep_the_name_of_their_column(self):
        frame = pandas.DataFrame({"city": ["Rome", "Oslo"], "n": [1, 2]})
        levels = pandas.MultiIndex.from_tuples([(2023, 1), (2024, 1)], names=["Year", None])
        rows = [
            (frame, ["city"]),
            (frame.set_index("city"), ["city"]),
            (frame.set_index("city").n, ["city"]),
            (frame[["n"]], []),
            (frame[["n"]].rename_axis("count"), []),
            (frame[["n"]].set_axis(levels), ["Year", ""]),
            ({"n": [1, 2]}, []),
            ([1, 2], []),
        ]
        for table, names in rows:
            self.assertEqual(ChartData.from_dataframe(table).check().category_names, names)
        self.assertEqual(ChartData.from_dataframe(frame, "n", ["n"]).category_names, ["n"])

    def test_reaches_the_library_and_comes_back(self):
        series_set = DataSet(["a", "b"])
        series_set.add_series("s", [1, 2]), series_set.add_series("t", [1, 2])
        details = SeriesDetails("0.0", (1, 2), numpy.array([3, 4]), [5, 6])
        data = ChartData(series_set, "number", (1, NAN), "0", [("x", "")], ["b \u00e9"], [details], ["Year", "Month"])
        checked = data.check()
        self.assertEqual(str({**vars(checked), "data_set": None}), str({
            "data_set": None, "category_kind": "number", "category_values": [1.0, NAN], "category_format": "0",
            "levels": [["x", ""]], "totals": ["b \u00e9"],
            "series": [SeriesDetails("0.0", [1.0, 2.0], [3.0, 4.0], [5.0, 6.0])], "category_names": ["Year", "Month"]}))
        self.assertIs(checked.data_set, series_set)
        self.assertTrue(checked.equals(data))
        self.assertFalse(checked.equals(ChartData(series_set)))
        self.assertTrue(_core.check_chart_data(series_set).equals(ChartData(series_set)))

    def test_that_does_not_fit_is_refused(self):
        series_set = DataSet(["a", "b"])
        series_set.add_series("s", [1, 2, 3])
        rows = [
            ({"data_set": None}, TypeError, "data_set: expected a data set, got NoneType"),
            ({"category_kind": "dates"}, ValueError, 'category_kind: expected automatic, .*, got "dates"'),
            ({"category_values": [1]}, ValueError, "category_values: expected 2, one for each category, got 1"),
            ({"category_values": "12"}, TypeError, "category_values: expected a sequence of numbers, got str"),
            ({"category_format": 1}, TypeError, "category_format: expected str, got int"),
            ({"levels": [["x"]]}, ValueError, "levels: expected 2, one for each category, got 1"),
            ({"category_names": ["a", "b"]}, ValueError, "category_names: expected 1, one for each level and one for the cat"),
            ({"totals": "ab"}, TypeError, r"totals: expected Sequence\[str\], got str"),
            ({"series": [SeriesDetails()] * 2}, ValueError, "series: expected at most 1, one for each series"),
            ({"series": [SeriesDetails(sizes=[1, 2])]}, ValueError,
             r"series: item 0 \(from 0\): sizes: expected 3, one for each point, got 2"),
            ({"series": [None]}, TypeError, r"series: item 0 \(from 0\): expected SeriesDetails, got NoneType"),
            ({"levels": 5}, TypeError, "levels: expected a list, got int"),
        ]
        for fields, error, text in rows:
            with self.subTest(text):
                self.assertRaisesRegex(error, text, ChartData(**{"data_set": series_set, **fields}).check)
        self.assertRaisesRegex(TypeError, "expected chart data or a data set, got str", _core.check_chart_data, "x")
