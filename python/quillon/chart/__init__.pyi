"""Charts: their data, their words and their formats.

The classes are those of the library, under the library's own names:

    data = DataSet(["Q1", "Q2", "Q3"])
    data.add_series("North", [1.5, 2.0, 3.25])
    data.add_series("South", [2.5, 1.75, 2.0])
    chart = ColumnChart()
    chart.DataSet, chart.ChartTitle = data, Title("Revenue")

The library's methods count from 1, and Python's brackets from 0: data.getSeries(1) is data[0], which is data["North"].
"""

import enum
from collections.abc import Sequence
from typing import Any, overload

import quillon.chart
from quillon import _core
from quillon.chart import _comfort
from quillon.chart._tables import from_dataframe as from_dataframe
from quillon.chart._tables import from_rows as from_rows

__all__ = [
    "Object",
    "Chart",
    "BarChart",
    "ColumnChart",
    "LineChart",
    "PieChart",
    "PieChartSlice",
    "DataPoint",
    "DataSeries",
    "DataSet",
    "BorderFormat",
    "SolidBorderFormat",
    "GradientBorderFormat",
    "SolidBorderDashType",
    "SolidBorderCapType",
    "SolidBorderCompoundType",
    "SolidBorderJoinType",
    "FillFormat",
    "SolidFillFormat",
    "GradientFillFormat",
    "PatternFillFormat",
    "PictureFillFormat",
    "Color",
    "Format",
    "ShapeFormat",
    "DataPointShapeFormat",
    "DataSeriesShapeFormat",
    "DataLabelFormat",
    "DataLabelOptions",
    "DataLabelContentOptions",
    "DataLabelContentSeparator",
    "DataSeriesFormatOptions",
    "PieChartDataSeriesFormatOptions",
    "Effects",
    "ShadowEffect",
    "GlowEffect",
    "SoftEdgesEffect",
    "ThreeDEffect",
    "Text",
    "Paragraph",
    "Title",
    "TextBase",
    "LegendPosition",
    "LegendPositionRelative",
    "AreaBase",
    "PlotArea",
    "ElementArea",
    "from_dataframe",
    "from_rows",
]

class Object(_comfort.Common, _core.Handle):
    """The root of every chart class."""

class Chart(_comfort.Made, Object):
    """A chart: its data, its title and its plot area. A new chart has none of them."""
    @property
    def DataSet(self) -> quillon.chart.DataSet | None:
        """The data that the chart shows."""
    @DataSet.setter
    def DataSet(self, value: quillon.chart.DataSet | None) -> None: ...
    @property
    def ChartTitle(self) -> quillon.chart.Title | None:
        """The title; empty for a chart without one."""
    @ChartTitle.setter
    def ChartTitle(self, value: quillon.chart.Title | None) -> None: ...
    @property
    def PlotArea(self) -> quillon.chart.PlotArea | None:
        """The region in which the data is drawn."""
    @PlotArea.setter
    def PlotArea(self, value: quillon.chart.PlotArea | None) -> None: ...

class BarChart(Chart):
    """A chart of horizontal bars."""
    def __init__(self, *, title: str | Title | None = None, data: Any = None) -> None: ...

class ColumnChart(Chart):
    """A chart of vertical columns."""
    def __init__(self, *, title: str | Title | None = None, data: Any = None) -> None: ...

class LineChart(Chart):
    """A chart of lines."""
    def __init__(self, *, title: str | Title | None = None, data: Any = None) -> None: ...

class PieChart(Chart):
    """A pie, meant for one series."""
    def __init__(self, *, title: str | Title | None = None, data: Any = None) -> None: ...

class PieChartSlice(Object):
    """A slice of a pie chart; it has no settings."""
    def __init__(self) -> None: ...

class DataPoint(_comfort.Point, Object):
    """One value of a series, with formats of its own if it has any."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, value: float) -> None: ...
    @property
    def Value(self) -> float:
        """The point's value."""
    @Value.setter
    def Value(self, value: float) -> None: ...
    @property
    def Format(self) -> quillon.chart.DataPointShapeFormat | None:
        """The point's own shape format."""
    @Format.setter
    def Format(self, value: quillon.chart.DataPointShapeFormat | None) -> None: ...
    @property
    def LabelFormat(self) -> quillon.chart.DataLabelFormat | None:
        """The point's own label format."""
    @LabelFormat.setter
    def LabelFormat(self, value: quillon.chart.DataLabelFormat | None) -> None: ...
    def getX(self) -> float:
        """The X coordinate."""
    def getY(self) -> float:
        """The point's value."""

class DataSeries(_comfort.SeriesItems, Object):
    """A named list of points, in the order of the categories."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, name: str) -> None: ...
    @property
    def Name(self) -> str:
        """The name that a legend shows."""
    @Name.setter
    def Name(self, value: str) -> None: ...
    @property
    def Size(self) -> int:
        """The number of points."""
    @property
    def Format(self) -> quillon.chart.DataSeriesShapeFormat | None:
        """The shape format of the series."""
    @Format.setter
    def Format(self, value: quillon.chart.DataSeriesShapeFormat | None) -> None: ...
    @property
    def LabelFormat(self) -> quillon.chart.DataLabelFormat | None:
        """The label format of the series."""
    @LabelFormat.setter
    def LabelFormat(self, value: quillon.chart.DataLabelFormat | None) -> None: ...
    @overload
    def appendPoint(self, value: float) -> quillon.chart.DataPoint:
        """Appends a new point with X 0 and returns it."""
    @overload
    def appendPoint(self, x: float, y: float) -> quillon.chart.DataPoint:
        """Appends a new point and returns it."""
    @overload
    def appendPoint(self, point: quillon.chart.DataPoint) -> quillon.chart.DataPoint:
        """Appends the point itself and returns it."""
    def getPoint(self, index: int) -> quillon.chart.DataPoint:
        """The point at a position, counted from 1."""

class DataSet(_comfort.SetItems, Object):
    """The data of a chart: category names, and series that run over them."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, categories: Sequence[str]) -> None: ...
    Categories: _core.Property[list[str], Sequence[str]]
    """The category names, one for each point."""
    @property
    def SeriesCount(self) -> int:
        """The number of series."""
    def appendSeries(self, series: quillon.chart.DataSeries) -> quillon.chart.DataSeries:
        """Appends a series with as many points as the first one and returns it."""
    def getSeries(self, index: int) -> quillon.chart.DataSeries:
        """The series at a position, counted from 1; empty in a set without series."""
    def getSeriesCount(self) -> int:
        """The number of series."""

class BorderFormat(Format):
    """The outline of a shape."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...
    @property
    def Width(self) -> float:
        """The width of the line: points."""
    @Width.setter
    def Width(self, value: float) -> None: ...

class SolidBorderFormat(BorderFormat):
    """An outline of one colour, with the style of its line."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...
    @property
    def DashType(self) -> quillon.chart.SolidBorderDashType:
        """How the line is dashed."""
    @DashType.setter
    def DashType(self, value: quillon.chart.SolidBorderDashType) -> None: ...
    @property
    def CapType(self) -> quillon.chart.SolidBorderCapType:
        """How the line ends."""
    @CapType.setter
    def CapType(self, value: quillon.chart.SolidBorderCapType) -> None: ...
    @property
    def JoinType(self) -> quillon.chart.SolidBorderJoinType:
        """How the line turns a corner."""
    @JoinType.setter
    def JoinType(self, value: quillon.chart.SolidBorderJoinType) -> None: ...
    @property
    def CompoundType(self) -> quillon.chart.SolidBorderCompoundType:
        """Of how many strokes the line is made."""
    @CompoundType.setter
    def CompoundType(self, value: quillon.chart.SolidBorderCompoundType) -> None: ...

class GradientBorderFormat(BorderFormat):
    """An outline that is painted as a gradient."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class SolidBorderDashType(enum.Enum):
    """Chart border types supported by Chart API."""
    Dash = 3
    RoundDot = 1
    SquareDot = 2
    DashDot = 4
    LongDash = 5
    LongDashDot = 6
    LongDashDotDot = 7
    Solid = 0

class SolidBorderCapType(enum.Enum):
    """Chart border cap types supported by Chart API."""
    Flat = 2
    Round = 1
    Square = 0

class SolidBorderCompoundType(enum.Enum):
    """Chart compound border types supported by Chart API."""
    Double = 1
    Simple = 0
    ThinThick = 2
    ThickThin = 3
    Triple = 4

class SolidBorderJoinType(enum.Enum):
    """Chart border join types supported by Chart API."""
    Bevel = 1
    Miter = 2
    Rounded = 0

class FillFormat(Format):
    """How the inside of a shape is painted."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class SolidFillFormat(FillFormat):
    """A fill of one colour."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class GradientFillFormat(FillFormat):
    """A fill that is painted as a gradient."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class PatternFillFormat(FillFormat):
    """A fill with a pattern."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class PictureFillFormat(FillFormat):
    """A fill with a picture."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...

class Color(_comfort.Colour, Object):
    """A colour: a name, "rgb(255,128,0)", "#ff8000", or three numbers between 0 and 1."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, text: str) -> None: ...
    @property
    def Color(self) -> Any:
        """The colour in the form in which it was given, text or three numbers."""
    @Color.setter
    def Color(self, value: Any) -> None: ...

class Format(Object):
    """What borders and fills share: a colour and a transparency."""
    Color: _core.Property[quillon.chart.Color, str]
    """The colour object; a text is written into it."""
    @property
    def Transparency(self) -> int:
        """Percent."""
    @Transparency.setter
    def Transparency(self, value: int) -> None: ...

class ShapeFormat(_comfort.Shape, Object):
    """What a drawn shape needs: a border, a fill and effects."""
    def __init__(self) -> None: ...
    @property
    def Border(self) -> quillon.chart.BorderFormat:
        """The outline."""
    @property
    def Fill(self) -> quillon.chart.FillFormat:
        """How the inside is painted."""
    @property
    def Effects(self) -> quillon.chart.Effects:
        """The visual effects."""

class DataPointShapeFormat(ShapeFormat):
    """The shape format of one data point; its objects report the class name quillon.chart.DataPointFormat."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...
    @overload
    def __init__(self, fillColor: str, borderColor: str) -> None: ...

class DataSeriesShapeFormat(ShapeFormat):
    """The shape format of a data series."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...
    @overload
    def __init__(self, fillColor: str, borderColor: str) -> None: ...

class DataLabelFormat(Object):
    """How a data label is drawn and what it says."""
    def __init__(self) -> None: ...
    @property
    def ShapeFormat(self) -> quillon.chart.ShapeFormat:
        """Border, fill and effects of the label."""
    @property
    def Effects(self) -> quillon.chart.Effects:
        """The visual effects of the label."""
    @property
    def Options(self) -> quillon.chart.DataLabelOptions:
        """What the label says."""

class DataLabelOptions(Object):
    """What a data label says."""
    def __init__(self) -> None: ...
    @property
    def ContentOptions(self) -> quillon.chart.DataLabelContentOptions:
        """The items that the label contains."""

class DataLabelContentOptions(Object):
    """The items that a data label contains and what separates them."""
    def __init__(self) -> None: ...
    @property
    def ContainsValue(self) -> bool:
        """Whether the label shows the value."""
    @ContainsValue.setter
    def ContainsValue(self, value: bool) -> None: ...
    @property
    def ContainsSeriesName(self) -> bool:
        """Whether the label shows the name of the series."""
    @ContainsSeriesName.setter
    def ContainsSeriesName(self, value: bool) -> None: ...
    @property
    def ContainsCategoryName(self) -> bool:
        """Whether the label shows the name of the category."""
    @ContainsCategoryName.setter
    def ContainsCategoryName(self, value: bool) -> None: ...
    @property
    def ContainsLegendKey(self) -> bool:
        """Whether the label shows the sign of the series in the legend."""
    @ContainsLegendKey.setter
    def ContainsLegendKey(self, value: bool) -> None: ...
    @property
    def ShowLeaderLines(self) -> bool:
        """Whether a line leads from the label to its point."""
    @ShowLeaderLines.setter
    def ShowLeaderLines(self, value: bool) -> None: ...
    @property
    def Separator(self) -> quillon.chart.DataLabelContentSeparator:
        """What stands between two items."""
    @Separator.setter
    def Separator(self, value: quillon.chart.DataLabelContentSeparator) -> None: ...

class DataLabelContentSeparator(enum.Enum):
    """Separator for data label content options"""
    Comma = 0
    Semicolon = 1
    Period = 2
    NewLine = 3
    Space = 4

class DataSeriesFormatOptions(Object):
    """Options for all series of a chart; only pies have some."""
    def __init__(self) -> None: ...

class PieChartDataSeriesFormatOptions(DataSeriesFormatOptions):
    """How a pie's slices are pulled out and where they start."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, explosion: int) -> None: ...
    @overload
    def __init__(self, explosion: int, firstSliceAngle: int) -> None: ...
    @property
    def PieExplosion(self) -> int:
        """How far the slices are pulled out: percent, 0 to 100."""
    @PieExplosion.setter
    def PieExplosion(self, value: int) -> None: ...
    @property
    def FirstSliceAngle(self) -> int:
        """Where the first slice starts: degrees, 0 to 360."""
    @FirstSliceAngle.setter
    def FirstSliceAngle(self, value: int) -> None: ...

class Effects(Object):
    """The visual effects of a shape."""
    def __init__(self) -> None: ...
    @property
    def ThreeD(self) -> quillon.chart.ThreeDEffect:
        """The three-dimensional effect."""
    @property
    def Shadow(self) -> quillon.chart.ShadowEffect:
        """The shadow."""
    @property
    def Glow(self) -> quillon.chart.GlowEffect:
        """The glow."""
    @property
    def SoftEdges(self) -> quillon.chart.SoftEdgesEffect:
        """The soft edges."""

class ShadowEffect(Object):
    """A shadow; it has no settings."""
    def __init__(self) -> None: ...

class GlowEffect(Object):
    """A glow; it has no settings."""
    def __init__(self) -> None: ...

class SoftEdgesEffect(Object):
    """Soft edges; they have no settings."""
    def __init__(self) -> None: ...

class ThreeDEffect(Object):
    """A three-dimensional effect; it has no settings."""
    def __init__(self) -> None: ...

class Text(_comfort.Words, TextBase):
    """A run: characters of one colour."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, content: str) -> None: ...
    @property
    def Content(self) -> str:
        """The characters."""
    @Content.setter
    def Content(self, value: str) -> None: ...

class Paragraph(_comfort.ParagraphItems, TextBase):
    """An ordered list of runs."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, content: str) -> None: ...
    @overload
    def __init__(self, text: quillon.chart.Text) -> None: ...
    @property
    def Content(self) -> list[quillon.chart.Text]:
        """The runs, in the order in which they are written."""
    def appendText(self, text: quillon.chart.Text) -> quillon.chart.Text:
        """Appends a run and returns it."""

class Title(_comfort.Heading, Object):
    """The title of a chart: one paragraph."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, text: str) -> None: ...
    @overload
    def __init__(self, text: quillon.chart.Text) -> None: ...
    @overload
    def __init__(self, paragraph: quillon.chart.Paragraph) -> None: ...
    @property
    def Text(self) -> quillon.chart.Paragraph:
        """The paragraph."""

class TextBase(Object):
    """What every text element has: a colour."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, color: str) -> None: ...
    @overload
    def __init__(self, color: quillon.chart.Color) -> None: ...
    @property
    def Color(self) -> quillon.chart.Color | None:
        """The colour; empty for none."""
    @Color.setter
    def Color(self, value: quillon.chart.Color | None) -> None: ...

class LegendPosition(Object):
    """Where the legend of a chart stands; it has no settings."""

class LegendPositionRelative(Object):
    """A legend position relative to the chart; it has no settings."""

class AreaBase(Object):
    """A rectangular region of a chart: its size, and a shape format."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, height: str, width: str) -> None: ...
    @property
    def Height(self) -> str:
        """A length as text, such as "2in"."""
    @Height.setter
    def Height(self, value: str) -> None: ...
    @property
    def Width(self) -> str:
        """A length as text, such as "3in"."""
    @Width.setter
    def Width(self, value: str) -> None: ...
    @property
    def Format(self) -> quillon.chart.ShapeFormat:
        """Border, fill and effects of the region."""

class PlotArea(AreaBase):
    """The plot region of a chart: an area with a position."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, x: str, y: str, height: str, width: str) -> None: ...
    @property
    def X(self) -> str:
        """The distance from the left, a length as text."""
    @X.setter
    def X(self, value: str) -> None: ...
    @property
    def Y(self) -> str:
        """The distance from the top, a length as text."""
    @Y.setter
    def Y(self, value: str) -> None: ...

class ElementArea(AreaBase):
    """A plain area."""
    @overload
    def __init__(self) -> None: ...
    @overload
    def __init__(self, height: str, width: str) -> None: ...
