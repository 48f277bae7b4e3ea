#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "bench/Benchmarks.h"
#include "bench/OtherProcess.h"
#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "support/Text.h"

namespace quillon::bench {
namespace {

struct Task {
    const char* name;
    /// How many documents are made from the template, which is opened once.
    std::size_t times;
    std::size_t charts;
    std::size_t series;
    std::size_t points;
};

constexpr Task oneDocument = {"fill, 11 charts of 3 x 12", 1, 11, 3, 12};
constexpr Task manyDocuments = {"fill, 1,000 times 1 of 3 x 12", 1'000, 1, 3, 12};
constexpr Task oneLarge = {"fill, 1 chart of 3 x 100,000", 1, 1, 3, 100'000};

/// Data that are other each time, as months are.
std::shared_ptr<chart::DataSet> makeData(const Task& task, std::size_t time)
{
    std::vector<std::u16string> categories;
    for (std::size_t k = 0; k < task.points; ++k) categories.push_back(u"Month " + num2str(k + 1));
    auto dataSet = chart::DataSet::create(categories);
    for (std::size_t i = 0; i < task.series; ++i) {
        auto series = chart::DataSeries::create(u"Series " + num2str(i));
        for (std::size_t k = 0; k < task.points; ++k) series->appendPoint(makeValue(i + time, k));
        dataSet->appendSeries(series);
    }
    return dataSet;
}

std::string getChartName(std::size_t number)
{
    return "chart" + std::to_string(number);
}

std::string makeTemplate(const Task& task)
{
    report::Document document;
    for (std::size_t i = 0; i < task.charts; ++i) {
        const auto chart = chart::ColumnChart::create();
        chart->setTitle(chart::Title::create(u"Revenue by region"));
        chart->setDataSet(makeData(task, 0));
        document.addChart(chart, {.altText = "{{" + getChartName(i) + "}}"});
    }
    return document.toBytes();
}

/// From the bytes of the template to those of every document.
std::size_t fill(const std::string& bytes, const Task& task)
{
    const report::Template opened(bytes);
    std::size_t size = 0;
    for (std::size_t time = 1; time <= task.times; ++time) {
        auto document = opened;
        const auto data = makeData(task, time);
        for (std::size_t i = 0; i < task.charts; ++i) document.fill(getChartName(i), data);
        size += document.toBytes().size();
    }
    return size;
}

/// A file with the template, for the other library.
class TemplateFile {
 public:
    explicit TemplateFile(const std::string& bytes)
    {
        const int descriptor = mkstemp(path_.data());
        if (descriptor < 0 ||
            write(descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("The template cannot be written.");
        close(descriptor);
    }
    ~TemplateFile() { unlink(path_.c_str()); }
    TemplateFile(const TemplateFile&) = delete;
    TemplateFile& operator=(const TemplateFile&) = delete;

    const std::string& getPath() const { return path_; }

 private:
    std::string path_ = "/tmp/quillon-bench-XXXXXX";
};

/// What filling needs at most beyond the template's bytes and the data, in bytes.
double measurePeakOfFilling(const Task& task)
{
    const auto bytes = makeTemplate(task);
    const auto data = makeData(task, 1);
    return measurePeakMemory([&] {
        report::Template document(bytes);
        document.fill(getChartName(0), data);
        if (document.toBytes().empty()) throw std::runtime_error("The filled document is empty.");
    });
}

std::size_t getPartSize(const std::string& bytes)
{
    return report::Package(bytes).getPart("word/charts/chart1.xml").size();
}

void measure(benchmark::State& state, const Task& task, double peakMemory)
{
    const auto bytes = makeTemplate(task);
    const TemplateFile file(bytes);
    compare(
        state, [&] { return seconds([&] { fill(bytes, task); }); },
        [&] {
            return runOtherLibrary("patch.mjs " + file.getPath(),
                                   {task.times, task.charts, task.series, task.points});
        });
    state.counters["times faster"] = state.counters["baseline"].value / state.counters["ours"].value;
    if (peakMemory > 0) state.counters["peak/part"] = peakMemory / static_cast<double>(getPartSize(bytes));
}

}  // namespace

void registerFillBenchmarks()
{
    // Now, while the process is still small.
    const double peakMemory = measurePeakOfFilling(oneLarge);
    const std::pair<Task, double> tasks[] = {{oneDocument, 0}, {manyDocuments, 0}, {oneLarge, peakMemory}};
    for (const auto& [task, peak] : tasks)
        benchmark::RegisterBenchmark(
            task.name, [task = task, peak = peak](benchmark::State& state) { measure(state, task, peak); })
            ->UseManualTime()
            ->Iterations(2);
}

}  // namespace quillon::bench
