"""The options of a chart. python/tools/generate_options.py makes this file from the library's table of options."""

from collections.abc import Mapping
from typing import Any, Literal

ChartType = Literal["column", "bar", "line", "pie"]
Legend = Literal["auto", "none", "right", "top", "left", "bottom"]
Float = Literal["left", "right"]
Units = Literal["hundreds", "thousands", "millions", "billions"]
Gridlines = Literal["none", "value", "category", "both"]
TickLabels = Literal["low", "next", "high", "none"]
Label = Literal["value", "percent", "category", "series"]
LabelPosition = Literal["bestFit", "ctr", "inEnd", "inBase", "outEnd", "t", "b", "l", "r"]
Stacking = Literal["normal", "percent"]
Blank = Literal["gap", "zero", "connect"]

#: All options, as Python has them.
NAMES = (
    "width",
    "height",
    "legend",
    "alt_text",
    "workbook",
    "float",
    "category_title",
    "value_title",
    "number_format",
    "category_format",
    "value_min",
    "value_max",
    "value_step",
    "log",
    "reverse",
    "units",
    "gridlines",
    "tick_labels",
    "tick_rotation",
    "tick_interval",
    "labels",
    "label_position",
    "label_format",
    "gap",
    "overlap",
    "stacking",
    "markers",
    "smooth",
    "blank",
    "colors",
    "palette",
    "series_colors",
    "start_angle",
    "explosion",
    "font",
    "font_size",
    "frame",
    "data_table",
)


def given(values: Mapping[str, Any]) -> dict[str, Any]:
    """The options among the local names of a function."""
    return {name: values[name] for name in NAMES if values[name] is not None}
