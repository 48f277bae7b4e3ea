#include "report/command/ChartMaker.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <span>

#include "chart/model/ColumnChart.h"
#include "report/options/QuotedText.h"
#include "report/table/ChartTable.h"
#include "report/table/Fail.h"
#include "report/table/NumberText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Note = std::function<void(const std::string&)>;

/// Narrow columns merge into one another.
void noteManyColumns(const ChartJob& job, const ChartData& data, const Note& note)
{
    constexpr std::size_t most = 300;
    const auto count = data.dataSet->getCategories().size() * data.dataSet->getSeriesCount();
    if (job.options.kind.value_or(ChartKind::Column) != ChartKind::Column || count <= most) return;
    note(fmt::format("{}: {} columns are too many to tell apart; {}.", job.table, count,
                     data.categoryKind == CategoryKind::Date
                         ? "--type line shows how they run"
                         : "--top 20 keeps the largest, --columns fewer series"));
}

struct SeriesSize {
    std::size_t series;
    double most;
};

/// The series with their largest values, the smallest first.
std::vector<SeriesSize> sortBySize(const chart::DataSet& dataSet)
{
    std::vector<SeriesSize> sizes;
    for (std::size_t i = 0; i < dataSet.getSeriesCount(); ++i) {
        double most = 0;
        for (const auto& point : dataSet.getSeries(i)->getPoints())
            most = std::fmax(most, std::abs(point->getValue()));
        if (most > 0) sizes.push_back({i, most});
    }
    std::ranges::sort(sizes, {}, &SeriesSize::most);
    return sizes;
}

/// The names of series as an option takes them.
template <typename Sizes>
std::string listSeries(const chart::DataSet& dataSet, const Sizes& sizes)
{
    std::string names;
    for (const SeriesSize& one : sizes)
        names += (names.empty() ? "" : ",") + quoteText(toUtf8(dataSet.getSeries(one.series)->getName()));
    return names;
}

/// Amounts and percentages on one axis mislead.
void noteUnits(const ChartJob& job, const ChartData& data, const Note& note)
{
    for (const bool isSecond : {false, true}) {
        std::set<std::string> units;
        std::string list;
        for (std::size_t i = 0; i < data.dataSet->getSeriesCount(); ++i) {
            const auto name = toUtf8(data.dataSet->getSeries(i)->getName());
            if ((std::ranges::find(job.options.second, name) != job.options.second.end()) != isSecond)
                continue;
            const auto unit = findUnit(data.getDetails(i).numberFormat);
            units.insert(unit);
            list += (list.empty() ? "" : ", ") + quoteText(name) + (unit.empty() ? " none" : " " + unit);
        }
        if (units.size() > 1)
            note(fmt::format("{}: series on one axis have different units: {}.", job.table, list));
    }
}

/// Beside values that are a thousand times as large others lie flat on the axis.
void noteFlatSeries(const ChartJob& job, const chart::DataSet& dataSet, const Note& note)
{
    constexpr double flat = 1000;
    const auto kind = job.options.kind.value_or(ChartKind::Column);
    if (!combinedKinds.contains(kind) || !job.options.second.empty() || job.options.log) return;
    const auto sizes = sortBySize(dataSet);
    if (sizes.size() < 2 || sizes.back().most < flat * sizes.front().most) return;
    // The widest step between two sizes parts the small from the large; the fewer get the second axis.
    std::size_t small = 1;
    for (std::size_t i = 2; i < sizes.size(); ++i)
        if (sizes[i].most / sizes[i - 1].most > sizes[small].most / sizes[small - 1].most) small = i;
    const auto all = std::span(sizes);
    const auto fewer = small <= sizes.size() - small ? all.first(small) : all.subspan(small);
    const auto moved = listSeries(dataSet, fewer);
    // Columns on two axes would hide one another.
    const auto asLine = kind == ChartKind::Column ? " --line " + moved : "";
    note(fmt::format(
        "{}: the values of {} are over 1,000 times those of {}, which lie flat on the axis; --second {}{} "
        "gives an axis of its own.",
        job.table, listSeries(dataSet, all.last(1)), listSeries(dataSet, all.first(1)), moved, asLine));
}

bool isOfPoints(const ChartJob& job)
{
    return job.options.kind == ChartKind::Scatter || job.options.kind == ChartKind::Bubble;
}

/// Whether the numbers of the first column are X: a scatter or bubble chart of a table as it stands.
bool takesX(const ChartJob& job)
{
    const bool isShaped = job.transpose || job.top > 0 || !job.aggregate.empty() || !job.series.empty();
    return isOfPoints(job) && !isShaped;
}

/// What shaping leaves of the categories may be no X values.
void requireX(const ChartJob& job, const chart::DataSet& dataSet)
{
    const auto& categories = dataSet.getCategories();
    if (!isOfPoints(job) || categories.empty()) return;
    if (job.top > 0 && categories.size() > job.top)
        fail("{}: --top adds up the rest as {}, which is no X value; leave it out, or choose another --type.",
             job.table, quoteText(toUtf8(categories.back())));
    const auto first = toUtf8(categories.front());
    if (job.transpose && first.find_first_of("0123456789") == std::string::npos)
        fail(
            "{}: --transpose makes X values of the names of the columns, and {} is no number; "
            "leave it out, or choose another --type.",
            job.table, quoteText(first));
}

}  // namespace

ChartData readData(const ChartJob& job, const Listener& listener, const TableTarget& target)
{
    auto reading = static_cast<const TableOptions&>(job);
    reading.gaps = job.gaps || job.options.blank;
    auto chosen = target;
    chosen.hasX = target.hasX || takesX(job);
    return job.rows ? readChartData(job.rows, reading, listener, chosen)
                    : readChartData(job.table, reading, listener, chosen);
}

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data, const Note& heard)
{
    const Note note = heard ? heard : [](const std::string&) {};
    const auto& dataSet = *data.dataSet;
    if (job.options.kind == ChartKind::Pie && dataSet.getSeriesCount() > 1)
        fail(
            "{}: a pie shows one series, the table gives {}; choose one with --columns, or show all as "
            "rings with --type doughnut.",
            job.table, dataSet.getSeriesCount());
    requireX(job, dataSet);
    noteManyColumns(job, data, note);
    noteUnits(job, data, note);
    noteFlatSeries(job, dataSet, note);
    // The type among the options says what it is drawn as.
    auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
