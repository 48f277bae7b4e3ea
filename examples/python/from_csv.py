"""A table of a CSV file as a chart: the first column names the categories, each other column is a series."""

import csv
import sys
from pathlib import Path

from quillon.chart import ColumnChart, DataSeries, DataSet, Title
from quillon.report import Document

path = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parents[1] / "data" / "revenue.csv"
with open(path, newline="", encoding="utf-8") as file:
    header, *rows = csv.reader(file)

data = DataSet([row[0] for row in rows])
for column, name in enumerate(header[1:], start=1):
    series = DataSeries(name)
    for row in rows:
        series.appendPoint(float(row[column] or "nan"))
    data.appendSeries(series)  # filled, because all series of a set are of one size
chart = ColumnChart()
chart.DataSet, chart.ChartTitle = data, Title(path.stem.capitalize())

report = Document()
report.add_heading(path.stem.capitalize())
report.add_chart(chart, legend="right")
report.save(path.stem + ".docx")
