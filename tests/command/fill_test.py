"""Tests of documents that exist: fill_test.py QUILLON_REPORT. The template is made by the command itself."""

import json
import os
import unittest

from command import CommandTest

JUNE = b"Month,North,South\nMay,1,2\nJun,3,4\n"
JULY = b"Month,South,East\nMay,20,0\nJun,40,1\nJul,60,2.5\n"
JULY_CHART = ("bar", ["May", "Jun", "Jul"], {"South": ["20", "40", "60"], "East": ["0", "1", "2.5"]})

TEMPLATE = {"blocks": [
    {"paragraph": "Report of {{month}}, again {{month}}"},
    {"chart": {"table": "june.csv", "title": "Revenue", "colors": ["navy", "teal"]}},
    {"paragraph": "{{margin}}"},
    {"paragraph": "{{table:margin}}"},
    {"chart": {"table": "june.csv", "type": "line", "title": "Costs"}},
]}


class FillTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("june.csv", JUNE)
        self.write("july.csv", JULY)
        self.write("t.json", TEMPLATE)
        self.succeed("--job", "t.json", "-o", "t.docx")

    def test_lists_charts_and_placeholders(self):
        lines = [line.split() for line in self.succeed("list", "t.docx").splitlines()]
        self.assertEqual(lines[1][:3], ["1", "Chart", "1"])
        self.assertEqual(lines[1][-6:], ["column", "North,", "South", "2", "body", "yes"])
        self.assertEqual([line[:2] for line in lines[5:]],
                         [["{{month}}", "text"], ["{{margin}}", "paragraph"],
                          ["{{table:margin}}", "table"]])
        told = json.loads(self.succeed("list", "t.docx", "--json"))
        self.assertEqual(told["charts"][1], {
            "number": 2, "name": "Chart 2", "altText": "Line chart: Costs; series North, South; values from 1 to 4",
            "title": "Costs", "types": ["line"], "series": ["North", "South"], "points": 2, "place": "body",
            "fillable": True})
        self.assertEqual(told["placeholders"][2], {"name": "margin", "kind": "table", "part": "word/document.xml"})

    def test_fills_charts_placeholders_and_texts(self):
        told = self.succeed("fill", "t.docx", "july.csv", "--chart", "Revenue", "--title", "New", "june.csv", "--at", "margin",
                            "--type", "Pie", "--columns", "North", "--text", "month=July", "-o", "out.docx")
        self.assertEqual(told, '"Revenue": 3 points, 2 before; 1 series as before; "North" is now "East".\n'
                               '"{{margin}}": made.\n"{{month}}": replaced 2 times.\n')
        self.assertEqual(self.read_charts("out.docx")[0], JULY_CHART)
        self.assertIn("Report of July, again July", self.read_paragraphs("out.docx"))
        listed = json.loads(self.succeed("list", "out.docx", "--json"))
        self.assertEqual([(chart["title"], chart["types"], chart["points"]) for chart in listed["charts"]],
                         [("New", ["column"], 3), ("", ["pie"], 2), ("Costs", ["line"], 2)])
        self.assertEqual(listed["placeholders"], [])
        texts = self.read_paragraphs("out.docx")
        self.assertTrue({"North", "May", "1", "Jun", "3"} <= set(texts))

    def test_what_is_extracted_fills_the_same_again(self):
        plain = b"Month,North,South\nMay,1,2\nJun,3,4.5\n"
        points = b"Price,A,B\n1.5,2,3\n1.5,4,1\n7,1,9\n"
        levels = b"Year,Q,North\n2025,Q1,1\n2025,Q2,3\n2026,Q1,5\n"
        for table, *options in [
            *((plain, "--type", kind) for kind in ["column", "bar", "line", "area", "radar", "doughnut"]),
            (plain, "--type", "pie", "--columns", "North"),
            (plain, "--line", "South", "--second", "South"),
            (points, "--type", "scatter"),
            (b"X,A,B,SA,SB\n1,2,3,10,20\n2,4,1,5,7\n", "--type", "bubble", "--columns", "A,B", "--sizes", "SA,SB"),
            (levels, "--category", "Year,Q"),
            (levels.replace(b"Q1", b"1").replace(b"Q2", b"2"), "--category", "Year,Q"),
            (b"Day,High,Low,Close\n2026-01-05,5,1,3\n2026-01-06,6,2,4\n", "--type", "stock"),
            (b"Item,Change\nLast,10\nSales,5\nNow,\n", "--type", "waterfall", "--totals", "Last,Now", "--gaps"),
            (b"Day,North\n2026-01-01,1\n2026-02-01,\n2026-03-01,3\n", "--type", "line", "--gaps"),
            (b"Time,North\n2026-01-01 08:00,1\n2026-01-01 09:30,2\n", "--type", "line"),
            (b"Year,North\n2024,1\n2025,2\n", "--type", "line", "--category-type", "number"),
            (b"Year,North\n2024,1\n2025,2\n",),
            (b"Month,Category,A | B,C\\\nx|y,1,2,3\n\"a\nb\",4,5,6\n",),
        ]:
            self.write("new.csv", table)
            self.run_command("new.csv", *options, "-o", "new.docx", "--force")
            for ending in ["csv", "json", "md"]:
                with self.subTest(table=table, options=options, ending=ending):
                    self.succeed("extract", "new.docx", "-o", f"data.{ending}", "--force")
                    self.succeed("fill", "new.docx", f"data.{ending}", "--chart", "1", "-o", "again.docx", "--force")
                    self.assertEqual(self.read("again.docx"), self.read("new.docx"))

    def test_columns_of_points_are_known_by_their_names(self):
        self.write("points.csv", b"X,A,B,SA,SB\n1,2,3,10,20\n2,4,1,5,7\n")
        self.succeed("points.csv", "--type", "bubble", "--columns", "A,B", "--sizes", "SA,SB", "-o", "points.docx")
        own = "A X,A,A size,C X,C,C size\n1,2,3,4,5,6\n,,,7,8,9\n"
        self.write("own.csv", own.encode())
        self.succeed("fill", "points.docx", "own.csv", "--chart", "1", "-o", "own.docx")
        self.assertEqual(self.succeed("extract", "own.docx"), own)
        self.write("own.csv", b"X,A,A size,C\n1,2,3,4\n")
        self.require_refusal(1, 'own.csv: --sizes: there is no column "C size"', "fill", "points.docx", "own.csv", "--chart", "1",
                             "-o", "out.docx")

    def test_totals_of_a_waterfall_follow_the_author(self):
        self.write("budget.csv", b"Item,Change\nLast,10\nSales,5\nThis,0\n")
        self.succeed("budget.csv", "--type", "waterfall", "--totals", "Last,This", "-o", "budget.docx")
        self.write("budget.csv", b"Item,Change\nLast,10\nSales,-5\nTax,-1\nNext,\n")
        self.succeed("fill", "budget.docx", "budget.csv", "--chart", "1", "--totals", "Last,Next", "--gaps",
                     "-o", "next.docx")
        self.assertEqual(self.read_charts("next.docx")[0][2]["Total"], ["10", None, None, "4"])

    def test_a_job_file_does_the_same(self):
        self.write("job.json", {
            "template": "t.docx", "texts": {"month": "July"},
            # Numbers are those of the template, also behind a new chart.
            "charts": [{"at": "margin", "table": "june.csv", "type": "pie", "columns": ["North"]},
                       {"fill": "2", "table": "july.csv", "title": "New"}]})
        told = self.succeed("--job", "job.json", "-o", "job.docx")
        arguments = ["fill", "t.docx", "july.csv", "--chart", "2", "--title", "New", "june.csv", "--at", "margin", "--type",
                     "pie", "--columns", "North", "--text", "month=July"]
        self.assertEqual(told, self.succeed(*arguments, "-o", "fill.docx"))
        self.assertEqual(self.read("job.docx"), self.read("fill.docx"))
        as_json = self.succeed("--job", "job.json", "--check", "--json")
        self.assertEqual(json.loads(as_json) | {"output": ""},
                         json.loads(self.succeed(*arguments, "--check", "--json")) | {"output": ""})
        report = json.loads(as_json)["charts"][0]
        self.assertEqual(report["series"], [{"change": "matched", "name": "South"},
                                            {"change": "renamed", "name": "East", "before": "North"}])
        self.assertEqual((report["pointsBefore"], report["pointsAfter"]), (2, 3))

    def test_tells_all_that_cannot_be_filled(self):
        self.write("job.json", b"""{"template": "t.docx", "texts": {"moth": "x"}, "charts": [
 {"fill": "Costs", "table": "july.csv", "columns": ["West"]}, {"fill": "1", "table": "june.csv"},
 {"at": "margn", "table": "june.csv"}]}""")
        said = self.run_command("--job", "job.json", "-o", "out.docx").stderr
        self.assertEqual([line.split(" ", 1)[1][:60] for line in said.splitlines()], [
            'job.json:2:2: chart 1: july.csv: --columns: there is no colu',
            "job.json:3:2: chart 3: There is no placeholder {{margn}}; di",
            "There is no placeholder {{moth}}; did you mean {{month}}? Th"])

    def test_makes_a_document_for_each_group_of_a_template(self):
        self.write("all.csv", b"month,Month,North,South\nMay,May,1,2\nJun,Jun,3,4\nJun,Jul,5,6\n")
        self.write("job.json", {
            "template": "t.docx", "for-each": {"table": "all.csv", "by": "month", "output": "{month}.docx"},
            "charts": [{"fill": "Revenue", "table": "all.csv", "category": "Month", "columns": ["North", "South"],
                        "title": "Revenue of {{month}}"}]})
        told = json.loads(self.succeed("--job", "job.json", "--json"))
        self.assertEqual([(one["output"], one["texts"], one["left"]) for one in told],
                         [(f"{month}.docx", {"month": 2}, ["margin", "table:margin"]) for month in ("May", "Jun")])
        self.assertEqual(self.read_charts("May.docx")[0], ("bar", ["May"], {"North": ["1"], "South": ["2"]}))
        self.assertEqual(self.read_charts("Jun.docx")[0], ("bar", ["Jun", "Jul"], {"North": ["3", "5"], "South": ["4", "6"]}))
        for month in ["May", "Jun"]:
            self.assertEqual(json.loads(self.succeed("list", f"{month}.docx", "--json"))["charts"][0]["title"],
                             f"Revenue of {month}")
            self.assertIn(f"Report of {month}, again {month}", self.read_paragraphs(f"{month}.docx"))

    def test_extracts_what_fills_the_same_again(self):
        self.assertEqual(self.succeed("extract", "t.docx", "--chart", "Revenue"), "Month,North,South\nMay,1,2\nJun,3,4\n")
        self.succeed("extract", "t.docx", "--chart", "2", "-o", "out.json")
        self.assertEqual(json.loads(self.read("out.json")),
                         [{"Month": "May", "North": 1, "South": 2}, {"Month": "Jun", "North": 3, "South": 4}])
        self.succeed("extract", "t.docx", "--chart", "2", "-o", "out.md")
        self.assertEqual(self.read("out.md").decode(),
                         "| Month | North | South |\n|---|---:|---:|\n| May | 1 | 2 |\n| Jun | 3 | 4 |\n")
        self.succeed("fill", "t.docx", "out.json", "--chart", "2", "-o", "out.docx")
        self.assertEqual(self.read_part("out.docx", "word/charts/chart2.xml"),
                         self.read_part("t.docx", "word/charts/chart2.xml"))

    def test_says_which_placeholders_are_left(self):
        told = self.succeed("fill", "t.docx", "june.csv", "--at", "margin", "--check")
        self.assertEqual(told, '"{{margin}}": made.\n"{{month}}": left as it is.\n')
        told = self.succeed("fill", "t.docx", "--text", "month=July {{yaer}}", "--check")
        self.assertEqual(told.splitlines()[1:],
                         [f'"{{{{{name}}}}}": left as it is.' for name in ("yaer", "margin", "table:margin")])

    def test_there_is_nothing_to_extract_from_text_alone(self):
        self.write("text.json", {"blocks": [{"heading": "a"}]})
        self.succeed("--job", "text.json", "-o", "text.docx")
        self.require_refusal(1, "The document has no chart.", "extract", "text.docx")

    def test_extracts_dates_gaps_and_difficult_texts(self):
        for table, options, expected in [
            ('When,"A ""b"", c"\n2024-01-31,1.25\n2024-02-29,\n', ["--gaps"],
             'When,"A ""b"", c"\n2024-01-31,1.25\n2024-02-29,\n'),
        ]:
            with self.subTest(table=table):
                self.write("u.csv", table.encode())
                self.succeed("u.csv", *options, "-o", "u.docx")
                self.assertEqual(self.succeed("extract", "u.docx"), expected)

    def test_check_says_what_would_happen_and_writes_nothing(self):
        before = sorted(os.listdir(self.folder))
        told = self.succeed("fill", "t.docx", "july.csv", "--chart", "Revenue", "--check", "--json")
        self.assertEqual(json.loads(told)["charts"][0]["pointsAfter"], 3)
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_standard_output_holds_the_document_alone(self):
        with open(self.at("t.docx"), "rb") as template:
            data = self.succeed("fill", "-", "july.csv", "--chart", "Revenue", "-o", "-", text=False, input=template.read())
        self.write("out.docx", data)
        self.assertEqual(self.read_charts("out.docx")[0], JULY_CHART)

    def test_replaces_its_template_by_force_alone(self):
        arguments = ["fill", "t.docx", "july.csv", "--chart", "Revenue", "-o", "t.docx"]
        self.require_refusal(1, 'Cannot write "t.docx": the document is made from it; --force replaces it.', *arguments)
        self.succeed(*arguments, "--force")
        self.assertEqual(self.read_charts("t.docx")[0], JULY_CHART)

    def test_tables_may_add_up_and_names_come_twice_where_they_did(self):
        self.write("own.csv", b"City,Net\nBonn,1\nBonn,2\nTotal,3\n")
        self.write("job.json", {"blocks": [{"table": {"table": "own.csv"}}, {"paragraph": "{{table:more}}"}]})
        self.succeed("--job", "job.json", "-o", "more.docx")
        self.succeed("fill", "more.docx", "own.csv", "--at", "more", "-o", "out.docx")
        self.assertEqual(self.read_paragraphs("out.docx"), ["City", "Net", "Bonn", "1", "Bonn", "2", "Total", "3"] * 2)
        self.run_command("own.csv", "--drop", "Total", "-o", "chart.docx")
        self.succeed("fill", "chart.docx", "own.csv", "--drop", "Total", "--chart", "1", "-o", "filled.docx")

    def test_refuses(self):
        out = ["-o", "out.docx"]
        self.write("only.json", {"blocks": [{"paragraph": "{{table:only}}"}]})
        self.succeed("--job", "only.json", "-o", "only.docx")
        for status, arguments, sentence in [
            (2, ["list"], "Expected one DOCUMENT"),
            (2, ["list", "t.docx", "--chart", "1"], 'There is no option "--chart"'),
            (1, ["list", "july.csv"], "july.csv: "),
            (2, ["extract", "t.docx"], "Expected --chart: the document has 2 charts"),
            (1, ["extract", "t.docx", "--chart", "Profit"], 'There is no chart "Profit"; the document has 1 "Chart 1"'),
            (1, ["extract", "t.docx", "--chart", "1", "-o", "x.xlsx"],
             '--output "x.xlsx": expected a name that ends in .csv, .json or .md.'),
            (2, ["fill", "t.docx", *out], "Expected at least one TABLE with --chart or --at, or --text."),
            (2, ["fill", "t.docx", "july.csv", *out], '"july.csv": expected either --chart or --at after it'),
            (2, ["fill", "t.docx", "july.csv", "--chart", "1", "--at", "margin", *out], '"july.csv": expected either'),
            (2, ["fill", "t.docx", "july.csv", "--chart", "1"], "Expected --output"),
            (2, ["fill", "t.docx", "--text", "month", *out], '--text "month": expected a name and a text'),
            (2, ["fill", "t.docx", "--text", "month=a", "--text", "month=b", *out], '--text: "month" is given twice.'),
            (1, ["fill", "t.docx", "--text", "year=a", *out], "There is no placeholder"),
            (1, ["fill", "t.docx", "july.csv", "--chart", "margin", *out],
             'There is no chart "margin", but a placeholder {{margin}}, where a new chart is inserted (--at, in a job file "at"); the'),
            (1, ["fill", "t.docx", "july.csv", "--at", "Costs", *out],
             'There is no placeholder {{Costs}}, but a chart "Costs", which is filled (--chart, in a job file "fill").'),
            (1, ["fill", "only.docx", "july.csv", "--at", "only", "--type", "line", *out],
             "type is for charts; {{table:only}} becomes a table, which takes number-format and category-format."),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "--gap", "5", *out],
             'gap is for new charts, in the place of a placeholder; chart "1" is filled, and keeps its look.'),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "--match", "size", *out], """Match "size": expected name or position.\n"""),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "-o", "july.csv"], 'Cannot write "july.csv"'),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "june.csv", "--at", "profit", *out], "chart 2: There is no"),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "june.csv", "--chart", "Chart 1", *out],
             'chart 2: "Chart 1" is filled already; expected one table for each chart.'),
            (1, ["fill", "t.docx", "july.csv", "--chart", "1", "-o", "x.DOTX"],
             'Cannot write "x.DOTX": the template is a .docx file, and stays one; expected a name that ends so.'),
        ]:
            with self.subTest(arguments=arguments):
                self.require_refusal(status, sentence, *arguments)


if __name__ == "__main__":
    unittest.main()
