#include "report/command/TemplateFiller.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "report/command/ChartMaker.h"
#include "report/command/DataWriter.h"
#include "report/fill/FillWords.h"
#include "report/options/Options.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;

/// A chart that is filled keeps its look: it takes options for new ones that are about numbers alone.
void requireFillOptions(const ChartJob& job)
{
    for (const auto& option : getOptions()) {
        const std::string name = option.name;
        const bool isOfNumbers = name == "number-format" || name == "totals";
        if (!isOfNumbers && option.get(job.options) != option.get({}))
            fail(
                "{} is for new charts, in the place of a placeholder; chart {} is filled, and keeps its "
                "look.",
                name, quoteText(job.fill));
    }
}

Match readMatch(const std::string& text)
{
    if (text.empty() || text == "name") return Match::Name;
    if (text == "position") return Match::Position;
    fail("Match {}: expected name or position.", quoteText(text));
}

/// The data that a chart shows, none where it cannot be read; filling says why.
ChartData readShown(const Template& document, const std::string& chart)
{
    try {
        return document.getChartData(chart);
    } catch (const std::runtime_error&) {
        return chart::DataSet::create();
    }
}

/// What a table for the chart may hold without being told so.
TableTarget findTarget(const ChartData& shown)
{
    TableTarget target{.hasX = isOfPoints(shown), .hasTotals = !shown.totals.empty()};
    const auto& categories = shown.dataSet->getCategories();
    target.hasRepeated = std::set(categories.begin(), categories.end()).size() < categories.size();
    const auto series = shown.dataSet->getSeriesList();
    for (const auto& one : *series)
        for (const auto& point : one->getPoints()) {
            target.hasX = target.hasX || point->getX() != 0;
            target.hasGaps = target.hasGaps || std::isnan(point->getY()) || std::isnan(point->getX());
        }
    for (const auto& details : shown.series) target.hasSizes = target.hasSizes || !details.sizes.empty();
    return target;
}

/// Names that were changed so that columns differ, or that lost blanks, are those of the chart again.
void restoreNames(ChartData& data, const ChartData& shown)
{
    auto names = nameColumns(shown);
    for (auto& name : names) name = std::string(trim(name));
    const auto series = data.dataSet->getSeriesList();
    for (const auto& one : *series) {
        const auto place = std::ranges::find(names, std::string(trim(toUtf8(one->getName()))));
        if (place != names.end())
            one->setName(
                shown.dataSet->getSeries(static_cast<unsigned long>(place - names.begin()))->getName());
    }
}

/// Texts that the chart has already are no dates or numbers, whatever they look like.
void keepTexts(ChartData& data, const ChartData& shown)
{
    if (shown.categoryKind != CategoryKind::Text ||
        shown.dataSet->getCategories() != data.dataSet->getCategories())
        return;
    data.categoryKind = CategoryKind::Text;
    data.categoryValues.clear();
    data.categoryFormat.clear();
}

FillReport fillChart(Template& document, const ChartJob& job, const Listener& listener)
{
    requireFillOptions(job);
    const auto shown = readShown(document, job.fill);
    auto data = readData(job, listener, findTarget(shown));
    restoreNames(data, shown);
    keepTexts(data, shown);
    // The chart knows its totals; what looks like one in the table may be none.
    data.totals.clear();
    for (const auto& total : job.options.totals) data.totals.push_back(quillon::toUtf16(total));
    auto report = document.fill(
        job.fill, data,
        {.match = readMatch(job.match), .title = job.title, .numberFormat = job.options.numberFormat});
    for (const auto& warning : report.warnings)
        if (listener.warning) listener.warning(fmt::format("{}: {}", quoteText(job.fill), warning));
    return report;
}

bool hasPlaceholder(const Template& document, const std::string& name, PlaceholderKind kind)
{
    const auto placeholders = document.getPlaceholders();
    return std::any_of(placeholders.begin(), placeholders.end(),
                       [&](const auto& one) { return one.name == name && one.kind == kind; });
}

/// A table takes the formats of numbers alone.
void requireTableOptions(const ChartJob& job)
{
    const auto place = "{{table:" + showText(job.at) + "}} becomes a table";
    for (const auto& option : getOptions()) {
        const std::string name = option.name;
        const bool isOfNumbers = name == "number-format" || name == "category-format";
        if (!isOfNumbers && option.get(job.options) != option.get({}))
            fail("{} is for charts; {}, which takes number-format and category-format.", name, place);
    }
    if (!job.title.empty()) fail("title is for charts; {}.", place);
}

/// `{{name}}` becomes a chart, and `{{table:name}}` a table of the same data.
void insert(Template& document, const ChartJob& job, const Listener& listener)
{
    const bool hasTable = hasPlaceholder(document, job.at, PlaceholderKind::Table);
    const bool hasChart = hasPlaceholder(document, job.at, PlaceholderKind::Paragraph) ||
                          hasPlaceholder(document, job.at, PlaceholderKind::Picture);
    const bool isTable = hasTable && !hasChart;
    if (isTable) requireTableOptions(job);
    const auto data = readData(job, listener, {.hasTotals = isTable, .hasRepeated = isTable});
    if (hasTable) document.insertTable(job.at, data, job.options);
    if (hasChart || !hasTable)
        document.insert(job.at, *makeChart(job, data, listener.warning), job.options, data, listener);
}

/// Does `work`, and adds what it refuses to the problems, with its place in front.
template <typename Work>
void tryTo(const std::string& place, std::vector<std::string>& problems, const Work& work)
{
    try {
        work();
    } catch (const std::runtime_error& error) {
        problems.push_back(place + error.what());
    }
}

/// Where a chart is asked for, in front of a sentence.
std::string describePlace(const Filling& filling, std::size_t position)
{
    const auto place = filling.places.empty() ? std::string() : filling.places[position];
    return filling.charts.size() == 1 ? place : fmt::format("{}chart {}: ", place, position + 1);
}

/// Two tables for one chart are a mistake in the name of one of them.
void requireOtherChart(const std::vector<FillReport>& filled, const FillReport& chart)
{
    for (const auto& other : filled)
        if (other.number == chart.number)
            fail("{} is filled already; expected one table for each chart.", quoteText(chart.chart));
}

/// New charts come last: until then numbers are those of the template.
void fillCharts(Template& document, const Filling& filling, const Listener& listener, FillResult& result,
                std::vector<std::string>& problems)
{
    std::size_t done = 0;
    for (const bool isNew : {false, true})
        for (std::size_t i = 0; i < filling.charts.size(); ++i) {
            const auto& job = filling.charts[i];
            if (job.fill.empty() != isNew) continue;
            tryTo(describePlace(filling, i), problems, [&] {
                if (isNew) {
                    insert(document, job, listener);
                    return result.inserted.push_back(job.at);
                }
                auto report = fillChart(document, job, listener);
                requireOtherChart(result.charts, report);
                result.charts.push_back(std::move(report));
            });
            if (listener.progress) listener.progress(++done, filling.charts.size());
        }
}

bool isInText(const Template& document, const std::string& name)
{
    const auto placeholders = document.getPlaceholders();
    return std::any_of(placeholders.begin(), placeholders.end(), [&](const auto& one) {
        return one.name == name && one.kind != PlaceholderKind::Picture && one.kind != PlaceholderKind::Table;
    });
}

/// The placeholders that readers of the document would see, by name.
std::vector<std::string> listLeft(const Template& document)
{
    std::vector<std::string> names;
    for (const auto& one : document.getPlaceholders()) {
        if (one.kind == PlaceholderKind::Picture) continue;
        const auto name = (one.kind == PlaceholderKind::Table ? "table:" : "") + one.name;
        if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
    return names;
}

std::string describeSeries(const FillReport::Series& series)
{
    switch (series.change) {
        case FillReport::Change::Renamed:
            return fmt::format("; {} is now {}", quoteText(series.before), quoteText(series.name));
        case FillReport::Change::Added:
            return fmt::format("; {} is new", quoteText(series.name));
        case FillReport::Change::Removed:
            return fmt::format("; {} is gone", quoteText(series.name));
        default:
            return {};
    }
}

std::string describeChart(const FillReport& chart)
{
    const auto matched = chart.count(FillReport::Change::Matched);
    auto line = fmt::format("{}: {} points, {} before; {} series as before", quoteText(chart.chart),
                            chart.pointsAfter, chart.pointsBefore, matched);
    for (const auto& series : chart.series) line += describeSeries(series);
    return line + ".\n";
}

Json toJson(const FillReport& chart)
{
    auto series = Json::array();
    for (const auto& one : chart.series) {
        Json row = {{"change", nameOf(one.change)}, {"name", one.name}};
        if (!one.before.empty()) row["before"] = one.before;
        series.push_back(row);
    }
    return {{"number", chart.number},
            {"chart", chart.chart},
            {"series", series},
            {"pointsBefore", chart.pointsBefore},
            {"pointsAfter", chart.pointsAfter},
            {"warnings", chart.warnings}};
}

Json toJson(const FillResult& result, const std::string& output)
{
    Json json = {{"output", output}, {"charts", Json::array()}, {"inserted", result.inserted}};
    for (const auto& chart : result.charts) json["charts"].push_back(toJson(chart));
    json["texts"] = Json::object();
    for (const auto& [name, count] : result.texts) json["texts"][name] = count;
    json["left"] = result.left;
    return json;
}

std::string write(const Json& json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// Word processors refuse a file whose name and content differ in these kinds.
struct DocumentKind {
    const char* ending;
    const char* contentType;
};
constexpr std::array documentKinds = {
    DocumentKind{".docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"},
    DocumentKind{".dotx", "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml"},
    DocumentKind{".docm", "application/vnd.ms-word.document.macroEnabled.main+xml"},
    DocumentKind{".dotm", "application/vnd.ms-word.template.macroEnabledTemplate.main+xml"},
};

}  // namespace

void requireOutputOfKind(const Template& document, const std::string& output)
{
    const auto type = document.getPackage().getContentType(document.getPackage().getMainPart());
    const auto ending = toLower(std::filesystem::path(output).extension().string());
    const auto find = [&](auto matches) {
        return std::find_if(documentKinds.begin(), documentKinds.end(), matches);
    };
    const auto own = find([&](const auto& kind) { return kind.contentType == type; });
    const auto named = find([&](const auto& kind) { return kind.ending == ending; });
    if (own != documentKinds.end() && named != documentKinds.end() && own != named)
        fail("Cannot write {}: the template is a {} file, and stays one; expected a name that ends so.",
             quoteText(output, 200), own->ending);
}

Template openTemplate(const std::string& path)
{
    if (path != "-") return Template::open(path);
    return Template(std::string(std::istreambuf_iterator<char>(std::cin), {}));
}

FillResult fillTemplate(Template& document, const Filling& filling, const Listener& listener)
{
    FillResult result;
    std::vector<std::string> problems;
    fillCharts(document, filling, listener, result, problems);
    for (const auto& text : filling.texts)
        tryTo({}, problems,
              [&] { result.texts.emplace_back(text.first, document.replace(text.first, text.second)); });
    if (!problems.empty()) throw std::runtime_error(fmt::format("{}", fmt::join(problems, "\n")));
    for (const auto& [name, text] : filling.furtherTexts)
        if (isInText(document, name)) result.texts.emplace_back(name, document.replace(name, text));
    result.left = listLeft(document);
    return result;
}

std::string describeFilling(const FillResult& result)
{
    std::string lines;
    for (const auto& chart : result.charts) lines += describeChart(chart);
    for (const auto& name : result.inserted)
        lines += fmt::format("{}: made.\n", quoteText("{{" + name + "}}"));
    for (const auto& [name, count] : result.texts)
        lines += fmt::format("{}: replaced {}.\n", quoteText("{{" + name + "}}"),
                             count == 1 ? "once" : fmt::format("{} times", count));
    for (const auto& name : result.left)
        lines += fmt::format("{}: left as it is.\n", quoteText("{{" + name + "}}"));
    return lines;
}

std::string describeFillingAsJson(const FillResult& result, const std::string& output)
{
    return write(toJson(result, output));
}

std::string describeFillingsAsJson(const std::vector<FillResult>& results,
                                   const std::vector<std::string>& outputs)
{
    auto json = Json::array();
    for (std::size_t i = 0; i < results.size(); ++i) json.push_back(toJson(results[i], outputs[i]));
    return write(json);
}

}  // namespace quillon::report
