"""The types of the options of a chart."""

from typing import Literal

#: Where the legend stands; "auto" is below a pie and below several series, and nowhere otherwise.
Legend = Literal["auto", "none", "right", "top", "left", "bottom"]
