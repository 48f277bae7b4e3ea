"""Checks of Word documents that no validator makes: check_packages.py [--others] FILE...

--others: the packages are those of another library, which has its own ways with times and content types.
Prints what is wrong, and exits 1 when something is. Workbooks, whose numbers have 16 digits, are read back
with openpyxl.
"""

import io
import math
import posixpath
import sys
import zipfile
from xml.etree import ElementTree

import openpyxl
from openpyxl.utils import range_boundaries

CHART = "{http://schemas.openxmlformats.org/drawingml/2006/chart}"
DRAWING = "{http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing}"
RELATIONSHIP_ID = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id"
FIRST_DAY = (1980, 1, 1, 0, 0, 0)
CONTENT_TYPES = "[Content_Types].xml"


class Package:
    """A package, and what is wrong with it."""

    def __init__(self, path, is_ours):
        self.path = path
        self.problems = []
        with zipfile.ZipFile(path) as file:
            if is_ours:
                self.require_fixed_times(file, path)
            names = file.namelist()
            self.require(len(names) == len(set(names)), "two parts of one name")
            self.parts = {name: file.read(name) for name in names}
        self.trees = {
            name: ElementTree.fromstring(content)
            for name, content in self.parts.items()
            if name.endswith((".xml", ".rels"))
        }

    def require(self, condition, problem):
        if not condition:
            self.problems.append(f"{self.path}: {problem}")

    def require_fixed_times(self, file, name):
        self.require(all(part.date_time == FIRST_DAY for part in file.infolist()), f"{name} tells the time")

    def get_relationships(self, part):
        """The targets of a part's relationships by id."""
        folder, name = posixpath.split(part)
        tree = self.trees.get(f"{folder}/_rels/{name}.rels".lstrip("/"), [])
        targets = {row.get("Id"): posixpath.normpath(posixpath.join(folder, row.get("Target"))) for row in tree}
        self.require(len(targets) == len(tree), f"{part}: two relationships of one id")
        return targets


def check_relationships(package):
    """One relationship for each part, and none that leads nowhere."""
    targets = []
    for part in ["", *package.parts]:
        targets += package.get_relationships(part).values()
    contents = [part for part in package.parts if not part.endswith(".rels") and part != CONTENT_TYPES]
    package.require(sorted(targets) == sorted(contents), f"relationships {sorted(targets)}, parts {sorted(contents)}")


def check_content_types(package):
    types = package.trees[CONTENT_TYPES]
    extensions = {row.get("Extension") for row in types if row.get("Extension")}
    names = [row.get("PartName").lstrip("/") for row in types if row.get("PartName")]
    package.require(len(names) == len(set(names)) and set(names) <= set(package.parts), "a content type for no part")
    for part in package.parts:
        known = part == CONTENT_TYPES or part in names or part.rpartition(".")[2] in extensions - {"xml"}
        package.require(known, f"{part} has no content type")


def check_drawings(package):
    document = package.trees["word/document.xml"]
    drawings = document.findall(f".//{DRAWING}docPr")
    package.require(len({row.get("id") for row in drawings}) == len(drawings), "two drawings of one number")
    package.require(all(row.get("descr") for row in drawings), "a drawing without alternative text")
    used = [chart.get(RELATIONSHIP_ID) for chart in document.findall(f".//{CHART}chart")]
    relationships = package.get_relationships("word/document.xml")
    charts = [key for key, target in relationships.items() if target.startswith("word/charts/")]
    package.require(sorted(used) == sorted(charts), "the drawings do not show each chart once")


def read_cache(cache):
    """The texts of a cache by position, and how many it announces."""
    points = [(int(point.get("idx")), point.find(f"{CHART}v").text or "") for point in cache.findall(f"{CHART}pt")]
    return points, int(cache.find(f"{CHART}ptCount").get("val"))


def check_cache(package, place, reference, sheet):
    """A cache counts its points, and holds what its cells do."""
    is_number = reference.tag == f"{CHART}numRef"
    points, count = read_cache(reference.find(f"{CHART}{'num' if is_number else 'str'}Cache"))
    positions = [position for position, _ in points]
    in_order = positions == sorted(set(positions)) and all(position < count for position in positions)
    package.require(in_order and (is_number or len(points) == count), f"{place}: {positions} of {count} points")

    formula = reference.find(f"{CHART}f").text
    name, cells = formula.split("!")
    left, top, right, bottom = range_boundaries(cells)
    package.require(left == right and bottom - top + 1 == max(count, 1), f"{place}: {formula} for {count} points")
    if sheet is None:
        return
    package.require(name == sheet.title, f"{place}: no sheet {name}")
    cached = dict(points)
    for position in range(count):
        cell = sheet.cell(top + position, left).value
        text = cached.get(position)
        if is_number and text is not None:
            same = isinstance(cell, (int, float)) and math.isclose(float(text), cell, rel_tol=1e-15)
        else:
            # openpyxl reads texts with part of the notation for special characters taken off.
            same = (cell or "") == (text or "").replace("x005F_", "").replace("\r", "_x000D_")
        package.require(same, f"{place}: {formula} holds {cell!r} at {position}, its cache {text!r}")


def check_series(package, place, series, sheet):
    for reference in [*series.iter(f"{CHART}strRef"), *series.iter(f"{CHART}numRef")]:
        check_cache(package, place, reference, sheet)
    _, count = read_cache(series.find(f".//{CHART}numCache"))
    points = [int(point.find(f"{CHART}idx").get("val")) for point in series.findall(f"{CHART}dPt")]
    inside = len(set(points)) == len(points) and all(point < count for point in points)
    package.require(inside, f"{place}: formats for points {points} of {count}")


def open_sheet(package, part, chart):
    """The sheet with the chart's data; None for a chart without a workbook."""
    external = chart.find(f"{CHART}externalData")
    relationships = package.get_relationships(part)
    package.require(list(relationships) == ([external.get(RELATIONSHIP_ID)] if external is not None else []),
                    f"{part}: the workbook's relationship")
    if external is None:
        return None
    workbook = relationships[external.get(RELATIONSHIP_ID)]
    content = io.BytesIO(package.parts[workbook])
    with zipfile.ZipFile(content) as file:
        package.require_fixed_times(file, workbook)
    return openpyxl.load_workbook(content).active


def check_chart(package, part, chart):
    sheet = open_sheet(package, part, chart)
    plot_area = chart.find(f".//{CHART}plotArea")
    every_series = plot_area.findall(f".//{CHART}ser")
    for key in ("idx", "order"):
        numbers = [series.find(CHART + key).get("val") for series in every_series]
        package.require(len(set(numbers)) == len(numbers), f"{part}: c:{key} {numbers}")
    for index, series in enumerate(every_series):
        check_series(package, f"{part}: series {index + 1}", series, sheet)

    group = next(element for element in plot_area if element.tag.endswith("Chart"))
    axes = {axis.find(f"{CHART}axId").get("val"): axis.find(f"{CHART}crossAx").get("val")
            for axis in plot_area if axis.tag.endswith("Ax")}
    wanted = [element.get("val") for element in group.findall(f"{CHART}axId")]
    package.require(set(wanted) == set(axes) and all(axes.get(axes[axis]) == axis for axis in axes),
                    f"{part}: the group names axes {wanted}, the axes are {axes}")


def check(path, is_ours):
    package = Package(path, is_ours)
    check_relationships(package)
    if is_ours:
        check_content_types(package)
    check_drawings(package)
    for part, tree in package.trees.items():
        if tree.tag == f"{CHART}chartSpace":
            check_chart(package, part, tree)
    return package.problems


def main(arguments):
    paths = [argument for argument in arguments if argument != "--others"]
    problems = [problem for path in paths for problem in check(path, "--others" not in arguments)]
    print(*problems, f"{len(paths)} documents, {len(problems)} problems", sep="\n")
    return 1 if problems or not paths else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
