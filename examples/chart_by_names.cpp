// A document with one chart, built by class and property names alone, as a script front end does.
#include <dlfcn.h>

#include <iostream>
#include <stdexcept>

#include "chart/model/Chart.h"
#include "orca/Script.h"
#include "report/document/Document.h"
#include "support/FeatureService.h"

namespace {

/// Loads the library and makes its classes known.
void loadChartClasses()
{
    quillon::setFeature("QuillonCharts", true);
    void* const library = dlopen("libquillon_charts.so", RTLD_NOW);
    void* const entry = library != nullptr ? dlsym(library, "CVInitialize_shared_quillon_charts") : nullptr;
    if (entry == nullptr) throw std::runtime_error(dlerror());
    reinterpret_cast<void (*)()>(entry)();
}

orca::HostArray makeChart()
{
    const auto series = orca::construct("quillon.chart.DataSeries", {u"North"});
    for (const double value : {1.5, 2.0, 3.25}) orca::call(series, "appendPoint", {value});
    const auto quarters = orca::HostArray::textArray({u"Q1", u"Q2", u"Q3"});
    const auto data = orca::construct("quillon.chart.DataSet", {quarters});
    orca::call(data, "appendSeries", {series});
    auto chart = orca::construct("quillon.chart.ColumnChart");
    orca::set(chart, "DataSet", data);
    orca::set(chart, "ChartTitle", orca::construct("quillon.chart.Title", {u"Sales"}));
    return chart;
}

}  // namespace

int main(int argc, char** argv)
try {
    loadChartClasses();
    quillon::report::Document document;
    document.addChart(makeChart().getNative<quillon::chart::Chart>());
    document.save(argc > 1 ? argv[1] : "sales.docx");
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
