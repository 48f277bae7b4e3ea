"""Tables in memory as charts: a dictionary of columns, and a data frame of pandas, if it is there."""

import datetime

from quillon.chart import ColumnChart, LineChart, Title, from_dataframe
from quillon.report import ChartData, Document

report = Document()


def add_chart(kind, title, data):
    chart = kind()
    chart.DataSet, chart.ChartTitle = data, Title(title)
    report.add_chart(chart, height="7cm")


# The first column names the categories if it holds text or dates. None leaves a gap.
visits = {"Day": ["Mon", "Tue", "Wed"], "Desk": [40, 38, None], "Phone": [61, 55, 58]}
add_chart(ColumnChart, "Visits", from_dataframe(visits))

# Chart data keeps dates as dates, beside the data set that shows them as text.
days = [datetime.date(2024, 3, day) for day in (1, 2, 5)]
levels = ChartData.from_dataframe({"Day": days, "Upper": [2.1, 2.2, 2.4], "Lower": [0.9, 1.0, 1.2]})
print(levels.category_kind, list(levels.category_values))
add_chart(LineChart, "Level in metres", levels.data_set.without("Lower"))

try:
    import pandas
except ImportError:
    print("Without pandas: sudo apt install python3-pandas")
else:
    frame = pandas.DataFrame({"Region": ["North", "North", "South"], "Year": [2023, 2024, 2024], "Sold": [5, 7, 6]})
    add_chart(ColumnChart, "Sold", from_dataframe(frame.pivot(index="Region", columns="Year", values="Sold")))

report.save("tables.docx")
