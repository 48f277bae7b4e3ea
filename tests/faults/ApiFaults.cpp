// The C++ interface and the face for hosts while each single allocation fails, in one process: api_faults
// [STEP]. Each case succeeds with the bytes that it always gives, or throws a standard exception and leaves
// everything as it was. Prints a line a case; exits 1 where that does not hold.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "chart/host/ModuleEntry.h"
#include "chart/model/PieChart.h"
#include "orca/BindingRegistry.h"
#include "orca/Error.h"
#include "orca/Script.h"
#include "report/document/ChartParts.h"
#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "report/options/Options.h"
#include "support/FeatureService.h"
#include "tests/faults/Faults.h"

namespace quillon {
namespace {

using orca::HostArray;

constexpr auto longText = "a text that is too long to stand in its object";

HostArray buildByNames()
{
    const auto data = orca::construct("quillon.chart.DataSet",
                                      {HostArray::textArray({u"a category that is long enough", u"b"})});
    const auto series = orca::construct("quillon.chart.DataSeries", {u"a series with a name of some length"});
    orca::call(series, "appendPoint", {1.5});
    orca::call(series, "appendPoint", {1.0, 2.0});
    orca::set(orca::call(series, "getPoint", {1}), "Format",
              orca::construct("quillon.chart.DataPointShapeFormat", {u"rgb(1, 2,3)", u"white"}));
    orca::call(data, "appendSeries", {series});
    const auto chart = orca::construct("quillon.chart.PieChart");
    orca::set(chart, "DataSet", data);
    orca::set(chart, "ChartTitle", orca::construct("quillon.chart.Title", {u"a title that is long enough"}));
    static_cast<void>(orca::get(orca::get(chart, "ChartTitle"), "Text"));
    static_cast<void>(orca::get(data, "Categories"));
    return chart;
}

void callWrongly(const HostArray& chart)
{
    const std::vector<std::function<void()>> calls = {
        [&] { orca::get(chart, "Nothing of this name at all"); },
        [&] { orca::set(chart, "DataSet", 5); },
        [&] {
            orca::construct("quillon.chart.Title", {1, 2, 3});
        },
    };
    for (const auto& call : calls) {
        try {
            call();
        } catch (const orca::Error&) {
            continue;
        }
        throw std::logic_error("a wrong call was accepted");
    }
}

report::Document makeDocument(const std::shared_ptr<const chart::Chart>& chart)
{
    report::Document document;
    document.addHeading(longText);
    document.addChart(chart);
    document.addParagraph(longText);
    return document;
}

std::string setOptions()
{
    report::ChartOptions options;
    for (const auto* name : {"second", "totals"})
        report::setOption(options, *report::findOption(name), std::vector<std::string>{longText, longText},
                          name);
    return options.second.at(1) + options.totals.at(1);
}

std::string fill(const std::string& bytes)
{
    auto data = chart::DataSet::create(std::vector<std::u16string>{u"A category of another name", u"B"});
    auto series = chart::DataSeries::create(std::u16string(u"A series of another name"));
    for (const double value : {1.5, 2.0}) series->appendPoint(value);
    data->appendSeries(series);
    report::Template document(bytes);
    document.fill("1", report::ChartData(data));
    return document.toBytes();
}

struct Case {
    const char* name;
    /// The bytes that it gives; empty where it gives none.
    std::function<std::string()> work;
};

std::vector<Case> makeCases(const HostArray& chart, const std::string& path)
{
    const auto native = chart.getNative<chart::Chart>();
    const auto document = std::make_shared<report::Document>(makeDocument(native));
    return {
        {"options", setOptions},
        {"Template::fill", [bytes = document->toBytes()] { return fill(bytes); }},
        {"a chart built by names", [] { return buildByNames(), std::string(); }},
        {"wrong calls by names", [chart] { return callWrongly(chart), std::string(); }},
        {"a document put together", [native] { return makeDocument(native), std::string(); }},
        {"Document::toBytes", [document] { return document->toBytes(); }},
        {"Document::save", [document, path] { return document->save(path), std::string(); }},
        {"makeChartParts",
         [native] {
             const auto parts = report::makeChartParts(*native, {}, 1, "rId1");
             return parts.chart + parts.workbook + parts.run;
         }},
    };
}

/// What went wrong in one run of the case; empty where nothing did.
std::string run(const Case& tested, const std::string& expected, std::size_t bound)
{
    try {
        const auto bytes = tested.work();
        faults::failAllocation(0, false);
        if (bytes != expected) return "other bytes";
    } catch (const std::exception&) {
        faults::failAllocation(0, false);
    } catch (...) {
        faults::failAllocation(0, false);
        return "an exception that is not a std::exception";
    }
    return orca::BindingRegistry::size() == bound ? "" : "objects that stay bound";
}

/// Runs the case with allocation 1, 2, ... failing until none is left to fail. Returns whether all is well.
bool sweep(const Case& tested, long step, bool all)
{
    const auto expected = tested.work();
    const auto bound = orca::BindingRegistry::size();
    faults::failAllocation(0, false);
    tested.work();
    const long total = faults::countAllocations();
    for (long number = 1; number <= total; number += step) {
        faults::failAllocation(number, all);
        const auto problem = run(tested, expected, bound);
        if (problem.empty()) continue;
        std::printf("%s: %s when allocation %ld%s fails\n", tested.name, problem.c_str(), number,
                    all ? " and all behind it" : "");
        return false;
    }
    std::printf("%-28s %5ld allocations, %5ld runs%s\n", tested.name, total, (total + step - 1) / step,
                all ? ", all behind fail too" : "");
    return true;
}

int sweepAll(long step)
{
    setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
    const char* const folder = std::getenv("TMPDIR");
    auto path = std::string(folder != nullptr ? folder : "/tmp") + "/faults-XXXXXX";
    close(mkstemp(path.data()));
    bool isWell = true;
    for (const auto& tested : makeCases(buildByNames(), path))
        for (const bool all : {false, true}) isWell = sweep(tested, step, all) && isWell;
    unlink(path.c_str());
    return isWell ? 0 : 1;
}

}  // namespace
}  // namespace quillon

int main(int count, char** arguments)
{
    return quillon::sweepAll(count > 1 ? std::atol(arguments[1]) : 1);
}
