#pragma once

#include <pybind11/pybind11.h>

namespace quillon::python {

/// Adds what `quillon.report.open` stands on: the class Template, and open_template.
void defineTemplate(pybind11::module_& core);

}  // namespace quillon::python
