"""Colours of whole series, of single points and of slices; values that are missing."""

from quillon.chart import BarChart, DataPointShapeFormat, DataSeriesShapeFormat, DataSet, LineChart, PieChart, Title
from quillon.report import Document


def make_chart(kind, title, categories, **series):
    """A chart with a series for each keyword."""
    chart = kind()
    chart.DataSet, chart.ChartTitle = DataSet(categories), Title(title)
    for name, values in series.items():
        chart.DataSet.add_series(name, values)
    return chart


# A colour is a name, "#rrggbb" or "rgb(r,g,b)".
bars = make_chart(BarChart, "Waiting time in minutes", ["Mon", "Tue", "Wed", "Thu", "Fri"], Waiting=[4, 6, 5, 14, 7])
waiting = bars.DataSet["Waiting"]
waiting.Format = DataSeriesShapeFormat("steelblue")
waiting[3].Format = DataPointShapeFormat("#C83C28", "rgb(90,20,10)")  # inside, outline

# A value that is not a number leaves a gap.
lines = make_chart(
    LineChart, "Level in metres", ["1", "2", "3", "4", "5", "6"],
    Upper=[2.1, 2.2, 2.4, 2.3, 2.2, 2.1], Lower=[0.9, 1.0, float("nan"), float("nan"), 1.2, 1.1],
)
for series, colour in zip(lines.DataSet, ("seagreen", "darkorange")):
    series.Format = DataSeriesShapeFormat(colour)

pie = make_chart(PieChart, "Votes", ["Yes", "No", "Abstained"], Votes=[61, 30, 9])
for slice_, colour in zip(pie.DataSet[0], ("seagreen", "firebrick", "silver")):
    slice_.Format = DataPointShapeFormat(colour, "white")

report = Document()
report.add_heading("Colours and formats")
for chart in (bars, lines, pie):
    report.add_chart(chart, height="2.6in")
report.save("colours.docx")
