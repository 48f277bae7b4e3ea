#!/usr/bin/python3
"""Makes documents, pictures and page of the gallery; ./run gallery calls it.

    make_gallery.py page                     prints docs/gallery.md
    make_gallery.py documents FOLDER         makes the documents, with quillon-report of the path
    make_gallery.py pictures FOLDER IMAGES   draws them; needs LibreOffice, pdftoppm and ImageMagick

gallery.sh is the list of charts. The page cuts their C++ from gallery.cpp and their Python from gallery.py.
"""

import dataclasses
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
from pathlib import Path

import make_theme

HERE = Path(__file__).resolve().parent
#: The documents with the same four charts.
THEMES = ["themes", "themes-harbour"]
COLUMNS = 4


@dataclasses.dataclass
class Example:
    """A chart of the gallery, with the name of its document."""

    name: str
    heading: str
    text: str
    command: str


def read_examples():
    block = re.compile(r"^# (.*)\n((?:# .*\n)+)(quillon-report (?:.*\\\n)*.* -o (.*)\.docx)$", re.MULTILINE)
    return [
        Example(name, heading, text.replace("# ", "").strip(), command)
        for heading, text, command, name in block.findall((HERE / "gallery.sh").read_text())
    ]


def cut_function(file, start, end):
    """The lines of a function's body."""
    body = re.search(rf"^{re.escape(start)}\n(.*?)(?={end})", (HERE / file).read_text(), re.DOTALL | re.MULTILINE)
    return textwrap.dedent(body[1]).strip()


def cut_cpp(name):
    first, *others = name.split("-")
    return cut_function("gallery.cpp", f"void {first}{''.join(map(str.capitalize, others))}()\n{{", "^}")


def cut_python(name):
    return cut_function("gallery.py", f"def {name.replace('-', '_')}():", "\n\n\n")


# --- The page ---


def write_overview(examples):
    cells = [f'[<img src="images/gallery/{one.name}.png" width="200">](#{one.name})' for one in examples]
    rows = [cells[at : at + COLUMNS] for at in range(0, len(cells), COLUMNS)]
    rows.insert(1, ["---"] * COLUMNS)
    return "\n".join(f"| {' | '.join(row)} |" for row in rows)


def write_example(example):
    name = example.name
    return f"""\
<a id="{name}"></a>

## {example.heading}

{example.text} [The table](../examples/gallery/{name}.csv)

![{example.heading}](images/gallery/{name}.png)

```sh
{example.command}
```

```cpp
{cut_cpp(name)}
```

```python
{cut_python(name)}
```
"""


def write_page():
    examples = read_examples()
    # What stands between the namespace and the first chart.
    helpers = cut_function("gallery.cpp", "using quillon::chart::Title;", "^void revenueTarget")
    return f"""\
# Gallery

Twenty-four charts, each made by the command, from C++ and from Python. The documents hold native charts; the pictures are what
LibreOffice draws of them. `./run gallery` makes all of it anew, and a test makes sure that the three ways give the same
charts. The numbers are made up; they stand in small tables in [examples/gallery](../examples/gallery).

{write_overview(examples)}

The C++ stands in [gallery.cpp](../examples/gallery/gallery.cpp), in `namespace quillon::report`, and uses two functions:

```cpp
{helpers}
```

`readChartData`, of `report/table/ChartTable.h`, is in the library `quillon_table` of this tree. Programs that hold their
numbers in memory fill a `DataSet`, as [README.md](../README.md) shows. The Python stands in
[gallery.py](../examples/gallery/gallery.py), and begins so:

```python
import pandas

from quillon import report
from quillon.chart import ColumnChart
```

{chr(10).join(map(write_example, examples))}
## Another theme

Colours and fonts that a chart does not set come from the theme of its document. Below are four charts in the theme of new
documents, and the same in a template of one's own: the job file [themes.json](../examples/gallery/themes.json) names it as
`"template"`. [make_theme.py](../examples/gallery/make_theme.py) made it from any document, with colours of its own and
the typeface Cambria.

| New documents | The template |
|---|---|
| ![Four charts in blue, orange and grey](images/gallery/themes.png) | ![The same in teal, coral and amber](images/gallery/themes-harbour.png) |
"""


# --- Documents and pictures ---


def run(folder, *words):
    subprocess.run(words, cwd=folder, check=True)


def make_from_job(folder, name, job):
    (folder / f"{name}.json").write_text(job)
    run(folder, "quillon-report", "--job", f"{name}.json", "-o", f"{name}.docx")


def make_documents(folder):
    """All of the gallery, and the four charts in both themes."""
    for pattern in ("*.csv", "*.json"):
        for file in HERE.glob(pattern):
            shutil.copy(file, folder)
    run(folder, HERE / "gallery.sh")
    make_from_job(folder, "plain", '{"blocks": [{"paragraph": "Harbour"}]}')
    make_theme.make_theme(folder / "plain.docx", folder / "harbour.docx")
    job = (HERE / "themes.json").read_text()
    make_from_job(folder, "themes-harbour", job)
    make_from_job(folder, "themes", job.replace('"template": "harbour.docx",', ""))


def make_pictures(folder, images):
    charts = [one.name for one in read_examples()]
    documents = [f"{name}.docx" for name in charts + THEMES]
    with tempfile.TemporaryDirectory() as profile:
        run(folder, "soffice", "--headless", f"-env:UserInstallation=file://{profile}", "--convert-to", "pdf", *documents)
    images.mkdir(parents=True, exist_ok=True)
    for name in charts + THEMES:
        run(folder, "pdftoppm", "-png", "-r", "160", "-singlefile", f"{name}.pdf", images / name)
    # A page becomes its charts, in few colours; pictures beside each other are of one size.
    for names, size in ((charts, "1000x570"), (THEMES, "980x780")):
        run(images, "mogrify", "-trim", "+repage", "-gravity", "center", "-background", "white", "-extent", size,
            "+dither", "-colors", "64", "-white-threshold", "98%", "-strip", *(f"{name}.png" for name in names))


def main():
    match sys.argv[1:]:
        case ["page"]:
            print(write_page(), end="")
        case ["documents", folder]:
            make_documents(Path(folder).resolve())
        case ["pictures", folder, images]:
            make_pictures(Path(folder).resolve(), Path(images).resolve())
        case _:
            sys.exit(__doc__)


if __name__ == "__main__":
    main()
