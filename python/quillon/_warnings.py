"""What the library says of charts that it writes in part."""

import warnings
from collections.abc import Iterable


class ChartWarning(UserWarning):
    """Something in a chart was replaced so that its document stays valid."""


def warn(sentences: Iterable[str]) -> None:
    """Warn where the caller of the calling function stands."""
    for sentence in sentences:
        warnings.warn(sentence, ChartWarning, stacklevel=3)
