"""Compares documents with those of docx, a package of npm, and writes docs/comparison.md: compare.py BUILD DOCS

Each chart is made of the same data by both, in this run: the seconds for one document, what the Office validator says
of it, and its picture as LibreOffice draws it. BUILD holds the Python package; packages of npm are installed below it.
"""

import datetime
import json
import pathlib
import platform
import shutil
import subprocess
import sys
import time

from quillon.chart import ColumnChart, DataPoint, DataSeries, DataSet, Title
from quillon.report import Document

PROJECT = pathlib.Path(__file__).resolve().parents[2]
TIMES = 100
#: Of both: 4 by 2.3 inches, in pixels for the other.
SIZE = {"width": "4in", "height": "2.3in"}
PIXELS = {"width": 384, "height": 221}

QUARTERS = ["Q1", "Q2", "Q3", "Q4"]
SALES = {"North": [12.5, 14.1, 9.8, 16.0], "South": [8.2, 9.9, 11.4, 10.7], "West": [5.1, 4.6, 7.3, 9.2]}
SHARES = {"2024": [34, 21, 27, 18], "2025": [29, 30, 24, 17]}
SOURCES = ["Wind", "Solar", "Hydro", "Coal"]
SKILLS = ["Speed", "Range", "Price", "Comfort", "Safety"]
CARS = {"City": [3, 2, 5, 3, 4], "Family": [3, 5, 3, 5, 5]}
X = [1, 2, 3.5, 4, 5.5, 7, 8]
POINTS = {"Trial": [2.1, 3.9, 6.2, 8.4, 10.1, 14.2, 15.7], "Control": [1.8, 2.2, 3.1, 3.0, 4.4, 4.9, 5.6]}
SIZES = {"Trial": [4, 9, 5, 12, 7, 10, 6], "Control": [3, 5, 8, 4, 6, 9, 5]}
DAYS = ["Mon", "Tue", "Wed", "Thu", "Fri"]
PRICES = {"Open": [44, 46, 45, 49, 50], "High": [47, 48, 50, 51, 53], "Low": [43, 44, 44, 47, 49],
          "Close": [46, 45, 49, 50, 52]}


def list_series(table, **more):
    return [{"name": name, "values": values, **more} for name, values in table.items()]


def list_points(table, sizes=None):
    return [{"name": name, "points": [{"x": x, "y": y, **({"size": sizes[name][i]} if sizes else {})}
                                      for i, (x, y) in enumerate(zip(X, values))]} for name, values in table.items()]


def make_case(name, categories, table, ours=(), theirs=(), series=None):
    """A chart: our options, and the other's; `series` where it wants them in another form."""
    options = {"title": name.capitalize(), "transformation": PIXELS, "categories": categories,
               "series": series or list_series(table), **dict(theirs)}
    for key in [key for key, value in options.items() if value is None]:
        del options[key]
    options.setdefault("type", name)
    return {"name": name.replace(" ", "-"), "title": name.capitalize(), "categories": categories, "table": table,
            "ours": {"type": name, **dict(ours)}, "theirs": options}


def make_cases():
    bubbles = {**POINTS, **{f"Size of {name}": sizes for name, sizes in SIZES.items()}}
    stock = {key.lower(): values for key, values in PRICES.items()}
    second = list_series(SALES)
    second[2].update(type="line", axis="secondary", markers=True)
    return [
        make_case("column", QUARTERS, SALES, {"labels": ["value"]}, {"dataLabels": {"value": True}}),
        make_case("bar", QUARTERS, SALES, {"stacking": "percent"}, {"stacking": "percent"}),
        make_case("line", QUARTERS, SALES, {"markers": True}, {"markers": True}),
        make_case("area", QUARTERS, SALES, {"stacking": "normal"}, {"stacking": "stacked"}),
        make_case("pie", SOURCES, {"2025": SHARES["2025"]}, {"labels": ["percent"]},
                  {"dataLabels": {"percentage": True}}),
        make_case("doughnut", SOURCES, SHARES, {"labels": ["percent"]}, {"dataLabels": {"percentage": True}}),
        make_case("radar", SKILLS, CARS),
        make_case("scatter", X, POINTS, {"trendline": "linear"}, {"categories": None}, [
            {**one, "trendlines": [{"type": "linear"}]} for one in list_points(POINTS)]),
        make_case("bubble", X, bubbles, {"size_series": [f"Size of {name}" for name in SIZES]}, {"categories": None},
                  list_points(POINTS, SIZES)),
        make_case("stock", DAYS, PRICES, (), {**stock, "series": None}),
        make_case("second axis", QUARTERS, SALES,
                  {"type": "column", "line": ["West"], "second": ["West"], "markers": True}, {"type": "column"}, second),
    ]


def make_chart(case):
    data = DataSet([str(category) for category in case["categories"]])
    for name, values in case["table"].items():
        data.add_series(name, values)
    chart = ColumnChart()
    chart.DataSet, chart.ChartTitle = data, Title(case["title"])
    return chart


def make_ours(case):
    document = Document()
    document.add_chart(make_chart(case), **case["ours"], **SIZE)
    return document.to_bytes()


def time_ours(cases, folder):
    seconds = {}
    for case in cases:
        start = time.perf_counter()
        for _ in range(TIMES):
            content = make_ours(case)
        seconds[case["name"]] = (time.perf_counter() - start) / TIMES
        (folder / f"{case['name']}-ours.docx").write_bytes(content)
    return seconds


def install(source, names, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name in names:
        shutil.copy2(source / name, folder)
    subprocess.run([PROJECT / "cmake/npm-install.sh", folder], check=True)
    return folder


def read_version(folder, package):
    return json.loads((folder / "node_modules" / package / "package.json").read_text())["version"]


def time_theirs(cases, folder, program):
    (folder / "cases.json").write_text(json.dumps(cases))
    output = subprocess.run(["node", program / "compare.mjs", folder / "cases.json", folder, str(TIMES)], check=True,
                            stdout=subprocess.PIPE, text=True).stdout
    return json.loads(output)


def count_errors(files, program):
    lines = subprocess.run(["node", program / "validate.mjs", *files], stdout=subprocess.PIPE, text=True).stdout
    return {file.stem: sum(line.startswith(f"{file}:") for line in lines.splitlines()) for file in files}


def draw(files, folder, images):
    profile = f"-env:UserInstallation={(folder / 'office').as_uri()}"
    subprocess.run(["soffice", "--headless", profile, "--convert-to", "pdf", "--outdir", folder, *files], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    images.mkdir(parents=True, exist_ok=True)
    for file in files:
        # The chart alone, at the margins of the page.
        area = "-x 58 -y 58 -W 245 -H 142".split()
        subprocess.run(["pdftoppm", "-png", "-r", "60", "-singlefile", *area, file.with_suffix(".pdf"),
                        images / file.stem], check=True)


def write_page(page, cases, ours, theirs, errors, versions):
    rows = []
    for case in cases:
        name = case["name"]
        pictures = [f"![{case['title']}, {who}](images/comparison/{name}-{who}.png)" for who in ("ours", "docx")]
        rows.append(f"| {case['title']} | {pictures[0]} | {pictures[1]} | {errors[name + '-ours']} | "
                    f"{errors[name + '-docx']} | {1000 * ours[name]:.2f} | {1000 * theirs[name]:.2f} |")
    text = (PROJECT / "bench/docx_js/comparison.md").read_text()
    page.write_text(text.format(rows="\n".join(rows), times=TIMES, **versions))


def main(build, docs):
    build, docs = pathlib.Path(build).resolve(), pathlib.Path(docs).resolve()
    folder = build / "comparison"
    shutil.rmtree(folder / "documents", ignore_errors=True)
    documents = folder / "documents"
    documents.mkdir(parents=True)
    program = install(PROJECT / "bench/docx_js", ["package.json", "package-lock.json", "compare.mjs"],
                      folder / "docx_js")
    validator = install(PROJECT / "tests/validate", ["package.json", "package-lock.json", "validate.mjs"],
                        folder / "validator")
    cases = make_cases()
    ours, theirs = time_ours(cases, documents), time_theirs(cases, documents, program)
    files = sorted(documents.glob("*.docx"))
    errors = count_errors(files, validator)
    draw(files, documents, docs / "images/comparison")
    versions = {
        "docx": read_version(program, "docx"),
        "validator": read_version(validator, "@ooxml-tools/validate"),
        "node": subprocess.run(["node", "--version"], stdout=subprocess.PIPE, text=True).stdout.strip(),
        "python": platform.python_version(),
        "office": subprocess.run(["soffice", "--version"], stdout=subprocess.PIPE, text=True).stdout.split()[1],
        "date": datetime.date.today().isoformat(),
    }
    write_page(docs / "comparison.md", cases, ours, theirs, errors, versions)
    return 1 if any(errors[f"{case['name']}-ours"] for case in cases) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
