"""The committed type stubs are those of the registry, and agree with the classes at run time."""

import difflib
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).parents[2]
TOOLS = PROJECT / "python/tools"
STUB = PROJECT / "python/quillon/chart/__init__.pyi"

CORRECT = """
from quillon.chart import *
data = DataSet(("Q1", "Q2"))
data.Categories = ("Q1",)
data.appendSeries(DataSeries("North")).extend([1, 2.5])
value: float = data[0][0].Value
chart = ColumnChart()
chart.DataSet, chart.ChartTitle = data, None
border = SolidBorderFormat()
border.Color, border.DashType = "red", SolidBorderDashType.Dash
text: str = Title("Revenue").Text.Content[0].Content
rows: DataSet = from_rows([["", "North"], ["Q1", 1]])
"""
WRONG = [
    "DataSeries(1)", "DataPoint('1')", "DataSeries().Size = 1", "ColumnChart().DataSet = ''", "ColumnChart().Titel",
    "SolidBorderFormat().DashType = SolidBorderCapType.Flat", "DataSet().Categories = 5", "DataSeries().extend(['1'])",
]

#: A script as a user writes it who has the type checker at its strictest.
STRICT = """
import copy
import io
import typing
from quillon.chart import ColumnChart, DataSeries, DataSet, LineChart, Title, from_dataframe
import quillon.report
from quillon.docx import add_chart, charts
from quillon.report import ChartData, Document, Run, SeriesDetails

def make_chart(values: dict[str, list[float]]) -> ColumnChart:
    data = DataSet(["Q1", "Q2"])
    for name, numbers in values.items():
        data.add_series(name, numbers)
    chart = ColumnChart()
    chart.DataSet, chart.ChartTitle = data.without("North"), Title("Revenue")
    return chart

report = Document()
chart = make_chart({"North": [1.5, 2], "South": [2, 3]})
report.add_chart(chart, width="15cm", legend="bottom")
shape = add_chart(None, copy.deepcopy(chart), legend="none")
report.save(io.BytesIO(), progress=lambda done, total: print(done, total))
picture: bytes = chart.preview(legend="top")
if chart.DataSet:
    total: float = sum(chart.DataSet["South"].values) + sum(point.Value for point in chart.DataSet[0])
    typing.assert_type(chart.DataSet[0], DataSeries)
    typing.assert_type(chart.DataSet[:1], list[DataSeries])
data = ChartData.from_dataframe({"North": [1, 2]}, category_format="0")
data.series = [SeriesDetails(number_format="0.0")]
report.add_chart(ColumnChart(title="A", data=data), data, labels=["value"], gap=5, blank="zero", series_colors={"N": "red"})
report.add_paragraph(["a", Run("b", bold=True)])
quillon.report.chart({"North": [1]}, type="line", value_title="EUR").save("a.docx")
template = quillon.report.open("a.docx")
change: int = template.fill("Revenue", {"North": [1]}, match="position").points_after
template.insert("margin", chart, labels="value")
found: list[str] = [one.name for one in charts(None)]
is_same: bool = data.data_set.equals(from_dataframe({"North": [1, 2]}))
"""
STRICT_WRONG = [
    "chart.Titel = 3", "chart.ChartTitle = 'Revenue'", "report.add_chart(chart, legend='up')",
    "chart.preview(legend='up')", "add_chart(None, chart, legend='up')", "chart.nothing()", "data.data_set.ad_series('')",
    "data.category_kind = 'dates'", "LineChart().DataSet = data", "report.add_chart(chart, gap='5')",
    "report.add_chart(chart, labels=['values'])", "template.fill('Revenue', data, match='size')", "ColumnChart(titel='A')",
    "quillon.report.chart(data, type='donut')", "template.insert('a', chart, valuetitle='b')",
]


def run(*command):
    return subprocess.run([sys.executable, *command], capture_output=True, text=True)


class Stubs(unittest.TestCase):
    def test_committed_stub_is_up_to_date(self):
        made = run(TOOLS / "generate_stubs.py")
        difference = difflib.unified_diff(STUB.read_text().splitlines(), made.stdout.splitlines(), lineterm="")
        self.assertEqual("\n".join(difference), "", "Renew it as python/tools/generate_stubs.py says." + made.stderr)

    def test_keywords_of_options_are_up_to_date(self):
        made = run(TOOLS / "generate_options.py", "--check")
        self.assertEqual((made.returncode, made.stderr), (0, ""), "python/tools/generate_options.py renews them.")

    def test_stub_agrees_with_the_classes(self):
        checked = run("-m", "mypy.stubtest", "quillon.chart", "quillon._core", "--concise", "--allowlist",
                      TOOLS / "stubtest_allowlist.txt", "--ignore-unused-allowlist")
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_strict_type_checker_accepts_the_package(self):
        with tempfile.TemporaryDirectory() as folder:
            # pandas and python-docx come without types.
            checked = run("-m", "mypy", "--strict", "--ignore-missing-imports", "--cache-dir", folder, "-p", "quillon")
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_strict_type_checker_knows_what_users_write(self):
        lines = [*STRICT.splitlines(), *STRICT_WRONG]
        self.assertEqual(self.check(lines, "--strict"), STRICT_WRONG)

    def test_type_checker_tells_right_from_wrong(self):
        lines = [*CORRECT.splitlines(), *WRONG]
        self.assertEqual(self.check(lines), WRONG)

    def check(self, lines, *options):
        """The lines in which the type checker finds an error."""
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "script.py")
            path.write_text("\n".join(lines))
            checked = run("-m", "mypy", "--cache-dir", folder, "--no-error-summary", *options, path)
        numbers = {int(line.split(":")[1]) for line in checked.stdout.splitlines() if ": error:" in line}
        return [lines[number - 1] for number in sorted(numbers)]
