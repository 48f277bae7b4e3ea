#include "report/fill/AltTextRenewal.h"

#include <algorithm>

#include "report/finish/AltText.h"
#include "report/options/Enumerations.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

ShownData readBefore(const ChartMarkup& part, ChartKind kind)
{
    ShownData shown{kind};
    if (part.getChart().findChild("title").findChild("tx")) shown.title = toUtf16(part.getTitle());
    for (const auto& series : part.getSeries()) {
        shown.names.push_back(fromCellText(series.name));
        const auto values = part.readCache(series.values).read(false).numbers;
        shown.values.insert(shown.values.end(), values.begin(), values.end());
        if (kind == ChartKind::Pie) break;
    }
    return shown;
}

/// The positions of the series in the order that they are shown in.
std::vector<std::size_t> listInOrder(const FillPlan& plan)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < plan.getSeries().size(); ++i) places.push_back(i);
    std::ranges::stable_sort(places, {}, [&](std::size_t i) { return plan.getSeries()[i].order; });
    return places;
}

ShownData readAfter(const FillPlan& plan, const ChartData& data, ShownData shown)
{
    if (!plan.getOptions().title.empty()) shown.title = toUtf16(plan.getOptions().title);
    shown.names.clear();
    shown.values.clear();
    const auto* waterfall = plan.getWaterfall();
    for (const auto i : waterfall == nullptr ? listInOrder(plan) : std::vector<std::size_t>{0}) {
        const auto& series = waterfall == nullptr ? plan.getSeries()[i] : *waterfall;
        shown.names.push_back(fromCellText(series.title));
        for (const auto& point : data.dataSet->getSeries(i)->getPoints())
            shown.values.push_back(point->getValue());
        if (shown.kind == ChartKind::Pie) break;
    }
    return shown;
}

}  // namespace

std::string renewAltText(const std::string& text, const FillPlan& plan, const ChartData& data)
{
    for (const auto& row : kindRows) {
        if (!text.starts_with(row.meaning)) continue;
        auto shown = readBefore(plan.getPart(), row.value);
        if (toUtf8(makeAltText(shown)) != text) continue;
        return toUtf8(makeAltText(readAfter(plan, data, std::move(shown))));
    }
    return text;
}

}  // namespace quillon::report
