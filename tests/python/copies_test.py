"""Copies and pickles of charts, comparison by content, and what a person sees of them."""

import copy
import pickle
import unittest

from quillon.chart import (
    BarChart, BorderFormat, Color, ColumnChart, DataLabelContentSeparator, DataLabelFormat, DataPoint,
    DataPointShapeFormat, DataSeries, DataSeriesShapeFormat, DataSet, GradientBorderFormat, GradientFillFormat, Paragraph,
    PictureFillFormat, PlotArea, SolidBorderDashType, SolidBorderFormat, Text, Title,
)
from quillon.report import Document


def make_chart():
    """A chart with something in every place, and with objects that stand in two places."""
    data = DataSet(["Q1", "Q2"])
    for name, values in (("North", [1.5, float("nan")]), ("South", [2, 3])):
        data.add_series(name, values)
    shared = data[0].Format = data[1].Format = DataSeriesShapeFormat("red", "navy")
    shared.replace_fill(GradientFillFormat("teal"))
    shared.Border.DashType, shared.Border.Width, shared.Fill.Transparency = SolidBorderDashType.Dash, 2.25, 40
    point = data[0][0]
    point.Format = DataPointShapeFormat("#010203")
    point.Format.Border.Color.Color = (1, 0.5, 0)
    point.LabelFormat = label = DataLabelFormat()
    label.ShapeFormat.Fill.Color = "yellow"
    label.Options.ContentOptions.Separator = DataLabelContentSeparator.NewLine
    label.Options.ContentOptions.ContainsCategoryName = True
    chart = BarChart()
    chart.DataSet, chart.PlotArea = data, PlotArea("1in", "0.5in", "2in", "4in")
    chart.PlotArea.Format.Border.Color = "gold"
    title = Paragraph(Text("Revenue "))
    title.appendText(Text("2024")).Color = title.Color = Color("blue")
    chart.ChartTitle = Title(title)
    return chart


def write(chart):
    document = Document()
    document.add_chart(chart)
    return document.to_bytes()


#: What makes a chart another one. Each reaches another class.
CHANGES = [
    lambda chart: setattr(chart.DataSet, "Categories", ["Q1", "Q3"]),
    lambda chart: chart.DataSet.appendSeries(chart.DataSet[0]),
    lambda chart: setattr(chart.DataSet[0], "Name", "West"),
    lambda chart: setattr(chart.DataSet[0][1], "Value", 1),
    lambda chart: chart.DataSet[1].extend([1]),
    lambda chart: setattr(chart.DataSet[0].Format.Border, "Width", 2.5),
    lambda chart: setattr(chart.DataSet[0].Format.Border, "DashType", SolidBorderDashType.Solid),
    lambda chart: setattr(chart.DataSet[0].Format.Fill, "Color", "green"),
    lambda chart: chart.DataSet[1].Format.replace_fill(PictureFillFormat("teal")),
    lambda chart: setattr(chart.DataSet[0][0].Format.Border.Color, "Color", (1, 0.25, 0)),
    lambda chart: setattr(chart.DataSet[0][0].LabelFormat.Options.ContentOptions, "ContainsCategoryName", False),
    lambda chart: setattr(chart.DataSet[0][0].LabelFormat.ShapeFormat.Fill, "Color", "red"),
    lambda chart: setattr(chart.PlotArea, "X", "1.5in"),
    lambda chart: setattr(chart.PlotArea.Format.Border, "Color", "green"),
    lambda chart: setattr(chart.ChartTitle.Text[1], "Content", "2025"),
    lambda chart: setattr(chart.ChartTitle.Text.Color, "Color", "black"),
    lambda chart: chart.ChartTitle.Text.appendText(Text("!")),
    lambda chart: setattr(chart, "DataSet", None),
]
WAYS = [copy.deepcopy, *(lambda chart, number=number: pickle.loads(pickle.dumps(chart, number)) for number in (2, 5))]


class Copies(unittest.TestCase):
    def test_have_the_content_and_share_nothing_with_the_original(self):
        chart = make_chart()
        written = write(chart)
        for way in WAYS:
            made = way(chart)
            self.assertTrue(made.equals(chart))
            self.assertEqual(write(made), written)
            for change in CHANGES:
                change(made)
            self.assertEqual(write(chart), written)

    def test_keep_shared_objects_shared(self):
        chart = make_chart()
        point = chart.DataSet[1][1]
        for way in WAYS:
            one, two, (same_point,) = way([chart, chart, [point]])
            self.assertIs(one, two)
            self.assertIs(one.DataSet[1][1], same_point)
            self.assertIs(one.DataSet[0].Format, one.DataSet[1].Format)
            self.assertIs(one.ChartTitle.Text.Color, one.ChartTitle.Text[1].Color)
            self.assertIs(type(one.DataSet[0].Format.Fill), GradientFillFormat)

    def test_of_single_objects(self):
        series = DataSeries("s")
        odd_point = series.appendPoint(0.5, 7)
        odd_point.Format = DataPointShapeFormat("red")
        for item in (odd_point, series, DataSet(), Title(paragraph=None), Paragraph(), GradientBorderFormat("red")):
            made = copy.deepcopy(item)
            self.assertTrue(made.equals(item), item)
            self.assertIsNot(made, item)
        self.assertEqual((copy.deepcopy(odd_point).getX(), copy.deepcopy(series)[0].getX()), (0.5, 0.5))
        shallow = copy.copy(series)
        self.assertIsNot(shallow, series)
        self.assertIs(shallow[0], series[0])

    def test_of_subclasses_keep_what_python_added(self):
        made = copy.deepcopy(Region("North", [1]))
        self.assertEqual((type(made), made.names, made.Categories), (Region, ["North"], ["North"]))
        self.assertEqual(pickle.loads(pickle.dumps(Region("North", [1]))).names, ["North"])


class Region(DataSet):
    """Takes arguments of its own, which a copy is not given again."""

    def __init__(self, name, values):
        super().__init__([name])
        self.add_series(name, values)
        self.names = [name]


class Equality(unittest.TestCase):
    def test_compares_all_content(self):
        chart = make_chart()
        self.assertTrue(chart.equals(make_chart()))
        for number, change in enumerate(CHANGES):
            other = make_chart()
            change(other)
            self.assertFalse(chart.equals(other), f"change {number}")
        series = [DataSeries("s"), DataSeries("s")]
        series[0].appendPoint(0.5, 1), series[1].appendPoint(1)
        self.assertFalse(series[0].equals(series[1]))
        for other in (None, "chart", ColumnChart(), DataPoint()):
            self.assertFalse(chart.equals(other))
        self.assertNotEqual(chart, make_chart())

    def test_a_shape_takes_borders_and_fills_of_every_kind(self):
        shape = DataSeriesShapeFormat("red")
        border, fill = GradientBorderFormat("blue"), PictureFillFormat("green")
        shape.replace_border(border), shape.replace_fill(fill)
        self.assertIs(shape.Border, border)
        self.assertIs(shape.Fill, fill)
        for replace, wrong in [(shape.replace_border, fill), (shape.replace_fill, border), (shape.replace_fill, None)]:
            self.assertRaises(TypeError, replace, wrong)
        self.assertIs(shape.Fill, fill)


class Representations(unittest.TestCase):
    def test_show_what_is_inside_and_stay_short(self):
        chart = ColumnChart()
        chart.ChartTitle = Title("Revenue")
        border = SolidBorderFormat("red")
        border.Color.Color = (1, 0, 0)
        data = DataSet(["Q1", "Q2"])
        data.add_series("North", [1.5, 2])
        rows = [
            (DataSeries("North"), "<DataSeries Name='North' Size=0>"),
            (data[0], "<DataSeries Name='North' Size=2 [1.5, 2.0]>"),
            (data, "<DataSet Categories=['Q1', 'Q2'] SeriesCount=1 [<DataSeries Name='North' Size=2 [1.5, 2.0]>]>"),
            (chart, "<ColumnChart ChartTitle=<Title 'Revenue'>>"),
            (Paragraph("one"), "<Paragraph Color=<Color 'black'> Content=[<Text 'one'>]>"),
            (BorderFormat("red"), "<BorderFormat Color=<Color 'red'> Transparency=0 Width=0.5>"),
            (border.Color, "<Color>"),
            (Color("red"), "<Color Color='red'>"),
        ]
        for value, text in rows:
            self.assertEqual(repr(value), text)
        self.assertIn("DashType=Solid CapType=", repr(border))
        large = DataSet(["category"] * 1000)
        for number in range(100):
            large.add_series(f"series {number}", range(1000))
        self.assertLess(len(repr(large)), 600)
