"""What the library says of charts that it writes in part."""

import sys
import warnings
from collections.abc import Iterable


class ChartWarning(UserWarning):
    """Something in a chart was replaced so that its document stays valid."""


def warn(sentences: Iterable[str]) -> None:
    """Warn where the package is called."""
    level, frame = 1, sys._getframe()
    while frame.f_back is not None and frame.f_globals["__name__"].partition(".")[0] == "quillon":
        level, frame = level + 1, frame.f_back
    for sentence in sentences:
        warnings.warn(sentence, ChartWarning, stacklevel=level)
