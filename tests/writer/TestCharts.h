#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "chart/model/Chart.h"
#include "tests/writer/DomComparison.h"

namespace quillon::chart {

struct SeriesData {
    std::u16string name;
    std::vector<double> values;
};

/// The series need not have one size.
std::shared_ptr<DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                     const std::vector<SeriesData>& series);
/// Two series over two categories.
std::shared_ptr<DataSet> makeSales();

/// `create` is that of the chart type: makeChart(BarChart::create, makeSales()).
std::shared_ptr<Chart> makeChart(std::shared_ptr<Chart> (*create)(), std::shared_ptr<DataSet> data,
                                 std::shared_ptr<Title> title = nullptr);

/// A new document with the chart part.
Document writeChart(const Chart& chart);

/// What `action` says in the std::runtime_error that it throws, or that it throws none.
std::string getFailure(const std::function<void()>& action);

}  // namespace quillon::chart
