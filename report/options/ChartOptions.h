#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report/options/ChartKind.h"

namespace quillon::chart {
class DataSeriesFormatOptions;
}

namespace quillon::report {

/// Where the legend of a chart stands. Automatic: below a pie and below several series, nowhere otherwise.
enum class Legend : std::uint8_t { Automatic, None, Right, Top, Left, Bottom };

/// What the numbers of the value axis count.
enum class Units : std::uint8_t { Hundreds, Thousands, Millions, Billions };

/// The axes whose gridlines are drawn.
enum class Gridlines : std::uint8_t { None, Value, Category, Both };

/// Where the labels of the category axis stand: below all values, beside the axis, above all values.
enum class TickLabels : std::uint8_t { Low, Next, High, None };

/// What a data label says.
enum class Label : std::uint8_t { Value, Percent, Category, Series };

/// Where a data label stands, by the place of its bar, point or slice.
enum class LabelPosition : std::uint8_t {
    BestFit,
    Center,
    InsideEnd,
    InsideBase,
    OutsideEnd,
    Top,
    Bottom,
    Left,
    Right
};

/// What stands between the contents of a data label.
enum class LabelSeparator : std::uint8_t { Comma, Semicolon, Period, NewLine, Space };

/// How the bars, lines or areas of several series stand on top of each other.
enum class Stacking : std::uint8_t { Normal, Percent };

/// How a missing value is drawn.
enum class Blank : std::uint8_t { Gap, Zero, Connect };

/// What the categories of a chart are. Automatic: dates where the data holds them, otherwise text.
enum class CategoryKind : std::uint8_t { Automatic, Text, Date, Number };

/// How the points of a scatter chart are shown.
enum class ScatterStyle : std::uint8_t { Points, Lines, Both };

/// The course of a trendline.
enum class Trendline : std::uint8_t { Linear, Exponential, Logarithmic, Power, Polynomial, MovingAverage };

/// How far error bars reach: a fixed amount, a percentage of the value, standard deviations, or the standard
/// error.
enum class ErrorAmount : std::uint8_t { Fixed, Percent, Deviation, Error };

/// The side of the text at which a chart floats.
enum class Float : std::uint8_t { Left, Right };

/// How a chart looks and how it stands in its document. What the objects of the chart say wins over these.
struct ChartOptions {
    /// What the chart is drawn as. Default: what the class of the chart says.
    std::optional<ChartKind> kind = {};

    // Place.

    /// Lengths with a unit (cm, mm, in, pt), 0.1 to 22 inches. Default, empty: 6in by 3.5in, less where the
    /// place of the chart is narrower.
    std::string width = {};
    std::string height = {};
    Legend legend = Legend::Automatic;
    /// What a screen reader says. Default, for an empty text: made from type, title, series and range of the
    /// data.
    std::string altText = {};
    /// Whether the document carries the chart's data as an embedded workbook, for editing in a word
    /// processor.
    bool workbook = true;
    /// Text flows around the chart. Default: the chart stands in a line of its own.
    std::optional<Float> floating = {};

    // Axes: bars, columns and lines.

    /// Default, for an empty text: none.
    std::string categoryTitle = {};
    std::string valueTitle = {};
    /// As in a cell of a worksheet, "#,##0.00": for the value axis, and for the labels and the workbook's
    /// cells of the series on it. Default: the formats in the data. Series on the second axis keep theirs.
    std::string numberFormat = {};
    /// The same for categories that are dates or numbers.
    std::string categoryFormat = {};
    /// The ends of the value axis and the distance of its gridlines. Default: chosen by the word processor,
    /// but bars and areas start at 0.
    std::optional<double> valueMin = {};
    std::optional<double> valueMax = {};
    /// Above 0.
    std::optional<double> valueStep = {};
    /// The base of a logarithmic value axis, 2 to 1000. Default: a linear axis.
    std::optional<double> log = {};
    /// Whether the categories run the other way.
    bool reverse = false;
    std::optional<Units> units = {};
    /// Default: Value.
    std::optional<Gridlines> gridlines = {};
    /// Whether the value axis is without its numbers, where labels say them.
    bool noValueAxis = false;
    /// Default: Low.
    std::optional<TickLabels> tickLabels = {};
    /// Degrees, -90 to 90, counter-clockwise. Default: chosen by the word processor.
    std::optional<double> tickRotation = {};
    /// 1 labels every category, 2 every second one. Default: chosen by the word processor.
    std::optional<std::uint32_t> tickInterval = {};

    /// What the categories are. Automatic: dates make a date axis on line and area charts where they are
    /// unique and ascend, and are formatted texts elsewhere. Date: dates, also those in texts as in
    /// "2026-07-31", make a date axis on column charts too. Default: as the data says.
    std::optional<CategoryKind> categoryType = {};
    /// The names of the series on a second value axis, on the right; column, line and area charts.
    std::vector<std::string> second = {};
    /// As the value axis's, for the second.
    std::string secondTitle = {};
    std::string secondFormat = {};
    std::optional<double> secondMin = {};
    std::optional<double> secondMax = {};
    std::optional<double> secondStep = {};
    std::optional<double> secondLog = {};
    /// As the value axis's, for the horizontal axis of scatter and bubble charts.
    std::string xTitle = {};
    std::string xFormat = {};
    std::optional<double> xMin = {};
    std::optional<double> xMax = {};
    std::optional<double> xStep = {};
    std::optional<double> xLog = {};

    // Labels.

    /// What every data label says. Default: there are none.
    std::vector<Label> labels = {};
    /// Default: inside the slices of a pie where each has room, otherwise outside; elsewhere chosen by the
    /// word processor.
    std::optional<LabelPosition> labelPosition = {};
    /// Default: NewLine on pies and doughnuts, Comma elsewhere.
    std::optional<LabelSeparator> labelSeparator = {};
    /// As numberFormat, for the labels alone.
    std::string labelFormat = {};

    // Series.

    /// Between the bars of two categories, percent of a bar's width, 0 to 500. Default: 219, or 50 in
    /// a waterfall.
    std::optional<std::uint32_t> gap = {};
    /// Of the bars of one category, percent of a bar's width, -100 (apart) to 100 (on top of each other).
    /// Default: 0, or 100 for stacked bars.
    std::optional<std::int32_t> overlap = {};
    /// Default: the series stand side by side.
    std::optional<Stacking> stacking = {};
    /// Whether the points of lines are marked.
    bool markers = false;
    /// Whether lines are curves.
    bool smooth = false;
    /// Default: Gap.
    std::optional<Blank> blank = {};
    /// Colour names, #rrggbb or rgb(r,g,b): one for each series, or for each slice of a pie, in order.
    std::vector<std::string> colors = {};
    /// The colours that series or slices take in turn, in place of the theme's; `colors` wins.
    std::vector<std::string> palette = {};
    /// Names of series, or of the slices of a pie, with their colours; wins over `colors`.
    std::vector<std::pair<std::string, std::string>> seriesColors = {};
    /// Names of categories with the colours of their bars; wins over the colours of the series.
    std::vector<std::pair<std::string, std::string>> categoryColors = {};
    /// The names of the series whose lines are dashed: targets, forecasts. Default: none.
    std::vector<std::string> dashed = {};
    /// The names of the stacked series that are not seen but carry those on top of them, as the starts of
    /// ranges do. Default: none.
    std::vector<std::string> hidden = {};
    /// Where the first slice of a pie starts: degrees, 0 to 360, clockwise from the top.
    std::optional<std::uint32_t> startAngle = {};
    /// How far the slices of a pie are pulled out: percent of the radius, 0 to 100.
    std::optional<std::uint32_t> explosion = {};
    /// The same two as the chart classes have them; what they set wins over both, and what a series holds of
    /// the kind wins over them. Default: empty.
    std::shared_ptr<const chart::DataSeriesFormatOptions> formatOptions = {};

    /// The names of the series that a column, line or area chart shows in another way. Default: none.
    std::vector<std::string> line = {};
    std::vector<std::string> area = {};
    std::vector<std::string> column = {};
    /// The hole of a doughnut: percent of its diameter, 10 to 90. Default: 60, or 40 for several rings.
    std::optional<std::uint32_t> hole = {};
    /// Whether the lines of a radar chart are filled.
    bool filled = false;
    /// Default: Points.
    std::optional<ScatterStyle> scatterStyle = {};
    /// The names of the series whose values are the sizes of bubbles: one for each of the others, or one for
    /// all. Default: the sizes in the data.
    std::vector<std::string> sizes = {};
    /// The names of the categories of a waterfall that show a total. Default: those in the data.
    std::vector<std::string> totals = {};
    /// Whether lines lead from the points of lines and areas down to the axis.
    bool dropLines = false;
    /// Whether lines join the highest and lowest series in each category; line charts.
    bool highLowLines = false;
    /// Whether bars join the first and last series in each category; line charts.
    bool upDownBars = false;

    // Trends: bars, columns, lines, scatter and bubble charts. Error bars are for areas too.

    /// Default: none.
    std::optional<Trendline> trendline = {};
    /// The names of the series with a trendline. Default: all.
    std::vector<std::string> trendlineSeries = {};
    /// Of a polynomial trendline, 2 to 6. Default: 2.
    std::optional<std::uint32_t> order = {};
    /// The points of which a moving average is made, 2 to 255. Default: 2.
    std::optional<std::uint32_t> period = {};
    /// How far the trendline goes on past the last and before the first point: categories, or units of the
    /// horizontal axis, from 0. Default: 0.
    std::optional<double> forecast = {};
    std::optional<double> backcast = {};
    /// Whether the chart shows the equation of the trendline, and its R-squared value.
    bool equation = false;
    bool rSquared = false;
    /// Default: those in the data, or none.
    std::optional<ErrorAmount> errorBars = {};
    /// The fixed amount, the percentage, or the count of standard deviations, from 0. Default: 1; 5 percent.
    std::optional<double> errorValue = {};
    /// The names of the series whose values say how far error bars reach up and down: one for each of the
    /// others, or one for all. Default: the amounts in the data.
    std::vector<std::string> errorPlus = {};
    std::vector<std::string> errorMinus = {};

    // Look.

    /// The typeface of all texts. Default: the theme's.
    std::string font = {};
    /// Points, 1 to 400. Default: 14 for the title, 9 for all else.
    std::optional<double> fontSize = {};
    /// Whether a line frames the chart.
    bool frame = false;
    /// Whether a table of the data stands below the axis.
    bool dataTable = false;
};

}  // namespace quillon::report
