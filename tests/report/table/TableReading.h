#pragma once

#include <string>
#include <vector>

#include "report/options/ChartData.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Options as an author types them: `--sort value --where "a=b c"`.
TableOptions parseOptions(const std::string& words);

/// What is read of a table, line by line: categories, series, notes, or the sentence with which it is
/// refused. The folder of the path is left out of sentences.
std::string describeReading(const std::string& path, const TableOptions& options);

/// Writes bytes to a file of the test's own, which lives as long as the test program; the path of it.
std::string writeTable(const std::string& bytes, const std::string& ending = ".csv");

}  // namespace quillon::report
