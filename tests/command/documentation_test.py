"""Tests of what people and shells read of the command: documentation_test.py QUILLON_REPORT."""

import json
import os
import re
import shlex
import shutil
import subprocess
import unittest
from pathlib import Path

from command import CommandTest

PROJECT = Path(__file__).parents[2]


class DocumentationTest(CommandTest):
    def test_help_names_every_option_of_the_verb_once(self):
        for words, options, others in [
            ([], ["-o, --output", "-j, --job", "--type", "--sheet", "--where", "--legend", "--data-table"], ["--chart", "--text"]),
            (["fill"], ["--chart", "--at", "--text", "--check", "--sheet", "--legend"], ["--heading", "--job"]),
            (["list"], ["--json"], ["--type"]),
        ]:
            with self.subTest(words=words):
                text = self.succeed(*words, "--help")
                for option in options:
                    self.assertEqual(text.count(f"  {option} ") + text.count(f"  {option}\n"), 1, option)
                for option in others:
                    self.assertNotIn(f"  {option} ", text)
                self.assertLessEqual(max(map(len, text.splitlines())), 112)

    def test_says_its_version(self):
        self.assertRegex(self.succeed("--version"), r"^quillon-report \d+\.\d+\.\d+\n$")

    def test_the_schema_in_the_documentation_is_current(self):
        self.assertEqual((PROJECT / "docs/job.schema.json").read_text(), self.succeed("--schema"))

    def test_the_schema_says_what_the_command_accepts(self):
        schema = json.loads(self.succeed("--schema"))
        chart = schema["$defs"]["chart"]
        self.assertEqual(chart["required"], ["table"])
        self.assertFalse(chart["additionalProperties"])
        self.assertEqual(chart["properties"]["legend"]["enum"], ["auto", "none", "right", "top", "left", "bottom"])
        self.assertEqual(chart["properties"]["gap"]["maximum"], 500)
        self.assertEqual(chart["properties"]["gap"]["type"], "integer")
        self.assertEqual(len(schema["$defs"]["block"]["anyOf"]), 11)
        self.assertIn({"type": "string"}, chart["properties"]["columns"]["anyOf"])

    def test_the_examples_of_the_documentation_are_made(self):
        for example in sorted((PROJECT / "examples/reports").glob("*.json")):
            with self.subTest(example=example.name):
                self.succeed("--job", str(example), "--check")

    def test_the_page_on_filling_is_true(self):
        page = (PROJECT / "docs/filling.md").read_text()
        code = dict(enumerate(re.findall(r"```(?:sh|json|)\n(.*?)```", page, re.DOTALL)))
        fill, listed, extracted, told, job = (code[i] for i in range(5))
        for table in ["july.csv", "margin.csv"]:
            shutil.copy(PROJECT / "examples/data" / table, self.folder)
        self.succeed("--job", str(PROJECT / "examples/reports/template.json"), "-o", "june.docx")
        self.assertEqual(self.succeed("list", "june.docx"), listed.split("\n", 1)[1])
        self.assertEqual(self.succeed("extract", "june.docx", "--chart", "Visits"), extracted)
        self.assertEqual(self.succeed(*shlex.split(fill.replace("\\\n", ""))[1:]), told)
        self.write("july.json", job.encode())
        self.succeed("--job", "july.json", "-o", "job.docx")
        self.assertEqual(self.read_part("job.docx", "word/charts/chart1.xml"),
                         self.read_part("july.docx", "word/charts/chart1.xml"))
        self.assertEqual(self.read_paragraphs("job.docx"), self.read_paragraphs("july.docx"))

    @unittest.skipUnless(shutil.which("man"), "man reads the page")
    def test_the_man_page_is_well_formed(self):
        self.write("page.1", self.succeed("--man").encode())
        result = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "page.1"], cwd=self.folder, capture_output=True,
                                text=True, env=os.environ | {"MANWIDTH": "80"}, check=False)
        self.assertEqual(result.stderr, "")
        self.assertIn(".B \\-\\-type TYPE\n", self.read("page.1").decode())
        for word in ["--type TYPE", "quillon-report fill", "EXIT STATUS"]:
            self.assertIn(word, result.stdout)

    def complete(self, *words):
        """What bash offers for the last word."""
        script = ('. ./completion; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _quillon_report; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        return subprocess.run(["bash", "-c", script, "-", "quillon-report", *words], cwd=self.folder, capture_output=True,
                              text=True, check=True).stdout.split()

    def test_bash_completes_verbs_options_and_values(self):
        self.write("completion", self.succeed("--completion", "bash").encode())
        self.write("list.csv", b"")
        self.assertEqual(self.complete("li"), ["list", "list.csv"])
        self.assertEqual(self.complete("t.csv", "--type", "l"), ["line"])
        self.assertEqual(self.complete("t.csv", "--labels", ""), ["value", "percent", "category", "series"])
        self.assertEqual(self.complete("fill", "--ch"), ["--check", "--chart"])
        self.assertEqual(self.complete("t.csv", "--classe"), [])

    @unittest.skipUnless(shutil.which("zsh"), "zsh reads its completion")
    def test_zsh_reads_its_completion(self):
        self.write("completion", self.succeed("--completion", "zsh").encode())
        subprocess.run(["zsh", "-n", "completion"], cwd=self.folder, check=True)

    def test_zsh_has_a_line_for_each_option(self):
        script = self.succeed("--completion", "zsh")
        self.assertIn(":TYPE:(column bar line pie area doughnut scatter bubble radar stock waterfall)'", script)
        self.assertEqual(script.count("'*--chart["), 2)
        self.assertIn("'*--check[", script)


if __name__ == "__main__":
    unittest.main()
