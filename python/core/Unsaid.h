#pragma once

#include <pybind11/pybind11.h>

namespace quillon::python {

/// Adds functions for what the library's objects have and their host classes leave unsaid, which copies and
/// arrays need: read_values, read_color, write_color, make_point, replace_fill, replace_border.
void defineUnsaid(pybind11::module_& core);

}  // namespace quillon::python
