"""The options of a chart. python/tools/generate_options.py makes this file from the library's table of options."""

from collections.abc import Mapping
from typing import Any, Literal

ChartType = Literal["column", "bar", "line", "pie", "area", "doughnut", "scatter", "bubble", "radar", "stock", "waterfall"]
Type = Literal["column", "bar", "line", "pie", "area", "doughnut", "scatter", "bubble", "radar", "stock", "waterfall"]
Legend = Literal["auto", "none", "right", "top", "left", "bottom"]
Float = Literal["left", "right"]
Units = Literal["hundreds", "thousands", "millions", "billions"]
Gridlines = Literal["none", "value", "category", "both"]
TickLabels = Literal["low", "next", "high", "none"]
CategoryType = Literal["auto", "text", "date", "number"]
Label = Literal["value", "percent", "category", "series"]
LabelPosition = Literal["bestFit", "ctr", "inEnd", "inBase", "outEnd", "t", "b", "l", "r"]
LabelSeparator = Literal["comma", "semicolon", "period", "newline", "space"]
Stacking = Literal["normal", "percent"]
Blank = Literal["gap", "zero", "connect"]
ScatterStyle = Literal["points", "lines", "both"]
Trendline = Literal["linear", "exponential", "logarithmic", "power", "polynomial", "moving-average"]
ErrorBars = Literal["fixed", "percent", "deviation", "error"]

#: All options, as Python has them.
NAMES = (
    "type",
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
    "no_value_axis",
    "tick_labels",
    "tick_rotation",
    "tick_interval",
    "category_type",
    "second",
    "second_title",
    "second_format",
    "second_min",
    "second_max",
    "second_step",
    "second_log",
    "x_title",
    "x_format",
    "x_min",
    "x_max",
    "x_step",
    "x_log",
    "labels",
    "label_position",
    "label_separator",
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
    "category_colors",
    "dashed",
    "hidden",
    "start_angle",
    "explosion",
    "line",
    "area",
    "column",
    "hole",
    "filled",
    "scatter_style",
    "size_series",
    "totals",
    "drop_lines",
    "high_low_lines",
    "up_down_bars",
    "trendline",
    "trendline_series",
    "order",
    "period",
    "forecast",
    "backcast",
    "equation",
    "r_squared",
    "error_bars",
    "error_value",
    "plus_series",
    "minus_series",
    "font",
    "font_size",
    "frame",
    "data_table",
)


def given(values: Mapping[str, Any]) -> dict[str, Any]:
    """The options among the local names of a function."""
    return {name: values[name] for name in NAMES if values[name] is not None}
