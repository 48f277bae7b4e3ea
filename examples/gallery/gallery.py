"""The charts of the gallery from Python, each in a function of its own: reads the tables of the current folder."""

import pandas

from quillon import report
from quillon.chart import ColumnChart


def revenue_target():
    frame = pandas.read_csv("revenue-target.csv", index_col="Month")
    report.chart(
        frame, "December took us past the year’s target", type="column", gap=60,
        value_title="Revenue, EUR thousand", value_max=400, value_step=100,
        line=["Target reached"], second=["Target reached"], second_title="Share of the year’s target",
        second_format="0%", second_max=1.2, second_step=0.3,
    ).save("revenue-target.docx")


def heating():
    frame = pandas.read_csv("heating.csv", index_col="Month")
    report.chart(
        frame, "Only March took more heat than last year", type="column", line=["2024"], markers=True,
        value_title="Heat, MWh", value_step=100, gap=50, legend="top",
        series_colors={"2025": "#4472C4", "2024": "#7F7F7F"},
    ).save("heating.docx")


def budget():
    frame = pandas.read_csv("budget.csv", index_col="Step")
    report.chart(
        frame, "Savings pay for four fifths of what is new, EUR million", type="waterfall", totals=["2025", "2026"],
        labels="value", label_format="0.0", gap=30, legend="none", gridlines="none", no_value_axis=True,
    ).save("budget.docx")


def survey():
    frame = pandas.read_csv("survey.csv", index_col="Statement")
    report.chart(
        frame, "We know our work, but not why we meet", type="bar", stacking="percent",
        labels="value", label_format='0"%"', gap=40, gridlines="none", no_value_axis=True,
        legend="top", colors=["#7FB3D5", "#E5E7E9", "#F0B27A"],
    ).save("survey.docx")


def heat_sources():
    frame = pandas.read_csv("heat-sources.csv", index_col="Source")
    report.chart(
        frame, "Three quarters of all homes heat without oil and gas", type="doughnut",
        labels="percent", legend="right",
    ).save("heat-sources.docx")


def price():
    frame = pandas.read_csv("price.csv", index_col="Week", parse_dates=True)
    report.chart(
        frame, "The price rose by a third, after a weak summer", type="line", trendline="moving-average", period=8,
        value_title="EUR per kg", number_format="General", value_min=20,
    ).save("price.docx")


def population():
    frame = pandas.read_csv("population.csv", index_col="Age")
    report.chart(
        frame, "Women live longer", type="bar", number_format="0;0", overlap=100, gap=10, legend="none",
        colors=["#8E6C9E", "#3E8E8C"],
        value_title="←  Women          Share of each, %          Men  →", value_min=-8, value_max=8, value_step=2,
    ).save("population.docx")


def ice_cream():
    frame = pandas.read_csv("ice-cream.csv", index_col="Temperature")
    report.chart(
        frame, "Each degree sells thirteen more ice creams", type="scatter", trendline="linear",
        x_title="Temperature at noon, °C", x_min=10, x_max=40, x_step=5, value_title="Ice creams a day", value_step=100,
        colors=["#D9603B"],
    ).save("ice-cream.docx")


def products():
    frame = pandas.read_csv("products.csv", index_col="Margin")
    report.chart(
        frame, "What earns most grows fastest", type="bubble", size_series=["Revenue"],
        x_title="Margin, %", x_min=5, x_max=55, value_title="Growth, %", legend="top",
    ).save("products.docx")


def bicycles():
    frame = pandas.read_csv("bicycles.csv", index_col="Criterion")
    report.chart(
        frame, "Two bicycles, two purposes", type="radar", markers=True, value_max=10, value_step=2,
        no_value_axis=True, legend="right",
    ).save("bicycles.docx")


def share_price():
    frame = pandas.read_csv("share-price.csv", index_col="Day", parse_dates=True)
    report.chart(
        frame, "Shares recovered in the second half of September", type="stock", value_title="EUR",
        number_format="General", value_min=54, category_format="d", category_title="September 2025",
    ).save("share-price.docx")


def small_multiples():
    frame = pandas.read_csv("small-multiples.csv", parse_dates=["Month"])
    titles = {"Coastal": "Rain on the coast, mm", "Inland": "Rain inland, mm", "Southern": "Rain in the south, mm"}
    look = {"category_format": "mmmmm", "height": "2.2in", "font_size": 8, "gap": 20, "value_max": 150, "value_step": 50,
            "colors": ["#2E86AB"]}
    document = report.Document()
    document.add_charts([
        (ColumnChart(title=titles[city]), report.ChartData.from_dataframe(rows.set_index("Month")[["Rain"]]), look)
        for city, rows in frame.groupby("City")
    ])
    document.save("small-multiples.docx")


def seedlings():
    frame = pandas.read_csv("seedlings.csv", index_col="Day")
    report.chart(
        frame, "Growth slows after two weeks", type="line", markers=True,
        plus_series=["Spread"], minus_series=["Spread"], value_title="Height, mm", value_max=140, value_step=20,
        colors=["#5B8C3A"],
    ).save("seedlings.docx")


def electricity():
    frame = pandas.read_csv("electricity.csv", index_col="Year", parse_dates=True)
    report.chart(
        frame, "Wind has overtaken water", type="area", stacking="normal", category_format="yyyy", value_title="TWh",
        colors=["#3D7EA6", "#9CC5A1", "#F2C14E"],
    ).save("electricity.docx")


def branches():
    frame = pandas.read_csv("branches.csv", index_col="Branch")
    report.chart(
        frame, "Harbour and Station grow fastest, sales in EUR million", type="column",
        labels="value", label_format="0.0", gridlines="none", no_value_axis=True, gap=60,
        legend="top", colors=["#BDD7EE", "#5B9BD5", "#1F4E79"],
    ).save("branches.docx")


def day():
    frame = pandas.read_csv("day.csv", index_col="Activity")
    report.chart(
        frame, "Where the hours of a day go", type="pie", labels=["category", "value"], label_position="outEnd",
        label_format='0.0" h"', explosion=6, legend="none",
        palette=["#34568B", "#E98973", "#88B2CC", "#E7B10A", "#7FA99B", "#A9907E"],
    ).save("day.docx")


def guests():
    frame = pandas.read_csv("guests.csv", index_col=["Year", "Quarter"])
    report.chart(
        frame, "Each summer brings more guests", type="column", number_format="#,##0", value_step=4000, gap=30,
        colors=["#E0A030"],
    ).save("guests.docx")


def users():
    frame = pandas.read_csv("users.csv", index_col="Year", parse_dates=True)
    report.chart(
        frame, "Users grow tenfold every two years", type="line", markers=True, log=10,
        category_format="yyyy", value_title="Users",
    ).save("users.docx")


def complaints():
    frame = pandas.read_csv("complaints.csv", index_col="Reason")
    top = frame.nlargest(6, "Complaints")
    top.loc["Other"] = frame.drop(top.index).sum()
    report.chart(
        top, "Four in ten complaints are about late deliveries", type="bar",
        labels="value", gridlines="none", no_value_axis=True, gap=40, colors=["#B5483F"],
    ).save("complaints.docx")


def punctuality():
    frame = pandas.read_csv("punctuality.csv", index_col="Line")
    report.chart(
        frame, "Only line 3 missed its target", type="column", line=["Target"], dashed=["Target"], gap=50,
        category_title="Line", value_title="Trains on time, %", value_max=100, value_step=20,
        series_colors={"On time": "#8FA8BF", "Target": "#404040"}, category_colors={"3": "#C0504D"},
    ).save("punctuality.docx")


def forecast():
    frame = pandas.read_csv("forecast.csv", index_col="Year", parse_dates=True)
    report.chart(
        frame, "Next year passes half a million visitors", type="line", dashed=["Forecast"], category_format="yyyy",
        value_title="Visitors, thousand", value_min=0, series_colors={"Visitors": "#1F4E79", "Forecast": "#1F4E79"},
    ).save("forecast.docx")


def schedule():
    frame = pandas.read_csv("schedule.csv", index_col="Task")
    report.chart(
        frame, "We move in after 25 weeks", type="bar", stacking="normal", hidden=["Start"],
        labels="value", label_format='0" wk"', value_title="Week", value_step=5, gap=40,
        series_colors={"Weeks": "#3D7EA6"},
    ).save("schedule.docx")


def defects():
    frame = pandas.read_csv("defects.csv", index_col="Cause")
    report.chart(
        frame, "Two causes make three fifths of all defects", type="column", line=["Share of all"],
        second=["Share of all"], second_format="0%", second_min=0, second_max=1, second_step=0.25, markers=True,
        value_title="Defects", value_max=60, value_step=15, gap=20, legend="top",
    ).save("defects.docx")


def downtime():
    frame = pandas.read_csv("downtime.csv", index_col="Year")
    report.chart(
        frame, "Hours of downtime a year", type="column", labels="value", gridlines="none", no_value_axis=True,
        gap=30, width="3in", height="2in",
    ).save("downtime.docx")


if __name__ == "__main__":
    for make in (
        revenue_target, heating, budget, survey, heat_sources, price, population, ice_cream, products, bicycles,
        share_price, small_multiples, seedlings, electricity, branches, day, guests, users, complaints, downtime,
        punctuality, forecast, schedule, defects,
    ):
        make()
