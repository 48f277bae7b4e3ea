#pragma once

#include <pybind11/pybind11.h>

#include "report/options/ChartOptions.h"

namespace quillon::python {

/// The options of a chart by their names in Python; None leaves one at its default.
/// Throws: Refused for a name that no option has, and for a value that is not of its type.
report::ChartOptions readOptions(const pybind11::dict& options);

}  // namespace quillon::python
