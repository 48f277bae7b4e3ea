"""A document with a heading and one chart."""

from quillon.chart import ColumnChart, DataSet, Title
from quillon.report import Document

data = DataSet(["Q1", "Q2", "Q3"])
data.add_series("North", [1.5, 2.0, 3.25])
data.add_series("South", [2.5, 1.75, 2.0])
chart = ColumnChart()
chart.DataSet, chart.ChartTitle = data, Title("Revenue")

report = Document()
report.add_heading("Sales")
report.add_chart(chart, width="15cm", legend="bottom")
report.save("sales.docx")
