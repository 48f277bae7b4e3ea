#include "tests/report/table/TableReading.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "report/options/ListText.h"
#include "report/table/CellText.h"
#include "report/table/ChartTable.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Splits at blanks that stand outside of single quotes.
std::vector<std::string> splitWords(const std::string& text)
{
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isOpen = false;
    for (const char c : text) {
        if (c == '\'') {
            isQuoted = !isQuoted;
        } else if (c == ' ' && !isQuoted) {
            isOpen = false;
            continue;
        }
        if (!isOpen) words.emplace_back();
        isOpen = true;
        if (c != '\'') words.back() += c;
    }
    return words;
}

struct Setter {
    TableOptions& options;
    const std::string& value;

    void operator()(std::string TableOptions::*member) const { options.*member = value; }
    void operator()(std::vector<std::string> TableOptions::*member) const
    {
        options.*member = splitList(value);
    }
    void operator()(std::size_t TableOptions::*member) const { options.*member = std::stoul(value); }
    void operator()(bool TableOptions::*member) const { options.*member = true; }
};

const TableOption& findOption(const std::string& word)
{
    for (const auto& option : tableOptions)
        if (word == std::string("--") + option.name) return option;
    throw std::logic_error("no option " + word);
}

template <typename Values, typename Write>
std::string join(const Values& values, Write write)
{
    std::string line;
    for (const auto& value : values) line += (line.empty() ? "" : " | ") + write(value);
    return line;
}

std::string writeValue(double value)
{
    return std::isnan(value) ? "gap" : writeNumber(value);
}

std::string writeText(const std::u16string& text)
{
    return text.empty() ? "(none)" : toUtf8(text);
}

std::string describeCategories(const ChartData& data)
{
    std::string text;
    for (const auto& level : data.levels) text += "level: " + join(level, writeText) + "\n";
    text += "categories: " + join(data.dataSet->getCategories(), writeText) + "\n";
    if (data.categoryKind == CategoryKind::Date)
        text += (data.categoryFormat.empty() ? "dates: " : "dates (" + data.categoryFormat + "): ") +
                join(data.categoryValues, writeDate) + "\n";
    if (data.categoryKind == CategoryKind::Number)
        text += "x: " + join(data.categoryValues, writeValue) + "\n";
    if (!data.totals.empty()) text += "totals: " + join(data.totals, writeText) + "\n";
    return text;
}

std::string describeSeries(const chart::DataSeries& series, const SeriesDetails& details)
{
    const auto format = details.numberFormat.empty() ? "" : " (" + details.numberFormat + ")";
    std::string text =
        toUtf8(series.getName()) + format + ": " +
        join(series.getPoints(), [](const auto& point) { return writeValue(point->getValue()); }) + "\n";
    for (const auto& [name, values] :
         {std::pair("sizes", &details.sizes), std::pair("plus", &details.errorsPlus),
          std::pair("minus", &details.errorsMinus)})
        if (!values->empty()) text += fmt::format("  {}: {}\n", name, join(*values, writeValue));
    return text;
}

/// Tests that run at once use files of their own.
const std::filesystem::path& getFolder()
{
    static const struct Folder {
        Folder() { std::filesystem::create_directories(path); }
        ~Folder() { std::filesystem::remove_all(path); }
        std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("quillon_tables_" + std::to_string(getpid()));
    } folder;
    return folder.path;
}

}  // namespace

TableOptions parseOptions(const std::string& words)
{
    TableOptions options;
    std::deque<std::string> rest;
    for (auto& word : splitWords(words)) rest.push_back(std::move(word));
    while (!rest.empty()) {
        const auto& option = findOption(rest.front());
        rest.pop_front();
        std::string value;
        if (!std::holds_alternative<bool TableOptions::*>(option.member)) {
            value = rest.at(0);
            rest.pop_front();
        }
        std::visit(Setter{options, value}, option.member);
    }
    return options;
}

std::string describeReading(const std::string& path, const TableOptions& options)
{
    std::string text;
    std::string notes;
    Listener listener;
    listener.warning = [&notes](const std::string& sentence) { notes += "note: " + sentence + "\n"; };
    try {
        const auto data = readChartData(path, options, listener);
        text = describeCategories(data);
        for (std::size_t i = 0; i < data.dataSet->getSeriesCount(); ++i)
            text += describeSeries(*data.dataSet->getSeries(i), data.getDetails(i));
    } catch (const std::runtime_error& error) {
        text = std::string("refused: ") + error.what() + "\n";
    }
    text += notes;
    const auto folder = std::filesystem::path(path).parent_path().string() + "/";
    for (auto at = text.find(folder); at != std::string::npos; at = text.find(folder))
        text.erase(at, folder.size());
    return text;
}

std::string writeTable(const std::string& bytes, const std::string& ending)
{
    static int count = 0;
    const auto path = getFolder() / ("t" + std::to_string(++count) + ending);
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

}  // namespace quillon::report
