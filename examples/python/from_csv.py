"""A table of a CSV file as a chart: the first column names the categories, each other column is a series."""

import csv
import sys
from pathlib import Path

from quillon.chart import ColumnChart, Title, from_rows
from quillon.report import Document

path = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parents[1] / "data" / "revenue.csv"
with open(path, newline="", encoding="utf-8") as file:
    data = from_rows(csv.reader(file))

chart = ColumnChart()
chart.DataSet, chart.ChartTitle = data, Title(path.stem.capitalize())

report = Document()
report.add_heading(path.stem.capitalize())
report.add_chart(chart, legend="right")
report.save(path.stem + ".docx")
