#include "report/finish/Labels.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/TextBody.h"
#include "report/finish/Waterfall.h"
#include "report/options/NumberText.h"
#include "report/options/OptionChecks.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using chart::DataLabelContentSeparator;

namespace {

struct SeparatorRow {
    DataLabelContentSeparator value;
    const char16_t* text;
};
constexpr std::array separatorRows = {
    SeparatorRow{DataLabelContentSeparator::Comma, u", "},
    SeparatorRow{DataLabelContentSeparator::Semicolon, u"; "},
    SeparatorRow{DataLabelContentSeparator::Period, u". "},
    SeparatorRow{DataLabelContentSeparator::NewLine, u"\n"},
    SeparatorRow{DataLabelContentSeparator::Space, u" "},
};

const char16_t* findSeparator(DataLabelContentSeparator value)
{
    for (const auto& row : separatorRows)
        if (row.value == value) return row.text;
    return nullptr;
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
LabelSettings readOptions(const ChartOptions& options)
{
    const auto has = [&options](Label label) {
        return std::find(options.labels.begin(), options.labels.end(), label) != options.labels.end();
    };
    LabelSettings settings;
    settings.value = has(Label::Value);
    settings.percent = has(Label::Percent);
    settings.category = has(Label::Category);
    settings.series = has(Label::Series);
    return settings;
}

/// In a combination, some series have no labels at that place.
bool canStandAt(LabelPosition position, const ChartPart& part, const SeriesPart& series)
{
    if (!combinedKinds.contains(part.context.kind)) return true;
    const auto* group = static_cast<const xercesc::DOMElement*>(series.element->getParentNode());
    const std::u16string_view name = group->getTagName();
    const auto kind = name == u"c:barChart"    ? ChartKind::Column
                      : name == u"c:lineChart" ? ChartKind::Line
                                               : ChartKind::Area;
    return canLabelsStandAt(position, kind, part.context.options.stacking.has_value());
}

/// Place and number format, of which the objects of the chart say nothing.
void complete(LabelSettings& settings, const ChartPart& part, const SeriesPart& series)
{
    settings.position = part.context.options.labelPosition;
    if (settings.position && !canStandAt(*settings.position, part, series)) settings.position.reset();
    const bool isShare = settings.percent && !settings.value;
    settings.numberFormat = readXmlText(chooseLabelFormat(part, series, isShare), "label-format");
}

/// Leader lines belong to all labels of a series: one that asks for them gets them for all.
void labelSeries(ChartPart& part, const SeriesPart& series)
{
    const auto& options = part.context.options;
    const auto& format = series.series.getLabelFormat();
    auto points = readPointLabels(part, series);
    if (!format && points.empty() && options.labels.empty()) return;
    auto settings = format ? readFormat(part, *format, {&series}) : readOptions(options);
    complete(settings, part, series);
    for (const auto& [index, point] : points) settings.leaderLines |= point.leaderLines;
    auto* labels = setLabels(series, settings);
    for (auto& [index, point] : points) {
        complete(point, part, series);
        addPointLabel(labels, index, point);
    }
}

/// A bar of a waterfall that crosses 0 has one label, of the whole, on its part above.
void labelCrossingBars(ChartPart& part, const SeriesPart& above, const SeriesPart& below)
{
    auto* labels = findChild(above.element, u"c:dLbls");
    if (labels == nullptr) return;
    const auto* shown = findChild(labels, u"c:showVal");
    if (std::u16string_view(shown->getAttribute(u"val")) != u"1") return;
    const auto format = chooseLabelFormat(part, above, false);
    for (std::size_t i = 0; i < below.series.getSize(); ++i) {
        const double height = above.series.getPoint(i)->getValue() - below.series.getPoint(i)->getValue();
        if (std::isnan(height)) continue;
        LabelSettings settings;
        settings.value = true;
        complete(settings, part, above);
        addPointLabel(labels, i, settings);
        auto* text = insertInOrder(findChildren(labels, u"c:dLbl").back(), u"c:tx");
        fillText(appendElement(text, u"c:rich"), toUtf16(formatNumber(height, format)), 0);
    }
}

void labelAllSeries(ChartPart& part)
{
    for (const auto& series : part.series) labelSeries(part, series);
}

/// The base has no labels; the parts below 0 say what the bars that cross 0 come to.
void labelWaterfall(ChartPart& part)
{
    constexpr auto base = static_cast<std::size_t>(WaterfallPart::Base);
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        if (i < base) labelSeries(part, part.series[i]);
        if (i > base) labelCrossingBars(part, part.series[i - base - 1], part.series[i]);
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
