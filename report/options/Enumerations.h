#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "report/options/ChartOptions.h"

/// The words that people write, in tables of rows. Readers, help, messages, Python's types, the documentation
/// and the markup all take them from here.
namespace quillon::report {

template <typename Value>
struct EnumRow {
    Value value;
    /// As people write it.
    const char* name;
    /// As the markup has it; null where the markup has none.
    const char16_t* token;
    /// As the documentation has it.
    const char* meaning;
};

inline constexpr std::array kindRows = {
    EnumRow<ChartKind>{ChartKind::Column, "column", u"c:barChart", "Column chart"},
    EnumRow<ChartKind>{ChartKind::Bar, "bar", u"c:barChart", "Bar chart"},
    EnumRow<ChartKind>{ChartKind::Line, "line", u"c:lineChart", "Line chart"},
    EnumRow<ChartKind>{ChartKind::Pie, "pie", u"c:pieChart", "Pie chart"},
    EnumRow<ChartKind>{ChartKind::Area, "area", u"c:areaChart", "Area chart"},
    EnumRow<ChartKind>{ChartKind::Doughnut, "doughnut", u"c:doughnutChart", "Doughnut chart"},
    EnumRow<ChartKind>{ChartKind::Scatter, "scatter", u"c:scatterChart", "Scatter chart"},
    EnumRow<ChartKind>{ChartKind::Bubble, "bubble", u"c:bubbleChart", "Bubble chart"},
    EnumRow<ChartKind>{ChartKind::Radar, "radar", u"c:radarChart", "Radar chart"},
    EnumRow<ChartKind>{ChartKind::Stock, "stock", u"c:stockChart", "Stock chart"},
    EnumRow<ChartKind>{ChartKind::Waterfall, "waterfall", u"c:barChart", "Waterfall chart"},
};

inline constexpr std::array legendRows = {
    EnumRow<Legend>{Legend::Automatic, "auto", nullptr,
                    "below a pie and below several series; right of the plot where it would take a third"},
    EnumRow<Legend>{Legend::None, "none", nullptr, "no legend"},
    EnumRow<Legend>{Legend::Right, "right", u"r", "right of the plot"},
    EnumRow<Legend>{Legend::Top, "top", u"t", "above the plot"},
    EnumRow<Legend>{Legend::Left, "left", u"l", "left of the plot"},
    EnumRow<Legend>{Legend::Bottom, "bottom", u"b", "below the plot"},
};

inline constexpr std::array unitsRows = {
    EnumRow<Units>{Units::Hundreds, "hundreds", u"hundreds", "hundreds"},
    EnumRow<Units>{Units::Thousands, "thousands", u"thousands", "thousands"},
    EnumRow<Units>{Units::Millions, "millions", u"millions", "millions"},
    EnumRow<Units>{Units::Billions, "billions", u"billions", "billions"},
};

inline constexpr std::array gridlinesRows = {
    EnumRow<Gridlines>{Gridlines::None, "none", nullptr, "no gridlines"},
    EnumRow<Gridlines>{Gridlines::Value, "value", nullptr, "at the steps of the value axis"},
    EnumRow<Gridlines>{Gridlines::Category, "category", nullptr, "between the categories"},
    EnumRow<Gridlines>{Gridlines::Both, "both", nullptr, "both"},
};

inline constexpr std::array tickLabelsRows = {
    EnumRow<TickLabels>{TickLabels::Low, "low", u"low", "at the lower end of the value axis"},
    EnumRow<TickLabels>{TickLabels::Next, "next", u"nextTo", "beside the category axis"},
    EnumRow<TickLabels>{TickLabels::High, "high", u"high", "at the upper end of the value axis"},
    EnumRow<TickLabels>{TickLabels::None, "none", u"none", "no labels"},
};

inline constexpr std::array labelRows = {
    EnumRow<Label>{Label::Value, "value", u"c:showVal", "the value"},
    EnumRow<Label>{Label::Percent, "percent", u"c:showPercent", "the share of the whole pie"},
    EnumRow<Label>{Label::Category, "category", u"c:showCatName", "the name of the category"},
    EnumRow<Label>{Label::Series, "series", u"c:showSerName", "the name of the series"},
};

inline constexpr std::array labelPositionRows = {
    EnumRow<LabelPosition>{LabelPosition::BestFit, "bestFit", u"bestFit", "where there is room"},
    EnumRow<LabelPosition>{LabelPosition::Center, "ctr", u"ctr", "in the middle"},
    EnumRow<LabelPosition>{LabelPosition::InsideEnd, "inEnd", u"inEnd", "inside, at the end"},
    EnumRow<LabelPosition>{LabelPosition::InsideBase, "inBase", u"inBase", "inside, at the base"},
    EnumRow<LabelPosition>{LabelPosition::OutsideEnd, "outEnd", u"outEnd", "outside, past the end"},
    EnumRow<LabelPosition>{LabelPosition::Top, "t", u"t", "above the point"},
    EnumRow<LabelPosition>{LabelPosition::Bottom, "b", u"b", "below the point"},
    EnumRow<LabelPosition>{LabelPosition::Left, "l", u"l", "left of the point"},
    EnumRow<LabelPosition>{LabelPosition::Right, "r", u"r", "right of the point"},
};

inline constexpr std::array labelSeparatorRows = {
    EnumRow<LabelSeparator>{LabelSeparator::Comma, "comma", u", ", "a comma"},
    EnumRow<LabelSeparator>{LabelSeparator::Semicolon, "semicolon", u"; ", "a semicolon"},
    EnumRow<LabelSeparator>{LabelSeparator::Period, "period", u". ", "a full stop"},
    EnumRow<LabelSeparator>{LabelSeparator::NewLine, "newline", u"\n", "a new line"},
    EnumRow<LabelSeparator>{LabelSeparator::Space, "space", u" ", "a blank"},
};

inline constexpr std::array stackingRows = {
    EnumRow<Stacking>{Stacking::Normal, "normal", u"stacked", "values on top of each other"},
    EnumRow<Stacking>{Stacking::Percent, "percent", u"percentStacked", "shares of the category's sum"},
};

inline constexpr std::array blankRows = {
    EnumRow<Blank>{Blank::Gap, "gap", u"gap", "a gap"},
    EnumRow<Blank>{Blank::Zero, "zero", u"zero", "as 0"},
    EnumRow<Blank>{Blank::Connect, "connect", u"span", "the line goes on to the next value"},
};

inline constexpr std::array floatRows = {
    EnumRow<Float>{Float::Left, "left", u"left", "on the left, text to its right"},
    EnumRow<Float>{Float::Right, "right", u"right", "on the right, text to its left"},
};

inline constexpr std::array categoryKindRows = {
    EnumRow<CategoryKind>{CategoryKind::Automatic, "auto", nullptr,
                          "dates where the data holds them, otherwise texts"},
    EnumRow<CategoryKind>{CategoryKind::Text, "text", nullptr, "texts, also where they are dates or numbers"},
    EnumRow<CategoryKind>{CategoryKind::Date, "date", nullptr, "dates, as in 2026-07-31"},
    EnumRow<CategoryKind>{CategoryKind::Number, "number", nullptr, "numbers"},
};

inline constexpr std::array scatterStyleRows = {
    EnumRow<ScatterStyle>{ScatterStyle::Points, "points", nullptr, "points"},
    EnumRow<ScatterStyle>{ScatterStyle::Lines, "lines", nullptr, "a line from point to point"},
    EnumRow<ScatterStyle>{ScatterStyle::Both, "both", nullptr, "both"},
};

inline constexpr std::array trendlineRows = {
    EnumRow<Trendline>{Trendline::Linear, "linear", u"linear", "a straight line"},
    EnumRow<Trendline>{Trendline::Exponential, "exponential", u"exp", "an exponential curve"},
    EnumRow<Trendline>{Trendline::Logarithmic, "logarithmic", u"log", "a logarithmic curve"},
    EnumRow<Trendline>{Trendline::Power, "power", u"power", "a power of the place on the horizontal axis"},
    EnumRow<Trendline>{Trendline::Polynomial, "polynomial", u"poly", "a polynomial of the degree `order`"},
    EnumRow<Trendline>{Trendline::MovingAverage, "moving-average", u"movingAvg",
                       "the average of the last `period` points"},
};

inline constexpr std::array errorBarsRows = {
    EnumRow<ErrorAmount>{ErrorAmount::Fixed, "fixed", u"fixedVal", "the same amount everywhere"},
    EnumRow<ErrorAmount>{ErrorAmount::Percent, "percent", u"percentage", "a percentage of the value"},
    EnumRow<ErrorAmount>{ErrorAmount::Deviation, "deviation", u"stdDev", "standard deviations of the series"},
    EnumRow<ErrorAmount>{ErrorAmount::Error, "error", u"stdErr", "the standard error of the series"},
};

/// The rows of an enumeration, for whoever has only its type.
template <typename Value>
constexpr std::span<const EnumRow<Value>> rowsOf();
template <>
constexpr std::span<const EnumRow<ChartKind>> rowsOf()
{
    return kindRows;
}
template <>
constexpr std::span<const EnumRow<Legend>> rowsOf()
{
    return legendRows;
}
template <>
constexpr std::span<const EnumRow<Units>> rowsOf()
{
    return unitsRows;
}
template <>
constexpr std::span<const EnumRow<Gridlines>> rowsOf()
{
    return gridlinesRows;
}
template <>
constexpr std::span<const EnumRow<TickLabels>> rowsOf()
{
    return tickLabelsRows;
}
template <>
constexpr std::span<const EnumRow<Label>> rowsOf()
{
    return labelRows;
}
template <>
constexpr std::span<const EnumRow<LabelPosition>> rowsOf()
{
    return labelPositionRows;
}
template <>
constexpr std::span<const EnumRow<LabelSeparator>> rowsOf()
{
    return labelSeparatorRows;
}
template <>
constexpr std::span<const EnumRow<Stacking>> rowsOf()
{
    return stackingRows;
}
template <>
constexpr std::span<const EnumRow<Blank>> rowsOf()
{
    return blankRows;
}
template <>
constexpr std::span<const EnumRow<Float>> rowsOf()
{
    return floatRows;
}

template <>
constexpr std::span<const EnumRow<CategoryKind>> rowsOf()
{
    return categoryKindRows;
}
template <>
constexpr std::span<const EnumRow<ScatterStyle>> rowsOf()
{
    return scatterStyleRows;
}
template <>
constexpr std::span<const EnumRow<Trendline>> rowsOf()
{
    return trendlineRows;
}
template <>
constexpr std::span<const EnumRow<ErrorAmount>> rowsOf()
{
    return errorBarsRows;
}

/// The row of a value. Requires: there is one.
template <typename Rows, typename Value>
constexpr const auto& findRow(const Rows& rows, Value value)
{
    return *std::find_if(rows.begin(), rows.end(), [value](const auto& row) { return row.value == value; });
}

/// The row of a name, or null.
template <typename Rows>
constexpr const auto* findRowOf(const Rows& rows, std::string_view name)
{
    const auto found =
        std::find_if(rows.begin(), rows.end(), [name](const auto& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace quillon::report
