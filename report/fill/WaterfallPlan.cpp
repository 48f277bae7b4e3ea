#include "report/fill/WaterfallPlan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "report/finish/Waterfall.h"
#include "report/options/NumberText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr auto base = static_cast<std::size_t>(WaterfallPart::Base);
constexpr auto firstBelow = static_cast<std::size_t>(WaterfallPart::IncreaseBelow);

const SeriesMarkup* findPart(const ChartMarkup& part, std::size_t index)
{
    const auto& drawn = part.getDrawnSeries();
    const auto found =
        std::find_if(drawn.begin(), drawn.end(), [&](const auto& series) { return series.index == index; });
    return found == drawn.end() ? nullptr : &*found;
}

/// The heights of the bars that cross 0, by position.
std::map<std::size_t, double> findCrossing(const std::vector<double>& above, const std::vector<double>& below)
{
    std::map<std::size_t, double> heights;
    for (std::size_t i = 0; i < std::min(above.size(), below.size()); ++i)
        if (const double height = above[i] - below[i]; !std::isnan(height)) heights[i] = height;
    return heights;
}

std::vector<double> readNumbers(const ChartMarkup& part, std::size_t index)
{
    const auto* series = findPart(part, index);
    return series == nullptr ? std::vector<double>() : part.readCache(series->values).read(false).numbers;
}

/// What such a label says before the value: the names that those of its series show.
std::string nameLabel(const XmlElement& labels, const std::string& series, std::size_t index,
                      const std::vector<std::u16string>& categories)
{
    const auto shows = [&labels](std::string_view what) {
        return labels.findChild(what).getAttribute("val") == "1";
    };
    const auto separator = labels.findChild("separator");
    const auto between = separator ? separator.getText() : "; ";
    std::string text;
    if (shows("showSerName")) text += series + between;
    if (shows("showCatName") && index < categories.size())
        text += toUtf8(escapeCharacters(categories[index])) + between;
    return text;
}

/// A bar that crosses 0 has one label, on its part above, which says how high all of it is.
LabelTexts makeLabels(const ChartMarkup& part, std::size_t above, const std::vector<WaterfallSeries>& drawn,
                      const std::vector<std::u16string>& categories, const std::string& numberFormat)
{
    const auto labels = findPart(part, above)->element.findChild("dLbls");
    const auto format = labels.findChild("numFmt").getAttribute("formatCode");
    if (labels.findChild("showVal").getAttribute("val") != "1" || !format) return {};
    LabelTexts texts;
    const auto shown =
        numberFormat.empty() ? std::string(*format) : keepSign(std::string(*format), numberFormat);
    const auto belowIt = above + firstBelow;
    for (const auto& [index, height] : findCrossing(readNumbers(part, above), readNumbers(part, belowIt)))
        texts.before.insert(index);
    if (belowIt < drawn.size())
        for (const auto& [index, height] : findCrossing(drawn[above].values, drawn[belowIt].values))
            texts.after[index] =
                nameLabel(labels, toUtf8(drawn[above].name), index, categories) + formatNumber(height, shown);
    return texts;
}

std::shared_ptr<chart::DataSeries> makeSeries(const std::u16string& name, const std::vector<double>& values)
{
    auto series = chart::DataSeries::create(name);
    for (const double value : values) series->appendPoint(value);
    return series;
}

/// A part below 0 looks like the one above.
SeriesPlan addPart(const ChartMarkup& part, std::size_t index)
{
    const auto position = static_cast<std::uint32_t>(index);
    return {.look = findPart(part, index - firstBelow),
            .isAdded = true,
            .hasOwnColor = false,
            .index = position,
            .order = position};
}

}  // namespace

std::string keepSign(const std::string& before, const std::string& format)
{
    const auto middle = before.size() / 2;
    const bool isTwice = before == before.substr(0, middle) + ";" + before.substr(0, middle);
    if (!isTwice || format.find(';') != std::string::npos) return format;
    const std::string sign = before[0] == '-' ? "-" : "";
    return sign + format + ";" + sign + format;
}

DrawnWaterfall drawWaterfall(const ChartMarkup& part, const chart::DataSeries& series,
                             const std::vector<std::u16string>& categories, const std::vector<bool>& totals,
                             const std::string& numberFormat)
{
    const auto parts = makeWaterfall(series, totals);
    const std::vector<double> empty(series.getSize(), nothing);
    DrawnWaterfall drawn{.dataSet = chart::DataSet::create()};
    for (const auto& old : part.getDrawnSeries()) {
        drawn.series.push_back({.look = &old, .index = old.index, .order = old.order});
        if (old.index < base)
            drawn.series.back().labels = makeLabels(part, old.index, parts, categories, numberFormat);
        // Parts below 0 stay where no bar crosses it any more.
        drawn.dataSet->appendSeries(
            makeSeries(fromCellText(old.name), old.index < parts.size() ? parts[old.index].values : empty));
    }
    for (auto i = part.getDrawnSeries().size(); i < parts.size(); ++i) {
        drawn.series.push_back(addPart(part, i));
        drawn.dataSet->appendSeries(makeSeries(parts[i].name, parts[i].values));
    }
    return drawn;
}

}  // namespace quillon::report
