#include <string>

#include "bench/Benchmarks.h"
#include "bench/OtherProcess.h"
#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/options/Enumerations.h"
#include "support/Text.h"

namespace quillon::bench {
namespace {

using report::ChartKind;

/// A document of one large chart of a kind, or of many of the size that people read.
struct Load {
    const char* name;
    std::size_t charts;
    std::size_t points;
};

constexpr Load large = {"large", 1, 20'000};
constexpr Load small = {"small", 200, 12};

/// What a chart of the kind holds, and how many series it draws of that: a waterfall whose bars cross 0 draws
/// seven.
struct KindRow {
    ChartKind kind;
    std::size_t series = 3;
    std::size_t drawn = 3;
};

constexpr KindRow kindRows[] = {
    {ChartKind::Bar},      {ChartKind::Line},
    {ChartKind::Area},     {ChartKind::Pie, 1, 1},
    {ChartKind::Doughnut}, {ChartKind::Scatter},
    {ChartKind::Bubble},   {ChartKind::Radar},
    {ChartKind::Stock},    {ChartKind::Waterfall, 1, 7},
};

report::ChartData makeData(const KindRow& row, std::size_t points)
{
    std::vector<std::u16string> categories;
    for (std::size_t k = 0; k < points; ++k) categories.push_back(u"Month " + num2str(k + 1));
    report::ChartData data(chart::DataSet::create(categories));
    for (std::size_t i = 0; i < row.series; ++i) {
        auto series = chart::DataSeries::create(u"Series " + num2str(i));
        for (std::size_t k = 0; k < points; ++k)
            series->appendPoint(static_cast<double>(k + 1), makeValue(i, k));
        data.dataSet->appendSeries(series);
        data.series.emplace_back();
        if (row.kind == ChartKind::Bubble) data.series.back().sizes.assign(points, 2.5);
    }
    return data;
}

void makeDocument(const KindRow& row, const Load& load)
{
    report::Document document;
    for (std::size_t i = 0; i < load.charts; ++i) {
        const auto data = makeData(row, load.points);
        auto chart = chart::ColumnChart::create();
        chart->setTitle(chart::Title::create(u"Revenue by region"));
        chart->setDataSet(data.dataSet);
        document.addChart(chart, {.kind = row.kind}, data);
    }
    document.toBytes();
}

double countPoints(const KindRow& row, const Load& load)
{
    return static_cast<double>(load.charts * load.points * row.drawn);
}

void compareWithColumns(benchmark::State& state, const KindRow& row, const Load& load, double memoryRatio)
{
    // Of a column chart with as many series.
    const KindRow baseline = {ChartKind::Column, row.drawn, row.drawn};
    compare(
        state, [&] { return processorSeconds([&] { makeDocument(row, load); }) / countPoints(row, load); },
        [&] {
            return processorSeconds([&] { makeDocument(baseline, load); }) / countPoints(baseline, load);
        });
    state.counters["memory ratio"] = memoryRatio;
}

double measureMemory(const KindRow& row, const Load& load)
{
    return measurePeakMemory([&] { makeDocument(row, load); }) / countPoints(row, load);
}

}  // namespace

void registerTypeBenchmarks()
{
    for (const auto& load : {large, small})
        for (const auto& row : kindRows) {
            const KindRow baseline = {ChartKind::Column, row.drawn, row.drawn};
            const double memoryRatio = measureMemory(row, load) / measureMemory(baseline, load);
            const auto name = std::string("per point, ") + load.name + ", " +
                              report::findRow(report::kindRows, row.kind).name;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [row, load, memoryRatio](benchmark::State& state) {
                                             compareWithColumns(state, row, load, memoryRatio);
                                         })
                ->UseManualTime()
                ->Iterations(5);
        }
}

}  // namespace quillon::bench
