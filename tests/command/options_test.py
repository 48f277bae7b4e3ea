"""Tests of the options of a chart from end to end: options_test.py QUILLON_REPORT.

A whole chart is read back, so that an option that changes more than it should is caught too.
"""

import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from xml.etree import ElementTree

COMMAND = os.path.abspath(sys.argv.pop())

NAMESPACES = {
    "a": "http://schemas.openxmlformats.org/drawingml/2006/main",
    "c": "http://schemas.openxmlformats.org/drawingml/2006/chart",
    "w": "http://schemas.openxmlformats.org/wordprocessingml/2006/main",
    "wp": "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing",
}

TABLE = b"Quarter,North,South\nQ1,1000,200\nQ2,3000,4000\n"
PIE = ["--type", "pie", "--columns", "North"]

# What is read of a chart: the part, the path of an element, and an attribute of it; "" is its text, and None whether it
# is there at all.
PLACES = {
    "direction": ("chart", ".//c:barDir", "val"),
    "title": ("chart", "./c:chart/c:title//a:t", ""),
    "heading": ("main", ".//w:pStyle/../../w:r/w:t", ""),
    "width": ("main", ".//wp:extent", "cx"),
    "height": ("main", ".//wp:extent", "cy"),
    "description": ("main", ".//wp:docPr", "descr"),
    "side": ("main", ".//wp:anchor/wp:positionH/wp:align", ""),
    "legend": ("chart", ".//c:legendPos", "val"),
    "workbook": ("chart", ".//c:externalData", None),
    "first color": ("chart", ".//c:ser[1]/c:spPr//a:solidFill/*", "val"),
    "second color": ("chart", ".//c:ser[2]/c:spPr//a:solidFill/*", "val"),
    "category title": ("chart", ".//c:catAx/c:title//a:t", ""),
    "value title": ("chart", ".//c:valAx/c:title//a:t", ""),
    "axis format": ("chart", ".//c:valAx/c:numFmt", "formatCode"),
    "cache format": ("chart", ".//c:formatCode", ""),
    "minimum": ("chart", ".//c:valAx/c:scaling/c:min", "val"),
    "maximum": ("chart", ".//c:valAx/c:scaling/c:max", "val"),
    "step": ("chart", ".//c:valAx/c:majorUnit", "val"),
    "base": ("chart", ".//c:valAx/c:scaling/c:logBase", "val"),
    "foot": ("chart", ".//c:catAx/c:crosses", "val"),
    "order": ("chart", ".//c:catAx/c:scaling/c:orientation", "val"),
    "crossing": ("chart", ".//c:valAx/c:crosses", "val"),
    "units": ("chart", ".//c:builtInUnit", "val"),
    "value lines": ("chart", ".//c:valAx/c:majorGridlines", None),
    "category lines": ("chart", ".//c:catAx/c:majorGridlines", None),
    "value ticks": ("chart", ".//c:valAx/c:tickLblPos", "val"),
    "tick labels": ("chart", ".//c:catAx/c:tickLblPos", "val"),
    "rotation": ("chart", ".//c:catAx/c:txPr/a:bodyPr", "rot"),
    "interval": ("chart", ".//c:tickLblSkip", "val"),
    "value labels": ("chart", ".//c:ser[1]/c:dLbls/c:showVal", "val"),
    "series labels": ("chart", ".//c:ser[1]/c:dLbls/c:showSerName", "val"),
    "label place": ("chart", ".//c:ser[1]/c:dLbls/c:dLblPos", "val"),
    "separator": ("chart", ".//c:ser[1]/c:dLbls/c:separator", ""),
    "label format": ("chart", ".//c:ser[1]/c:dLbls/c:numFmt", "formatCode"),
    "gap": ("chart", ".//c:gapWidth", "val"),
    "overlap": ("chart", ".//c:overlap", "val"),
    "grouping": ("chart", ".//c:grouping", "val"),
    "marker": ("chart", ".//c:ser[1]/c:marker/c:symbol", "val"),
    "smooth": ("chart", ".//c:ser[1]/c:smooth", "val"),
    "blank": ("chart", ".//c:dispBlanksAs", "val"),
    "angle": ("chart", ".//c:firstSliceAng", "val"),
    "explosion": ("chart", ".//c:explosion", "val"),
    "font": ("chart", "./c:txPr//a:latin", "typeface"),
    "size": ("chart", "./c:txPr//a:defRPr", "sz"),
    "frame": ("chart", "./c:spPr/a:ln/a:solidFill", None),
    "table": ("chart", ".//c:dTable", None),
}

# What a column chart of the table is without options; None is not there.
COLUMNS = dict.fromkeys(PLACES) | {
    "width": "5486400", "height": "3200400",
    "description": "Column chart; series North, South; values from 200 to 4000",
    "legend": "b", "workbook": True, "second color": "accent2", "first color": "accent1",
    "direction": "col", "axis format": "#,##0", "cache format": "General", "foot": "autoZero", "order": "minMax",
    "crossing": "autoZero", "value lines": True, "category lines": False, "value ticks": "nextTo", "tick labels": "low",
    "rotation": "-60000000", "gap": "219", "grouping": "clustered", "blank": "gap", "size": "900", "frame": False, "table": False,
}

# The differences of other charts without options.
LINES = {"direction": None, "description": "Line chart; series North, South; values from 200 to 4000", "gap": None,
         "grouping": "standard", "marker": "none", "smooth": "0"}
BARS = {"direction": "bar", "description": "Bar chart; series North, South; values from 200 to 4000", "order": "maxMin",
        "crossing": "max"}
SLICES = {"direction": None, "description": "Pie chart; series North; values from 1000 to 3000", "second color": None,
          "axis format": None, "foot": None, "order": None, "crossing": None, "value lines": False, "value ticks": None, "tick labels": None,
          "rotation": None, "gap": None, "grouping": None}
LABELS = {"value labels": "1", "series labels": "0", "label format": "#,##0"}

# Options, and the differences that they make to a column chart.
OPTIONS = [
    ([], {}),
    (["--type", "line"], LINES),
    (["--type", "bar"], BARS),
    (PIE, SLICES),
    (["--title", "Sales"], {"title": "Sales", "description": "Column chart: Sales; series North, South; values from 200 to 4000"}),
    (["--heading", "Sales"], {"heading": "Sales"}),
    (["--width", "10cm"], {"width": "3600000"}),
    (["--height", "10cm"], {"height": "3600000"}),
    (["--legend", "top"], {"legend": "t"}),
    (["--alt-text", "Up"], {"description": "Up"}),
    (["--no-workbook"], {"workbook": False}),
    (["--float", "left"], {"side": "left"}),
    (["--category-title", "2024"], {"category title": "2024"}),
    (["--value-title", "EUR"], {"value title": "EUR"}),
    (["--number-format", "0.0"], {"axis format": "0.0", "cache format": "0.0"}),
    (["--value-min=-5"], {"minimum": "-5"}),
    (["--value-max", "9000"], {"maximum": "9000"}),
    (["--value-step", "2.5e2"], {"step": "250"}),
    (["--log", "10"], {"base": "10", "foot": "min"}),
    (["--reverse"], {"order": "maxMin", "crossing": "max"}),
    (["--type", "bar", "--reverse"], BARS | {"order": "minMax", "crossing": "autoZero"}),
    (["--units", "hundreds"], {"units": "hundreds"}),
    (["--gridlines", "category"], {"value lines": False, "category lines": True}),
    (["--no-value-axis"], {"value ticks": "none"}),
    (["--tick-labels", "none"], {"tick labels": "none"}),
    (["--tick-rotation", "90"], {"rotation": "-5400000"}),
    (["--tick-interval", "2"], {"interval": "2"}),
    (["--labels", "value"], LABELS),
    (["--labels", "value,series"], LABELS | {"series labels": "1", "separator": ", "}),
    (["--labels", "value", "--label-position", "inEnd"], LABELS | {"label place": "inEnd"}),
    (["--labels", "value,series", "--label-separator", "space"], LABELS | {"series labels": "1", "separator": " "}),
    (["--labels", "value", "--label-format", "0.00"], LABELS | {"label format": "0.00"}),
    (["--gap", "50"], {"gap": "50"}),
    (["--overlap=-10"], {"overlap": "-10"}),
    (["--stacking", "normal"], {"grouping": "stacked", "overlap": "100"}),
    (["--type", "line", "--markers"], LINES | {"marker": "circle"}),
    (["--type", "line", "--smooth"], LINES | {"smooth": "1"}),
    (["--blank", "zero"], {"blank": "zero"}),
    (["--colors", "red"], {"first color": "FF0000"}),
    (["--palette", "red,lime"], {"first color": "FF0000", "second color": "00FF00"}),
    (["--series-colors", "South=lime"], {"second color": "00FF00"}),
    ([*PIE, "--start-angle", "45"], SLICES | {"angle": "45"}),
    ([*PIE, "--explosion", "10"], SLICES | {"explosion": "10"}),
    (["--font", "Arial"], {"font": "Arial"}),
    (["--font-size", "11"], {"size": "1100"}),
    (["--frame"], {"frame": True}),
    (["--data-table"], {"table": True}),
]


def read(tree, path, attribute):
    """What is at a path: the texts or attributes of all that it finds, without repetition, or whether it finds any."""
    found = tree.findall(path, NAMESPACES)
    if attribute is None:
        return bool(found)
    texts = [element.get(attribute) if attribute else element.text for element in found]
    return ", ".join(dict.fromkeys(text for text in texts if text)) or None


def read_chart(path):
    with zipfile.ZipFile(path) as file:
        trees = {"chart": ElementTree.fromstring(file.read("word/charts/chart1.xml")),
                 "main": ElementTree.fromstring(file.read("word/document.xml"))}
    return {name: read(trees[part], place, attribute) for name, (part, place, attribute) in PLACES.items()}


MORE_TABLE = b"X,North,South,East\n1,1000,200,5\n2,3000,4000,6\n3,3500,4200,7\n4,3600,4300,8\n"
SECOND = ["--second", "South"]
SCATTER = ["--type", "scatter", "--columns", "North"]
TREND = ["--trendline", "linear"]
BARS = ["--error-bars", "fixed"]
SECOND_AXIS = ".//c:valAx[2]"
X_AXIS = ".//c:valAx[1]"

# Options, where they show in the chart part (behind "@" an attribute), and what stands there.
MORE_OPTIONS = [
    (["--line", "South"], ".//c:lineChart/c:ser/c:idx@val", ["1"]),
    (["--type", "line", "--area", "South"], ".//c:areaChart/c:ser/c:idx@val", ["1"]),
    (["--type", "line", "--column", "East"], ".//c:barChart/c:ser/c:idx@val", ["2"]),
    (SECOND, ".//c:barChart[2]/c:ser/c:idx@val", ["1"]),
    ([*SECOND, "--second-title", "EUR"], SECOND_AXIS + "/c:title//a:t", ["EUR"]),
    ([*SECOND, "--second-format", "0.0"], SECOND_AXIS + "/c:numFmt@formatCode", ["0.0"]),
    ([*SECOND, "--second-min=-5"], SECOND_AXIS + "/c:scaling/c:min@val", ["-5"]),
    ([*SECOND, "--second-max", "5000"], SECOND_AXIS + "/c:scaling/c:max@val", ["5000"]),
    ([*SECOND, "--second-step", "500"], SECOND_AXIS + "/c:majorUnit@val", ["500"]),
    ([*SECOND, "--second-log", "10"], SECOND_AXIS + "/c:scaling/c:logBase@val", ["10"]),
    ([*SCATTER, "--x-title", "Year"], X_AXIS + "/c:title//a:t", ["Year"]),
    ([*SCATTER, "--x-format", "0.0"], X_AXIS + "/c:numFmt@formatCode", ["0.0"]),
    ([*SCATTER, "--x-min", "1"], X_AXIS + "/c:scaling/c:min@val", ["1"]),
    ([*SCATTER, "--x-max", "4"], X_AXIS + "/c:scaling/c:max@val", ["4"]),
    ([*SCATTER, "--x-step", "0.5"], X_AXIS + "/c:majorUnit@val", ["0.5"]),
    ([*SCATTER, "--x-log", "2"], X_AXIS + "/c:scaling/c:logBase@val", ["2"]),
    ([*SCATTER, "--scatter-style", "both"], ".//c:scatterStyle@val", ["lineMarker"]),
    (["--type", "doughnut", "--columns", "North", "--hole", "40"], ".//c:holeSize@val", ["40"]),
    (["--type", "radar", "--filled"], ".//c:radarStyle@val", ["filled"]),
    (["--type", "bubble", "--size-series", "East"], ".//c:ser[1]/c:bubbleSize//c:v", ["5", "6", "7", "8"]),
    (["--type", "waterfall", "--columns", "East", "--totals", "3"], ".//c:grouping@val", ["stacked"]),
    (["--category-type", "number"], ".//c:ser[1]/c:cat/c:numRef//c:v", ["1", "2", "3", "4"]),
    (["--category-colors", "2=red,4=red"], ".//c:ser[3]/c:dPt/c:idx@val", ["1", "3"]),
    (["--type", "line", "--dashed", "East"], ".//c:ser[3]/c:spPr/a:ln/a:prstDash@val", ["dash"]),
    (["--stacking", "normal", "--hidden", "East"], ".//c:legendEntry/c:idx@val", ["2"]),
    (["--type", "line", "--drop-lines"], ".//c:lineChart/c:dropLines", [""]),
    (["--type", "line", "--high-low-lines"], ".//c:lineChart/c:hiLowLines", [""]),
    (["--type", "line", "--up-down-bars"], ".//c:lineChart/c:upDownBars", [""]),
    (TREND, ".//c:trendlineType@val", ["linear"] * 3),
    ([*TREND, "--trendline-series", "South"], ".//c:ser[2]/c:trendline/c:trendlineType@val", ["linear"]),
    (["--trendline", "polynomial", "--order", "3"], ".//c:ser[1]/c:trendline/c:order@val", ["3"]),
    (["--trendline", "moving-average", "--period", "2"], ".//c:ser[1]/c:trendline/c:period@val", ["2"]),
    ([*TREND, "--forecast", "1.5"], ".//c:ser[1]/c:trendline/c:forward@val", ["1.5"]),
    ([*TREND, "--backcast", "0.5"], ".//c:ser[1]/c:trendline/c:backward@val", ["0.5"]),
    ([*TREND, "--equation"], ".//c:ser[1]/c:trendline/c:dispEq@val", ["1"]),
    ([*TREND, "--r-squared"], ".//c:ser[1]/c:trendline/c:dispRSqr@val", ["1"]),
    ([*BARS, "--error-value", "3"], ".//c:ser[1]/c:errBars/c:val@val", ["3"]),
    (["--plus-series", "East"], ".//c:ser[1]/c:errBars/c:plus//c:v", ["5", "6", "7", "8"]),
    (["--minus-series", "East"], ".//c:ser[1]/c:errBars/c:minus//c:v", ["5", "6", "7", "8"]),
]


class OptionsTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        with open(os.path.join(self.folder, "t.csv"), "wb") as file:
            file.write(TABLE)
        with open(os.path.join(self.folder, "m.csv"), "wb") as file:
            file.write(MORE_TABLE)

    def run_command(self, *arguments):
        return subprocess.run([COMMAND, *arguments], cwd=self.folder, capture_output=True, text=True, check=False)

    def test_each_option_changes_what_it_is_named_for(self):
        for options, changes in OPTIONS:
            with self.subTest(options=options):
                result = self.run_command("t.csv", *options, "-o", "out.docx")
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
                self.assertEqual(read_chart(os.path.join(self.folder, "out.docx")), COLUMNS | changes)

    def test_each_option_of_other_types_is_written(self):
        for options, place, expected in MORE_OPTIONS:
            with self.subTest(options=options):
                result = self.run_command("m.csv", *options, "-o", "out.docx")
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                with zipfile.ZipFile(os.path.join(self.folder, "out.docx")) as package:
                    chart = ElementTree.fromstring(package.read("word/charts/chart1.xml"))
                path, _, attribute = place.partition("@")
                found = [element.get(attribute) if attribute else element.text or ""
                         for element in chart.iterfind(path, NAMESPACES)]
                self.assertEqual(found, expected)

    def test_no_option_is_forgotten(self):
        page = self.run_command("--options").stdout
        names = {line[len("### `"):-1] for line in page.splitlines() if line.startswith("### ")}
        tested = {option.lstrip("-").partition("=")[0] for options in
                  [*(row[0] for row in OPTIONS), *(row[0] for row in MORE_OPTIONS)] for option in options
                  if option.startswith("--")}
        # Needs dates or numbers as categories.
        self.assertEqual(names - tested, {"category-format"})

    def test_refuses_an_option_with_its_name(self):
        cases = [
            (["--gap", "501"], "--gap: expected a whole number from 0 to 500, got 501."),
            (["--gap", "wide"], '--gap: expected a whole number from 0 to 500, got "wide".'),
            (["--type", "pie", "--columns", "North", "--gap", "5"],
             "gap is for column, bar or waterfall charts; this is a pie chart."),
            (["--number-format", '0"'], '--number-format: "0"" is not a number format; a quote stays open.'),
            (["--labels", "values"], '--labels: expected value, percent, category or series, got "values"; did you mean "value"?'),
            (["--label-position", "t"],
             "label-position: the labels of a column chart stand at ctr, inEnd, inBase or outEnd, not at t."),
        ]
        for options, sentence in cases:
            with self.subTest(options=options):
                result = self.run_command("t.csv", *options, "-o", "out.docx")
                self.assertEqual((result.returncode, result.stdout, result.stderr), (1, "", f"quillon-report: {sentence}\n"))


if __name__ == "__main__":
    unittest.main()
