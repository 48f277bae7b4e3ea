#include "report/table/ChartColumns.h"

#include <algorithm>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/Grid.h"
#include "report/table/NumberText.h"

namespace quillon::report {
namespace {

bool contains(const Columns& columns, std::size_t column)
{
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

Columns findColumns(const TableScan& scan, const std::vector<std::string>& names)
{
    Columns columns;
    for (const auto& name : names) columns.push_back(scan.findColumn(name));
    return columns;
}

Columns chooseCategories(const TableScan& scan, const TableOptions& options, const Note& note)
{
    if (!options.category.empty()) return findColumns(scan, options.category);
    if (!options.x.empty()) return {scan.findColumn(options.x)};
    if (!scan.hasRowNumbers()) return {0};
    note(fmt::format("{}: the first column numbers the rows and is left out.", scan.getPlace().name));
    return {1};
}

/// All columns with numbers that have no other role.
Columns chooseValues(const TableScan& scan, const ChartColumns& roles, const Note& note)
{
    Columns chosen;
    for (std::size_t column = 0; column < scan.getNames().size(); ++column) {
        const bool isTaken = contains(roles.categories, column) || contains(roles.sizes, column) ||
                             contains(roles.errorsPlus, column) || contains(roles.errorsMinus, column) ||
                             roles.x == column || (column == 0 && scan.hasRowNumbers()) ||
                             scan.getNames()[column].empty();
        if (isTaken) continue;
        if (scan.getProfile(column).isNumeric())
            chosen.push_back(column);
        else
            note(fmt::format("{}: column {} holds no numbers, as in -1.5, and is left out.",
                             scan.getPlace().name, quoteText(scan.getNames()[column])));
    }
    return chosen;
}

/// A cell of the column in a sentence, and the option that reads it as a number.
std::string describeText(const TableScan& scan, std::size_t column, const TableOptions& options)
{
    const auto& text = scan.getProfile(column).getFirstText();
    const auto place = scan.getPlace();
    const char* other = options.decimal == "point" ? "comma" : "point";
    const bool isOther = !options.decimal.empty() && readNumber(text.text, {*other == 'c' ? ',' : '.'});
    return fmt::format("; column {} has {} in {} {}{}", quoteText(scan.getNames()[column]),
                       quoteText(text.text), place.getUnit(), text.line,
                       isOther
                           ? fmt::format(", a number with a decimal {}; --decimal {} reads it", other, other)
                           : std::string());
}

[[noreturn]] void refuseTexts(const TableScan& scan, const Columns& categories, const TableOptions& options)
{
    const bool isOne = scan.getNames().size() == 1 && scan.getPlace().countsLines;
    std::string example = isOne ? "; the table has one column, and --delimiter says what parts several" : "";
    for (std::size_t column = 0; column < scan.getNames().size() && example.empty(); ++column)
        if (!contains(categories, column) && scan.getProfile(column).getFirstText().isSet())
            example = describeText(scan, column, options);
    fail("{}: no column beside {} holds numbers{}{}.", scan.getPlace().name,
         quoteText(scan.getNames()[categories.front()]), example, scan.getPlace().hint);
}

}  // namespace

ChartColumns findChartColumns(const TableScan& scan, const TableOptions& options, const Note& note)
{
    ChartColumns roles;
    roles.categories = chooseCategories(scan, options, note);
    roles.sizes = findColumns(scan, options.sizes);
    roles.errorsPlus = findColumns(scan, options.errorsPlus);
    roles.errorsMinus = findColumns(scan, options.errorsMinus);
    if (!options.x.empty()) roles.x = scan.findColumn(options.x);
    if (!options.series.empty()) roles.series = scan.findColumn(options.series);
    if (!options.value.empty()) roles.values = {scan.findColumn(options.value)};
    if (roles.series || !options.value.empty()) return roles;
    // Rows are counted where the author names no column of values.
    if (options.aggregate == "count" && options.columns.empty()) return roles;
    roles.values =
        options.columns.empty() ? chooseValues(scan, roles, note) : findColumns(scan, options.columns);
    if (roles.values.empty()) refuseTexts(scan, roles.categories, options);
    return roles;
}

void requireRows(const TableScan& scan, const ChartColumns& roles, const TableOptions& options)
{
    const bool keepsAll =
        options.aggregate.empty() && options.top == 0 && !options.transpose && !roles.series;
    if (keepsAll) requireLimits(scan.getPlace().name, roles.values.size(), scan.getRowCount());
}

}  // namespace quillon::report
