"""A report with a section, a chart and a sentence for each of forty stations."""

import math

from quillon.chart import DataSet, LineChart, Title
from quillon.report import Document

MONTHS = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"]


def measure(station):
    """Made up: stations with higher numbers lie higher up."""
    return [round(12 - 0.3 * station - 9 * math.cos(month * math.pi / 6), 1) for month in range(12)]


report = Document()
report.add_heading("Mean temperatures")
for station in range(1, 41):
    values = measure(station)
    chart = LineChart()
    chart.DataSet, chart.ChartTitle = DataSet(MONTHS), Title(f"Station {station}")
    chart.DataSet.add_series(f"Station {station}", values)

    report.add_heading(f"Station {station}", level=2)
    report.add_paragraph(f"Between {min(values)} and {max(values)} degrees.")
    report.add_chart(chart, width="15cm", height="6cm", alt_text=f"Monthly means of station {station}")

report.save("stations.docx", progress=lambda done, total: print(f"\r{done} of {total} charts", end=""))
print()
