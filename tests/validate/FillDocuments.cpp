#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "report/fill/Template.h"
#include "support/Text.h"

// Fills every chart of the given documents with other data, of more and of fewer series and points, and saves
// them to a folder: fill_documents FOLDER FILE...

namespace quillon::report {
namespace {

/// The data of a chart with more points and series, or fewer where `change` is negative; names and numbers
/// are partly the same.
ChartData vary(const ChartData& data, int change, bool keepsSeries)
{
    const auto resize = [&](std::size_t size) {
        return change < 0 ? std::max<std::size_t>(1, size - 1) : size + 2;
    };
    auto categories = data.dataSet->getCategories();
    if (!categories.empty()) categories.resize(resize(categories.size()), u"New <category>");
    ChartData varied(chart::DataSet::create(categories));
    varied.categoryKind = data.categoryKind;
    varied.categoryValues = data.categoryValues;
    if (!data.categoryValues.empty())
        varied.categoryValues.resize(categories.size(), data.categoryValues.back() + 31);
    varied.levels = data.levels;
    for (auto& level : varied.levels) level.resize(categories.size());
    const auto series = data.dataSet->getSeriesList();
    for (std::size_t s = 0; s < (keepsSeries ? series->size() : resize(series->size())); ++s) {
        const bool isOld = s < series->size();
        auto one = chart::DataSeries::create(isOld ? (*series)[s]->getName()
                                                   : u"New & " + num2str(static_cast<double>(s)));
        const auto& points = (*series)[isOld ? s : 0]->getPoints();
        if (points.empty()) one->appendPoint(1);
        for (std::size_t i = 0; !points.empty() && i < resize(points.size()); ++i) {
            const auto& point = points[i % points.size()];
            const auto lap = i / points.size();
            one->appendPoint(point->getX() + static_cast<double>(lap),
                             point->getY() * 0.75 + static_cast<double>(s));
        }
        varied.dataSet->appendSeries(one);
        varied.series.push_back({.sizes = data.getDetails(s).sizes});
        if (!varied.series[s].sizes.empty()) varied.series[s].sizes.resize(one->getPoints().size(), 3);
    }
    return varied;
}

bool isOf(const FoundChart& chart, const char* type)
{
    return std::ranges::find(chart.types, type) != chart.types.end();
}

void fillAll(const std::filesystem::path& folder, const std::string& path)
{
    for (const int change : {-1, 1}) {
        auto document = Template::open(path);
        for (const auto& chart : document.getCharts()) {
            if (!chart.problem.empty()) continue;
            const auto key = std::to_string(chart.number);
            const auto data = document.getChartData(key);
            const bool keepsSeries = chart.series.size() == 1 || isOf(chart, "stock");
            const auto report = document.fill(key, vary(data, change, keepsSeries));
            for (const auto& warning : report.warnings)
                std::cout << path << ", chart " << key << ": " << warning << "\n";
        }
        const auto name =
            std::filesystem::path(path).stem().string() + (change < 0 ? "-less" : "-more") + ".docx";
        document.save((folder / name).string());
    }
}

}  // namespace
}  // namespace quillon::report

int main(int count, char** arguments)
{
    try {
        for (int i = 2; i < count; ++i) quillon::report::fillAll(arguments[1], arguments[i]);
        return count > 2 ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
