#include "report/options/Options.h"

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <stdexcept>

#include "report/options/ColorText.h"
#include "report/options/Length.h"
#include "report/options/NumberFormat.h"
#include "report/options/OptionMembers.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double unbounded = std::numeric_limits<double>::infinity();

OptionValue getNoWorkbook(const ChartOptions& options)
{
    return !options.workbook;
}

void setNoWorkbook(ChartOptions& options, const OptionValue& value)
{
    options.workbook = !std::get<bool>(value);
}

void acceptAll(const OptionValue& /*value*/) {}

void checkLength(const OptionValue& value)
{
    parseLength(std::get<std::string>(value));
}

void checkFormat(const OptionValue& value)
{
    checkNumberFormat(std::get<std::string>(value));
}

void requireColor(const std::string& text)
{
    if (const auto color = toUtf16(text); !findColorDigits(color))
        throw std::runtime_error(describeNoColor(color));
}

void checkColors(const OptionValue& value)
{
    for (const auto& text : std::get<std::vector<std::string>>(value)) requireColor(text);
}

void checkSeriesColors(const OptionValue& value)
{
    std::set<std::string> names;
    for (const auto& [name, color] : std::get<std::vector<std::pair<std::string, std::string>>>(value)) {
        requireColor(color);
        if (!names.insert(name).second)
            throw std::runtime_error(quoteText(name) + " has two colours; give one for each name.");
    }
}

/// Word processors take no longer names of typefaces.
void checkFont(const OptionValue& value)
{
    constexpr std::size_t longest = 31;
    const auto length = toUtf16(std::get<std::string>(value)).size();
    if (length > longest)
        throw std::runtime_error("expected the name of a typeface, of at most " + std::to_string(longest) +
                                 " characters, got " + std::to_string(length) + ".");
}

using K = ChartKind;
constexpr ChartKinds withCategories{K::Bar, K::Column, K::Line, K::Area, K::Stock, K::Waterfall};
constexpr ChartKinds withTitles{K::Bar,   K::Column,    K::Line,    K::Area,
                                K::Stock, K::Waterfall, K::Scatter, K::Bubble};
constexpr ChartKinds withValues{K::Bar,       K::Column,  K::Line,   K::Area, K::Stock,
                                K::Waterfall, K::Scatter, K::Bubble, K::Radar};
constexpr ChartKinds withLogarithms{K::Bar, K::Column, K::Line, K::Area, K::Stock, K::Scatter, K::Bubble};
constexpr ChartKinds withBars{K::Bar, K::Column, K::Waterfall};
constexpr ChartKinds inGroups{K::Bar, K::Column};
constexpr ChartKinds onBases{K::Bar, K::Column, K::Area};
constexpr ChartKinds withLines{K::Line, K::Column, K::Area, K::Scatter, K::Radar};
constexpr ChartKinds inStacks{K::Bar, K::Column, K::Line, K::Area};
constexpr ChartKinds withTable{K::Bar, K::Column, K::Line, K::Area, K::Stock};
constexpr ChartKinds withTrends{K::Bar, K::Column, K::Line, K::Scatter, K::Bubble};
constexpr ChartKinds withErrors{K::Bar, K::Column, K::Line, K::Area, K::Scatter, K::Bubble};
constexpr ChartKinds withMarkers{K::Line, K::Column, K::Area, K::Radar};
constexpr ChartKinds withCurves{K::Line, K::Column, K::Area, K::Scatter};
constexpr ChartKinds onlyLines{K::Line};
constexpr ChartKinds withDrops{K::Line, K::Area};
constexpr ChartKinds everyTextual{K::Bar,      K::Column, K::Line,  K::Pie,      K::Area,
                                  K::Doughnut, K::Radar,  K::Stock, K::Waterfall};

struct Range {
    double minimum = -unbounded;
    double maximum = unbounded;
};

template <auto Member>
constexpr Option row(const char* name, OptionGroup group, ChartKinds kinds, const char* values,
                     const char* meaning, const char* standard, Range range = {},
                     void (*check)(const OptionValue&) = acceptAll)
{
    return {name,
            group,
            kinds,
            formOf<Member>(),
            choicesOf<Member>(),
            meaningsOf<Member>(),
            range.minimum,
            range.maximum,
            values,
            meaning,
            standard,
            check,
            getMember<Member>,
            setMember<Member>};
}

using enum OptionGroup;
using O = ChartOptions;

// clang-format off: one option a line or two.
constexpr std::array optionTable = {
    row<&O::kind>("type", Place, everyKind, "TYPE", "what the chart is drawn as",
                  "column; in programs, what the class of the chart says"),
    row<&O::width>("width", Place, everyKind, "LENGTH", "width of the chart, in cm, mm, in or pt", "6in", {},
                   checkLength),
    row<&O::height>("height", Place, everyKind, "LENGTH", "height of the chart, in cm, mm, in or pt", "3.5in",
                    {}, checkLength),
    row<&O::legend>("legend", Place, everyKind, "PLACE", "where the legend stands", "auto"),
    row<&O::altText>("alt-text", Place, everyKind, "TEXT", "what a screen reader says", "made from the data"),
    Option{"no-workbook",
           Place,
           everyKind,
           OptionForm::Flag,
           {},
           {},
           -unbounded,
           unbounded,
           "",
           "leave out the workbook that makes the data editable",
           "",
           acceptAll,
           getNoWorkbook,
           setNoWorkbook},
    row<&O::floating>("float", Place, everyKind, "SIDE",
                      "let text flow around the chart, which stands on this side", "a line of its own"),

    row<&O::categoryTitle>("category-title", Axes, withCategories, "TEXT", "title of the category axis",
                           "none"),
    row<&O::valueTitle>("value-title", Axes, withTitles, "TEXT", "title of the value axis", "none"),
    row<&O::numberFormat>(
        "number-format", Axes, everyKind, "CODE",
        "how numbers look on the axis, in labels and in the workbook, as in a cell: #,##0.00",
        "thousands separators, as many decimals as needed", {}, checkFormat),
    row<&O::categoryFormat>("category-format", Axes, everyTextual, "CODE",
                            "how dates or numbers look as categories, as in a cell: mmm yy", "suits the data",
                            {}, checkFormat),
    row<&O::valueMin>("value-min", Axes, withValues, "NUMBER", "lower end of the value axis",
                      "0 for bars and areas, otherwise chosen by the word processor"),
    row<&O::valueMax>("value-max", Axes, withValues, "NUMBER", "upper end of the value axis",
                      "chosen by the word processor"),
    row<&O::valueStep>("value-step", Axes, withValues, "NUMBER",
                       "distance between the gridlines of the value axis, above 0",
                       "chosen by the word processor", {std::numeric_limits<double>::min(), unbounded}),
    row<&O::log>("log", Axes, withLogarithms, "BASE", "logarithmic value axis to this base, 2 to 1000",
                 "a linear axis", {2, 1000}),
    row<&O::reverse>("reverse", Axes, withCategories, "", "let the categories run the other way", ""),
    row<&O::units>("units", Axes, withValues, "UNITS", "what the numbers of the value axis count", "ones"),
    row<&O::gridlines>("gridlines", Axes, withValues, "AXES", "axes with gridlines", "value"),
    row<&O::noValueAxis>("no-value-axis", Axes, withValues, "",
                         "leave out the numbers of the value axis, where labels say them", ""),
    row<&O::tickLabels>("tick-labels", Axes, withCategories, "PLACE", "where the category labels stand",
                        "low"),
    row<&O::tickRotation>("tick-rotation", Axes, withCategories, "DEGREES",
                          "turn the category labels counter-clockwise, -90 to 90",
                          "chosen by the word processor", {-90, 90}),
    row<&O::tickInterval>("tick-interval", Axes, withCategories, "COUNT",
                          "label every nth category, 1 to 32767", "chosen by the word processor",
                          {1, 32'767}),

    row<&O::categoryType>("category-type", Axes, everyTextual, "TYPE",
                          "what the categories are; dates that ascend make a date axis", "as the data says"),
    row<&O::second>("second", Axes, combinedKinds, "LIST", "series on a second value axis, on the right",
                    "none"),
    row<&O::secondTitle>("second-title", Axes, combinedKinds, "TEXT", "title of the second value axis",
                         "none"),
    row<&O::secondFormat>(
        "second-format", Axes, combinedKinds, "CODE",
        "how numbers look on the second value axis, and of its series on labels and in the workbook",
        "the format of its data, or as --number-format", {}, checkFormat),
    row<&O::secondMin>("second-min", Axes, combinedKinds, "NUMBER", "lower end of the second value axis",
                       "0 for bars and areas, otherwise chosen by the word processor"),
    row<&O::secondMax>("second-max", Axes, combinedKinds, "NUMBER", "upper end of the second value axis",
                       "chosen by the word processor"),
    row<&O::secondStep>("second-step", Axes, combinedKinds, "NUMBER",
                        "distance between the numbers of the second value axis, above 0",
                        "chosen by the word processor", {std::numeric_limits<double>::min(), unbounded}),
    row<&O::secondLog>("second-log", Axes, combinedKinds, "BASE",
                       "logarithmic second value axis to this base, 2 to 1000", "a linear axis", {2, 1000}),
    row<&O::xTitle>("x-title", Axes, pointKinds, "TEXT", "title of the horizontal axis", "none"),
    row<&O::xFormat>("x-format", Axes, pointKinds, "CODE",
                     "how numbers look on the horizontal axis, as in a cell: 0.0", "suits the data", {},
                     checkFormat),
    row<&O::xMin>("x-min", Axes, pointKinds, "NUMBER", "left end of the horizontal axis",
                  "chosen by the word processor"),
    row<&O::xMax>("x-max", Axes, pointKinds, "NUMBER", "right end of the horizontal axis",
                  "chosen by the word processor"),
    row<&O::xStep>("x-step", Axes, pointKinds, "NUMBER",
                   "distance between the numbers of the horizontal axis, above 0",
                   "chosen by the word processor", {std::numeric_limits<double>::min(), unbounded}),
    row<&O::xLog>("x-log", Axes, pointKinds, "BASE", "logarithmic horizontal axis to this base, 2 to 1000",
                  "a linear axis", {2, 1000}),

    row<&O::labels>("labels", Labels, everyKind, "LIST", "what every data label says", "no labels"),
    row<&O::labelPosition>(
        "label-position", Labels, everyKind, "PLACE",
        "where the data labels stand (ctr is the middle; t, b, l and r are the sides)",
        "on pies inside where each has room, otherwise outside; chosen by the word processor elsewhere"),
    row<&O::labelSeparator>("label-separator", Labels, everyKind, "MARK",
                            "what stands between the contents of a data label",
                            "newline on pies and doughnuts, otherwise comma"),
    row<&O::labelFormat>("label-format", Labels, everyKind, "CODE",
                         "how numbers look in the data labels, as in a cell: 0.0%", "as --number-format", {},
                         checkFormat),

    row<&O::gap>("gap", Series, withBars, "PERCENT",
                 "room between the bars of two categories, in percent of a bar, 0 to 500",
                 "219, or 50 in a waterfall", {0, 500}),
    row<&O::overlap>("overlap", Series, inGroups, "PERCENT",
                     "overlap of the bars of one category, -100 (apart) to 100 (on top of each other)",
                     "0, or 100 when stacked", {-100, 100}),
    row<&O::stacking>("stacking", Series, inStacks, "KIND", "stack the series on top of each other",
                      "side by side"),
    row<&O::markers>("markers", Series, withMarkers, "", "mark the points of the lines", ""),
    row<&O::smooth>("smooth", Series, withCurves, "", "draw the lines as curves", ""),
    row<&O::blank>("blank", Series, everyKind, "HOW", "how missing values are drawn; implies --gaps", "gap"),
    row<&O::colors>("colors", Series, everyKind, "LIST",
                    "a colour for each series (each slice of a pie): names, #rrggbb or rgb(r,g,b)",
                    "the theme's", {}, checkColors),
    row<&O::palette>("palette", Series, everyKind, "LIST", "the colours that series or slices take in turn",
                     "the theme's", {}, checkColors),
    row<&O::seriesColors>("series-colors", Series, everyKind, "LIST",
                          "colours of series (slices of a pie) by their names: North=red,South=#0000ff", "",
                          {}, checkSeriesColors),
    row<&O::categoryColors>("category-colors", Series, inGroups, "LIST",
                            "colours of bars by their categories, to point at some: Q3=crimson", "", {},
                            checkSeriesColors),
    row<&O::dashed>("dashed", Series, withLines, "LIST", "series whose lines are dashed: targets, forecasts",
                    "none"),
    row<&O::hidden>("hidden", Series, onBases, "LIST",
                    "stacked series that are not seen but carry the others: the starts of ranges", "none"),
    row<&O::startAngle>("start-angle", Series, sliceKinds, "DEGREES",
                        "where the first slice starts, clockwise from the top, 0 to 360", "0", {0, 360}),
    row<&O::explosion>("explosion", Series, sliceKinds, "PERCENT",
                       "how far the slices are pulled out, 0 to 100", "0", {0, 100}),

    row<&O::line>("line", Series, combinedKinds, "LIST", "series that are drawn as lines", "none"),
    row<&O::area>("area", Series, combinedKinds, "LIST", "series that are drawn as areas", "none"),
    row<&O::column>("column", Series, combinedKinds, "LIST", "series that are drawn as columns", "none"),
    row<&O::hole>("hole", Series, ChartKinds(K::Doughnut), "PERCENT",
                  "how wide the hole of a doughnut is, 10 to 90", "60, or 40 for several rings", {10, 90}),
    row<&O::filled>("filled", Series, ChartKinds(K::Radar), "", "fill the lines of a radar chart", ""),
    row<&O::scatterStyle>("scatter-style", Series, ChartKinds(K::Scatter), "STYLE",
                          "how the points are shown", "points"),
    row<&O::sizes>("size-series", Series, ChartKinds(K::Bubble), "LIST",
                   "series that hold the sizes of the bubbles: one for each other series, or one for all",
                   "the sizes in the data"),
    row<&O::totals>("totals", Series, ChartKinds(K::Waterfall), "LIST",
                    "categories that show a total: their own value, or the sum of all before", "none"),
    row<&O::dropLines>("drop-lines", Series, withDrops, "", "draw lines from the points down to the axis",
                       ""),
    row<&O::highLowLines>("high-low-lines", Series, onlyLines, "",
                          "join the highest and the lowest line in each category", ""),
    row<&O::upDownBars>("up-down-bars", Series, onlyLines, "",
                        "join the first and the last line in each category with bars", ""),

    row<&O::trendline>("trendline", Trends, withTrends, "COURSE", "draw a trendline through the series",
                       "none"),
    row<&O::trendlineSeries>("trendline-series", Trends, withTrends, "LIST", "series with a trendline",
                             "all"),
    row<&O::order>("order", Trends, withTrends, "DEGREE", "degree of a polynomial trendline, 2 to 6", "2",
                   {2, 6}),
    row<&O::period>("period", Trends, withTrends, "COUNT",
                    "points that a moving average is made of, 2 to 255", "2", {2, 255}),
    row<&O::forecast>("forecast", Trends, withTrends, "NUMBER",
                      "how far the trendline goes on past the last point, in categories or units of the "
                      "horizontal axis",
                      "0", {0, 1e6}),
    row<&O::backcast>("backcast", Trends, withTrends, "NUMBER",
                      "how far the trendline starts before the first point, in categories or units of the "
                      "horizontal axis",
                      "0", {0, 1e6}),
    row<&O::equation>("equation", Trends, withTrends, "", "show the equation of the trendline", ""),
    row<&O::rSquared>("r-squared", Trends, withTrends, "", "show the R-squared value of the trendline", ""),
    row<&O::errorBars>("error-bars", Trends, withErrors, "HOW", "draw error bars of this length", "none"),
    row<&O::errorValue>("error-value", Trends, withErrors, "NUMBER",
                        "the fixed amount, the percentage, or the number of standard deviations",
                        "1, or 5 percent", {0, 1e300}),
    row<&O::errorPlus>(
        "plus-series",
        Trends, withErrors, "LIST",
        "series that say how far error bars reach up: one for each other series, or one for all", "none"),
    row<&O::errorMinus>("minus-series", Trends, withErrors, "LIST",
                        "series that say how far error bars reach down", "none"),

    row<&O::font>("font", Look, everyKind, "NAME", "typeface of all texts", "the theme's", {}, checkFont),
    row<&O::fontSize>("font-size", Look, everyKind, "POINTS",
                      "size of the texts, 1 to 400; the title is half as large again",
                      "9, and 14 for the title", {1, 400}),
    row<&O::frame>("frame", Look, everyKind, "", "draw a line around the chart", ""),
    row<&O::dataTable>("data-table", Look, withTable, "", "show a table of the data below the axis", ""),
};
// clang-format on

}  // namespace

std::span<const Option> getOptions()
{
    return optionTable;
}

const Option* findOption(std::string_view name)
{
    const auto found = std::find_if(optionTable.begin(), optionTable.end(),
                                    [name](const auto& option) { return option.name == name; });
    return found == optionTable.end() ? nullptr : &*found;
}

}  // namespace quillon::report
