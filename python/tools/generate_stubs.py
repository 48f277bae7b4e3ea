"""Prints the type stub of quillon.chart, from what the registry tells of the classes.

    ./run python python/tools/generate_stubs.py > python/quillon/chart/__init__.pyi
"""

import enum
import re

from quillon import _core, chart
from quillon.chart import _comfort

HEADER = '''\
"""{doc}"""

import enum
from collections.abc import Sequence
from typing import Any, overload

import quillon.chart
from quillon import _core
from quillon.chart import _comfort
from quillon.chart._tables import from_dataframe as from_dataframe
from quillon.chart._tables import from_rows as from_rows
'''


CHART_CONSTRUCTOR = "    def __init__(self, *, title: str | Title | None = None, data: Any = None) -> None: ..."


def qualify(type_name):
    """The full names of classes, for many properties have the name of a class."""
    return re.sub(r"\w+", lambda word: f"quillon.chart.{word[0]}" if word[0] in chart.__all__ else word[0], type_name)


def is_object(type_name):
    return isinstance(getattr(chart, type_name, None), type) and issubclass(getattr(chart, type_name), _core.Handle)


def doc_lines(text, indent):
    return [f'{indent}"""{text}"""']


def property_lines(name, member):
    doc = member.__doc__.split(". ", 1)[1]
    result, given = member.type_name, member.set_type_name
    if given not in (None, result):
        return [f"    {name}: _core.Property[{qualify(result)}, {qualify(given)}]", *doc_lines(doc, "    ")]
    # What may be set to None may be read as None.
    type_name = qualify(result) + (" | None" if given and is_object(result) else "")
    lines = ["    @property", f"    def {name}(self) -> {type_name}:", *doc_lines(doc, "        ")]
    if given:
        lines += [f"    @{name}.setter", f"    def {name}(self, value: {type_name}) -> None: ..."]
    return lines


def form_lines(name, forms, docs):
    lines = []
    for (arguments, result), doc in zip(forms, docs):
        if len(forms) > 1:
            lines.append("    @overload")
        words = ", ".join(["self", *(f"{argument}: {qualify(type_name)}" for argument, type_name in arguments)])
        lines.append(f"    def {name}({words}) -> {qualify(result) or 'None'}:" + ("" if doc else " ..."))
        lines += doc_lines(doc, "        ") if doc else []
    return lines


def method_lines(name, member):
    return form_lines(name, member.forms, re.findall(r"^    (.*)$", member.__doc__, re.MULTILINE))


def base_name(base):
    if base in _comfort.bases.values():
        return f"_comfort.{base.__name__}"
    return "_core.Handle" if base is _core.Handle else base.__name__


def class_lines(cls):
    bases = ", ".join(map(base_name, cls.__bases__))
    lines = [f"class {cls.__name__}({bases}):", *doc_lines(cls.__doc__.split("\n")[0], "    ")]
    constructors = _core.constructors(cls)
    if constructors and issubclass(cls, chart.Chart):
        lines.append(CHART_CONSTRUCTOR)
    else:
        lines += form_lines("__init__", constructors, [""] * len(constructors))
    for name, member in vars(cls).items():
        if isinstance(member, _core.Property):
            lines += property_lines(name, member)
        elif isinstance(member, _core.Method):
            lines += method_lines(name, member)
    return lines


def enumeration_lines(cls):
    lines = [f"class {cls.__name__}(enum.Enum):", *doc_lines(cls.__doc__, "    ")]
    return lines + [f"    {member.name} = {member.value}" for member in cls]


def main():
    print(HEADER.format(doc=chart.__doc__))
    print("__all__ = [", *(f'    "{name}",' for name in chart.__all__), "]", sep="\n")
    for name in chart.__all__:
        cls = getattr(chart, name)
        if isinstance(cls, type):
            print("", *(enumeration_lines if issubclass(cls, enum.Enum) else class_lines)(cls), sep="\n")


if __name__ == "__main__":
    main()
