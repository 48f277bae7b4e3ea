#include "report/document/Blocks.h"

#include <algorithm>
#include <cmath>

#include "report/options/NumberFormat.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

const std::string& choose(const std::string& wanted, const std::string& otherwise)
{
    return wanted.empty() ? otherwise : wanted;
}

/// The format of a series; without one, as many decimals for all values as one needs, so that they stand
/// below one another. Where they are many each value has its own. Thousands are set apart where a value has
/// five digits, which years have not.
std::string findFormat(const chart::DataSeries& series, const std::string& format)
{
    constexpr double fiveDigits = 10'000;
    if (!format.empty()) return format;
    int decimals = 0;
    bool isLarge = false;
    for (const auto& point : series.getPoints()) {
        decimals = std::max(decimals, countDecimals(point->getValue()));
        isLarge = isLarge || std::abs(point->getValue()) >= fiveDigits;
    }
    if (decimals > maximumDecimals) return "General";
    if (isLarge) return makeNumberFormat(decimals);
    return decimals == 0 ? "General" : "0." + std::string(static_cast<std::size_t>(decimals), '0');
}

struct Column {
    std::string name;
    std::vector<TableCell> cells;
};

std::string toCellText(const std::u16string& text)
{
    return toUtf8(escapeCharacters(text));
}

Column makeTextColumn(const std::string& name, const std::vector<std::u16string>& texts)
{
    Column column{name, {}};
    for (const auto& text : texts) column.cells.emplace_back(toCellText(text));
    return column;
}

/// Categories that are dates or numbers stand as such.
Column makeCategories(const ChartData& data, const std::string& header, const std::string& format)
{
    auto column = makeTextColumn(header, data.dataSet->getCategories());
    const bool isDate = data.categoryKind == CategoryKind::Date;
    if (!isDate && data.categoryKind != CategoryKind::Number) return column;
    column.cells.resize(std::max(column.cells.size(), data.categoryValues.size()));
    for (std::size_t i = 0; i < data.categoryValues.size(); ++i) {
        if (!std::isfinite(data.categoryValues[i])) continue;
        column.cells[i] = TableCell(data.categoryValues[i], format);
        column.cells[i].isDate = isDate;
    }
    return column;
}

/// `read` gives the number of a point.
template <typename Read>
Column makeNumbers(const chart::DataSeries& series, const std::string& name, const std::string& format,
                   const Read& read)
{
    Column column{name, {}};
    for (const auto& point : series.getPoints()) column.cells.emplace_back(read(*point), format);
    return column;
}

/// The values of a series, and its sizes behind them.
void addSeries(std::vector<Column>& columns, const chart::DataSeries& series, const SeriesDetails& details,
               const ChartOptions& options)
{
    const auto format = findFormat(series, choose(options.numberFormat, details.numberFormat));
    columns.push_back(makeNumbers(series, toCellText(series.getName()), format,
                                  [](const auto& point) { return point.getValue(); }));
    if (details.sizes.empty()) return;
    auto& sizes = columns.emplace_back();
    for (const auto size : details.sizes) sizes.cells.emplace_back(size);
}

std::vector<Column> makeColumns(const ChartData& data, const std::string& header, const ChartOptions& options)
{
    std::vector<Column> columns;
    const auto& set = *data.dataSet;
    for (std::size_t i = 0; i < data.levels.size(); ++i)
        columns.push_back(makeTextColumn(toCellText(data.getCategoryName(i)), data.levels[i]));
    if (set.getCategories().empty() && set.getSeriesCount() > 0)
        columns.push_back(makeNumbers(*set.getSeries(0), header, options.xFormat,
                                      [](const auto& point) { return point.getX(); }));
    else
        columns.push_back(makeCategories(data, header, choose(options.categoryFormat, data.categoryFormat)));
    for (std::uint64_t i = 0; i < set.getSeriesCount(); ++i)
        addSeries(columns, *set.getSeries(i), data.getDetails(i), options);
    return columns;
}

}  // namespace

TextTable makeTable(const ChartData& data, const std::string& header, const ChartOptions& options)
{
    TextTable table;
    const auto name = choose(header, toCellText(data.getCategoryName(data.levels.size())));
    if (!data.dataSet) return {.columns = {name}};
    for (auto& column : makeColumns(data, name, options)) {
        const auto index = table.columns.size();
        table.columns.push_back(column.name);
        table.rows.resize(std::max(table.rows.size(), column.cells.size()));
        for (std::size_t row = 0; row < column.cells.size(); ++row) {
            table.rows[row].resize(index);
            table.rows[row].push_back(std::move(column.cells[row]));
        }
    }
    for (auto& row : table.rows) row.resize(table.columns.size());
    return table;
}

}  // namespace quillon::report
