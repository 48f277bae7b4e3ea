"""Charts in a document that python-docx makes: in a paragraph of their own, and two in the cells of a table."""

import docx
from docx.shared import Cm

from quillon.chart import ColumnChart, DataSet, PieChart, Title
from quillon.docx import add_chart


def make_chart(kind, title, values):
    chart = kind()
    chart.DataSet, chart.ChartTitle = DataSet(list(values)), Title(title)
    chart.DataSet.add_series(title, list(values.values()))
    return chart


document = docx.Document()
document.add_heading("Staff", level=1)
document.add_paragraph("Everything here but the charts is python-docx.", style="Intense Quote")
add_chart(document, make_chart(ColumnChart, "People", {"2022": 41, "2023": 47, "2024": 58}), width=Cm(15))

table = document.add_table(rows=1, cols=2)
teams = {"North": {"Design": 9, "Build": 20}, "South": {"Design": 11, "Build": 18}}
for cell, (place, values) in zip(table.rows[0].cells, teams.items()):
    run = cell.paragraphs[0].add_run()
    add_chart(run, make_chart(PieChart, place, values), width=Cm(7), height=Cm(6), alt_text=f"Teams in the {place}")

document.save("staff.docx")
