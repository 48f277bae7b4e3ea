#include "report/table/Grid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "report/options/QuotedText.h"
#include "report/table/Accumulator.h"
#include "report/table/DateText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/NumberText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();
constexpr auto percentFormat = "0.0%";

using Order = std::vector<std::size_t>;

template <typename Value>
void pick(std::vector<Value>& values, const Order& order)
{
    if (values.empty()) return;
    std::vector<Value> picked;
    picked.reserve(order.size());
    for (const auto index : order) picked.push_back(std::move(values[index]));
    values = std::move(picked);
}

/// Keeps the categories of `order`, in that order.
void pickCategories(Grid& grid, const Order& order)
{
    pick(grid.categories, order);
    pick(grid.positions, order);
    for (auto& one : grid.series) {
        pick(one.values, order);
        pick(one.x, order);
        pick(one.details.sizes, order);
        pick(one.details.errorsPlus, order);
        pick(one.details.errorsMinus, order);
    }
}

/// A date axis has an order of its own, and no place for "Other".
void forgetDates(Grid& grid)
{
    if (grid.kind != CategoryKind::Date) return;
    grid.kind = CategoryKind::Text;
}

void transpose(Grid& grid)
{
    requireLimits(grid.name, grid.categories.size(), grid.series.size());
    Grid turned{grid.name};
    const auto& format = grid.series.front().details.numberFormat;
    const bool sameFormat = std::all_of(grid.series.begin(), grid.series.end(), [&](const GridSeries& one) {
        return one.details.numberFormat == format;
    });
    for (const auto& one : grid.series) turned.categories.push_back(one.name);
    for (std::size_t i = 0; i < grid.categories.size(); ++i) {
        GridSeries series{grid.categories[i]};
        if (sameFormat) series.details.numberFormat = format;
        for (const auto& one : grid.series) series.values.push_back(one.values[i]);
        turned.series.push_back(std::move(series));
    }
    grid = std::move(turned);
}

double addUp(const Grid& grid, std::size_t category)
{
    double sum = 0;
    for (const auto& one : grid.series)
        if (!std::isnan(one.values[category])) sum += one.values[category];
    return sum;
}

/// The categories with the largest sums, in the order of the table, and behind them the others as one.
/// Whether there are others.
bool keepTop(Grid& grid, std::size_t count, const std::string& aggregate)
{
    if (count == 0 || count >= grid.categories.size()) return false;
    Order order(grid.categories.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<double> sums;
    for (const auto category : order) sums.push_back(addUp(grid, category));
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return sums[a] > sums[b]; });
    const auto keptEnd = order.begin() + static_cast<std::ptrdiff_t>(count);
    std::vector<Accumulator> rest(grid.series.size());
    for (auto at = keptEnd; at != order.end(); ++at)
        for (std::size_t i = 0; i < rest.size(); ++i) rest[i].add(grid.series[i].values[*at]);
    std::sort(order.begin(), keptEnd);
    order.erase(keptEnd, order.end());
    grid.kind = CategoryKind::Text;
    pickCategories(grid, order);
    const bool isTaken =
        std::find(grid.categories.begin(), grid.categories.end(), "Other") != grid.categories.end();
    grid.categories.emplace_back(isTaken ? "All others" : "Other");
    // The others have no date, while the kept ones still go by theirs.
    if (!grid.positions.empty()) grid.positions.push_back(gap);
    // Counts add up.
    const auto* const one = aggregate == "min" || aggregate == "max" ? aggregate.c_str() : "sum";
    for (std::size_t i = 0; i < rest.size(); ++i) grid.series[i].values.push_back(rest[i].get(one));
    return true;
}

/// What `read` makes of each of the first `count` texts; empty where one is nothing to it.
template <typename Read>
std::vector<double> readKeys(const std::vector<std::string>& texts, std::size_t count, Read read)
{
    std::vector<double> keys;
    for (std::size_t i = 0; i < count; ++i) {
        const auto key = read(texts[i]);
        if (!key) return {};
        keys.push_back(static_cast<double>(*key));
    }
    return keys;
}

/// Where the first `count` categories stand among others of their kind: "9" before "10", March before April.
/// Empty where they are texts.
std::vector<double> findKeys(const Grid& grid, std::size_t count)
{
    if (!grid.positions.empty()) return grid.positions;
    auto keys = readKeys(grid.categories, count, [](const auto& text) {
        return readNumber(text, {'.', ""});
    });
    if (!keys.empty()) return keys;
    return readKeys(grid.categories, count, [](const auto& text) {
        const auto month = findMonth(text);
        return month == 0 ? std::nullopt : std::optional(month);
    });
}

/// Values without a number come last, whichever way the others go.
void sortByValue(Order& order, const std::vector<double>& values, bool descending)
{
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        if (std::isnan(values[a]) || std::isnan(values[b]))
            return !std::isnan(values[a]) && std::isnan(values[b]);
        return descending ? values[a] > values[b] : values[a] < values[b];
    });
}

void sortByText(Order& order, const std::vector<std::string>& texts)
{
    std::vector<std::string> keys;
    keys.reserve(texts.size());
    for (const auto& text : texts) keys.push_back(toLower(text));
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
}

/// What adds up the others stays behind them.
void sort(Grid& grid, const std::string& by, bool hasOthers)
{
    Order order(grid.categories.size() - (hasOthers ? 1 : 0));
    std::iota(order.begin(), order.end(), 0);
    if (by == "category") {
        const auto keys = findKeys(grid, order.size());
        keys.empty() ? sortByText(order, grid.categories) : sortByValue(order, keys, false);
    } else {
        sortByValue(order, grid.series.front().values, by == "descending");
        forgetDates(grid);
    }
    if (hasOthers) order.push_back(order.size());
    pickCategories(grid, order);
}

void makeShares(const Grid& grid, GridSeries& series)
{
    Sum sum;
    for (const auto value : series.values)
        if (!std::isnan(value)) sum.add(value);
    const double total = sum.get();
    if (total == 0 || !std::isfinite(total))
        fail("{}: the values of {} add up to {}; --share needs another total.", grid.name,
             quoteText(series.name), total);
    for (auto& value : series.values) value /= total;
    series.details.numberFormat = percentFormat;
}

void accumulate(GridSeries& series)
{
    Sum sum;
    for (auto& value : series.values) {
        if (std::isnan(value)) continue;
        sum.add(value);
        value = sum.get();
    }
}

std::u16string toCellText(const Grid& grid, const std::string& text)
{
    auto converted = toUtf16(text);
    if (converted.size() > limits::textLength)
        fail("{}: the text {} is too long; a chart takes texts of up to {} characters.", grid.name,
             quoteText(text), limits::textLength);
    return converted;
}

std::vector<std::u16string> toCellTexts(const Grid& grid, const std::vector<std::string>& texts)
{
    std::vector<std::u16string> converted;
    converted.reserve(texts.size());
    for (const auto& text : texts) converted.push_back(toCellText(grid, text));
    return converted;
}

/// An outer level shows each text where it starts; where an outer text changes, the inner one starts anew.
void blankRepeated(std::vector<std::vector<std::u16string>>& levels)
{
    std::vector<bool> starts(levels.empty() ? 0 : levels.front().size(), false);
    for (auto& level : levels) {
        for (std::size_t i = level.size(); i-- > 1;) starts[i] = starts[i] || level[i] != level[i - 1];
        for (std::size_t i = 1; i < level.size(); ++i)
            if (!starts[i]) level[i].clear();
    }
}

std::shared_ptr<chart::DataSeries> makeSeries(const Grid& grid, const GridSeries& one,
                                              const std::shared_ptr<chart::DataPoint>& emptyPoint)
{
    auto series = chart::DataSeries::create(toCellText(grid, one.name));
    const auto& x = one.x.empty() && grid.kind == CategoryKind::Number ? grid.positions : one.x;
    const bool hasX = !x.empty();
    for (std::size_t i = 0; i < one.values.size(); ++i)
        if (std::isnan(one.values[i]) && !hasX)
            series->appendPoint(emptyPoint);
        else if (hasX)
            series->appendPoint(x[i], one.values[i]);
        else
            series->appendPoint(one.values[i]);
    return series;
}

}  // namespace

void requireLimits(const std::string& name, std::size_t series, std::size_t categories)
{
    if (categories > limits::categories)
        fail("{}: {} categories, and a chart shows at most {}; --where, --aggregate and --top make fewer.",
             name, categories, limits::categories);
    if (series > limits::series)
        fail("{}: {} series, and a chart shows at most {}; --where and --columns make fewer.", name, series,
             limits::series);
    if (series * categories > limits::points)
        fail(
            "{}: {} series with {} categories make {} points, and a chart shows at most {}; --where, "
            "--aggregate and --top make fewer.",
            name, series, categories, series * categories, limits::points);
}

void shapeGrid(Grid& grid, const TableOptions& options)
{
    if (options.transpose) transpose(grid);
    const bool hasOthers = keepTop(grid, options.top, options.aggregate);
    if (!options.sort.empty()) sort(grid, options.sort, hasOthers);
    for (auto& series : grid.series) {
        if (options.share) makeShares(grid, series);
        if (options.cumulative) accumulate(series);
    }
}

ChartData makeChartData(const Grid& grid)
{
    ChartData data(chart::DataSet::create(toCellTexts(grid, grid.categories)));
    // Gaps look alike: a wide, sparse table costs what its values cost.
    const auto emptyPoint = chart::DataPoint::create(gap);
    for (const auto& one : grid.series) {
        data.dataSet->appendSeries(makeSeries(grid, one, emptyPoint));
        data.series.push_back(one.details);
    }
    data.categoryKind = grid.kind;
    if (grid.kind != CategoryKind::Text) {
        data.categoryValues = grid.positions;
        data.categoryFormat = grid.positionFormat;
    }
    data.categoryNames = toCellTexts(grid, grid.categoryNames);
    for (const auto& level : grid.levels) data.levels.push_back(toCellTexts(grid, level));
    blankRepeated(data.levels);
    return data;
}

}  // namespace quillon::report
