"""Tests of documents from tables: make_test.py QUILLON_REPORT."""

import json
import os
import shutil
import subprocess
import unittest

from command import CommandTest

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
OTHER_FIELDS = (
    "; a field that holds the delimiter stands in quotes, --delimiter names another, and --skip leaves out lines above "
    "the header."
)

REFUSED = [
    (b"", [], "t.csv: the table is empty; expected a header row and rows of data."),
    (b"\n\n", [], "t.csv: the table is empty; expected a header row and rows of data."),
    (b"A:B\nx:1\n", [],
     't.csv: no column beside "A:B" holds numbers; the table has one column, and --delimiter says what parts several.'),
    (b"A,B\n", [], "t.csv: the table has a header row and no rows of data."),
    (b"A,\nx,1\n", [], "t.csv:1: column 2 has no name; name it, choose others by --columns, or leave out lines above the header by --skip."),
    (b'A,B\n"x\ny",1\nz,1,2\n', [], "t.csv:4: expected 2 fields, as in the header row, got 3" + OTHER_FIELDS),
    (b"A,B\r\nx,1\r\ny\r\n", [], "t.csv:3: expected 2 fields, as in the header row, got 1" + OTHER_FIELDS),
    (b'A,B\nx,"1\n', [],
     "t.csv:2: a field that begins here has a quote that is not closed, or stands inside it; quote the whole field and double each quote in it."),
    (b"A,B\nx,1\n\xff,2\n", [], "t.csv:3: field 1 is not in UTF-8; name its encoding, as in --encoding windows-1252."),
    (b"A,B\nx,\x001\n", [], 
     "t.csv:2: the file holds a zero byte; expected text, in UTF-8 or in the --encoding that you name."),
    (b"A,B\nx,1\ny,1.5 kg\n", [], 't.csv:3: column "B": expected a number, as in -1.5, got "1.5 kg"; '
     "--missing and --gaps make it a gap, and --columns chooses other columns."),
    (b"\n\nA;\nx;1\n", [], "t.csv:3: column 2 has no name; name it, choose others by --columns, or leave out lines above the header by --skip."),
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
    (WIDE, ["--columns", "East"], 't.csv: --columns: there is no column "East"; the columns are "Quarter", "North", "South".'),
    (LONG + b"2001,Coal,5\n", AS_LONG,
     't.csv:6: a second value for source "Coal" and year "2001"; a long table has one for each pair, '
     "and --aggregate makes one of several."),
    (LONG[:-12], AS_LONG, 't.csv: no value for source "Coal" and category "2002"; add the row, or ask for --gaps.'),
    (LONG, ["--series", "source"],
     "A long table needs both --series, the column of series names, and --value, the column of values."),
    (WIDE, ["--type", "pie"], "t.csv: a pie shows one series, the table gives 2; choose one with --columns, "
     "or show all as rings with --type doughnut."),
    (b"x,v\n1,2\n2,3\n", ["--type", "scatter", "--top", "1"],
     't.csv: --top adds up the rest as "Other", which is no X value; leave it out, or choose another --type.'),
    (b"x,v\n1,2\n2,3\n", ["--type", "bubble", "--transpose"],
     't.csv: --transpose makes X values of the names of the columns, and "v" is no number; leave it out, or choose another --type.'),
    (WIDE, ["--type", "donut"], '--type: expected column, bar, line, pie, area, doughnut, scatter, bubble, radar, stock or waterfall, got "donut".'),
    (WIDE, ["--legend", "north"], '--legend: expected auto, none, right, top, left or bottom, got "north".'),
    (WIDE, ["--delimiter", "dot"], '--delimiter: expected comma, semicolon, tab or pipe, got "dot".'),
    (WIDE, ["--top", "0"], '--top: expected a whole number, 1 or more, got "0".'),
    (WIDE, ["--top", "-1"], '--top: expected a whole number, 1 or more, got "-1".'),
    (WIDE, ["--skip", "1.5"], '--skip: expected a whole number, 0 or more, got "1.5".'),
    (WIDE, ["--font", ""], "--font: expected the name of a typeface, of at most 31 characters, got 0."),
    (WIDE, ["--width", "wide"], '--width: expected a number followed by cm, mm, in or pt, as in 15cm, got "wide".'),
    (WIDE, ["--colors", "red,rgb(0,0,256)"],
     '--colors: "rgb(0,0,256)" is not a colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up to 255.'),
    (WIDE, ["--colors", "red,red,red"], "chart 1: colors: expected at most one for each series, 2 in all; got 3."),
    (WIDE, ["--series-colors", "a=b=red"],
     'chart 1: series-colors: there is no series "a=b"; the series are "North", "South".'),
    (WIDE, ["--title", "a\x01"],
     "chart 1, title: character 2 (U+0001) cannot stand in a document; "
     "only tab and line break of the control characters can."),
    (WIDE, ["--title", "a\udcffb"], '--title: expected text in UTF-8, got "a\\xFFb".'),
    (WIDE, ["missing.csv"], 'chart 2: Cannot read "missing.csv": No such file or directory.'),
    (WIDE, ["."], 'chart 2: Cannot read ".": it is a folder.'),
]

# Where "taken" is a folder: the exit status, the arguments, and the sentence with which they are refused.
REFUSED_CALLS = [
    (2, ["t.csv"], "Expected --output, the document to write."),
    (2, ["-o", "out.docx"], "Expected at least one TABLE"),
    (2, ["t.csv", "--titel", "A", "-o", "out.docx"], 'There is no option "--titel"; did you mean --title?'),
    (2, ["extrat", "t.docx"], 'There is no verb or table "extrat"; did you mean extract? See quillon-report --help.\n'),
    (2, ["tablle"], 'There is no verb or table "tablle"; the verbs are list, extract, fill or init. See'),
    (2, ["t.csv", "--zzzzzz", "-o", "out.docx"], 'There is no option "--zzzzzz". See quillon-report --help.\n'),
    (2, ["t.csv", "-o"], "--output: expected a value, FILE."),
    (2, ["t.csv", "--title", "-o", "out.docx"],
     '--title: expected a value, TEXT, got the option "-o"; --title=-o takes it as a value.'),
    (2, ["t.csv", "--title", "--top=1", "-o", "out.docx"], '--title: expected a value, TEXT, got the option "--top=1";'),
    (2, ["t.csv", "--gaps=yes", "-o", "out.docx"], "--gaps takes no value."),
    (2, ["t.csv", "--title", "A", "--title", "B", "-o", "out.docx"],
     '--title is given twice for "t.csv"; it takes one value.'),
    (2, ["t.csv", "-o", "a.docx", "-o", "b.docx"], "--output is given twice; it takes one value."),
    (2, ["t.csv", "--job", "job.json", "-o", "out.docx"], "--job excludes TABLE"),
    (2, ["--job", "job.json", "--type", "bar", "-o", "out.docx"], "--job excludes --type"),
    (1, ["t.csv", "-o", "./t.csv"], 'Cannot write "./t.csv": the document is made from it.\n'),
    (1, ["t.csv", "--force", "-o", "./t.csv"], 'Cannot write "./t.csv": the document is made from it.\n'),
    (1, ["t.csv", "--type", "colunm", "-o", "out.docx"],
     '--type: expected column, bar, line, pie, area, doughnut, scatter, bubble, radar, stock or waterfall, got "colunm"; '
     'did you mean "column"?\n'),
    (1, ["t.csv", "-o", "no/out.docx"], 'Cannot write "no/out.docx": No such file or directory.\n'),
    (1, ["t.csv", "-o", "taken"], 'Cannot write "taken": Is a directory.\n'),
]


class MakeTest(CommandTest):
    def test_makes_the_charts_of_tables(self):
        self.write("more.csv", LONG)
        for table, options, charts in ACCEPTED:
            with self.subTest(table=table, options=options):
                self.write("t.csv", table)
                result = self.run_command("t.csv", *options, "-o", "out.docx")
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
                self.assertEqual(self.read_charts("out.docx"), charts)

    def test_refuses_tables_and_options(self):
        for table, options, sentence in REFUSED:
            with self.subTest(table=table, options=options):
                self.write("t.csv", table)
                self.require_refusal(1, sentence + "\n", "t.csv", *options, "-o", "out.docx")

    def test_refuses_wrong_calls(self):
        self.write("t.csv", WIDE)
        os.mkdir(os.path.join(self.folder, "taken"))
        for status, arguments, sentence in REFUSED_CALLS:
            with self.subTest(arguments=arguments):
                self.require_refusal(status, sentence, *arguments)

    def test_warns_of_what_a_chart_does_not_show(self):
        self.write("t.csv", b"A,B,C\nx,1,dry\ny,-2,wet\n")
        result = self.run_command("t.csv", "--type", "pie", "-o", "out.docx")
        self.assertEqual(
            result.stderr,
            'quillon-report: warning: t.csv: column "C" holds no numbers, as in -1.5, and is left out.\n'
            'quillon-report: warning: chart 1, series 1 ("B"), point 2: the value is -2; a slice shows only its size.\n',
        )
        self.assertEqual(result.returncode, 0)
        self.write("t.csv", b"A,small,large,huge\n" + b"".join(b"%d,1,2000,9000\n" % row for row in range(300)))
        self.assertEqual(
            self.run_command("t.csv", "-o", "out.docx").stderr,
            "quillon-report: warning: t.csv: 900 columns are too many to tell apart; --top 20 keeps the largest, "
            "--columns fewer series.\n"
            'quillon-report: warning: t.csv: the values of "huge" are over 1,000 times those of "small", which lie '
            'flat on the axis; --second "small" --line "small" gives an axis of its own.\n',
        )
        self.succeed("t.csv", "--type", "line", "--second", "small", "-o", "out.docx")

    def test_options_before_the_first_table_are_for_all_and_give_way(self):
        self.write("a.csv", WIDE)
        self.write("b.csv", WIDE)
        self.succeed("--type", "Line", "--columns", "North", "a.csv", "b.csv", "--type", "BAR", "--columns", "South",
                     "--columns", "North", "-o", "out.docx")
        north, south = WIDE_CHART[2]["North"], WIDE_CHART[2]["South"]
        self.assertEqual(self.read_charts("out.docx"), [("line", ["Q1", "Q2"], {"North": north}),
                                                        ("bar", ["Q1", "Q2"], {"South": south, "North": north})])

    def test_reads_standard_input_and_writes_standard_output(self):
        data = self.succeed("-", "-o", "-", text=False, input=WIDE)
        self.write("out.docx", data)
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART])
        self.assertEqual(os.listdir(self.folder), ["out.docx"])

    def test_a_word_behind_a_double_minus_and_one_that_looks_like_a_verb_are_tables(self):
        self.write("--gaps", WIDE)
        self.write("list", WIDE)
        self.succeed("-o", "out.docx", "--title", "[draft]", "./list", "--", "--gaps")
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART, WIDE_CHART])

    def test_check_writes_nothing(self):
        self.write("t.csv", WIDE)
        self.succeed("t.csv", "--check", "-o", "out.docx")
        self.require_refusal(1, "t.csv: --columns: there is no column", "t.csv", "--check", "--columns", "East")
        self.assertEqual(os.listdir(self.folder), ["t.csv"])

    def test_replaces_a_protected_document_by_force_alone(self):
        self.write("t.csv", WIDE)
        self.write("out.docx", b"precious")
        os.chmod(self.at("out.docx"), 0o444)
        sentence = 'Cannot write "out.docx": it is write-protected; --force replaces it.\n'
        self.require_refusal(1, sentence, "t.csv", "-o", "out.docx")
        self.assertEqual(self.read("out.docx"), b"precious")
        self.succeed("t.csv", "--force", "-o", "out.docx")
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART])
        self.assertEqual(os.stat(self.at("out.docx")).st_mode & 0o777, 0o444)

    def test_writes_no_document_by_the_name_of_another_kind(self):
        self.write("t.csv", WIDE)
        self.write("u.csv", b"precious")
        for name in ("u.csv", "out.odt", "OUT.PPTX", "out.docm"):
            self.require_refusal(1, f'Cannot write "{name}": expected a name that ends in .docx or .pdf.',
                                 "t.csv", "-o", name)
        self.write("job.json", {"blocks": []})
        self.require_refusal(1, 'Cannot write "out.dotx": expected', "--job", "job.json", "-o", "out.dotx")
        self.assertEqual(self.read("u.csv"), b"precious")

    def test_a_document_is_no_table(self):
        self.write("t.csv", WIDE)
        self.succeed("t.csv", "-o", "t.docx")
        self.require_refusal(1, "t.docx: the workbook cannot be read: it is a Word document; expected a table",
                             "t.docx", "-o", "out.docx")

    def test_warns_of_units_on_one_axis_alone(self):
        self.write("u.csv", "a;Sales;Share\nx;5 €;40 %\ny;6 €;60 %\n".encode())
        self.succeed("u.csv", "--second", "Share", "-o", "out.docx")
        self.succeed("u.csv", "-o", "out.docx", warnings="quillon-report: warning: u.csv: series on one axis have "
                     'different units: "Sales" €, "Share" %.\n')

    def test_numbers_of_the_first_column_are_x_however_they_are_written(self):
        for table in (b"Price,Pieces\n1.5,3\n2.5,4\n", b"Price;Pieces\n1,5;3\n2,5;4\n"):
            self.write("p.csv", table)
            self.succeed("p.csv", "--type", "scatter", "-o", "out.docx")
            self.assertEqual(self.run_command("extract", "out.docx").stdout, "X,Pieces\n1.5,3\n2.5,4\n")

    def test_says_what_is_missing_for_a_pdf(self):
        self.write("t.csv", WIDE)
        self.require_refusal(1, 'Cannot make "out.pdf": LibreOffice Writer makes PDFs, and there is no program soffice;',
                             "t.csv", "-o", "out.pdf", env={"PATH": self.folder})

    @unittest.skipUnless(shutil.which("soffice") and shutil.which("pdftotext"), "LibreOffice makes the PDF")
    def test_makes_a_pdf_with_the_pages_of_its_contents(self):
        self.write("t.csv", WIDE)
        self.write("job.json", {"footer": "Page {page} of {pages}", "properties": {"language": "de-DE"}, "blocks": [
            {"contents": 2}, {"heading": "First"}, {"page-break": True}, {"heading": "Second", "level": 2},
            {"page-break": True}, {"heading": "Third"}, {"chart": {"table": "t.csv", "labels": "value", "label-format": "0.000"}}]})
        self.succeed("--job", "job.json", "-o", "out.pdf")
        text = subprocess.run(["pdftotext", self.at("out.pdf"), "-"], capture_output=True, check=True).stdout.decode()
        for name, page in [("First", 1), ("Second", 2), ("Third", 3)]:
            self.assertRegex(text, rf"{name}\.+{page}\n")
        self.assertIn("Page 2 of 3", text)
        self.assertIn("1,500", text)
        self.assertEqual(sorted(os.listdir(self.folder)), ["job.json", "out.pdf", "t.csv"])

    def test_a_table_needs_no_ending_when_it_is_there(self):
        self.write("table", WIDE)
        self.succeed("table", "-o", "out.docx")
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART])

    def test_tells_errors_as_json_where_that_is_asked_for(self):
        for status, arguments in [(1, ["list", "no.docx", "--json"]), (2, ["fill", "--json"])]:
            result = self.run_command(*arguments)
            self.assertEqual(result.returncode, status)
            self.assertEqual(result.stderr, f"quillon-report: {json.loads(result.stdout)['error']}\n")
        self.assertEqual(self.run_command("fill", "no.docx", "--text", "a=b", "--json", "-o", "-").stdout, "")


if __name__ == "__main__":
    unittest.main()
