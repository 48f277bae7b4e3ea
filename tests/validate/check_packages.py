"""Checks of Word documents that no validator makes: check_packages.py [--others | --filled] FILE...

--others: the packages are those of another library, which tells the time in them.
--filled: the charts were filled in documents of any origin; what they hold is compared with their workbooks alone.
Prints what is wrong, and exits 1 when something is. Packages are read with python-docx, and workbooks, whose numbers
have 16 digits, with openpyxl.
"""

import datetime
import io
import math
import sys
import zipfile
from xml.etree import ElementTree

import docx
import openpyxl
from docx.opc.constants import RELATIONSHIP_TYPE
from docx.opc.part import XmlPart
from docx.oxml.ns import qn
from openpyxl.utils import range_boundaries
from openpyxl.utils.datetime import to_excel

FIRST_DAY = (1980, 1, 1, 0, 0, 0)
CONTENT_TYPES = "[Content_Types].xml"

# Where data labels can stand, by group and whether its series are stacked; in other groups they stand nowhere else.
LABEL_PLACES = {
    ("barChart", False): {"ctr", "inBase", "inEnd", "outEnd"},
    ("barChart", True): {"ctr", "inBase", "inEnd"},
    ("lineChart", False): {"b", "ctr", "l", "r", "t"},
    ("lineChart", True): {"b", "ctr", "l", "r", "t"},
    ("pieChart", False): {"bestFit", "ctr", "inEnd", "outEnd"},
    ("scatterChart", False): {"b", "ctr", "l", "r", "t"},
    ("bubbleChart", False): {"b", "ctr", "l", "r", "t"},
    ("stockChart", False): {"b", "ctr", "l", "r", "t"},
    ("radarChart", False): {"outEnd"},
}

# The axes that a group stands on, without their order.
AXES = {
    "barChart": {"catAx", "valAx"},
    "lineChart": {"catAx", "valAx"},
    "areaChart": {"catAx", "valAx"},
    "radarChart": {"catAx", "valAx"},
    "stockChart": {"catAx", "valAx"},
    "scatterChart": {"valAx"},
    "bubbleChart": {"valAx"},
    "pieChart": set(),
    "doughnutChart": set(),
}

# Children in their order, "|" between those that exclude each other. Written down from the standard by hand, apart from
# the tables that the documents are made with.
AXIS = ("axId scaling delete axPos majorGridlines minorGridlines title numFmt majorTickMark minorTickMark tickLblPos "
        "spPr txPr crossAx crosses|crossesAt ")
LABEL = ("numFmt spPr txPr dLblPos showLegendKey showVal showCatName showSerName showPercent showBubbleSize separator ")
SERIES = "idx order tx spPr "
SHAPE = "xfrm noFill|solidFill|gradFill|blipFill|pattFill ln effectLst"
ORDERS = {key: [step.split("|") for step in steps.split()] for key, steps in {
    "chartSpace": "date1904 lang roundedCorners style chart spPr txPr externalData",
    "chart": "title autoTitleDeleted plotArea legend plotVisOnly dispBlanksAs",
    "title": "tx layout overlay spPr txPr",
    "legend": "legendPos legendEntry layout overlay spPr txPr",
    "barChart": "barDir grouping varyColors ser dLbls gapWidth overlap serLines axId",
    "lineChart": "grouping varyColors ser dLbls dropLines hiLowLines upDownBars marker smooth axId",
    "pieChart": "varyColors ser dLbls firstSliceAng",
    "areaChart": "grouping varyColors ser dLbls dropLines axId",
    "doughnutChart": "varyColors ser dLbls firstSliceAng holeSize",
    "scatterChart": "scatterStyle varyColors ser dLbls axId",
    "bubbleChart": "varyColors ser dLbls bubble3D bubbleScale showNegBubbles sizeRepresents axId",
    "radarChart": "radarStyle varyColors ser dLbls axId",
    "stockChart": "ser dLbls dropLines hiLowLines upDownBars axId",
    "trendline": "name spPr trendlineType order period forward backward intercept dispRSqr dispEq trendlineLbl",
    "errBars": "errDir errBarType errValType noEndCap plus minus val spPr",
    "upDownBars": "gapWidth upBars downBars",
    "catAx": AXIS + "auto lblAlgn lblOffset tickLblSkip tickMarkSkip noMultiLvlLbl",
    "dateAx": AXIS + "auto lblOffset baseTimeUnit majorUnit majorTimeUnit minorUnit minorTimeUnit",
    "valAx": AXIS + "crossBetween majorUnit minorUnit dispUnits",
    "scaling": "logBase orientation max min",
    "dispUnits": "custUnit|builtInUnit dispUnitsLbl",
    "dLbls": "dLbl " + LABEL + "showLeaderLines leaderLines extLst",
    "dLbl": "idx layout tx " + LABEL + "extLst",
    "dPt": "idx invertIfNegative marker bubble3D explosion spPr",
    "marker": "symbol size spPr",
    "dTable": "showHorzBorder showVertBorder showOutline showKeys spPr txPr",
    "barChart/ser": SERIES + "invertIfNegative pictureOptions dPt dLbls trendline errBars cat val shape extLst",
    "lineChart/ser": SERIES + "marker dPt dLbls trendline errBars cat val smooth",
    "pieChart/ser": SERIES + "explosion dPt dLbls cat val",
    "doughnutChart/ser": SERIES + "explosion dPt dLbls cat val",
    "areaChart/ser": SERIES + "pictureOptions dPt dLbls trendline errBars cat val",
    "stockChart/ser": SERIES + "marker dPt dLbls trendline errBars cat val smooth",
    "radarChart/ser": SERIES + "marker dPt dLbls cat val",
    "scatterChart/ser": SERIES + "marker dPt dLbls trendline errBars xVal yVal smooth",
    "bubbleChart/ser": SERIES + "invertIfNegative dPt dLbls trendline errBars xVal yVal bubbleSize bubble3D",
    "spPr": SHAPE,
    "ln": "noFill|solidFill|gradFill|pattFill prstDash|custDash round|bevel|miter headEnd tailEnd",
    "defRPr": "ln noFill|solidFill|gradFill effectLst latin ea cs",
}.items()}

problems = []


def require(condition, problem):
    if not condition:
        problems.append(problem)


def require_fixed_times(file, place):
    require(all(part.date_time == FIRST_DAY for part in file.infolist()), f"{place} tells the time")


def check_parts(path, package, is_ours):
    """Every part has one name, and relationships and content types are for parts that are there."""
    with zipfile.ZipFile(path) as file:
        names = file.namelist()
        types = ElementTree.fromstring(file.read(CONTENT_TYPES))
        if is_ours:
            require_fixed_times(file, path)
            untyped = [part.partname for part in package.iter_parts() if part.content_type == "application/xml"]
            require(not untyped, f"{path}: no content type for {untyped}")
    parts = [name for name in names if not name.endswith(".rels") and name != CONTENT_TYPES]
    related = [part.partname.lstrip("/") for part in package.iter_parts()]
    require(sorted(parts) == sorted(related), f"{path}: parts {sorted(parts)}, relationships to {sorted(related)}")
    typed = [row.get("PartName").lstrip("/") for row in types if row.get("PartName")]
    require(len(names) == len(set(names)) and len(typed) == len(set(typed)), f"{path}: two parts of one name")
    require(set(typed) <= set(parts), f"{path}: a content type for no part")


def check_drawings(path, package):
    """Drawings have numbers of their own and an alternative text, and show each chart once."""
    parts = [part for part in package.iter_parts() if isinstance(part, XmlPart)]
    drawings = [drawing for part in parts for drawing in part.element.iter(qn("wp:docPr"))]
    require(len({drawing.get("id") for drawing in drawings}) == len(drawings), f"{path}: two drawings of one number")
    require(all(drawing.get("descr") for drawing in drawings), f"{path}: a drawing without alternative text")
    for part in parts:
        used = [chart.get(qn("r:id")) for chart in part.element.iter(qn("c:chart"))]
        charts = [key for key, relationship in part.rels.items() if relationship.reltype == RELATIONSHIP_TYPE.CHART]
        require(sorted(used) == sorted(charts), f"{path}: {part.partname} does not show each chart once")


def read_numbers(parent, path):
    return [int(element.get("val")) for element in parent.iterfind(path)]


def is_same(cell, text, is_number):
    """Whether a cell holds what a cache does; an empty one holds a gap, or no text."""
    if isinstance(cell, datetime.datetime):
        cell = to_excel(cell)
    if is_number and text is not None:
        return isinstance(cell, (int, float)) and math.isclose(float(text), cell, rel_tol=1e-15)
    # openpyxl reads some texts with part of the notation for special characters taken off, and some as they are.
    def strip(value):
        return (value or "").replace("x005F_", "").replace("\r", "_x000D_")

    return strip(cell) == strip(text)


def check_cache(place, reference, sheet):
    """A cache counts its points, and holds what its cells do. Returns how many points it announces."""
    is_number = reference.tag == qn("c:numRef")
    count, = read_numbers(reference, f"*/{qn('c:ptCount')}")
    points = [(int(point.get("idx")), point.find(qn("c:v")).text or "") for point in reference.iter(qn("c:pt"))]
    positions = [position for position, _ in points]
    is_complete = is_number or len(positions) == count
    is_in_order = positions == sorted(set(positions) & set(range(count)))
    require(is_complete and is_in_order, f"{place}: {positions} of {count} points")

    name, cells = reference.find(qn("c:f")).text.split("!")
    left, top, right, bottom = range_boundaries(cells)
    require(left == right and bottom - top + 1 == max(count, 1), f"{place}: {cells} for {count} points")
    require(sheet is None or name == sheet.title, f"{place}: no sheet {name}")
    for position in range(count if sheet is not None else 0):
        cell, text = sheet.cell(top + position, left).value, dict(points).get(position)
        require(is_same(cell, text, is_number), f"{place}: {cells} holds {cell!r} at {position}, its cache {text!r}")
    return count


def check_series(place, series, sheet):
    counts = {reference.tag: check_cache(place, reference, sheet) for kind in ("c:strRef", "c:numRef")
              for reference in series.iter(qn(kind))}
    points = read_numbers(series, f"{qn('c:dPt')}/{qn('c:idx')}")
    is_inside = len(set(points)) == len(points) and set(points) <= set(range(counts[qn("c:numRef")]))
    require(is_inside, f"{place}: formats for points {points}")


def open_sheet(place, part, chart):
    """The sheet with the chart's data; None for a chart without a workbook."""
    ids = [element.get(qn("r:id")) for element in chart.iter(qn("c:externalData"))]
    require(list(part.rels) == ids, f"{place}: the workbook's relationship")
    if not ids:
        return None
    content = io.BytesIO(part.rels[ids[0]].target_part.blob)
    with zipfile.ZipFile(content) as file:
        require_fixed_times(file, f"{place}: the workbook")
    return openpyxl.load_workbook(content).active


def read_values(parent, tag):
    return [element.get("val") for element in parent.iterfind(qn(tag))]


def local_name(element):
    return element.tag.partition("}")[2]


def check_order(place, parent, group=""):
    """The children of each element stand in their order; of those that exclude each other there is one."""
    name = local_name(parent)
    key = f"{group}/ser" if name == "ser" else name
    names = [local_name(child) for child in parent]
    steps = ORDERS.get(key)
    if steps:
        positions = [next((i for i, step in enumerate(steps) if child in step), -1) for child in names]
        is_ordered = positions == sorted(positions) and -1 not in positions
        is_single = all(len({child for child in names if child in step}) <= 1 for step in steps)
        require(is_ordered and is_single, f"{place}: the children of {key} are {names}")
    for child in parent:
        check_order(place, child, name)


def check_group(place, group, plot_area):
    """What a group of series may hold, beyond what a schema says."""
    name = local_name(group)
    stacking = read_values(group, "c:grouping")
    is_stacked = stacking in (["stacked"], ["percentStacked"])
    places = {element.get("val") for element in group.iter(qn("c:dLblPos"))}
    require(places <= LABEL_PLACES.get((name, is_stacked), set()), f"{place}: labels of {name} {stacking} at {places}")
    require(name != "pieChart" or len(group.findall(qn("c:ser"))) <= 1, f"{place}: a pie of several series")
    overlap = read_numbers(group, qn("c:overlap"))
    require(all(-100 <= number <= 100 for number in overlap), f"{place}: overlap {overlap}")
    require(name != "barChart" or not is_stacked or len(overlap) == 1, f"{place}: stacked bars without overlap")
    ids = read_numbers(group, qn("c:axId"))
    axes = [axis for axis in plot_area if axis.find(qn("c:crossAx")) is not None
            and read_numbers(axis, qn("c:axId"))[0] in ids]
    names = {local_name(axis).replace("dateAx", "catAx") for axis in axes}
    require(names == AXES[name] and len(ids) == len(axes) == (2 if AXES[name] else 0), f"{place}: {name} on {names}")
    turned = [axis for axis in axes if read_values(axis.find(qn("c:scaling")), "c:orientation") == ["maxMin"]]
    across = [read_values(axis, "c:crosses") for axis in axes if turned and axis not in turned]
    is_second = any(read_values(axis, "c:delete") == ["1"] for axis in axes)
    require(across in ([], [["autoZero" if is_second else "max"]]), f"{place}: {name} is turned around, its other axis crosses at {across}")
    if stacking == ["percentStacked"]:
        first, = (axis for axis in axes if local_name(axis) == "valAx")
        logarithm = first.findall(f"{qn('c:scaling')}/{qn('c:logBase')}")
        code = first.find(qn("c:numFmt")).get("formatCode")
        require(not logarithm and (is_second or "%" in code), f"{place}: shares on an axis that counts in {code}")
    for series in group.iterfind(qn("c:ser")):
        points = read_numbers(series, f"{qn('c:dPt')}/{qn('c:idx')}")
        require(points == sorted(points), f"{place}: points {points}")


def check_scale(place, axis):
    """The ends of an axis stand in order, and a logarithmic one has no 0; its numbers have a format."""
    low, high, base = ([float(text) for text in read_values(axis.find(qn("c:scaling")), tag)]
                       for tag in ("c:min", "c:max", "c:logBase"))
    require(not (low and high) or low < high, f"{place}: an axis from {low} to {high}")
    require(not base or (2 <= base[0] <= 1000 and min(low + high + [1]) > 0), f"{place}: a logarithmic axis {base} {low}")
    code = axis.find(qn("c:numFmt")).get("formatCode")
    require(0 < len(code) <= 255, f"{place}: a number format of {len(code)} characters")


def check_chart(place, part):
    chart = ElementTree.fromstring(part.blob)
    sheet = open_sheet(place, part, chart)
    plot_area = chart.find(f".//{qn('c:plotArea')}")
    for key in ("c:idx", "c:order"):
        numbers = read_numbers(plot_area, f"*/{qn('c:ser')}/{qn(key)}")
        require(len(set(numbers)) == len(numbers), f"{place}: {key} {numbers}")
    for number, series in enumerate(plot_area.iter(qn("c:ser")), start=1):
        check_series(f"{place}: series {number}", series, sheet)

    check_order(place, chart)
    groups = [group for group in plot_area if group.tag.endswith("Chart")]
    require(groups, f"{place}: no chart in the plot area")
    for group in groups:
        check_group(place, group, plot_area)
    for scaling in plot_area.iterfind(f"*/{qn('c:scaling')}/.."):
        check_scale(place, scaling)
    wanted = [number for group in groups for number in read_numbers(group, qn("c:axId"))]
    crossed = dict(zip(read_numbers(plot_area, f"*[{qn('c:crossAx')}]/{qn('c:axId')}"),
                       read_numbers(plot_area, f"*/{qn('c:crossAx')}")))
    is_crossed = all(crossed.get(crossed[axis]) == axis for axis in crossed)
    require(set(wanted) == set(crossed) and len(crossed) in (0, 2, 4) and is_crossed, f"{place}: axes {wanted} that cross as in {crossed}")


def check(path, is_ours):
    package = docx.Document(path).part.package
    check_parts(path, package, is_ours)
    check_drawings(path, package)
    for part in package.iter_parts():
        if part.partname.startswith("/word/charts/"):
            check_chart(f"{path}: {part.partname}", part)


def read_cells(workbook, formula):
    """The values that a formula names, row after row."""
    name, cells = formula.rsplit("!", 1)
    left, top, right, bottom = range_boundaries(cells)
    rows = workbook[name.strip("'").replace("''", "'")].iter_rows(top, bottom, left, right, values_only=True)
    return [to_excel(value) if isinstance(value, datetime.datetime) else value for row in rows for value in row]


#: What the invisible base of a waterfall carries.
WATERFALL = b"{5C1D8A64-0B7E-4D0B-9A38-6E2F1B7C9D53}"


def check_filled_chart(place, part):
    chart = ElementTree.fromstring(part.blob)
    if chart.find(f".//{qn('c:ser')}") is None or WATERFALL in part.blob:
        return  # There was nothing to fill, or a chart that is made anew in place of being filled.
    data, = chart.iter(qn("c:externalData"))
    workbook = openpyxl.load_workbook(io.BytesIO(part.rels[data.get(qn("r:id"))].target_part.blob))
    for reference in (element for kind in ("c:strRef", "c:numRef") for element in chart.iter(qn(kind))):
        formula, is_number = reference.find(qn("c:f")).text, reference.tag == qn("c:numRef")
        cells = read_cells(workbook, formula)
        points = {int(point.get("idx")): point.find(qn("c:v")).text for point in reference.iter(qn("c:pt"))}
        count, = read_numbers(reference, f"*/{qn('c:ptCount')}")
        require(len(cells) == max(count, 1), f"{place}: {formula} for {count} points")
        for position, value in enumerate(cells):
            text = points.get(position)
            require(is_same(value, text, is_number), f"{place}: {formula} holds {value!r} at {position}, not {text!r}")
    for key in ("c:idx", "c:order"):
        numbers = read_numbers(chart, f".//{qn('c:ser')}/{qn(key)}")
        require(len(set(numbers)) == len(numbers), f"{place}: {key} {numbers}")


def check_filled(path):
    for part in docx.Document(path).part.package.iter_parts():
        if part.content_type.endswith("drawingml.chart+xml"):
            check_filled_chart(f"{path}: {part.partname}", part)


def main(arguments):
    paths = [argument for argument in arguments if not argument.startswith("--")]
    for path in paths:
        if "--filled" in arguments:
            check_filled(path)
        else:
            check(path, is_ours="--others" not in arguments)
    print(*problems, f"{len(paths)} documents, {len(problems)} problems", sep="\n")
    return 1 if problems or not paths else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
