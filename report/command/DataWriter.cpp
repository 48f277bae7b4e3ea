#include "report/command/DataWriter.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>

#include "report/options/ListText.h"
#include "report/table/CellText.h"
#include "report/table/ColumnNames.h"
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
    return data.levels.empty() && !own.empty() ? own : columnNames::category;
}

std::vector<DataColumn> makeCategories(const ChartData& data)
{
    std::vector<DataColumn> columns;
    for (const auto& level : data.levels) {
        auto& column =
            columns.emplace_back(DataColumn{columnNames::level + std::to_string(columns.size() + 1)});
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

bool hasX(const Points& points)
{
    return std::ranges::any_of(points, [](const auto& point) { return point.first != 0; });
}

/// Whether one column holds the X values of all series.
bool shareX(const chart::DataSet& set)
{
    const auto isSame = [](const auto& one, const auto& other) { return one.first == other.first; };
    const auto first = readPoints(set, 0);
    for (std::size_t i = 1; i < set.getSeriesCount(); ++i)
        if (!std::ranges::equal(first, readPoints(set, i), isSame)) return false;
    return true;
}

DataColumn makeX(std::string name, const Points& points)
{
    DataColumn column{std::move(name)};
    for (const auto& point : points) column.cells.push_back(makeCell(point.first));
    return column;
}

/// The columns before those of series.
std::vector<DataColumn> makeFirstColumns(const ChartData& data)
{
    const auto& set = *data.dataSet;
    if (!isOfPoints(data)) return makeCategories(data);
    if (!shareX(set)) return {};
    return {makeX(columnNames::x, readPoints(set, 0))};
}

std::vector<DataColumn> makeColumns(const ChartData& data)
{
    const auto& set = *data.dataSet;
    auto columns = makeFirstColumns(data);
    const bool hasShared = !columns.empty() && isOfPoints(data);
    const auto names = nameColumns(data);
    for (std::size_t i = 0; i < set.getSeriesCount(); ++i) {
        const auto points = readPoints(set, i);
        const bool hasOwn = isOfPoints(data) ? !hasShared : hasX(points);
        if (hasOwn) columns.push_back(makeX(names[i] + columnNames::ownX, points));
        auto& values = columns.emplace_back(DataColumn{names[i]});
        for (const auto& point : points) values.cells.push_back(makeCell(point.second));
        if (data.getDetails(i).sizes.empty()) continue;
        auto& sizes = columns.emplace_back(DataColumn{names[i] + columnNames::size});
        for (const double size : data.getDetails(i).sizes) sizes.cells.push_back(makeCell(size));
    }
    return columns;
}

/// Each column has as many cells as the longest.
void complete(std::vector<DataColumn>& columns)
{
    std::size_t rows = 0;
    for (const auto& column : columns) rows = std::max(rows, column.cells.size());
    for (auto& column : columns) column.cells.resize(rows);
}

std::string quoteCsv(const std::string& text)
{
    const bool isPlain = text.find_first_of(",\"\r\n;\t") == std::string::npos && !text.starts_with(' ');
    return isPlain ? text : putInQuotes(text);
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

bool isOfPoints(const ChartData& data)
{
    const auto series = data.dataSet->getSeriesList();
    return data.dataSet->getCategories().empty() &&
           std::any_of(series->begin(), series->end(), [](const auto& one) { return one->getSize() > 0; });
}

std::vector<std::string> nameColumns(const ChartData& data)
{
    std::set<std::string> taken = {isOfPoints(data) ? columnNames::x : nameCategories(data)};
    for (std::size_t i = 1; i <= data.levels.size(); ++i)
        taken.insert(columnNames::level + std::to_string(i));
    std::vector<std::string> names;
    const auto series = data.dataSet->getSeriesList();
    for (const auto& one : *series) {
        const auto name = one->getName().empty() ? "Series" : toUtf8(one->getName());
        auto& free = names.emplace_back(name);
        const auto isTaken = [&] {
            return taken.contains(free) || taken.contains(free + columnNames::ownX) ||
                   taken.contains(free + columnNames::size);
        };
        for (int i = 2; isTaken(); ++i) free = name + " (" + std::to_string(i) + ")";
        taken.insert({free, free + columnNames::ownX, free + columnNames::size});
    }
    return names;
}

std::string writeData(const ChartData& data, DataForm form)
{
    auto columns = makeColumns(data);
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
