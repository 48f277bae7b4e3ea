"""The gallery is the same by the command, from C++ and from Python, and its page is current."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
import zipfile
from pathlib import Path

PROJECT = Path(__file__).parents[1]
GALLERY = PROJECT / "examples/gallery"
BIN = os.environ["QUILLON_BIN"]
WAYS = [["bash", GALLERY / "gallery.sh"], [f"{BIN}/gallery"], ["/usr/bin/python3", GALLERY / "gallery.py"]]


def read_charts(document):
    with zipfile.ZipFile(document) as package:
        return {name: package.read(name).decode() for name in package.namelist() if name.startswith("word/charts/chart")}


def make(way):
    """The charts of each document that a way makes; it says nothing."""
    with tempfile.TemporaryDirectory() as folder:
        for pattern in ("*.csv", "*.json"):
            for table in GALLERY.glob(pattern):
                shutil.copy(table, folder)
        path = f"{BIN}{os.pathsep}{os.environ['PATH']}"
        result = subprocess.run(way, cwd=folder, env=os.environ | {"PATH": path}, capture_output=True, text=True, check=False)
        assert (result.returncode, result.stdout + result.stderr) == (0, ""), result
        return {document.stem: read_charts(document) for document in Path(folder).glob("*.docx")}


class GalleryTest(unittest.TestCase):
    maxDiff = 4000

    def test_three_ways_make_the_same_charts(self):
        command, cpp, python = map(make, WAYS)
        self.assertEqual(len(command), 24)
        for other in (cpp, python):
            self.assertEqual(command.keys(), other.keys())
            for name, charts in command.items():
                with self.subTest(name=name):
                    self.assertEqual(charts, other[name])

    def test_the_page_is_current_and_its_pictures_are_there(self):
        page = (PROJECT / "docs/gallery.md").read_text()
        made = subprocess.run([GALLERY / "make_gallery.py", "page"], capture_output=True, text=True, check=True).stdout
        self.assertEqual(page, made)
        self.assertEqual([path for path in re.findall(r"\]\((images/.*?)\)", page) if not (PROJECT / "docs" / path).is_file()], [])


if __name__ == "__main__":
    unittest.main()
