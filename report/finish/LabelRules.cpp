#include "report/finish/Labels.h"

#include <array>

#include "report/finish/Rules.h"

namespace quillon::report {

using chart::DataLabelContentSeparator;
using xercesc::DOMElement;

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

/// Leader lines belong to all labels of a series: one that asks for them gets them for all.
void labelSeries(ChartPart& part, const SeriesPart& series)
{
    const auto& format = series.series.getLabelFormat();
    const auto points = readPointLabels(part, series);
    if (!format && points.empty()) return;
    auto settings = format ? readFormat(part, *format, {&series}) : LabelSettings{};
    for (const auto& [index, point] : points) settings.leaderLines |= point.leaderLines;
    auto* labels = setLabels(series, settings);
    for (const auto& [index, point] : points) addPointLabel(labels, index, point);
}

void labelAllSeries(ChartPart& part)
{
    for (const auto& series : part.series) labelSeries(part, series);
}

constexpr std::array rules = {Rule{allKinds, labelAllSeries}};

}  // namespace

const std::span<const Rule> labelRules = rules;

}  // namespace quillon::report
