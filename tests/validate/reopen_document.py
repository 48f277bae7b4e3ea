"""Opens one of our documents with python-docx, adds charts wherever they may stand, and saves it:
reopen_document.py SOURCE TARGET"""

import sys

import docx
from docx.shared import Cm

from charts import make_chart
from quillon.chart import BarChart, ColumnChart, LineChart, PieChart
from quillon.docx import add_chart

document = docx.Document(sys.argv[1])
table = document.add_table(rows=1, cols=1)
targets = [
    document, document.add_paragraph("in a sentence "), document.paragraphs[0].add_run(), table.rows[0].cells[0],
    document.sections[0].header, document.sections[0].footer,
]
for number, target in enumerate(targets):
    chart = make_chart((1, float("nan"), -3.5), (BarChart, ColumnChart, LineChart, PieChart)[number % 4])
    add_chart(target, chart, width=Cm(8), height="4cm", workbook=number != 1, alt_text=f"Chart {number}")
document.save(sys.argv[2])
