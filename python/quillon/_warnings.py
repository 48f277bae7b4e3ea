"""What the library says of charts that it writes in part."""

import warnings
from collections.abc import Iterable


class ChartWarning(UserWarning):
    """Something in a chart was replaced so that its document stays valid."""


def warn(sentences: Iterable[str], stacklevel: int = 3) -> None:
    """Warn where the caller of the calling function stands, or one farther out."""
    for sentence in sentences:
        warnings.warn(sentence, ChartWarning, stacklevel=stacklevel)
