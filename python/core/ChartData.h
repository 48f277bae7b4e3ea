#pragma once

#include <pybind11/pybind11.h>

#include "report/options/ChartData.h"

/// The class quillon.report.ChartData and its counterpart in the library.
namespace quillon::python {

/// What a ChartData of Python, or a data set alone, says.
/// Throws: Refused for another object, for a value that is not of its type, and where there is not one number
/// or text for each category or point; pybind11::error_already_set for what the values raise themselves.
report::ChartData readChartData(pybind11::handle value);

/// A new ChartData of Python. Throws: pybind11::error_already_set.
pybind11::object makeChartData(const report::ChartData& data);

/// Adds check_chart_data, which gives a ChartData as the library takes it.
void defineChartData(pybind11::module_& core);

}  // namespace quillon::python
