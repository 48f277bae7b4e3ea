#pragma once

#include <pybind11/pybind11.h>

namespace quillon::python {

/// Adds what `quillon.report` and `quillon.docx` stand on: the class Document, make_chart_parts, write_file.
void defineReport(pybind11::module_& core);

}  // namespace quillon::python
