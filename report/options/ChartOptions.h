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

/// How the bars, lines or areas of several series stand upon each other.
enum class Stacking : std::uint8_t { Normal, Percent };

/// How a missing value is drawn.
enum class Blank : std::uint8_t { Gap, Zero, Connect };

/// The side of the text at which a chart floats.
enum class Float : std::uint8_t { Left, Right };

/// How a chart looks and how it stands in its document. What the objects of the chart say wins over these.
struct ChartOptions {
    // Place.

    /// Lengths with a unit (cm, mm, in, pt), 0.1 to 22 inches. Default: 6in by 3.5in.
    std::string width = "6in";
    std::string height = "3.5in";
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
    /// As in a cell of a worksheet, "#,##0.00": for the value axis, labels, and the workbook's cells.
    std::string numberFormat = {};
    /// The same for categories that are dates or numbers.
    std::string categoryFormat = {};
    /// The ends of the value axis and the distance of its gridlines. Default: chosen by the word processor.
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
    /// Default: Low.
    std::optional<TickLabels> tickLabels = {};
    /// Degrees, -90 to 90, counter-clockwise. Default: chosen by the word processor.
    std::optional<double> tickRotation = {};
    /// Every how manyth category has a label, from 1. Default: chosen by the word processor.
    std::optional<std::uint32_t> tickInterval = {};

    // Labels.

    /// What every data label says. Default: there are none.
    std::vector<Label> labels = {};
    /// Default: chosen by the word processor.
    std::optional<LabelPosition> labelPosition = {};
    /// As numberFormat, for the labels alone.
    std::string labelFormat = {};

    // Series.

    /// Between the bars of two categories, percent of a bar's width, 0 to 500. Default: 219.
    std::optional<std::uint32_t> gap = {};
    /// Of the bars of one category, percent of a bar's width, -100 (apart) to 100 (upon each other).
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
    /// The colours that take turns in place of the theme's; `colors` wins.
    std::vector<std::string> palette = {};
    /// Names of series, or of the slices of a pie, with their colours; wins over `colors`.
    std::vector<std::pair<std::string, std::string>> seriesColors = {};
    /// Where the first slice of a pie starts: degrees, 0 to 360, clockwise from the top.
    std::optional<std::uint32_t> startAngle = {};
    /// How far the slices of a pie are pulled out: percent of the radius, 0 to 100.
    std::optional<std::uint32_t> explosion = {};
    /// The same two as the chart classes have them; what they set wins over both, and what a series holds of
    /// the kind wins over them. Default: empty.
    std::shared_ptr<const chart::DataSeriesFormatOptions> formatOptions = {};

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
