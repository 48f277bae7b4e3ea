#include <benchmark/benchmark.h>

#include <stdexcept>
#include <xercesc/framework/MemoryManager.hpp>

#include "bench/BareBuilder.h"
#include "bench/Benchmarks.h"
#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "support/Text.h"

namespace quillon::bench {
namespace {

/// Counts the bytes that a document takes from the system.
class CountingMemory : public xercesc::MemoryManager {
 public:
    MemoryManager* getExceptionMemoryManager() override { return this; }
    void* allocate(XMLSize_t size) override
    {
        bytes_ += size;
        return ::operator new(size);
    }
    void deallocate(void* memory) override { ::operator delete(memory); }
    std::size_t getBytes() const { return bytes_; }

 private:
    std::size_t bytes_ = 0;
};

/// An empty document with a memory of its own.
class Document {
 public:
    Document()
        : document_(xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS")->createDocument(
              memory_.getExceptionMemoryManager()))
    {
    }
    ~Document() { document_->release(); }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    xercesc::DOMDocument* get() { return document_; }
    std::size_t getBytes() const { return memory_.getBytes(); }

 private:
    CountingMemory memory_;
    xercesc::DOMDocument* document_;
};

PlainChart makePlainChart(ChartType type, std::size_t seriesCount, std::size_t pointCount,
                          std::size_t categoryCount)
{
    PlainChart chart{type, u"Revenue by region", {}, {}};
    for (std::size_t k = 0; k < categoryCount; ++k) chart.categories.push_back(u"Month " + num2str(k + 1));
    chart.series.resize(seriesCount);
    for (std::size_t i = 0; i < seriesCount; ++i)
        for (std::size_t k = 0; k < pointCount; ++k) chart.series[i].push_back(makeValue(i, k));
    return chart;
}

std::shared_ptr<chart::Chart> createChart(ChartType type)
{
    switch (type) {
        case ChartType::Bar:
            return chart::BarChart::create();
        case ChartType::Column:
            return chart::ColumnChart::create();
        case ChartType::Line:
            return chart::LineChart::create();
        case ChartType::Pie:
            return chart::PieChart::create();
    }
    throw std::logic_error("unknown chart type");
}

std::shared_ptr<chart::Chart> makeChart(const PlainChart& plain)
{
    auto dataSet = chart::DataSet::create(plain.categories);
    for (std::size_t i = 0; i < plain.series.size(); ++i) {
        auto series = chart::DataSeries::create(u"Series " + num2str(i));
        for (const double value : plain.series[i]) {
            auto point = series->appendPoint(value);
            if (plain.formattedPoints) point->setFormat(chart::DataPointShapeFormat::create(u"red", u"blue"));
        }
        dataSet->appendSeries(series);
    }
    auto result = createChart(plain.type);
    result->setTitle(chart::Title::create(plain.title));
    result->setDataSet(dataSet);
    return result;
}

void write(xercesc::DOMDocument* doc, const chart::Chart& chart)
{
    chart.getDOCXWriter()->createChartDOMDocContent(doc);
}

void requireSameTree(const chart::Chart& chart, const PlainChart& plain)
{
    Document written;
    Document bare;
    write(written.get(), chart);
    buildBare(bare.get(), plain);
    if (!written.get()->getDocumentElement()->isEqualNode(bare.get()->getDocumentElement()))
        throw std::logic_error("The writer and the bare builder make different trees.");
}

void compareWithBare(benchmark::State& state, const PlainChart& plain)
{
    const auto chart = makeChart(plain);
    const auto points = static_cast<double>(plain.series.size() * plain.series[0].size());
    if (points <= 100'000) requireSameTree(*chart, plain);
    std::size_t writtenBytes = 0;
    std::size_t bareBytes = 0;
    const auto writer = [&] {
        Document document;
        const double time = seconds([&] { write(document.get(), *chart); });
        writtenBytes = document.getBytes();
        return time;
    };
    const auto bare = [&] {
        Document document;
        const double time = seconds([&] { buildBare(document.get(), plain); });
        bareBytes = document.getBytes();
        return time;
    };
    compare(state, writer, bare);
    state.counters["ns/point"] = state.counters["ours"].value * 1e9 / points;
    state.counters["memory ratio"] = static_cast<double>(writtenBytes) / static_cast<double>(bareBytes);
}

struct Case {
    const char* name;
    ChartType type;
    std::size_t seriesCount;
    std::size_t pointCount;
    std::size_t categoryCount;
    bool formattedPoints;
};

constexpr Case cases[] = {
    {"small bar chart, 3 x 12", ChartType::Bar, 3, 12, 12, false},
    {"small column chart, 3 x 12", ChartType::Column, 3, 12, 12, false},
    {"small line chart, 3 x 12", ChartType::Line, 3, 12, 12, false},
    {"small pie chart, 3 x 12", ChartType::Pie, 3, 12, 12, false},
    {"column chart, 1 x 10,000", ChartType::Column, 1, 10'000, 12, false},
    {"column chart, 1 x 100,000", ChartType::Column, 1, 100'000, 12, false},
    {"column chart, 1 x 1,000,000", ChartType::Column, 1, 1'000'000, 12, false},
    {"formatted columns, 1 x 100,000", ChartType::Column, 1, 100'000, 12, true},
    {"pie slices, 1 x 100,000", ChartType::Pie, 1, 100'000, 12, false},
    {"column chart, 100 x 12", ChartType::Column, 100, 12, 12, false},
    {"column chart, 1,000 x 12", ChartType::Column, 1'000, 12, 12, false},
};

}  // namespace

void registerWriterBenchmarks()
{
    for (const auto& c : cases) {
        benchmark::RegisterBenchmark(c.name,
                                     [c](benchmark::State& state) {
                                         auto plain = makePlainChart(c.type, c.seriesCount, c.pointCount,
                                                                     c.categoryCount);
                                         plain.formattedPoints = c.formattedPoints;
                                         compareWithBare(state, plain);
                                     })
            ->UseManualTime()
            ->MinTime(1.0);
    }
}

}  // namespace quillon::bench
