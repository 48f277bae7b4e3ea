#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chart/model/DataSet.h"

namespace quillon::report {

/// The 0-based positions of the series of those names, in the order of the names; of series that share a
/// name, all. Throws: ChartError with the names that there are, for a name that no series has. `option` is
/// named in it.
std::vector<std::size_t> findSeries(const chart::DataSet& dataSet, const std::vector<std::string>& names,
                                    const char* option);

/// The 0-based positions of the categories of that name.
/// Throws: ChartError with the names that there are, for a name that none has. `option` is named in it.
std::vector<std::size_t> findCategories(const std::vector<std::u16string>& categories,
                                        const std::u16string& name, const char* option);

/// The end of a sentence about a name that is not there: ` "North", "South" and 3 more`, at most 20 of them,
/// and the one that was probably meant.
std::string listNames(const std::vector<std::u16string>& names, const std::string& wanted);

}  // namespace quillon::report
