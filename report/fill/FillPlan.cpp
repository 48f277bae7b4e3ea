#include "report/fill/FillPlan.h"

#include <algorithm>
#include <string>
#include <utility>

#include "report/fill/ContentPlanner.h"
#include "report/fill/FillRequirements.h"
#include "report/fill/PlannedCells.h"
#include "report/fill/WaterfallPlan.h"
#include "report/finish/Waterfall.h"
#include "report/options/QuotedText.h"
#include "report/workbook/Workbook.h"

namespace quillon::report {

FillPlan::FillPlan(const ChartMarkup& part, const ChartData& data, const FillOptions& options)
    : part_(part), data_(data), options_(options)
{
    requireFillable(part_, data_);
    requireNumbers(*data_.dataSet);
    requireTexts(data_, options_);
    categories_ = planCategories(part_, data_, options_);
    report_.pointsBefore = categories_.pointsBefore;
    report_.pointsAfter = categories_.pointsAfter;
    warnOfUnnamedPoints();
    planSeries();
    planOrder();
    warnOfHiddenSlices();
    ContentPlanner planner(part_, data_, options_, categories_, report_);
    for (std::size_t i = 0; i < series_.size(); ++i)
        planner.plan(series_[i], series_, *data_.dataSet->getSeries(i), data_.getDetails(i));
    drawnCount_ = series_.size();
    if (part_.isWaterfall())
        planWaterfall();
    else if (!data_.totals.empty())
        report_.warnings.emplace_back("totals are for waterfalls; the chart is not one.");
    shareCategories(series_);
}

/// Data without categories leaves the chart its own.
void FillPlan::warnOfUnnamedPoints()
{
    const auto names = categories_.before.points.getSize();
    const auto points = categories_.pointsAfter;
    if (!data_.dataSet->getCategories().empty() || names == 0 || names == points) return;
    report_.warnings.push_back("the data has " + std::to_string(points) + " points and no categories; " +
                               (points > names
                                    ? "those behind the chart's " + std::to_string(names) + " have no name."
                                    : "of the chart's " + std::to_string(names) + " the first stay."));
}

/// Data whose series have no names leaves those of the chart.
void FillPlan::planSeries()
{
    const auto& before = part_.getSeries();
    const auto series = data_.dataSet->getSeriesList();
    std::vector<std::string> namesBefore;
    std::vector<std::string> names;
    namesBefore.reserve(before.size());
    for (const auto& old : before) namesBefore.push_back(old.name);
    for (const auto& one : *series) names.push_back(toCellText(one->getName()));
    const bool hasNames = std::ranges::any_of(names, [](const auto& name) { return !name.empty(); });
    const auto matches = options_.match == Match::Name ? matchNames(namesBefore, names)
                                                       : matchPositions(before.size(), names.size());
    // What comes before all that was matched looks like the first of them.
    auto look = *std::find_if(matches.begin(), matches.end(), [](auto match) { return match != noMatch; });
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isAdded = matches[i] == noMatch;
        if (!isAdded) look = matches[i];
        const auto& old = before[look];
        if (!hasNames) names[i] = isAdded ? "Series " + std::to_string(i + 1) : old.name;
        series_.push_back(
            {.look = &old, .isAdded = isAdded, .index = old.index, .order = old.order, .title = names[i]});
        const auto change = isAdded                ? FillReport::Change::Added
                            : old.name != names[i] ? FillReport::Change::Renamed
                                                   : FillReport::Change::Matched;
        report_.series.push_back({change, names[i], change == FillReport::Change::Matched ? "" : old.name});
    }
    const auto after = invert(matches, before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (after[i] != noMatch) continue;
        removed_.push_back(&before[i]);
        report_.series.push_back({FillReport::Change::Removed, before[i].name, ""});
    }
}

/// Word processors draw the first series of a pie alone.
void FillPlan::warnOfHiddenSlices()
{
    const bool hasAdded = report_.count(FillReport::Change::Added) > 0;
    if (isPie() && hasAdded)
        report_.warnings.push_back(
            "a pie shows one series, " +
            quoteText(std::ranges::min_element(series_, {}, &SeriesPlan::order)->title) +
            "; the others do not show.");
}

bool FillPlan::isPie() const
{
    const auto element = part_.getGroups()[series_[0].look->group].kind->element;
    return part_.getGroups().size() == 1 && (element.starts_with("pie") || element.starts_with("ofPie"));
}

void FillPlan::planOrder()
{
    std::uint32_t nextIndex = 0;
    for (const auto& series : part_.getSeries()) nextIndex = std::max(nextIndex, series.index + 1);
    for (auto& plan : series_)
        if (plan.isAdded) plan.index = nextIndex++;
    // The first series of a pie is the one that it shows, and stays it.
    const auto isShown = [&](const SeriesPlan& plan) {
        return plan.look == part_.getSeries().data() && !plan.isAdded && plan.title == plan.look->name;
    };
    const auto shown = std::ranges::find_if(series_, isShown);
    if (isPie() && shown != series_.end() && shown != series_.begin()) return putFirst(*shown);
    // What a series of a stock chart means lies in its place: high, low, close.
    const bool isStock = std::any_of(part_.getGroups().begin(), part_.getGroups().end(),
                                     [](const auto& group) { return group.kind->element == "stockChart"; });
    if (isStock && report_.count(FillReport::Change::Matched) == series_.size()) return;
    // Series lie in the order they are shown in, so that their places tell it.
    bool isKept = true;
    for (std::size_t i = 1; i < series_.size(); ++i) {
        if (series_[i].isAdded)
            series_[i].order = series_[i - 1].order + 1;
        else if (series_[i - 1].isAdded ? series_[i].order <= series_[i - 1].order
                                        : series_[i].look < series_[i - 1].look)
            isKept = false;
    }
    if (isKept && !series_[0].isAdded) return;
    for (std::size_t i = 0; i < series_.size(); ++i) series_[i].order = static_cast<std::uint32_t>(i);
}

void FillPlan::putFirst(SeriesPlan& first)
{
    std::uint32_t next = 1;
    for (auto& plan : series_) plan.order = &plan == &first ? 0 : next++;
}

bool FillPlan::isEmptied(std::size_t group) const
{
    const auto isRemoved = [&](const auto* series) { return series->group == group; };
    const auto isThere = [&](const SeriesPlan& plan) { return plan.look->group == group; };
    return std::any_of(removed_.begin(), removed_.end(), isRemoved) &&
           std::none_of(series_.begin(), series_.end(), isThere);
}

std::vector<std::u16string> FillPlan::listCategories() const
{
    auto categories = data_.dataSet->getCategories();
    if (categories.empty())
        for (const auto& name : getNames(*categories_.after, part_.is1904()))
            categories.push_back(fromCellText(name));
    return categories;
}

/// The categories that showed a total still do, unless the data says which.
std::vector<bool> FillPlan::chooseTotals(const std::vector<std::u16string>& categories)
{
    const auto& before = part_.getTotals();
    const auto& matches = getCategoryMatches();
    std::vector<bool> kept;
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const auto old = i < matches.size() ? matches[i] : noMatch;
        kept.push_back(std::find(before.begin(), before.end(), old) != before.end());
        if (kept.back()) names.push_back(categories[i]);
    }
    // Of categories with one name, some may be totals and some not.
    if (!data_.totals.empty() && data_.totals != names) return findTotals(categories, data_.totals);
    if (data_.totals.empty()) warnOfLostTotals();
    return kept;
}

void FillPlan::warnOfLostTotals()
{
    const auto names = getNames(categories_.before, part_.is1904());
    const auto& matches = getCategoryMatches();
    for (const auto total : part_.getTotals())
        if (total < names.size() && std::find(matches.begin(), matches.end(), total) == matches.end())
            report_.warnings.push_back("the total " + quoteText(names[total]) +
                                       " is gone; say which categories are totals now (totals).");
}

/// The series of the author moves behind those that draw it.
void FillPlan::planWaterfall()
{
    auto own = std::move(series_[0]);
    own.categories = {};
    const auto categories = listCategories();
    const auto totals = chooseTotals(categories);
    for (std::size_t i = 0; i < totals.size(); ++i)
        if (totals[i]) totals_.push_back(i);
    const auto drawn =
        drawWaterfall(part_, *data_.dataSet->getSeries(0), categories, totals, options_.numberFormat);
    requireNumbers(*drawn.dataSet);
    series_ = drawn.series;
    drawnCount_ = series_.size();
    ContentPlanner planner(part_, data_, options_, categories_, report_);
    for (std::size_t i = 0; i < drawnCount_; ++i) {
        series_[i].title = toCellText(drawn.dataSet->getSeries(i)->getName());
        planner.plan(series_[i], series_, *drawn.dataSet->getSeries(i), {});
    }
    series_.push_back(std::move(own));
}

std::vector<SeriesCells> FillPlan::makeCells() const
{
    return collectCells(series_);
}

std::vector<SeriesCells> FillPlan::makeRemovedCells() const
{
    return collectRemovedCells(removed_);
}

void FillPlan::setReferences(const std::vector<SeriesCells>& cells)
{
    takeReferences(series_, cells);
}

}  // namespace quillon::report
