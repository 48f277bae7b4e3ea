#include <string>

#include "bench/Benchmarks.h"
#include "bench/OtherProcess.h"
#include "chart/model/ColumnChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "report/document/Document.h"
#include "report/finish/Finishing.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/package/Zip.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::bench {
namespace {

struct Size {
    const char* name;
    std::size_t charts;
    std::size_t series;
    std::size_t points;
};

constexpr Size manySmall = {"document, 1,000 charts of 3 x 12", 1'000, 3, 12};
constexpr Size oneLarge = {"document, 1 chart of 3 x 100,000", 1, 3, 100'000};

std::shared_ptr<chart::Chart> makeChart(const Size& size)
{
    std::vector<std::u16string> categories;
    for (std::size_t k = 0; k < size.points; ++k) categories.push_back(u"Month " + num2str(k + 1));
    auto dataSet = chart::DataSet::create(categories);
    for (std::size_t i = 0; i < size.series; ++i) {
        auto series = chart::DataSeries::create(u"Series " + num2str(i));
        for (std::size_t k = 0; k < size.points; ++k) series->appendPoint(makeValue(i, k));
        dataSet->appendSeries(series);
    }
    auto chart = chart::ColumnChart::create();
    chart->setTitle(chart::Title::create(u"Revenue by region"));
    chart->setDataSet(dataSet);
    return chart;
}

std::string makeDocument(const Size& size)
{
    report::Document document;
    for (std::size_t i = 0; i < size.charts; ++i) document.addChart(makeChart(size));
    return document.toBytes();
}

void compareWithOtherLibrary(benchmark::State& state, const Size& size, double peakMemory)
{
    compare(
        state, [&] { return seconds([&] { makeDocument(size); }); },
        [&] {
            return runOtherLibrary("make.mjs", {size.charts, size.series, size.points});
        });
    const auto points = static_cast<double>(size.charts * size.series * size.points);
    state.counters["times faster"] = state.counters["baseline"].value / state.counters["ours"].value;
    state.counters["peak bytes/point"] = peakMemory / points;
}

/// The stages that one chart goes through, in their order, timed one by one.
struct Stages {
    double model = 0;
    double writer = 0;
    double finishing = 0;
    double serialising = 0;
    double workbook = 0;
    double zip = 0;

    double sum() const { return model + writer + finishing + serialising + workbook + zip; }
};

void timeChart(const Size& size, Stages& stages, std::vector<report::Part>& parts)
{
    std::shared_ptr<chart::Chart> chart;
    stages.model += seconds([&] { chart = makeChart(size); });
    report::DocumentPointer doc;
    stages.writer += seconds([&] {
        doc = report::createDocument();
        chart->getDOCXWriter()->createChartDOMDocContent(doc.get());
    });
    const auto options = report::withSize({});
    const report::Listener listener;
    const report::ChartData data = chart->getDataSet();
    const report::ChartContext context{*chart, data, options, report::getKind(*chart), 1, "rId1", listener};
    stages.finishing += seconds([&] { report::finishChartPart(doc.get(), context); });
    const auto name = std::to_string(parts.size());
    stages.serialising += seconds([&] { parts.push_back({name + ".xml", report::serialise(doc.get())}); });
    stages.workbook += seconds([&] {
        parts.push_back({name + ".xlsx", report::makeWorkbook(chart->getDataSet()), false});
    });
}

Stages timeStages(const Size& size)
{
    Stages stages;
    std::vector<report::Part> parts;
    for (std::size_t i = 0; i < size.charts; ++i) timeChart(size, stages, parts);
    stages.zip = seconds([&] { report::zipParts(parts); });
    return stages;
}

struct Stage {
    const char* name;
    double Stages::*time;
};

constexpr Stage stageRows[] = {
    {"  model", &Stages::model},         {"  writer", &Stages::writer},
    {"  finishing", &Stages::finishing}, {"  serialising", &Stages::serialising},
    {"  workbook", &Stages::workbook},   {"  zip", &Stages::zip},
};

void registerStages(const Size& size)
{
    for (const auto& row : stageRows)
        benchmark::RegisterBenchmark(row.name,
                                     [row, size](benchmark::State& state) {
                                         Stages stages;
                                         compare(
                                             state, [&] { return (stages = timeStages(size)).*row.time; },
                                             [&] { return stages.sum(); });
                                     })
            ->UseManualTime()
            ->Iterations(2);
}

}  // namespace

void registerReportBenchmarks()
{
    for (const auto& size : {manySmall, oneLarge}) {
        // Now, while the process is still small.
        const double peakMemory = measurePeakMemory([&] { makeDocument(size); });
        benchmark::RegisterBenchmark(
            size.name,
            [size, peakMemory](benchmark::State& state) { compareWithOtherLibrary(state, size, peakMemory); })
            ->UseManualTime()
            ->Iterations(2);
        registerStages(size);
    }
}

}  // namespace quillon::bench
