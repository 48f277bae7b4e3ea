#include "report/command/DataWriter.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>

#include "report/table/CellText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;

/// A cell: a number, or a text.
struct DataCell {
    bool isNumber = false;
    double number = 0;
    std::string text = {};
};

struct DataColumn {
    std::string name;
    std::vector<DataCell> cells = {};
};

DataCell makeCell(double number)
{
    if (!std::isfinite(number)) return {};
    return {true, number, writeNumber(number)};
}

DataCell makeCell(const std::u16string& text)
{
    return {false, 0, toUtf8(text)};
}

/// Columns of levels are known again by names of ours.
std::string nameCategories(const ChartData& data)
{
    const auto own = toUtf8(data.getCategoryName(0));
    return data.levels.empty() && !own.empty() ? own : "Category";
}

std::vector<DataColumn> makeCategories(const ChartData& data)
{
    std::vector<DataColumn> columns;
    for (const auto& level : data.levels) {
        auto& column = columns.emplace_back(DataColumn{"Level " + std::to_string(columns.size() + 1)});
        // An outer text goes on until the next one.
        std::u16string text;
        for (const auto& cell : level) column.cells.push_back(makeCell(text = cell.empty() ? text : cell));
    }
    auto& column = columns.emplace_back(DataColumn{nameCategories(data)});
    const auto& categories = data.dataSet->getCategories();
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const bool hasValue = i < data.categoryValues.size() && std::isfinite(data.categoryValues[i]);
        if (hasValue && data.categoryKind == CategoryKind::Date)
            column.cells.push_back({false, 0, writeIsoDate(data.categoryValues[i])});
        else
            column.cells.push_back(hasValue ? makeCell(data.categoryValues[i]) : makeCell(categories[i]));
    }
    return columns;
}

using Points = std::vector<std::pair<double, double>>;

Points readPoints(const chart::DataSet& set, std::size_t index)
{
    Points points;
    for (const auto& point : set.getSeries(index)->getPoints())
        points.emplace_back(point->getX(), point->getY());
    return points;
}

bool haveSameX(const Points& a, const Points& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& one, const auto& other) { return one.first == other.first; });
}

std::vector<DataColumn> makeColumns(const ChartData& data, bool hasX)
{
    const auto& set = *data.dataSet;
    auto columns = hasX ? std::vector<DataColumn>() : makeCategories(data);
    for (std::size_t i = 0; i < set.getSeriesCount(); ++i) {
        const auto points = readPoints(set, i);
        if (hasX && (i == 0 || !haveSameX(points, readPoints(set, i - 1)))) {
            auto& x = columns.emplace_back(DataColumn{"X"});
            for (const auto& point : points) x.cells.push_back(makeCell(point.first));
        }
        const auto name = toUtf8(set.getSeries(i)->getName());
        auto& values = columns.emplace_back(DataColumn{name});
        for (const auto& point : points) values.cells.push_back(makeCell(point.second));
        if (data.getDetails(i).sizes.empty()) continue;
        auto& sizes = columns.emplace_back(DataColumn{name + " size"});
        for (const double size : data.getDetails(i).sizes) sizes.cells.push_back(makeCell(size));
    }
    return columns;
}

/// Each column has a name of its own, and as many cells as the longest.
void complete(std::vector<DataColumn>& columns)
{
    std::size_t rows = 0;
    for (const auto& column : columns) rows = std::max(rows, column.cells.size());
    std::set<std::string> names;
    for (auto& column : columns) {
        column.cells.resize(rows);
        if (column.name.empty()) column.name = "Series";
        const auto name = column.name;
        for (int i = 2; !names.insert(column.name).second; ++i)
            column.name = name + " (" + std::to_string(i) + ")";
    }
}

std::string quoteCsv(const std::string& text)
{
    const bool isPlain =
        text.find_first_of(",\"\r\n;\t") == std::string::npos && text.find_first_of(" ") != 0;
    if (isPlain) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

/// A cell of a Markdown table stands on one line.
std::string escapeMarkdown(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
        if (c == '\n')
            escaped += "<br>";
        else
            escaped += c == '|' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
    return escaped;
}

template <typename GetText>
std::string writeLine(const std::vector<DataColumn>& columns, const char* first, const char* between,
                      const char* last, const GetText& getText)
{
    std::string line;
    for (const auto& column : columns) line += (line.empty() ? first : between) + getText(column);
    return line + last;
}

std::string writeCsv(const std::vector<DataColumn>& columns)
{
    auto text = writeLine(columns, "", ",", "\n", [](const auto& column) { return quoteCsv(column.name); });
    for (std::size_t row = 0; row < columns.front().cells.size(); ++row)
        for (std::size_t i = 0; i < columns.size(); ++i)
            text += quoteCsv(columns[i].cells[row].text) + (i + 1 < columns.size() ? "," : "\n");
    return text;
}

std::string writeMarkdown(const std::vector<DataColumn>& columns)
{
    auto text = writeLine(columns, "| ", " | ", " |\n",
                          [](const auto& column) { return escapeMarkdown(column.name); });
    text += writeLine(columns, "|", "|", "|\n", [&](const auto& column) {
        const bool isNumber = std::any_of(column.cells.begin(), column.cells.end(),
                                          [](const auto& cell) { return cell.isNumber; });
        return std::string(isNumber ? "---:" : "---");
    });
    for (std::size_t row = 0; row < columns.front().cells.size(); ++row)
        text += writeLine(columns, "| ", " | ", " |\n",
                          [row](const auto& column) { return escapeMarkdown(column.cells[row].text); });
    return text;
}

std::string writeJson(const std::vector<DataColumn>& columns)
{
    auto rows = Json::array();
    for (std::size_t row = 0; row < columns.front().cells.size(); ++row) {
        auto object = Json::object();
        for (const auto& [name, cells] : columns) {
            const auto& cell = cells[row];
            if (cell.isNumber)
                object[name] = cell.number;
            else if (cell.text.empty())
                object[name] = nullptr;
            else
                object[name] = cell.text;
        }
        rows.push_back(std::move(object));
    }
    return rows.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string writeData(const ChartData& data, bool hasX, DataForm form)
{
    auto columns = makeColumns(data, hasX);
    if (columns.empty()) return {};
    complete(columns);
    switch (form) {
        case DataForm::Json:
            return writeJson(columns);
        case DataForm::Markdown:
            return writeMarkdown(columns);
        case DataForm::Csv:
            break;
    }
    return writeCsv(columns);
}

}  // namespace quillon::report
