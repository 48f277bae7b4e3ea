#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "chart/model/Chart.h"
#include "report/document/Blocks.h"

/// The blocks of a document, from the tuples and lists that the Python package makes of what authors write.
namespace quillon::python {

/// Throws, as all here do: Refused for a value that is not of its type.
std::shared_ptr<const chart::Chart> readChart(pybind11::handle value);

/// A list of (text, bold, italic, link, reference).
report::TextRuns readRuns(pybind11::handle value);

/// A list of (runs, level).
std::vector<report::ListItem> readListItems(pybind11::handle value);

/// A list of texts, and one of rows, whose cells are texts or (number, format, whether it is a date).
report::TextTable readTable(pybind11::handle columns, pybind11::handle rows);

/// A list of texts.
std::vector<std::string> readTexts(pybind11::handle value, const std::string& name);

/// A number that fits. Throws besides: Refused with `sentence` for one that does not.
int readInteger(pybind11::handle value, const std::string& name, const char* sentence);

/// Chart data, or None for what says nothing.
report::ChartData readDetails(pybind11::handle value);

}  // namespace quillon::python
