"""Tests of job files: job_test.py QUILLON_REPORT."""

import base64
import json
import os
import unittest

from command import CommandTest

WIDE = b"Quarter,North,South\nQ1,1.5,-2\nQ2,3e2,+4\n"
WIDE_CHART = ("bar", ["Q1", "Q2"], {"North": ["1.5", "300"], "South": ["-2", "4"]})
LONG = b"year,source,net\n2001,Coal,1\n2001,Wind,2\n2002,Wind,3\n2002,Coal,4\n"
LONG_CHART = ("line", ["2001", "2002"], {"Coal": ["1", "4"], "Wind": ["2", "3"]})
SALES = b"region,manager,month,net\nNorth,Ann,Jan,1\nA/B: S,Bob,Jan,3\nNorth,Ann,Feb,2\nA/B: S,Bob,Feb,4\n"

# One white dot.
IMAGE = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR42mP4DwABAQEAG7buVgAAAABJRU5ErkJggg=="
)

# A job file in which "t.csv" is a table, and the lines with which it is refused, each with line and column.
REFUSED = [
    ("[]", ["1:1: expected an object."]),
    ("{}", ['1:1: expected a member "charts" or "blocks", a list.']),
    ('{"charts": []}', ['1:1: "charts": the list is empty.']),
    ('{"charts": [1]}', ['1:13: "charts": expected an object, a chart.']),
    ('{"charts": [{}]}', ['1:13: "charts": expected a member "table", the path of a file.']),
    ('{"charts": [{"table": 1}]}', ['1:23: "table": expected the path of a file.']),
    ('{"charts": [{"table": "no.csv"}]}', ['1:23: "table": cannot read "no.csv": No such file or directory.']),
    ('{"charts": [{"table": "t.csv\\u0000x"}]}',
     ['1:23: "table": cannot read "t.csv\\x00x": a path holds no null characters.']),
    ('{"charts": [{"table": "t.csv", "gap": 1, "gap": 2}]}', ['1:42: "gap": the member is there twice.']),
    ('{"charts": [{"table": "t.csv", "typ": "bar"}]}', ['1:32: "typ": unknown member; did you mean "type"?']),
    ('{"charts": [{"table": "t.csv", "type": "lien"}]}',
     ['1:40: "type": expected column, bar, line, pie, area, doughnut, scatter, bubble, radar, stock or waterfall, got "lien"; did you mean "line"?']),
    ('{"charts": [{"table": "t.csv", "type": "pie", "gap": 5}]}',
     ['1:13: "charts": gap is for column, bar or waterfall charts; this is a pie chart.']),
    ('{"charts": [{"table": "t.csv", "fill": "Revenue"}]}',
     ['1:1: chart 1: "fill", "at" and "match" need a "template".']),
    ('{"blocks": [], "charts": [{"table": "t.csv"}]}',
     ['1:1: expected either "blocks" or "charts"; a block may be a chart.']),
    ('{"template": "t.csv", "charts": [{"table": "t.csv"}]}',
     ['1:1: chart 1: expected either "fill", a chart of the template, or "at", a placeholder.']),
    ('{"blocks": [{"headnig": "A"}]}', ['1:14: "headnig": unknown member; did you mean "heading"?']),
    ('{"blocks": [{"image": "no.png"}]}', ['1:23: "image": cannot read "no.png": No such file or directory.']),
    ('{"blocks": [{"image": "/dev/null"}]}', ['1:13: block 1: Cannot read "/dev/null": it is empty.']),
    ('{"charts": [{"table": "t.csv", "gap": 1e999}]}', ["1:43: the number \"1e999\" is too large."]),
    ('{"charts": ', ["1:12: not well-formed JSON: expected a text in quotes, a number, true, false, null, [ or {, got the end of the text."]),
    ('{"UTF-8": 1,}', ["1:13: not well-formed JSON: expected the name of a member in quotes."]),
    ('{"a" 1}', ["1:6: not well-formed JSON: expected a colon behind the name of a member."]),
    ('{"a": 1 "b": 2}', ["1:11: not well-formed JSON: expected a comma or } behind a member."]),
    ('[1 2]', ["1:4: not well-formed JSON: expected a comma or ] behind an item."]),
    ('["comment", tru]', ["1:16: not well-formed JSON: expected a text in quotes, a number,"]),
    ('{} x', ["1:4: not well-formed JSON: expected nothing behind the value."]),
    ('"a\nb"', ["1:3: not well-formed JSON: expected \\n, \\t or"]),
    ('/* {}', ["1:6: not well-formed JSON: expected a comment that"]),
    ("""{"footer": [{"reference": "ntes"}], "blocks": [{"caption": "Net", "name": "notes"},
 {"chart": {"table": "t.csv", "columns": ["Nort"]}}, {"list": [{"text": ["see", {"reference": "net"}]}]}]}""",
     ['1:27: "reference": there is no caption with the name "ntes"; did you mean "notes"?',
      '2:2: block 2: t.csv: --columns: there is no column "Nort"; the columns are "Quarter", "North", "South"; did you mean "North"?',
      '2:95: "reference": there is no caption with the name "net".']),
    (r'{"charts": [{"table": "t.csv", "a\"\\\"b\\": 1, "type": "\"x"}]}',
     [r'1:32: "a"\"b\": unknown member; the members are table, title,', '1:57: "type": expected column,']),
    ("[" * 101 + "]" * 101, ["1:101: more than 100 levels of lists and objects."]),
    # All at once, in the order of the file; comments count as lines, and characters count once.
    ("""{ // a chart
  /* \u00e9 */ "charts": [{"table": "t.csv", "legend": "lft", "width": "wide", "columns": 1,
     "\u00e9\u00e9": 1, "tick-interval": 1.5, "labels": ["value", "vlue"], "colors": "redd"}],
  "texts": {"a": 1}, "header": [{"bold": 1}]
}""", [
        '2:51: "legend": expected auto, none, right, top, left or bottom, got "lft"; did you mean "left"?',
        '2:67: "width": expected a number followed by cm, mm, in or pt, as in 15cm, got "wide".',
        '2:86: "columns": expected a list of texts.',
        '3:6: "\u00e9\u00e9": unknown member; the members are table, title,',
        '3:32: "tick-interval": expected a whole number from 1 to 32767, got 1.5.',
        '3:57: "labels": expected value, percent, category or series, got "vlue"; did you mean "value"?',
        '3:76: "colors": "redd" is not a colour;',
        '4:18: "a": expected a text.',
        '4:42: "bold": expected true or false.',
    ]),
]

REPORT = {
    "properties": {"title": "Sales {{year}}", "author": "Ann"},
    "header": ["Quillon\t", {"text": "{page} of {pages}", "italic": True}],
    "texts": {"year": "2024"},
    "blocks": [
        {"image": "logo.png", "width": "1cm", "alt-text": "Logo"},
        {"paragraph": "Sales of {{year}}", "style": "Title"},
        {"contents": 2},
        {"heading": "North", "level": 2},
        {"paragraph": ["See ", {"reference": "net"}, ", ", {"text": "soon", "bold": True, "link": "https://example.org"}]},
        {"list": ["one", {"text": ["two"], "level": 1}], "kind": "numbers"},
        {"chart": {"table": "t.csv", "type": "Bar", "title": "{{year}}"}, "table": True},
        {"caption": "Net", "name": "net"},
        {"page-break": True},
        {"section": {"landscape": True, "left": "2cm"}},
        {"charts": [{"table": "t.csv", "columns": "North"}, {"table": "t.csv", "columns": ["North"], "type": "pie"}]},
        {"table": {"columns": ["A", "B"], "rows": [["x", 1.5]], "widths": ["3cm", "4cm"]}},
        {"table": {"table": "t.csv", "columns": ["South"], "header": "When", "number-format": "0.00"}},
    ],
}


class JobTest(CommandTest):
    def test_refuses_what_is_wrong_all_at_once(self):
        self.write("t.csv", WIDE)
        for job, lines in REFUSED:
            with self.subTest(job=job[:200]):
                self.write("job.json", job.encode())
                result = self.run_command("--job", "job.json", "-o", "out.docx")
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                said = result.stderr.splitlines()
                self.assertEqual(len(said), len(lines), result.stderr)
                for one, line in zip(said, lines):
                    self.assertTrue(one.startswith(f"quillon-report: job.json:{line}"), f"{one}\n{line}")
        self.write("job.json", {"charts": [{}] * 1000})
        said = self.run_command("--job", "job.json", "-o", "out.docx").stderr.splitlines()
        self.assertEqual((len(said), said[-1]), (51, "quillon-report: job.json: and 950 more."))
        self.assertEqual(sorted(os.listdir(self.folder)), ["job.json", "t.csv"])

    def test_makes_charts_of_tables_beside_the_job_file(self):
        self.write("jobs/t.csv", WIDE)
        self.write("jobs/long.csv", LONG)
        self.write("jobs/job.json", {"charts": [
            {"table": "t.csv", "type": "column", "palette": ["red"], "gaps": True},
            {"table": "long.csv", "type": "line", "series": "source", "value": "net"},
        ]})
        self.succeed("--job", "jobs/job.json", "-o", "out.docx")
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART, LONG_CHART])

    def test_comes_by_standard_input(self):
        self.write("t.csv", WIDE)
        job = json.dumps({"charts": [{"table": "t.csv"}]})
        self.succeed("--job", "-", "-o", "out.docx", input=job)
        self.assertEqual(self.read_charts("out.docx"), [WIDE_CHART])
        self.require_refusal(1, 'standard input:1:1: expected a member', "--job", "-", "-o", "no.docx", input="{}")

    def test_never_loses_what_it_is_made_from(self):
        self.write("t.csv", WIDE)
        self.write("job.json", {"charts": [{"table": "t.csv"}]})
        for target in ["job.json", "./t.csv"]:
            sentence = f'Cannot write "{target}": the document is made from it.\n'
            self.require_refusal(1, sentence, "--job", "job.json", "--force", "-o", target)
        self.require_refusal(2, "Expected --output, the document to write.", "--job", "job.json")

    def test_makes_a_report_of_blocks(self):
        self.write("t.csv", WIDE)
        self.write("logo.png", IMAGE)
        self.write("job.json", REPORT)
        self.succeed("--job", "job.json", "-o", "out.docx")
        texts = self.read_paragraphs("out.docx")
        for text in ["Sales of 2024", "North", "See Figure 1, soon", "one", "two", "Figure 1: Net", "When", "-2.00", "4.00",
                     "x", "1.5"]:
            self.assertIn(text, texts)
        north = {"North": WIDE_CHART[2]["North"]}
        self.assertEqual(self.read_charts("out.docx"), [
            WIDE_CHART, ("bar", ["Q1", "Q2"], north), ("pie", ["Q1", "Q2"], north)])
        markup = self.read_part("out.docx")
        for part in ['w:val="Title"', 'descr="Logo"', '<w:br w:type="page"/>', 'w:orient="landscape"', "TOC ", "<w:b/>",
                     'w:ilvl w:val="1"', 'descr="Bar chart: 2024;', 'w:w="1700"', 'w:w="2267"', 'w:left="1133"']:
            self.assertIn(part, markup)
        self.assertIn("Sales 2024", self.read_part("out.docx", "docProps/core.xml"))
        self.assertIn("PAGE", self.read_part("out.docx", "word/header1.xml"))

    def test_names_all_blocks_that_cannot_be_made(self):
        self.write("t.csv", WIDE)
        self.write("job.json", b"""{"blocks": [{"heading": "A"},
            {"paragraph": "B", "style": "Titel"}, {"paragraph": "C"},
             {"chart": {"table": "t.csv", "columns": "East"}}]}""")
        for sentence in ['job.json:2:13: block 2: There is no paragraph style "Titel"',
                         'job.json:3:14: block 4: t.csv: --columns: there is no column "East"']:
            self.require_refusal(1, sentence, "--job", "job.json", "-o", "out.docx")
        self.write("job.json", b"""{"charts": [{"table": "t.csv"},
            {"table": "t.csv", "columns": "East"}]}""")
        self.require_refusal(1, 'job.json:2:13: chart 2: t.csv: --columns: there is no column "East"', "--job", "job.json", "-o", "out.docx")

    def test_names_what_texts_leave_unfilled(self):
        self.write("job.json", {"texts": {"month": "May", "x": "{{y}}"}, "header": "{{moth}}", "blocks": [
            {"heading": "{{month}} {{moth}}"}, {"paragraph": [{"text": "{{north}}"}]}]})
        warnings = [f'quillon-report: warning: job.json:1:{column}: "{{{{{name}}}}}" stays as it is: it is not in "texts"{end}\n'
                    for column, name, end in [(53, "moth", '; did you mean "month"?'), (135, "north", ".")]]
        told = self.succeed("--job", "job.json", "--check", "--json", warnings="".join(warnings))
        self.assertEqual(json.loads(told)["left"], ["moth", "north"])
        self.write("job.json", {"blocks": [{"paragraph": "{{later}}"}]})
        self.assertEqual(json.loads(self.succeed("--job", "job.json", "--check", "--json"))["left"], ["later"])

    def test_names_the_group_in_each_line(self):
        # The first one is told of, whichever comes to its end first.
        others = "".join(f"Bob {number},1\n" for number in range(60))
        self.write("t.csv", ("manager,net\nAnn,1\n" + others).encode())
        self.write("job.json", {"for-each": {"table": "t.csv", "by": "manager", "output": "{manager}.docx"},
                                "blocks": [{"paragraph": "a", "style": "A"}, {"paragraph": "b", "style": "B"}]})
        said = self.run_command("--job", "job.json").stderr.splitlines()
        self.assertEqual([line.split(" block")[0] for line in said],
                         ['quillon-report: "Ann": job.json:1:90:', 'quillon-report: "Ann": job.json:1:124:'])

    def test_takes_the_look_of_a_template(self):
        self.write("look.json", {"header": "Letterhead", "blocks": [{"paragraph": "left out"}]})
        self.write("job.json", {"template": "look.docx", "blocks": [{"paragraph": "A"}]})
        self.succeed("--job", "look.json", "-o", "look.docx")
        self.succeed("--job", "job.json", "-o", "out.docx")
        self.assertEqual(self.read_paragraphs("out.docx"), ["A"])
        self.assertIn("Letterhead", self.read_part("out.docx", "word/header1.xml"))

    def test_makes_a_document_for_each_group(self):
        self.write("t.csv", SALES)
        self.write("job.json", {
            "for-each": {"table": "t.csv", "by": "region", "output": "of-{region}-{manager}.docx"},
            "blocks": [{"heading": "{{region}} by {{manager}}, not {{month}}"},
                       {"chart": {"table": "t.csv", "category": "month", "columns": "net"}}],
        })
        left = ('quillon-report: warning: job.json:1:113: "{{month}}" stays as it is: it is neither in "texts" nor a column with'
                " one text in each group.\n")
        self.assertEqual(self.succeed("--job", "job.json", warnings=left), "of-North-Ann.docx\nof-A-B- S-Bob.docx\n")
        for document, heading, values in [("of-North-Ann.docx", "North by Ann, not {{month}}", ["1", "2"]),
                                          ("of-A-B- S-Bob.docx", "A/B: S by Bob, not {{month}}", ["3", "4"])]:
            self.assertEqual(self.read_paragraphs(document), [heading])
            self.assertEqual(self.read_charts(document), [("bar", ["Jan", "Feb"], {"net": values})])

    def test_groups_are_read_as_the_whole_table_is(self):
        # The first column numbers all rows, and the rows of a group only together with the others.
        self.write("t.csv", b"T\n,region,month,net\n0,a,Jan,1\n1,b,Jan,2\n2,a,Feb,3\n3,b,Feb,4\n")
        chart = {"table": "./t.csv", "category": "month", "type": "line"}
        self.write("job.json", {
            "for-each": {"table": "t.csv", "by": "region", "output": "{region}.docx"},
            "blocks": [{"chart": {"table": "t.csv"}}, {"chart": chart}, {"chart": {**chart, "skip": 1}}],
        })
        result = self.run_command("--job", "job.json")
        self.assertEqual(result.stdout, "a.docx\nb.docx\n")
        self.assertEqual(result.stderr.count("line 1 stands above the table"), 1)
        months = ["Jan", "Feb"]
        self.assertEqual(self.read_charts("b.docx"), [("bar", months, {"net": ["2", "4"]}),
                                                      ("line", months, {"net": ["2", "4"]}),
                                                      ("line", months, {"net": ["2", "4"]})])
        self.write("job.json", {
            "for-each": {"table": "t.csv", "by": "region", "output": "{region}.docx"},
            "blocks": [{"chart": {"table": "t.csv", "delimiter": "semicolon"}}],
        })
        self.assertIn(': block 1: t.csv: --where: there is no column "region"', self.run_command("--job", "job.json").stderr)
        self.write("one.json", {"blocks": [{"chart": chart}, {"table": {"table": "./t.csv", "columns": "net"}}]})
        result = self.run_command("--job", "one.json", "--check")
        self.assertEqual(result.stderr.count("line 1 stands above the table"), 1)

    def test_groups_of_another_reading_may_have_any_names(self):
        self.write("t.csv", b'"a ""b""=c",net\n"=""x""",1\n"""y""",2\n')
        self.write("job.json", {
            "for-each": {"table": "t.csv", "by": "#1", "output": "{net}.docx"},
            "blocks": [{"chart": {"table": "t.csv", "delimiter": "comma"}}],
        })
        self.write("named.json", {
            "for-each": {"table": "t.csv", "by": 'a "b"=c', "output": "named-{net}.docx"},
            "blocks": [{"chart": {"table": "t.csv", "delimiter": "comma"}}],
        })
        self.succeed("--job", "job.json")
        self.succeed("--job", "named.json")
        for document, category, value in [("1.docx", '="x"', "1"), ("named-2.docx", '"y"', "2")]:
            self.assertEqual(self.read_charts(document), [("bar", [category], {"net": [value]})])

    def test_refuses_groups_before_anything_is_written(self):
        self.write("t.csv", b"region,net\na/b,1\na:b,2\n,3\n")
        self.write("u.csv", b"region,net\na/b,1\na:b,2\n..,3\n")
        self.write("v.csv", b"region,net\n..,1\n--,2\n")
        for table, output, sentence in [
            ("t.csv", "{region}.docx", 'job.json:1:39: t.csv:4: column "region": expected a text, the name of a group'),
            ("u.csv", "{region}.docx", '1:59: "output": the groups "a/b" and "a:b" would both be written to "a-b.docx"'),
            ("u.csv", "{regoin}.docx",
             '1:59: "output": "{regoin}" is not a column with one text in each group; did you mean "region"?'),
            ("v.csv", "{region}/net.docx", '1:59: "output": the groups ".." and "--" would both be written to "--/net.docx"'),
            ("u.csv", "u.csv", "the groups"),
        ]:
            with self.subTest(table=table, output=output):
                self.write("job.json", {"for-each": {"table": table, "by": "region", "output": output},
                                        "blocks": [{"heading": "{{region}}"}]})
                result = self.run_command("--job", "job.json")
                self.assertEqual(result.returncode, 1)
                self.assertIn(sentence, result.stderr)
                self.assertEqual(sorted(os.listdir(self.folder)), ["job.json", "t.csv", "u.csv", "v.csv"])
        self.require_refusal(2, '--output is for one document; "for-each" names', "--job", "job.json", "-o", "out.docx")

    def test_writes_no_group_where_one_cannot_be_made(self):
        self.write("t.csv", b"region,net\n" + b"".join(b"%d,1\n" % number for number in range(20)) + b"last,\n")
        self.write("job.json", {"for-each": {"table": "t.csv", "by": "region", "output": "{region}.docx"},
                                "blocks": [{"chart": {"table": "t.csv"}}]})
        self.assertIn('"last": job.json:1:', self.run_command("--job", "job.json").stderr)
        self.assertEqual(sorted(os.listdir(self.folder)), ["job.json", "t.csv"])

    def test_an_example_of_a_table_makes_a_report(self):
        self.write("data/t.csv", "\"A \"\"b\"\"\",Größe\nx,1\ny,\n".encode())
        self.write("jobs/.keep", b"")
        self.succeed("init", "data/t.csv", "-o", "jobs/job.json")
        self.succeed("--job", "jobs/job.json", "-o", "out.docx")
        self.assertEqual(self.read_charts("out.docx"), [("bar", ["x", "y"], {"Größe": ["1", None]})])
        self.assertIn('"table": "../data/t.csv"', self.read("jobs/job.json").decode())
        self.assertIn('"table": "data/t.csv"', self.succeed("init", "data/t.csv"))
        self.write("long.csv", b"a;m;v\nx;p;1\nx;q;2\n")
        self.succeed("init", "long.csv", "--series", "m", "--value", "v", "--category", "a", "--type", "bar", "--gap",
                     "30", "--palette", "red,blue", "--series-colors", "q=red", "--delimiter", "semicolon", "-o", "l.json")
        self.succeed("--job", "l.json", "-o", "out.docx")
        self.assertEqual(self.read_charts("out.docx")[0][1:], (["x"], {"p": ["1"], "q": ["2"]}))
        for member in (b'"gap": 30', b'"palette": ["red", "blue"]', b'"series-colors": {"q": "red"}', b'"delimiter": "semicolon"'):
            self.assertIn(member, self.read("l.json"))
        self.write("l.json", b"changed by hand")
        self.require_refusal(1, 'Cannot write "l.json": it is there already; --force replaces it.', "init", "data/t.csv",
                             "-o", "l.json")
        self.assertEqual(self.read("l.json"), b"changed by hand")
        self.succeed("init", "data/t.csv", "-o", "l.json", "--force")
        self.assertIn(b'"blocks"', self.read("l.json"))
        self.require_refusal(1, 'Cannot write "data/t.csv"', "init", "data/t.csv", "-o", "data/t.csv")


if __name__ == "__main__":
    unittest.main()
