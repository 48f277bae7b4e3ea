"""Charts: their data, their words and their formats.

The classes are those of the library, under the library's own names.
"""

from quillon import _core

_classes = _core.load_classes("quillon.chart", {})
globals().update(_classes)

__all__ = list(_classes)
