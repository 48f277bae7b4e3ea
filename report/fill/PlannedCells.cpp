#include "report/fill/PlannedCells.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>

namespace quillon::report {
namespace {

using Kind = PointSource::Kind;

/// What a series has cells for beyond name, categories and values, in the order of SeriesCells::more.
constexpr std::array moreSources = {&SeriesPlan::sizes, &SeriesPlan::errorsPlus, &SeriesPlan::errorsMinus};

CellBlock makeBlock(const SourcePlan& plan)
{
    CellBlock block{.reference = plan.formula, .lines = {}, .numberFormat = plan.format};
    const auto add = [&](const Points& points) {
        block.lines.emplace_back(std::shared_ptr<const Points>(plan.content, &points));
    };
    for (const auto& level : plan.content->levels) add(level);
    add(plan.content->points);
    return block;
}

std::optional<CellBlock> makeCellsOf(const SourcePlan& plan)
{
    if (plan.kind == Kind::None || !plan.hasCells) return {};
    return makeBlock(plan);
}

std::optional<CellBlock> makeRemoved(const PointSource& source)
{
    if (source.formula.empty()) return {};
    return CellBlock{.reference = source.formula};
}

/// Those of the further sources that any series has cells for.
std::vector<SourcePlan SeriesPlan::*> findMore(const std::vector<SeriesPlan>& series)
{
    std::vector<SourcePlan SeriesPlan::*> found;
    for (const auto source : moreSources)
        if (std::any_of(series.begin(), series.end(), [&](const SeriesPlan& plan) {
                return (plan.*source).kind != Kind::None && (plan.*source).hasCells;
            }))
            found.push_back(source);
    return found;
}

}  // namespace

void shareCategories(std::vector<SeriesPlan>& series)
{
    std::map<std::string, std::size_t> firsts;
    const auto share = [&](std::size_t i) {
        auto& categories = series[i].categories;
        series[i].categoriesOf = i;
        if (categories.kind == Kind::None || !categories.hasCells) return;
        const auto first = firsts.emplace(categories.formula, i).first->second;
        const auto& content = series[first].categories.content;
        if (content == categories.content || *content == *categories.content) {
            categories.content = content;
            series[i].categoriesOf = first;
        } else {
            // Cells hold one thing: categories that differ from those of another series get cells of their
            // own.
            categories.formula.clear();
        }
    };
    // Series that are there already keep their cells; new ones share them.
    for (const bool isAdded : {false, true})
        for (std::size_t i = 0; i < series.size(); ++i)
            if (series[i].isAdded == isAdded) share(i);
}

std::vector<SeriesCells> collectCells(const std::vector<SeriesPlan>& series)
{
    std::vector<SeriesCells> cells;
    const auto more = findMore(series);
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto& plan = series[i];
        SeriesCells one{.name = makeCellsOf(plan.name), .values = makeCellsOf(plan.values)};
        if (plan.categoriesOf == i) one.categories = makeCellsOf(plan.categories);
        for (const auto source : more) one.more.push_back(makeCellsOf(plan.*source).value_or(CellBlock()));
        cells.push_back(std::move(one));
    }
    return cells;
}

std::vector<SeriesCells> collectRemovedCells(const std::vector<const SeriesMarkup*>& removed)
{
    std::vector<SeriesCells> cells;
    for (const auto* series : removed) {
        SeriesCells one{.name = makeRemoved(series->nameSource),
                        .categories = makeRemoved(series->categories),
                        .values = makeRemoved(series->values)};
        for (const auto* source : {&series->sizes, &series->errors.plus, &series->errors.minus})
            if (auto block = makeRemoved(*source)) one.more.push_back(*block);
        cells.push_back(std::move(one));
    }
    return cells;
}

void takeReferences(std::vector<SeriesPlan>& series, const std::vector<SeriesCells>& cells)
{
    const auto more = findMore(series);
    for (std::size_t i = 0; i < series.size(); ++i) {
        auto& plan = series[i];
        const auto& one = cells.at(i);
        if (one.name) plan.name.formula = one.name->reference;
        if (one.values) plan.values.formula = one.values->reference;
        if (const auto& shared = cells.at(plan.categoriesOf).categories)
            plan.categories.formula = shared->reference;
        auto block = one.more.begin();
        for (const auto source : more) (plan.*source).formula = block++->reference;
    }
}

}  // namespace quillon::report
