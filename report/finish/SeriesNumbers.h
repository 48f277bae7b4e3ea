#pragma once

#include <vector>

#include "chart/model/DataSeries.h"

namespace quillon::report {

/// The values of all points, and their X.
std::vector<double> listValues(const chart::DataSeries& series);
std::vector<double> listX(const chart::DataSeries& series);

}  // namespace quillon::report
