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


def run(*command):
    return subprocess.run([sys.executable, *command], capture_output=True, text=True)


class Stubs(unittest.TestCase):
    def test_committed_stub_is_up_to_date(self):
        made = run(TOOLS / "generate_stubs.py")
        difference = difflib.unified_diff(STUB.read_text().splitlines(), made.stdout.splitlines(), lineterm="")
        self.assertEqual("\n".join(difference), "", "Renew it as python/tools/generate_stubs.py says." + made.stderr)

    def test_stub_agrees_with_the_classes(self):
        checked = run("-m", "mypy.stubtest", "quillon.chart", "quillon._core", "--concise", "--allowlist",
                      TOOLS / "stubtest_allowlist.txt", "--ignore-unused-allowlist")
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_type_checker_tells_right_from_wrong(self):
        lines = [*CORRECT.splitlines(), *WRONG]
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "script.py")
            path.write_text("\n".join(lines))
            checked = run("-m", "mypy", "--cache-dir", folder, "--no-error-summary", path)
        numbers = {int(line.split(":")[1]) for line in checked.stdout.splitlines() if ": error:" in line}
        self.assertEqual([lines[number - 1] for number in sorted(numbers)], WRONG)
