"""Native, editable charts in word-processing documents: see quillon.chart."""
