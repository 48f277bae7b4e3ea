"""A document with a heading and one chart."""

from quillon.chart import ColumnChart, DataSet, DataSeries, Title
from quillon.report import Document

data = DataSet(["Q1", "Q2", "Q3"])
data.appendSeries(DataSeries("North")).extend([1.5, 2.0, 3.25])
chart = ColumnChart()
chart.DataSet, chart.ChartTitle = data, Title("Revenue")

report = Document()
report.add_heading("Sales")
report.add_chart(chart, width="15cm", legend="bottom")
report.save("sales.docx")
