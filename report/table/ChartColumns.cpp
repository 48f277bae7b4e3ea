#include "report/table/ChartColumns.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "report/options/QuotedText.h"
#include "report/table/ColumnNames.h"
#include "report/table/Fail.h"
#include "report/table/Grid.h"
#include "report/table/NumberText.h"

namespace quillon::report {
namespace {

bool contains(const Columns& columns, std::size_t column)
{
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

Columns findColumns(const TableScan& scan, const std::vector<std::string>& names, const char* option)
{
    Columns columns;
    for (const auto& name : names) columns.push_back(scan.findColumn(name, option));
    return columns;
}

/// The leading columns "Level 1" ... "Category"; none for other names.
Columns findLevels(const TableScan& scan)
{
    Columns columns;
    for (std::size_t column = 0; column < scan.getNames().size(); ++column) {
        columns.push_back(column);
        if (column > 0 && scan.getNames()[column] == columnNames::category) return columns;
        if (scan.getNames()[column] != columnNames::level + std::to_string(column + 1)) break;
    }
    return {};
}

/// The first column of the table: those on its left have neither names nor cells.
std::size_t findFirst(const TableScan& scan)
{
    const auto& names = scan.getNames();
    std::size_t first = 0;
    while (first < names.size() && names[first].empty() && scan.getProfile(first).getFilled() == 0) ++first;
    return first == names.size() ? 0 : first;
}

Columns chooseCategories(const TableScan& scan, const TableOptions& options, const Note& note)
{
    if (!options.category.empty()) return findColumns(scan, options.category, "--category");
    if (!options.x.empty()) return {scan.findColumn(options.x, "--x")};
    if (auto levels = findLevels(scan); !levels.empty()) return levels;
    const std::size_t first = scan.hasRowNumbers() ? 1 : findFirst(scan);
    if (scan.hasRowNumbers())
        note(fmt::format("{}: the first column numbers the rows and is left out.", scan.getPlace().name));
    // A group whose rows have no other names is named itself.
    const bool isBehindGroup = !options.groupedBy.empty() && scan.getNames()[first] == options.groupedBy &&
                               first + 1 < scan.getNames().size() && !scan.getProfile(first + 1).isNumeric();
    return {isBehindGroup ? first + 1 : first};
}

/// All columns with numbers that have no other role.
Columns chooseValues(const TableScan& scan, const TableOptions& options, const ChartColumns& roles,
                     const Note& note)
{
    Columns chosen;
    for (std::size_t column = 0; column < scan.getNames().size(); ++column) {
        const bool isTaken = contains(roles.categories, column) || contains(roles.sizes, column) ||
                             contains(roles.errorsPlus, column) || contains(roles.errorsMinus, column) ||
                             contains(roles.ownX, column) || roles.x == column ||
                             (column == 0 && scan.hasRowNumbers()) || scan.getNames()[column].empty() ||
                             scan.getNames()[column] == options.groupedBy;
        if (isTaken) continue;
        const auto name = quoteText(scan.getNames()[column]);
        if (scan.holdsCompactDates(column))
            note(fmt::format("{}: column {} holds dates and is left out; --dates none makes them numbers.",
                             scan.getPlace().name, name));
        else if (scan.getProfile(column).isNumeric())
            chosen.push_back(column);
        else
            note(fmt::format("{}: column {} holds no numbers, as in -1.5, and is left out{}.",
                             scan.getPlace().name, name,
                             describeMagnitude(scan.getProfile(column).getFirstText().text)));
    }
    return chosen;
}

/// A cell of the column in a sentence, and the option that reads it as a number.
std::string describeText(const TableScan& scan, std::size_t column, const TableOptions& options)
{
    const auto& text = scan.getProfile(column).getFirstText();
    const auto& place = scan.getPlace();
    const char* other = options.decimal == "point" ? "comma" : "point";
    const bool isOther = !options.decimal.empty() && readNumber(text.text, {*other == 'c' ? ',' : '.'});
    return fmt::format("; column {} has {} in {} {}{}", quoteText(scan.getNames()[column]),
                       quoteText(text.text), place.getUnit(), text.line,
                       isOther
                           ? fmt::format(", a number with a decimal {}; --decimal {} reads it", other, other)
                           : describeMagnitude(text.text));
}

[[noreturn]] void refuseTexts(const TableScan& scan, const Columns& categories, const TableOptions& options)
{
    const bool isOne = scan.getNames().size() == 1 && scan.getPlace().isDelimited;
    std::string example = isOne ? "; the table has one column, and --delimiter says what parts several" : "";
    for (std::size_t column = 0; column < scan.getNames().size() && example.empty(); ++column)
        if (!contains(categories, column) && scan.getProfile(column).getFirstText().isSet())
            example = describeText(scan, column, options);
    fail("{}: no column beside {} holds numbers{}{}.", scan.getPlace().name,
         quoteText(scan.getNames()[categories.front()]), example, scan.getPlace().hint);
}

/// The columns that are called as others are, with `suffix` behind.
Columns findPartners(const TableScan& scan, std::string_view suffix)
{
    const auto& names = scan.getNames();
    const std::set<std::string> known(names.begin(), names.end());
    Columns columns;
    for (std::size_t column = 0; column < names.size(); ++column)
        if (names[column].size() > suffix.size() && names[column].ends_with(suffix) &&
            known.contains(names[column].substr(0, names[column].size() - suffix.size())))
            columns.push_back(column);
    return columns;
}

/// The partners in the order of the values, each of which has one where any has.
Columns orderPartners(const TableScan& scan, const Columns& values, std::string_view suffix)
{
    Columns partners;
    for (const auto column : values)
        partners.push_back(scan.findColumn(scan.getNames()[column] + std::string(suffix), "--sizes"));
    return partners;
}

/// Numbers in the first column are X values where the chart has such.
std::optional<std::size_t> findX(const TableScan& scan, const TableOptions& options,
                                 const TableTarget& target, const Columns& categories)
{
    if (!options.x.empty()) return scan.findColumn(options.x, "--x");
    const bool isX = target.hasX && categories.size() == 1 && scan.getProfile(categories[0]).isNumeric();
    return isX ? std::optional(categories[0]) : std::nullopt;
}

}  // namespace

ChartColumns findChartColumns(const TableScan& scan, const TableOptions& options, const TableTarget& target,
                              const Note& note)
{
    ChartColumns roles;
    roles.categories = chooseCategories(scan, options, note);
    if (target.hasX && options.x.empty()) roles.ownX = findPartners(scan, columnNames::ownX);
    const bool takesSizes = target.hasSizes && options.sizes.empty();
    roles.sizes =
        takesSizes ? findPartners(scan, columnNames::size) : findColumns(scan, options.sizes, "--sizes");
    roles.errorsPlus = findColumns(scan, options.errorsPlus, "--errors-plus");
    roles.errorsMinus = findColumns(scan, options.errorsMinus, "--errors-minus");
    roles.x = findX(scan, options, target, roles.categories);
    if (!options.series.empty()) roles.series = scan.findColumn(options.series, "--series");
    if (!options.value.empty()) roles.values = {scan.findColumn(options.value, "--value")};
    if (roles.series || !options.value.empty()) return roles;
    // Rows are counted where the author names no column of values.
    if (options.aggregate == "count" && options.columns.empty()) return roles;
    roles.values = options.columns.empty() ? chooseValues(scan, options, roles, note)
                                           : findColumns(scan, options.columns, "--columns");
    if (roles.values.empty()) refuseTexts(scan, roles.categories, options);
    if (takesSizes && !roles.sizes.empty())
        roles.sizes = orderPartners(scan, roles.values, columnNames::size);
    return roles;
}

void requireRows(const TableScan& scan, const ChartColumns& roles, const TableOptions& options)
{
    const bool keepsAll =
        options.aggregate.empty() && options.top == 0 && !options.transpose && !roles.series;
    if (keepsAll) requireLimits(scan.getPlace().name, roles.values.size(), scan.getRowCount());
}

}  // namespace quillon::report
