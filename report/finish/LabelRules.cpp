#include "report/finish/Labels.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/finish/LabelColors.h"
#include "report/finish/LabelTexts.h"
#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Waterfall.h"
#include "report/options/Enumerations.h"
#include "report/options/OptionChecks.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using chart::DataLabelContentSeparator;
using xercesc::DOMElement;

namespace {

struct SeparatorRow {
    DataLabelContentSeparator ofObject;
    LabelSeparator value;
};
constexpr std::array separatorRows = {
    SeparatorRow{DataLabelContentSeparator::Comma, LabelSeparator::Comma},
    SeparatorRow{DataLabelContentSeparator::Semicolon, LabelSeparator::Semicolon},
    SeparatorRow{DataLabelContentSeparator::Period, LabelSeparator::Period},
    SeparatorRow{DataLabelContentSeparator::NewLine, LabelSeparator::NewLine},
    SeparatorRow{DataLabelContentSeparator::Space, LabelSeparator::Space},
};

const char16_t* findSeparator(DataLabelContentSeparator value)
{
    for (const auto& row : separatorRows)
        if (row.ofObject == value) return findRow(labelSeparatorRows, row.value).token;
    return nullptr;
}

/// Slices have more room for lines than for a long one.
const char16_t* chooseSeparator(const ChartContext& context)
{
    const auto standard = sliceKinds.contains(context.kind) ? LabelSeparator::NewLine : LabelSeparator::Comma;
    if (context.options.labels.size() < 2) return nullptr;
    return findRow(labelSeparatorRows, context.options.labelSeparator.value_or(standard)).token;
}

LabelSettings readFormat(ChartPart& part, const chart::DataLabelFormat& format, const Place& place)
{
    const auto content = format.getOptions()->getContentOptions();
    LabelSettings settings;
    settings.value = content->getContainsValue();
    settings.category = content->getContainsCategoryName();
    settings.series = content->getContainsSeriesName();
    settings.legendKey = content->getContainsLegendKey();
    settings.separator = findSeparator(content->getSeparator());
    settings.leaderLines = content->getShowLeaderLines();
    settings.shape = readShape(part, format.getShapeFormat().get(), place.of("label"));
    return settings;
}

/// A label of a single point, with the position of the point.
using PointLabel = std::pair<std::size_t, LabelSettings>;

std::vector<PointLabel> readPointLabels(ChartPart& part, const SeriesPart& series)
{
    std::vector<PointLabel> labels;
    std::size_t index = 0;
    for (const auto& point : series.series.getPoints()) {
        if (const auto& format = point->getLabelFormat())
            labels.emplace_back(index, readFormat(part, *format, {&series, index}));
        ++index;
    }
    return labels;
}

/// What the options say of labels, where the objects of the chart say nothing.
LabelSettings readOptions(const ChartContext& context)
{
    const auto& options = context.options;
    const auto has = [&options](Label label) {
        return std::find(options.labels.begin(), options.labels.end(), label) != options.labels.end();
    };
    LabelSettings settings;
    settings.value = has(Label::Value);
    settings.percent = has(Label::Percent);
    settings.category = has(Label::Category);
    settings.series = has(Label::Series);
    settings.separator = chooseSeparator(context);
    return settings;
}

/// In a combination, some series have no labels at that place.
bool canStandAt(LabelPosition position, const ChartPart& part, const SeriesPart& series)
{
    if (!combinedKinds.contains(part.context.kind)) return true;
    const auto* group = static_cast<const DOMElement*>(series.element->getParentNode());
    const std::u16string_view name = group->getTagName();
    const auto kind = name == u"c:barChart"    ? ChartKind::Column
                      : name == u"c:lineChart" ? ChartKind::Line
                                               : ChartKind::Area;
    return canLabelsStandAt(position, kind, part.context.options.stacking.has_value());
}

/// Word processors differ in whether the format of a label is for its value or its share. Where it has both,
/// the value looks as its cell, and the share as a percentage.
void formatCells(const SeriesPart& series, const std::u16string& format)
{
    findPath(series.element, {u"c:val", u"c:numRef", u"c:numCache", u"c:formatCode"})
        ->setTextContent(format.c_str());
}

/// As the author says, where a series can have its labels there. Those of a pie stand on paper unless each
/// has room on its slice: half a label on a dark slice cannot be read.
std::optional<LabelPosition> choosePosition(const ChartPart& part, const SeriesPart& series,
                                            const LabelSettings& settings)
{
    const auto& wish = part.context.options.labelPosition;
    if (wish) return canStandAt(*wish, part, series) ? wish : std::nullopt;
    if (part.context.kind != ChartKind::Pie || settings.leaderLines) return {};
    return haveSlicesRoom(part, series, settings) ? LabelPosition::InsideEnd : LabelPosition::OutsideEnd;
}

/// The number format, of which the objects of the chart say nothing.
void format(LabelSettings& settings, const ChartPart& part, const SeriesPart& series)
{
    const bool isShare = settings.percent && !settings.value;
    const auto format = readXmlText(chooseLabelFormat(part, series, isShare), "label-format");
    if (settings.percent && settings.value && part.context.options.labelFormat.empty())
        formatCells(series, format);
    else
        settings.numberFormat = format;
}

TextColor findMostFrequent(const std::vector<TextColor>& colors)
{
    if (colors.empty()) return TextColor::Grey;
    const auto count = [&colors](TextColor color) { return std::count(colors.begin(), colors.end(), color); };
    return *std::max_element(allTextColors.begin(), allTextColors.end(),
                             [&](TextColor a, TextColor b) { return count(a) < count(b); });
}

/// Single points whose labels are written in another colour than those of most.
void colorLabels(DOMElement* labels, LabelSettings settings, const std::vector<TextColor>& colors)
{
    const auto ofMost = settings.textColor;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        settings.textColor = colors[i];
        if (colors[i] != ofMost) setPointLabel(labels, i, settings);
    }
}

/// Leader lines belong to all labels of a series: one that asks for them gets them for all. Returns what most
/// labels show.
LabelSettings labelSeries(ChartPart& part, const SeriesPart& series)
{
    const auto& ofSeries = series.series.getLabelFormat();
    auto points = readPointLabels(part, series);
    if (!ofSeries && points.empty() && part.context.options.labels.empty()) return {};
    auto settings = ofSeries ? readFormat(part, *ofSeries, {&series}) : readOptions(part.context);
    for (const auto& [index, point] : points) settings.leaderLines |= point.leaderLines;
    settings.position = choosePosition(part, series, settings);
    format(settings, part, series);
    const auto colors = chooseLabelColors(part, series, settings);
    settings.textColor = findMostFrequent(colors);
    auto* labels = setLabels(series, settings);
    if (!settings.isEmpty()) colorLabels(labels, settings, colors);
    for (auto& [index, point] : points) {
        point.position = settings.position;
        if (index < colors.size()) point.textColor = colors[index];
        format(point, part, series);
        setPointLabel(labels, index, point);
    }
    return settings;
}

/// A bar of a waterfall that crosses 0 has one label, of the whole, on its part above.
void labelCrossingBars(ChartPart& part, const SeriesPart& above, const SeriesPart& below,
                       const LabelSettings& settings)
{
    if (!settings.value) return;
    auto* labels = findChild(above.element, u"c:dLbls");
    auto own = settings;
    own.category = own.series = false;
    for (std::size_t i = 0; i < below.series.getSize(); ++i) {
        const double height = above.series.getPoint(i)->getValue() - below.series.getPoint(i)->getValue();
        if (std::isnan(height)) continue;
        auto* text = insertInOrder(setPointLabel(labels, i, own), u"c:tx");
        fillLabelText(appendElement(text, u"c:rich"),
                      escapeCharacters(composeLabel(part, above, settings, i, height)), own.textColor);
    }
}

void labelAllSeries(ChartPart& part)
{
    for (const auto& series : part.series)
        if (!part.isHidden(series)) labelSeries(part, series);
}

/// The base has no labels; the parts below 0 say what the bars that cross 0 come to.
void labelWaterfall(ChartPart& part)
{
    constexpr auto base = static_cast<std::size_t>(WaterfallPart::Base);
    std::array<LabelSettings, base> settings;
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        if (i < base) settings[i] = labelSeries(part, part.series[i]);
        if (i > base)
            labelCrossingBars(part, part.series[i - base - 1], part.series[i], settings[i - base - 1]);
    }
}

void warnOfOptionsWithoutLabels(ChartPart& part)
{
    const auto& options = part.context.options;
    if (!options.labelPosition && options.labelFormat.empty()) return;
    for (const auto& series : part.series)
        if (findChild(series.element, u"c:dLbls") != nullptr) return;
    part.warn(
        "",
        "label-position and label-format are for data labels, and the chart has none; say what they show "
        "(labels value).");
}

constexpr ChartKinds waterfallKind{ChartKind::Waterfall};

constexpr std::array rules = {
    Rule{allKinds.without(waterfallKind), labelAllSeries},
    Rule{waterfallKind, labelWaterfall},
    Rule{allKinds, warnOfOptionsWithoutLabels},
};

}  // namespace

const std::span<const Rule> labelRules = rules;

}  // namespace quillon::report
