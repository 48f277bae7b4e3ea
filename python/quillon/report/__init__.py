"""Word documents: new ones made of blocks, and those that exist, whose charts take new data.

    import quillon.report

    report = quillon.report.Document()
    report.add_heading("Sales")
    report.add_chart(chart, value_title="EUR", number_format="#,##0", labels="value")
    report.save("sales.docx")

    template = quillon.report.open("june.docx")
    template.fill("Revenue", data_frame)
    template.replace("month", "July")
    template.save("july.docx")
"""

from quillon._chart_data import ChartData, SeriesDetails
from quillon._preview import PreviewError
from quillon._warnings import ChartWarning
from quillon.report._document import Document, ListItem, Run, chart
from quillon.report._template import FillReport, FoundChart, Placeholder, SeriesChange, Template, open

__all__ = [
    "ChartData",
    "ChartWarning",
    "Document",
    "FillReport",
    "FoundChart",
    "ListItem",
    "Placeholder",
    "PreviewError",
    "Run",
    "SeriesChange",
    "SeriesDetails",
    "Template",
    "chart",
    "open",
]
