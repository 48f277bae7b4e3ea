"""What the tests of the command share: each test runs it in a folder of its own."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from xml.etree import ElementTree

CHART = "{http://schemas.openxmlformats.org/drawingml/2006/chart}"
WORD = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"

COMMAND = os.path.abspath(sys.argv.pop())


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


class CommandTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def at(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        """Content: bytes, or what is written as JSON."""
        os.makedirs(os.path.dirname(self.at(name)), exist_ok=True)
        with open(self.at(name), "wb") as file:
            file.write(content if isinstance(content, bytes) else json.dumps(content).encode())

    def read(self, name):
        with open(self.at(name), "rb") as file:
            return file.read()

    def run_command(self, *arguments, text=True, **options):
        return subprocess.run(
            [COMMAND, *arguments], cwd=self.folder, capture_output=True, text=text, check=False, **options
        )

    def succeed(self, *arguments, warnings="", **options):
        """Runs the command, which succeeds in silence, and returns what it prints."""
        result = self.run_command(*arguments, **options)
        stderr = result.stderr if isinstance(result.stderr, str) else result.stderr.decode()
        self.assertEqual((result.returncode, stderr), (0, warnings))
        return result.stdout

    def require_refusal(self, status, sentence, *arguments, **options):
        """The command refuses, says the sentence, and leaves no file."""
        before = sorted(os.listdir(self.folder))
        result = self.run_command(*arguments, **options)
        self.assertIn(f"quillon-report: {sentence}", result.stderr)
        self.assertEqual((result.returncode, result.stdout), (status, ""))
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def read_part(self, document, part="word/document.xml"):
        with zipfile.ZipFile(self.at(document)) as file:
            return file.read(part).decode()

    def read_charts(self, document):
        with zipfile.ZipFile(self.at(document)) as file:
            names = [name for name in file.namelist() if name.startswith("word/charts/chart") and name.endswith(".xml")]
            return [read_chart(file.read(name)) for name in sorted(names)]

    def read_paragraphs(self, document):
        """The texts of the paragraphs that have some."""
        tree = ElementTree.fromstring(self.read_part(document))
        texts = ["".join(t.text or "" for t in paragraph.iter(f"{WORD}t")) for paragraph in tree.iter(f"{WORD}p")]
        return [text for text in texts if text]
