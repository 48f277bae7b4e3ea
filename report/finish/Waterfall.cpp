#include "report/finish/Waterfall.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

#include "report/finish/SeriesNames.h"
#include "report/options/ChartError.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

struct PartRow {
    WaterfallPart part;
    const char16_t* name;
};
constexpr std::array partRows = {
    PartRow{WaterfallPart::Increase, u"Increase"},
    PartRow{WaterfallPart::Decrease, u"Decrease"},
    PartRow{WaterfallPart::Total, u"Total"},
    PartRow{WaterfallPart::Base, u"Base"},
    PartRow{WaterfallPart::IncreaseBelow, u"Increase below 0"},
    PartRow{WaterfallPart::DecreaseBelow, u"Decrease below 0"},
    PartRow{WaterfallPart::TotalBelow, u"Total below 0"},
};

/// A bar of the waterfall: it reaches from one value to another.
struct Bar {
    WaterfallPart part;
    double from;
    double to;
};

void requireTotals(const std::vector<std::u16string>& categories, const std::vector<std::u16string>& totals)
{
    const std::unordered_set<std::u16string_view> known(categories.begin(), categories.end());
    for (const auto& total : totals)
        if (!known.contains(total))
            throw ChartError("", "totals: there is no category " + quoteText(total) + "; the categories are" +
                                     listNames(categories, toUtf8(total)));
}

std::vector<Bar> makeBars(const chart::DataSeries& series, const std::vector<bool>& totals)
{
    std::vector<Bar> bars;
    double sum = 0;
    for (std::size_t i = 0; i < series.getSize(); ++i) {
        const double value = series.getPoint(i)->getValue();
        if (i < totals.size() && totals[i]) {
            if (!std::isnan(value)) sum = value;
            bars.push_back({WaterfallPart::Total, 0, sum});
            continue;
        }
        const double before = sum;
        if (!std::isnan(value)) sum += value;
        bars.push_back({value < 0 ? WaterfallPart::Decrease : WaterfallPart::Increase, before, sum});
    }
    return bars;
}

WaterfallPart getPartBelow(WaterfallPart part)
{
    return static_cast<WaterfallPart>(static_cast<int>(part) +
                                      static_cast<int>(WaterfallPart::IncreaseBelow));
}

/// The points of a bar in the columns of the parts: on its base, or from 0 up and from 0 down.
void place(const Bar& bar, std::size_t index, std::vector<WaterfallSeries>& parts)
{
    const auto set = [&](WaterfallPart part, double value) {
        parts[static_cast<std::size_t>(part)].values[index] = value;
    };
    const auto [low, high] = std::minmax(bar.from, bar.to);
    if (low < 0 && high > 0) {
        set(bar.part, high);
        set(getPartBelow(bar.part), low);
        return;
    }
    const double base = low >= 0 ? low : high;
    if (base != 0) set(WaterfallPart::Base, base);
    set(bar.part, low >= 0 ? high - low : low - high);
}

bool isEmpty(const WaterfallSeries& part)
{
    return std::all_of(part.values.begin(), part.values.end(),
                       [](double value) { return std::isnan(value); });
}

}  // namespace

std::vector<bool> findTotals(const std::vector<std::u16string>& categories,
                             const std::vector<std::u16string>& totals)
{
    requireTotals(categories, totals);
    const std::unordered_set<std::u16string_view> sums(totals.begin(), totals.end());
    std::vector<bool> found;
    found.reserve(categories.size());
    for (const auto& category : categories) found.push_back(sums.contains(category));
    return found;
}

std::vector<WaterfallSeries> makeWaterfall(const chart::DataSeries& series, const std::vector<bool>& totals)
{
    const auto bars = makeBars(series, totals);
    std::vector<WaterfallSeries> parts;
    parts.reserve(partRows.size());
    for (const auto& row : partRows)
        parts.push_back({row.part, row.name, std::vector<double>(bars.size(), nothing)});
    for (std::size_t i = 0; i < bars.size(); ++i) place(bars[i], i, parts);
    const auto below = parts.begin() + static_cast<std::ptrdiff_t>(WaterfallPart::IncreaseBelow);
    if (std::all_of(below, parts.end(), isEmpty)) parts.erase(below, parts.end());
    return parts;
}

}  // namespace quillon::report
