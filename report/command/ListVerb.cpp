#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "report/command/TemplateFiller.h"
#include "report/command/Verbs.h"
#include "report/fill/FillWords.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;

Json toJson(const FoundChart& chart)
{
    Json json = {{"number", chart.number}, {"name", chart.name},   {"altText", chart.altText},
                 {"title", chart.title},   {"types", chart.types}, {"series", chart.series},
                 {"points", chart.points}, {"place", chart.place}, {"fillable", chart.problem.empty()}};
    if (!chart.problem.empty()) json["problem"] = chart.problem;
    return json;
}

Json toJson(const Template& document)
{
    Json json = {{"charts", Json::array()}, {"placeholders", Json::array()}};
    for (const auto& chart : document.getCharts()) json["charts"].push_back(toJson(chart));
    for (const auto& [name, kind, part] : document.getPlaceholders())
        json["placeholders"].push_back({{"name", name}, {"kind", nameOf(kind)}, {"part", part}});
    return json;
}

/// A text in a table on a terminal: as quoteText shows it, without the quotes.
std::string show(const std::string& text, std::size_t longest = 30)
{
    const auto quoted = quoteText(text, longest);
    return quoted.substr(1, quoted.rfind('"') - 1);
}

std::size_t countCharacters(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

using Row = std::vector<std::string>;

std::string writeTable(const std::vector<Row>& rows)
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], countCharacters(row[i]));
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += row[i] + std::string(widths[i] - countCharacters(row[i]) + 2, ' ');
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

std::string writeCharts(const std::vector<FoundChart>& charts)
{
    if (charts.empty()) return "The document has no charts.\n";
    std::vector<Row> rows = {
        {"No.", "Name", "Alternative text", "Title", "Type", "Series", "Points", "Place", "Fillable"}};
    for (const auto& chart : charts)
        rows.push_back({std::to_string(chart.number), show(chart.name), show(chart.altText),
                        show(chart.title), show(join(chart.types, ", ")), show(join(chart.series, ", ")),
                        std::to_string(chart.points), chart.place,
                        chart.problem.empty() ? "yes" : "no: " + show(chart.problem, 200)});
    return writeTable(rows);
}

std::string writePlaceholders(const std::vector<Placeholder>& placeholders)
{
    if (placeholders.empty()) return {};
    std::vector<Row> rows = {{"Placeholder", "Kind", "Part"}};
    for (const auto& [name, kind, part] : placeholders)
        rows.push_back({"{{" + show((kind == PlaceholderKind::Table ? "table:" : "") + name) + "}}",
                        nameOf(kind), part});
    return "\n" + writeTable(rows);
}

}  // namespace

void listCharts(const CommandLine& commandLine)
{
    const auto files = commandLine.getFiles();
    if (files.size() != 1) throw UsageError("Expected one DOCUMENT to list.");
    const auto document = openTemplate(files.front());
    if (commandLine.has("json"))
        fmt::print("{}\n", toJson(document).dump(2, ' ', false, Json::error_handler_t::replace));
    else
        fmt::print("{}{}", writeCharts(document.getCharts()), writePlaceholders(document.getPlaceholders()));
}

}  // namespace quillon::report
