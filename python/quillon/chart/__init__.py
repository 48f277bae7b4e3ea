"""Charts: their data, their words and their formats.

The classes are those of the library, under the library's own names:

    data = DataSet(["Q1", "Q2", "Q3"])
    data.add_series("North", [1.5, 2.0, 3.25])
    data.add_series("South", [2.5, 1.75, 2.0])
    chart = ColumnChart()
    chart.DataSet, chart.ChartTitle = data, Title("Revenue")

The library's methods count from 1, and Python's brackets from 0: data.getSeries(1) is data[0], which is data["North"].
"""

from quillon import _core
from quillon.chart import _comfort
from quillon.chart._tables import from_dataframe, from_rows

_classes = _core.load_classes("quillon.chart", _comfort.bases)
globals().update(_classes)

__all__ = [*_classes, "from_dataframe", "from_rows"]
