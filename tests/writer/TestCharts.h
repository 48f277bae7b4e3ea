#pragma once

#include <memory>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/Chart.h"

namespace quillon::chart {

/// A document that releases itself.
using Document = std::shared_ptr<xercesc::DOMDocument>;

/// A new document; its root is an empty element, if it is named.
Document makeDocument(const char16_t* rootName = nullptr);

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

}  // namespace quillon::chart
