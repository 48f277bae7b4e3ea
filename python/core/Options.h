#pragma once

#include <pybind11/pybind11.h>

#include "report/options/ChartOptions.h"

namespace quillon::python {

/// The options of a chart by their names in Python: those of the table of options with "_" for "-", and
/// "workbook" for the contrary of "no-workbook". None leaves one at its default.
/// Throws: Refused for a name that no option has, and for a value that is not of its type;
/// std::runtime_error that names the option, for a value that is not allowed.
report::ChartOptions readOptions(const pybind11::dict& options);

/// Adds options(): what keywords and their types are made of, a tuple (name, form, choices) for each option.
void defineOptions(pybind11::module_& core);

}  // namespace quillon::python
