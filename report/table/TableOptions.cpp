#include "report/table/TableOptions.h"

#include <algorithm>

#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr auto source = "Where the table comes from";
constexpr auto reading = "How cells are read";
constexpr auto choice = "What becomes the chart";
constexpr auto shape = "How the data is shaped";

void checkValue(const TableOption& option, const std::string& value)
{
    if (value.empty() || *option.values == '\0') return;
    const auto allowed = splitValues(option.values);
    if (std::find(allowed.begin(), allowed.end(), value) != allowed.end()) return;
    fail("--{}: expected {}, got {}{}", option.name, joinNames(allowed), quoteText(value),
         suggestName(value, allowed));
}

struct Exclusion {
    bool isBroken;
    const char* sentence;
};

void checkTogether(const TableOptions& o)
{
    const bool isLong = !o.series.empty() || !o.value.empty();
    const bool counts = o.aggregate == "count";
    const bool hasExtras = !o.sizes.empty() || !o.errorsPlus.empty() || !o.errorsMinus.empty();
    const bool hasLevels = o.category.size() > 1;
    const bool rearranges = o.transpose || o.top > 0;
    const Exclusion exclusions[] = {
        {isLong && (o.series.empty() || (o.value.empty() && !counts)),
         "A long table needs both --series, the column of series names, and --value, the column of values."},
        {isLong && !o.columns.empty(),
         "--columns is for wide tables; a long table has --series and --value."},
        {isLong && hasExtras,
         "--sizes, --errors-plus and --errors-minus are for wide tables, not for --series."},
        {hasExtras && (rearranges || o.share || o.cumulative || !o.aggregate.empty()),
         "--sizes, --errors-plus and --errors-minus belong to values as they stand in the table; leave out "
         "--transpose, --top, --share, --cumulative and --aggregate."},
        {hasLevels && (rearranges || !o.sort.empty()),
         "Several category columns keep the table's order; leave out --sort, --top and --transpose."},
        {!o.x.empty() && (rearranges || isLong || hasLevels || !o.aggregate.empty()),
         "--x is for wide tables as they stand; leave out --series, --transpose, --top, --aggregate and "
         "further category columns."},
        {o.top > 0 && o.aggregate == "mean",
         "--top adds up the rest as \"Other\", and means cannot be added; leave out one of --top and "
         "--aggregate mean."},
        {!o.decimal.empty() && o.decimal == o.thousands,
         "--decimal and --thousands name the same mark; expected two different ones."},
    };
    for (const auto& exclusion : exclusions)
        if (exclusion.isBroken) fail("{}", exclusion.sentence);
}

}  // namespace

const std::array<TableOption, 29> tableOptions = {{
    {"delimiter", &TableOptions::delimiter, "comma|semicolon|tab|pipe",
     "what stands between cells: comma, semicolon, tab or pipe (default: what the rows show)", source},
    {"sheet", &TableOptions::sheet, "",
     "the sheet of a workbook, by name or as #2 for the second (default: the first)", source},
    {"range", &TableOptions::range, "", "the cells of the sheet, as in B3:F20 (default: all that are filled)",
     source},
    {"hidden-cells", &TableOptions::hiddenCells, "", "read hidden rows and columns of the sheet too", source},
    {"query", &TableOptions::query, "",
     "the SELECT that gives the rows of a database (default: its only table)", source},
    {"encoding", &TableOptions::encoding, "",
     "the character encoding of the file, as in latin1 or windows-1252 (default: UTF-8 or UTF-16)", source},
    {"skip", &TableOptions::skip, "", "lines to leave out above the header (default: found by the header)",
     source},
    {"no-header", &TableOptions::noHeader, "", "the first row holds data, not names of columns", source},
    {"decimal", &TableOptions::decimal, "comma|point",
     "the decimal mark: comma or point (default: what the columns show)", reading},
    {"thousands", &TableOptions::thousands, "comma|point|blank|apostrophe|none",
     "the mark between groups of thousands: comma, point, blank, apostrophe or none (default: what the "
     "columns show)",
     reading},
    {"missing", &TableOptions::missing, "",
     "further texts that stand for no value, beside N/A, NA, NaN, null, -, #N/A and .", reading},
    {"dates", &TableOptions::dates, "dmy|mdy|ymd|none",
     "the order of day, month and year: dmy, mdy or ymd; none leaves dates as text (default: what the column "
     "shows)",
     reading},
    {"gaps", &TableOptions::gaps, "", "show empty cells as gaps instead of refusing them", reading},
    {"category", &TableOptions::category, "",
     "the column of category names, or several for levels, the outermost first (default: the first)", choice},
    {"columns", &TableOptions::columns, "",
     "the columns that become series, by name or as #3 for the third (default: the others that hold numbers)",
     choice},
    {"series", &TableOptions::series, "", "for long tables: the column of series names", choice},
    {"value", &TableOptions::value, "", "for long tables: the column of values", choice},
    {"x", &TableOptions::x, "", "the column of X values: numbers or dates", choice},
    {"sizes", &TableOptions::sizes, "", "the columns of bubble sizes: one for each series, or one for all",
     choice},
    {"errors-plus", &TableOptions::errorsPlus, "",
     "the columns that say how far error bars reach up: one for each series, or one for all", choice},
    {"errors-minus", &TableOptions::errorsMinus, "",
     "the columns that say how far error bars reach down: one for each series, or one for all", choice},
    {"where", &TableOptions::where, "", "keep the rows where a column holds a text, as in \"region=North\"",
     choice},
    {"drop", &TableOptions::drop, "", "leave out the rows with these categories, as in Total", choice},
    {"aggregate", &TableOptions::aggregate, "sum|mean|count|min|max",
     "make one value of all rows with the same category: sum, mean, count, min or max", shape},
    {"transpose", &TableOptions::transpose, "", "make series of the rows, and categories of the columns",
     shape},
    {"top", &TableOptions::top, "",
     "keep this many categories with the largest values; add up the rest as Other", shape, 1},
    {"sort", &TableOptions::sort, "value|category|descending",
     "order the categories by value (smallest first), category (A to Z, or by date) or descending (largest "
     "first)",
     shape},
    {"share", &TableOptions::share, "", "show each value as a percentage of its series' total", shape},
    {"cumulative", &TableOptions::cumulative, "", "add to each value all values before it", shape},
}};

std::vector<std::string> splitValues(const std::string& values)
{
    std::vector<std::string> items;
    for (std::size_t at = 0; at < values.size();) {
        const auto end = std::min(values.find('|', at), values.size());
        items.push_back(values.substr(at, end - at));
        at = end + 1;
    }
    return items;
}

bool haveSameSource(const TableOptions& a, const TableOptions& b)
{
    return std::ranges::all_of(tableOptions, [&](const TableOption& option) {
        const auto isSame = [&](auto member) { return a.*member == b.*member; };
        return option.group != source || std::visit(isSame, option.member);
    });
}

void checkTableOptions(const TableOptions& options)
{
    for (const auto& option : tableOptions)
        if (const auto* member = std::get_if<std::string TableOptions::*>(&option.member))
            checkValue(option, options.*(*member));
    checkTogether(options);
}

}  // namespace quillon::report
