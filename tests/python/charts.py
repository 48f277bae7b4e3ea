"""The chart of several tests."""

from quillon.chart import ColumnChart, DataSeries, DataSeriesShapeFormat, DataSet, Title


def make_chart(values=(1.5, 2.0), kind=ColumnChart, colour=None):
    series = DataSeries("North")
    series.extend(values)
    if colour:
        series.Format = DataSeriesShapeFormat(colour)
    chart = kind()
    chart.DataSet, chart.ChartTitle = DataSet(["Q"] * len(values)), Title("Revenue")
    chart.DataSet.appendSeries(series)
    return chart
