#pragma once

#include <memory>
#include <string>
#include <vector>

#include "chart/model/DataSet.h"

/// Series and sets made of those of a chart, which stays as it is.
namespace quillon::report {

/// The series without its points.
std::shared_ptr<chart::DataSeries> copyHead(const chart::DataSeries& series);

/// A set of series that may differ in length. The points are shared.
std::shared_ptr<chart::DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                            const std::vector<std::shared_ptr<chart::DataSeries>>& series);

}  // namespace quillon::report
