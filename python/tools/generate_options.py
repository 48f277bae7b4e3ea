"""Writes the keywords of the options of a chart, with their types, wherever Python code takes them.

    ./run python python/tools/generate_options.py

Writes python/quillon/_options.py, and what stands between "options: begin" and "options: end" in other files. With
--check it writes nothing, and fails when something is not up to date.
"""

import re
import sys
from pathlib import Path

from quillon import _core

PACKAGE = Path(__file__).parents[1] / "quillon"

HEADER = '''"""The options of a chart. python/tools/generate_options.py makes this file from the library's table of options."""

from collections.abc import Mapping
from typing import Any, Literal

'''
FOOTER = '''

def given(values: Mapping[str, Any]) -> dict[str, Any]:
    """The options among the local names of a function."""
    return {name: values[name] for name in NAMES if values[name] is not None}
'''

#: By form; a list of choices takes one of them as well.
TYPES = {
    "number": "float | None = None",
    "integer": "int | None = None",
    "text": "str | None = None",
    "texts": "Sequence[str] | None = None",
    "pairs": "dict[str, str] | None = None",
    "choice": "_options.{name} | None = None",
    "choices": "_options.{name} | Sequence[_options.{name}] | None = None",
    "flag": "bool = False",
}


def python_name(name):
    return name.replace("-", "_")


def type_name(name, form):
    words = name.removesuffix("s").split("-") if form == "choices" else name.split("-")
    return "".join(word.capitalize() for word in words)


def keywords(lengths):
    """The lines of all keywords; `lengths`: whether width and height may be numbers."""
    lines = []
    for name, form, _ in _core.options():
        if name == "no-workbook":
            lines.append("workbook: bool = True,")
        elif lengths and name in ("width", "height"):
            lines.append(f"{name}: str | float | None = None,")
        else:
            lines.append(f"{python_name(name)}: {TYPES[form].format(name=type_name(name, form))},")
    return lines


def option_module():
    lines = []
    for name, form, choices in [("chart-type", "choice", _core.chart_types()), *_core.options()]:
        if choices:
            literal = ", ".join(f'"{choice}"' for choice in choices)
            line = f"{type_name(name, form)} = Literal[{literal}]"
            lines.append(line)
    names = ["workbook" if name == "no-workbook" else python_name(name) for name, _, _ in _core.options()]
    lines += ["", "#: All options, as Python has them.", "NAMES = (", *(f'    "{name}",' for name in names), ")"]
    return HEADER + "\n".join(lines) + "\n" + FOOTER


def fill_regions(text):
    def fill(match):
        indent = match["indent"]
        lines = [f"{indent}{line}\n" for line in keywords(lengths="lengths" in match["begin"])]
        return f"{match['begin']}{''.join(lines)}{match['end']}"

    region = r"(?P<begin>(?P<indent> *)# options: begin[^\n]*\n).*?(?P<end> *# options: end\n)"
    return re.sub(region, fill, text, flags=re.DOTALL)


def main():
    made = {PACKAGE / "_options.py": option_module()}
    for path in PACKAGE.rglob("*.py"):
        text = path.read_text()
        if "# options: begin" in text:
            made[path] = fill_regions(text)
    old = [path for path, text in made.items() if not path.exists() or path.read_text() != text]
    if "--check" in sys.argv:
        sys.exit("\n".join(f"{path} is not up to date." for path in old) or 0)
    for path in old:
        path.write_text(made[path])


if __name__ == "__main__":
    main()
