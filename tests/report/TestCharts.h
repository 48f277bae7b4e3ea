#pragma once

#include <memory>
#include <string>
#include <vector>

#include "chart/model/Chart.h"

namespace quillon::report {

/// A chart of equal series named "North", with a category "c" for each value.
template <typename Type>
std::shared_ptr<chart::Chart> makeChart(std::size_t seriesCount = 1,
                                        const std::vector<double>& values = {1, -2})
{
    auto data = chart::DataSet::create(std::vector<std::u16string>(values.size(), u"c"));
    for (std::size_t i = 0; i < seriesCount; ++i) {
        auto series = chart::DataSeries::create(u"North");
        for (const double value : values) series->appendPoint(value);
        data->appendSeries(series);
    }
    auto chart = Type::create();
    chart->setDataSet(data);
    return chart;
}

}  // namespace quillon::report
