"""Tests of the command from end to end: command_test.py QUILLON_REPORT."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from xml.etree import ElementTree

CHART = "{http://schemas.openxmlformats.org/drawingml/2006/chart}"
COMMAND = os.path.abspath(sys.argv.pop())

WIDE = b"Quarter,North,South\nQ1,1.5,-2\nQ2,3e2,+4\n"
WIDE_CHART = ("bar", ["Q1", "Q2"], {"North": ["1.5", "300"], "South": ["-2", "4"]})
LONG = b"year,source,net\n2001,Coal,1\n2001,Wind,2\n2002,Wind,3\n2002,Coal,4\n"
LONG_CHART = ("line", ["2001", "2002"], {"Coal": ["1", "4"], "Wind": ["2", "3"]})
AS_LONG = ["--type", "line", "--series", "source", "--value", "net"]

# A table, options, and the charts that they make.
ACCEPTED = [
    (WIDE, [], [WIDE_CHART]),
    (WIDE, ["--columns", "South"], [("bar", ["Q1", "Q2"], {"South": ["-2", "4"]})]),
    (WIDE, ["--category", "South", "--columns", "North"], [("bar", ["-2", "+4"], {"North": ["1.5", "300"]})]),
    (b"\xef\xbb\xbf" + WIDE, ["--category", "Quarter"], [WIDE_CHART]),
    (WIDE.replace(b"\n", b"\r\n"), [], [WIDE_CHART]),
    (WIDE.decode().encode("utf-16"), [], [WIDE_CHART]),
    (WIDE.rstrip() + b"\n\n", [], [WIDE_CHART]),
    (WIDE.replace(b",", b";"), [], [WIDE_CHART]),
    (WIDE.replace(b",", b"\t"), [], [WIDE_CHART]),
    (WIDE.replace(b",", b"\t"), ["--delimiter", "tab"], [WIDE_CHART]),
    (b'"Place, name";"He said ""go"""\n"two\nlines";1\n"a;b";2\n', [],
     [("bar", ["two\nlines", "a;b"], {'He said "go"': ["1", "2"]})]),
    ("Ort,Größe\nKöln,1\n漢字,2\n".encode(), [], [("bar", ["Köln", "漢字"], {"Größe": ["1", "2"]})]),
    (b"A,B\nx,\ny,1\n", ["--gaps"], [("bar", ["x", "y"], {"B": [None, "1"]})]),
    (LONG, AS_LONG, [LONG_CHART]),
    (LONG[:-12], [*AS_LONG, "--gaps"], [("line", ["2001", "2002"], {"Coal": ["1", None], "Wind": ["2", "3"]})]),
    (WIDE, ["--type", "pie", "--columns", "North"], [("pie", ["Q1", "Q2"], {"North": ["1.5", "300"]})]),
    (WIDE, ["more.csv", *AS_LONG], [WIDE_CHART, LONG_CHART]),
]

# A table, options, and the sentence with which they are refused.
REFUSED = [
    (b"", [], "t.csv: the table is empty; expected a header row and rows of data."),
    (b"\n\n", [], "t.csv: the table is empty; expected a header row and rows of data."),
    (b"A,B\n", [], "t.csv: the table has a header row and no rows of data."),
    (b"A,\nx,1\n", [], "t.csv:1: column 2 has no name."),
    (b'A,B\n"x\ny",1\nz,1,2\n', [], "t.csv:4: expected 2 fields, as in the header row, got 3."),
    (b"A,B\r\nx,1\r\ny\r\n", [], "t.csv:3: expected 2 fields, as in the header row, got 1."),
    (b'A,B\nx,"1\n', [],
     "t.csv:2: a quote is not closed, or stands inside a field; quote the whole field and double each quote in it."),
    (b"A,B\nx,1\n\xff,2\n", [], "t.csv:3: field 1 is not in UTF-8; name its encoding, as in --encoding windows-1252."),
    (b"A,B\nx,\x001\n", [], 
     "t.csv:2: the file holds a zero byte; expected text, in UTF-8 or in the --encoding that you name."),
    (b"A,B\nx,1\ny,1.5 kg\n", [], 't.csv:3: column "B": expected a number, as in -1.5, got "1.5 kg".'),
    (b"A,B\nx,1\ny,+-5\n", [], 't.csv:3: column "B": expected a number, as in -1.5, got "+-5".'),
    (b"\n\nA;\nx;1\n", [], "t.csv:3: column 2 has no name."),
    (b"A,B\nx,1\ny,inf\n", [],
     't.csv:3: column "B": expected a number, as in -1.5, got "inf"; --missing names texts that stand for no value.'),
    (b"A,B\nx,1\ny,\n", [],
     't.csv:3: column "B": expected a number, as in -1.5, got an empty cell; --gaps or --blank accepts such cells.'),
    (b"A,B\nx,1\ny,?\n", ["--gaps"],
     't.csv:3: column "B": expected a number, as in -1.5, or an empty cell, got "?"; '
     "--missing names texts that stand for no value."),
    (b"A,B\nx,1e308\n", [],
     'chart 1, series 1 ("B"), point 1: the value is 1e+308; '
     "a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN."),
    (b"A,B\nx,1\n" + b"y" * 32768 + b",2\n", [],
     't.csv: the text "' + "y" * 40 + '..." (32,768 characters) is too long; '
     "a chart takes texts of up to 32767 characters."),
    (WIDE, ["--columns", "East"], 't.csv: there is no column "East"; the columns are "Quarter", "North", "South".'),
    (LONG + b"2001,Coal,5\n", AS_LONG,
     't.csv:6: a second value for source "Coal" and year "2001"; a long table has one for each pair, '
     "and --aggregate makes one of several."),
    (LONG[:-12], AS_LONG, 't.csv: no value for source "Coal" and category "2002"; add the row, or ask for --gaps.'),
    (LONG, ["--series", "source"],
     "A long table needs both --series, the column of series names, and --value, the column of values."),
    (WIDE, ["--type", "pie"], "t.csv: a pie shows one series, the table gives 2; choose one with --columns."),
    (WIDE, ["--type", "donut"], '--type: expected column, bar, line, pie, area, doughnut, scatter, bubble, radar, stock or waterfall, got "donut".'),
    (WIDE, ["--legend", "north"], '--legend: expected auto, none, right, top, left or bottom, got "north".'),
    (WIDE, ["--delimiter", "pipe"], 'Delimiter "pipe": expected comma, semicolon or tab.'),
    (WIDE, ["--width", "wide"], '--width: expected a number followed by cm, mm, in or pt, as in 15cm, got "wide".'),
    (WIDE, ["--colors", "red,rgb(0,0,256)"],
     '--colors: "rgb(0,0,256)" is no colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up to 255.'),
    (WIDE, ["--colors", "red,red,red"], "chart 1: Got 3 colours for 2 series; give at most one for each."),
    (WIDE, ["--title", "a\x01"],
     "chart 1, title: character 2 (U+0001) cannot stand in a document; "
     "only tab and line break of the control characters can."),
    (WIDE, ["missing.csv"], 'chart 2: Cannot read "missing.csv": No such file or directory.'),
    (WIDE, ["."], 'chart 2: Cannot read ".": it is a folder.'),
]

# A job file, and the sentence with which it is refused.
REFUSED_JOBS = [
    ("[]", 'job.json: expected an object with the one member "charts", a list.'),
    ('{"charts": []}', "job.json: the list of charts is empty."),
    ('{"charts": [1]}', "job.json: chart 1: expected an object."),
    ('{"charts": [{}]}', 'job.json: chart 1: expected a member "table", the path of a CSV file.'),
    ('{"charts": [{"table": 1}]}', 'job.json: chart 1, "table": expected a text.'),
    ('{"charts": [{"table": "t.csv", "gaps": "yes"}]}', 'job.json: chart 1, "gaps": expected true or false.'),
    ('{"charts": [{"table": "t.csv", "columns": 1}]}', 'job.json: chart 1, "columns": expected a list of texts.'),
    ('{"charts": [{"table": "t.csv", "colour": "red"}]}', 'job.json: chart 1, "colour": unknown member'),
    ('{"charts": ', "job.json: not well-formed JSON: parse error at line 1"),
]

# Where "taken" is a folder: the exit status, the arguments, and the sentence with which they are refused.
REFUSED_CALLS = [
    (2, ["t.csv"], "Expected --output, the document to write."),
    (2, ["-o", "out.docx"], "Expected at least one TABLE"),
    (2, ["t.csv", "--colour", "red", "-o", "out.docx"], "The following argument was not expected: --colour"),
    (2, ["t.csv", "--job", "job.json", "-o", "out.docx"], "TABLE excludes --job"),
    (2, ["--job", "job.json", "--type", "bar", "-o", "out.docx"], "--job excludes --type"),
    (1, ["t.csv", "-o", "./t.csv"], 'Cannot write "./t.csv": the charts are made from it.\n'),
    (1, ["t.csv", "-o", "no/out.docx"], 'Cannot write "no/out.docx": No such file or directory.\n'),
    (1, ["t.csv", "-o", "taken"], 'Cannot write "taken": Is a directory.\n'),
]


def read_texts(cache):
    count = int(cache.find(f"{CHART}ptCount").get("val"))
    points = {int(point.get("idx")): point.find(f"{CHART}v").text for point in cache.findall(f"{CHART}pt")}
    return [points.get(position) for position in range(count)]


def read_chart(part):
    """The type, the categories, and the values of each series of a chart part."""
    tree = ElementTree.fromstring(part)
    group = next(element for element in tree.find(f".//{CHART}plotArea") if element.tag.endswith("Chart"))
    series = group.findall(f"{CHART}ser")
    return (
        group.tag[len(CHART) : -len("Chart")],
        read_texts(series[0].find(f"{CHART}cat//{CHART}strCache")),
        {
            read_texts(one.find(f"{CHART}tx//{CHART}strCache"))[0]: read_texts(one.find(f".//{CHART}numCache"))
            for one in series
        },
    )


def read_charts(path):
    with zipfile.ZipFile(path) as file:
        names = [name for name in file.namelist() if name.startswith("word/charts/chart")]
        return [read_chart(file.read(name)) for name in sorted(names)]


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name, content):
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(content)

    def run_command(self, *arguments):
        return subprocess.run([COMMAND, *arguments], cwd=self.folder, capture_output=True, text=True, check=False)

    def require_refusal(self, status, sentence, *arguments):
        """The command refuses, says the sentence, and leaves no file."""
        before = sorted(os.listdir(self.folder))
        result = self.run_command(*arguments)
        self.assertIn(f"quillon-report: {sentence}", result.stderr)
        self.assertEqual((result.returncode, result.stdout), (status, ""))
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_makes_the_charts_of_tables(self):
        self.write("more.csv", LONG)
        for table, options, charts in ACCEPTED:
            with self.subTest(table=table, options=options):
                self.write("t.csv", table)
                result = self.run_command("t.csv", *options, "-o", "out.docx")
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
                self.assertEqual(read_charts(os.path.join(self.folder, "out.docx")), charts)

    def test_refuses_tables_and_options(self):
        for table, options, sentence in REFUSED:
            with self.subTest(table=table, options=options):
                self.write("t.csv", table)
                self.require_refusal(1, sentence + "\n", "t.csv", *options, "-o", "out.docx")

    def test_refuses_job_files(self):
        for job, sentence in REFUSED_JOBS:
            with self.subTest(job=job):
                self.write("job.json", job.encode())
                self.require_refusal(1, sentence, "--job", "job.json", "-o", "out.docx")

    def test_refuses_wrong_calls(self):
        self.write("t.csv", WIDE)
        os.mkdir(os.path.join(self.folder, "taken"))
        for status, arguments, sentence in REFUSED_CALLS:
            with self.subTest(arguments=arguments):
                self.require_refusal(status, sentence, *arguments)

    def test_makes_the_charts_of_a_job_file(self):
        os.mkdir(os.path.join(self.folder, "jobs"))
        self.write("jobs/t.csv", WIDE)
        self.write("jobs/long.csv", LONG)
        job = {
            "charts": [
                {"table": "t.csv", "type": "column", "colors": ["red"], "gaps": True},
                {"table": "long.csv", "type": "line", "series": "source", "value": "net"},
            ]
        }
        self.write("jobs/job.json", json.dumps(job).encode())
        result = self.run_command("--job", "jobs/job.json", "-o", "out.docx")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(read_charts(os.path.join(self.folder, "out.docx")), [WIDE_CHART, LONG_CHART])

    def test_warns_of_what_a_chart_does_not_show(self):
        self.write("t.csv", b"A,B,C\nx,1,dry\ny,-2,wet\n")
        result = self.run_command("t.csv", "--type", "pie", "-o", "out.docx")
        self.assertEqual(
            result.stderr,
            'quillon-report: warning: t.csv: column "C" holds no numbers, as in -1.5, and is left out.\n'
            'quillon-report: warning: t.csv: the value of "y" is negative; a pie shows only its size.\n',
        )
        self.assertEqual(result.returncode, 0)


if __name__ == "__main__":
    unittest.main()
