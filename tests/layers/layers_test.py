"""Reads every #include of the tree and refuses one that runs upwards: a room includes only what stands below it.

It also refuses two headers with classes of one name in one namespace, which a program that links both may mix up.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1])

# A room, and the rooms that its files may include; each room may include itself.
FINISHING = "chart/model chart/writer support report/options report/package report/workbook".split()
ROOMS = {
    "support": [],
    "orca": ["support"],
    "chart/model": ["support", "orca"],
    "chart/writer": ["support", "chart/model"],
    "chart/host": ["support", "orca", "chart/model"],
    "report/options": ["support", "chart/model"],
    "report/package": ["support", "chart/writer", "report/options"],
    "report/workbook": ["support", "report/options", "report/package"],
    "report/finish": FINISHING,
    "report/document": FINISHING + ["report/finish"],
    "report/fill": FINISHING + ["report/finish", "report/document"],
    "report/table": ["support", "report/options"],
    "report/command": ["support", "orca", "chart/model", "chart/host", "report/options", "report/package",
                       "report/document", "report/fill", "report/table"],
    "python": ["support", "orca", "chart/model", "chart/host", "report/options", "report/document", "report/fill",
               "report/table"],
}

# The four chart types make their writers.
SANCTIONED = {(f"chart/model/{kind}Chart.cpp", f"chart/writer/DOCX{kind}ChartWriter.h")
              for kind in ("Bar", "Column", "Line", "Pie")}


def room_of(path):
    """The longest name of a room that the path begins with; None outside the rooms."""
    return max((room for room in ROOMS if path.startswith(room + "/")), key=len, default=None)


def mistakes_of(path):
    """A sentence for each include of the file that its room may not have."""
    name = path.relative_to(ROOT).as_posix()
    room = room_of(name)
    if room is None:
        return [f"{name}: stands in no room; add its folder to ROOMS"]
    text = path.read_text(encoding="utf-8")
    included = re.findall(r'^\s*#\s*include\s+"([^"]+)"', text, re.MULTILINE)
    found = [f"{name}: includes {other}, which does not stand below {room}" for other in included
             if room_of(other) not in [room] + ROOMS[room] and (name, other) not in SANCTIONED]
    if room == "chart/model" and name.endswith(".h") and "xercesc/" in text:
        found.append(f"{name}: headers of the model name no DOM")
    return found


def classes_of(path):
    """The classes and enumerations that the file defines at the outermost level, with their namespace."""
    text = path.read_text(encoding="utf-8")
    namespace = re.search(r"^namespace ([\w:]+) \{", text, re.MULTILINE)
    names = re.findall(r"^(?:class|struct|enum class) (?:QUILLON_EXPORT )?(\w+)(?: final)?(?: :[^:;][^;{]*)? \{", text,
                       re.MULTILINE)
    return [f"{namespace and namespace[1]}::{name}" for name in names]


def namesakes_of(headers):
    """A sentence for each class whose name another header has given away."""
    homes = {}
    for path in headers:
        for name in classes_of(path):
            homes.setdefault(name, []).append(path.relative_to(ROOT).as_posix())
    return [f"{name}: stands in {' and in '.join(paths)}" for name, paths in homes.items() if len(paths) > 1]


def main():
    tops = sorted({room.split("/")[0] for room in ROOMS})
    files = [path for top in tops for path in sorted((ROOT / top).rglob("*")) if path.suffix in (".h", ".cpp")]
    mistakes = [mistake for path in files for mistake in mistakes_of(path)]
    mistakes += namesakes_of(path for path in files if path.suffix == ".h")
    if len(files) < len(ROOMS):
        mistakes.append(f"{ROOT}: holds {len(files)} sources, which cannot be all")
    sys.exit("\n".join(mistakes) or 0)


main()
