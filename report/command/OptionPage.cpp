#include "report/command/OptionPage.h"

#include <fmt/format.h>

#include <cctype>
#include <stdexcept>
#include <string_view>

#include "report/command/TableArguments.h"
#include "report/options/Options.h"

namespace quillon::report {
namespace {

constexpr auto introduction = R"text(# Options of a chart

How a chart looks and where it stands. `quillon-report --options` prints this page.

The names are those of the command line, after `--`, and of job files. In Python they are keywords with `_` for `-`:
`report.add_chart(chart, value_title="EUR")`. An option that does not suit the type of chart, and a value that is out of
range, is refused with a sentence. What the objects of a chart say wins over an option.

The examples are for the tables in `examples/data`; `docs/make_option_pictures.sh` makes their pictures.

## Charts that reports ask for

The [gallery](gallery.md) shows most of these.

| Chart | How |
|---|---|
| Target line | a column with the target in each row: `--line Target --dashed Target` |
| One bar that stands out | `--colors silver --category-colors Q3=crimson` |
| Forecast | a column that starts with the last number known: `--type line --gaps --dashed Forecast` |
| Schedule (Gantt), ranges | columns with start and length: `--type bar --stacking normal --hidden Start` |
| Pareto | rows from the largest on and their running share: `--line Share --second Share --second-max 1` |
| Two scales | `--second Price --line Price --second-title EUR` |
| The largest and all others | `--type bar --top 6 --sort descending` |
| Shares of 100 % | `--type bar --stacking percent`; of one whole: `--type pie --labels percent` |
| From one budget to the next | `--type waterfall --totals 2025,2026` |
| Error bars from columns | `--plus-series Up --minus-series Down` |
| Growth by a factor | `--log 10` |
| Lines that break where values are missing | `--type line --gaps`; across the gap: `--blank connect` |
| Small multiples | several charts in a line of a job file: `"charts"` |
)text";

struct Example {
    std::string_view option;
    /// What the option is shown with, and its value: the arguments of quillon-report.
    const char* arguments;
    /// Why there is no picture; empty for an example with one.
    const char* withoutPicture = "";
};

// clang-format off: one example a line.
constexpr Example examples[] = {
    {"type", "energy.csv --type doughnut"},
    {"width", "revenue.csv --type line --width 3in"},
    {"height", "revenue.csv --type line --height 1.5in"},
    {"legend", "revenue.csv --legend right"},
    {"alt-text", "revenue.csv --alt-text \"Revenue grew in all regions\"", "It is heard, not seen."},
    {"no-workbook", "revenue.csv --no-workbook", "The chart looks the same."},
    {"float", "energy.csv --type pie --width 2.5in --float right"},
    {"category-title", "revenue.csv --category-title \"Quarter of 2024\""},
    {"value-title", "revenue.csv --value-title \"EUR, million\""},
    {"number-format", "energy.csv --type bar --number-format \"0\\\" %\\\"\" --labels value"},
    {"category-format", "visits.csv --gaps --category-format \"mmm yy\"",
     "Texts as in this table stay as they are, with a warning."},
    {"value-min", "temperature.csv --type line --series Place --value Temperature --value-min=-20"},
    {"value-max", "revenue.csv --value-max 5"},
    {"value-step", "revenue.csv --value-step 1"},
    {"log", "visits.csv --type line --gaps --log 10"},
    {"reverse", "energy.csv --type bar --reverse"},
    {"units", "visits.csv --gaps --units thousands",
     "Word says the unit beside the axis; LibreOffice 7.4 shows the plain numbers."},
    {"gridlines", "visits.csv --type line --gaps --gridlines both"},
    {"no-value-axis", "revenue.csv --columns North --no-value-axis --labels value --gridlines none --gap 60"},
    {"tick-labels", "revenue.csv --tick-labels high"},
    {"tick-rotation", "temperature.csv --series Place --value Temperature --tick-rotation 90"},
    {"tick-interval", "temperature.csv --type line --series Place --value Temperature --tick-interval 3",
     "LibreOffice 7.4 chooses the labels itself."},
    {"category-type", "prices.csv --type line --columns Price --category-type date"},
    {"second", "prices.csv --second Volume --type column --line Price --category-format mmm"},
    {"second-title", "prices.csv --second Volume --type line --second-title Pieces"},
    {"second-format", "prices.csv --second Volume --type line --second-format \"0.0,\\\"k\\\"\""},
    {"second-min", "prices.csv --second Volume --type line --second-min 500"},
    {"second-max", "prices.csv --second Volume --type line --second-max 5000"},
    {"second-step", "prices.csv --second Volume --type line --second-step 250"},
    {"second-log", "prices.csv --second Volume --type line --second-log 10"},
    {"x-title", "heights.csv --type scatter --columns Weight --x-title \"Height, cm\""},
    {"x-format", "heights.csv --type scatter --columns Weight --x-format 0.0"},
    {"x-min", "heights.csv --type scatter --columns Weight --x-min 140"},
    {"x-max", "heights.csv --type scatter --columns Weight --x-max 210"},
    {"x-step", "heights.csv --type scatter --columns Weight --x-step 5"},
    {"x-log", "heights.csv --type scatter --columns Weight --x-log 2 --x-min 128 --x-max 256"},
    {"labels", "energy.csv --type pie --labels category,percent --legend none"},
    {"label-position", "energy.csv --type bar --labels value --label-position inEnd --gap 50"},
    {"label-separator",
     "energy.csv --type pie --labels category,percent --label-separator space --legend none"},
    {"label-format", "revenue.csv --labels value --label-format 0.0 --gap 40"},
    {"gap", "revenue.csv --gap 40"},
    {"overlap", "revenue.csv --overlap 40"},
    {"stacking", "revenue.csv --stacking percent"},
    {"markers", "revenue.csv --type line --markers"},
    {"smooth", "temperature.csv --type line --series Place --value Temperature --smooth"},
    {"blank", "visits.csv --type line --blank connect"},
    {"colors", "revenue.csv --colors \"navy,#ff8000,rgb(0,128,0)\""},
    {"palette", "energy.csv --type pie --palette teal,goldenrod"},
    {"series-colors", "revenue.csv --series-colors South=crimson"},
    {"category-colors", "revenue.csv --columns North --colors silver --category-colors Q3=crimson"},
    {"dashed", "revenue.csv --line South --dashed South"},
    {"hidden", "plan.csv --type bar --stacking normal --hidden Start"},
    {"start-angle", "energy.csv --type pie --start-angle 90"},
    {"explosion", "energy.csv --type pie --explosion 15"},
    {"line", "revenue.csv --line South --markers"},
    {"area", "revenue.csv --type line --area West"},
    {"column", "revenue.csv --type line --column North"},
    {"hole", "energy.csv --type doughnut --hole 30"},
    {"filled", "revenue.csv --type radar --filled --no-value-axis"},
    {"scatter-style", "heights.csv --type scatter --columns Weight --scatter-style both"},
    {"size-series", "heights.csv --type bubble --size-series Age"},
    {"totals", "budget.csv --type waterfall --totals \"Last year,This year\" --gaps"},
    {"drop-lines", "revenue.csv --type line --drop-lines",
     "Word draws the lines; LibreOffice 7.4 draws none."},
    {"high-low-lines", "revenue.csv --type line --high-low-lines",
     "Word draws the lines; LibreOffice 7.4 draws none."},
    {"up-down-bars", "revenue.csv --type line --up-down-bars",
     "Word draws the bars; LibreOffice 7.4 draws none."},
    {"trendline", "heights.csv --type scatter --columns Weight --trendline linear"},
    {"trendline-series", "revenue.csv --trendline linear --trendline-series North"},
    {"order", "revenue.csv --type line --trendline polynomial --order 3"},
    {"period", "prices.csv --type line --columns Price --trendline moving-average --period 3"},
    {"forecast", "revenue.csv --type line --columns North --trendline linear --forecast 2"},
    {"backcast", "heights.csv --type scatter --columns Weight --trendline linear --backcast 10"},
    {"equation", "heights.csv --type scatter --columns Weight --trendline linear --equation",
     "Word shows as many digits as the numbers need; LibreOffice 7.4 shows all."},
    {"r-squared", "heights.csv --type scatter --columns Weight --trendline linear --r-squared",
     "Word shows as many digits as the numbers need; LibreOffice 7.4 shows all."},
    {"error-bars", "revenue.csv --error-bars percent"},
    {"error-value", "revenue.csv --error-bars fixed --error-value 0.4"},
    {"plus-series", "survey.csv --plus-series Error"},
    {"minus-series", "survey.csv --minus-series Error"},
    {"font", "revenue.csv --font \"Liberation Serif\""},
    {"font-size", "revenue.csv --title Revenue --font-size 12"},
    {"frame", "revenue.csv --frame"},
    {"data-table", "revenue.csv --data-table", "LibreOffice 7.4 draws no data tables."},
};
// clang-format on

const Example& findExample(std::string_view name)
{
    for (const auto& example : examples)
        if (example.option == name) return example;
    throw std::logic_error(fmt::format("The option {} has no example.", name));
}

/// The line of help as a sentence.
std::string makeSentence(std::string text)
{
    text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    return text + ".";
}

void addChoices(std::string& page, const Option& option)
{
    if (option.choices.empty()) return;
    page += option.form == OptionForm::Choices ? "A list of:\n\n" : "One of:\n\n";
    for (std::size_t i = 0; i < option.choices.size(); ++i)
        page += fmt::format("- `{}`: {}\n", option.choices[i], option.choiceMeanings[i]);
    page += "\n";
}

void addOption(std::string& page, const Option& option)
{
    const auto& example = findExample(option.name);
    page += fmt::format("\n### `{}`\n\n{} ", option.name, makeSentence(option.meaning));
    if (*option.standard != 0) page += fmt::format("Default: {}. ", option.standard);
    page += fmt::format("For {}.\n\n", describeKinds(option.kinds));
    addChoices(page, option);
    page += fmt::format("    quillon-report {}\n", example.arguments);
    page += *example.withoutPicture != 0 ? fmt::format("\n{}\n", example.withoutPicture)
                                         : fmt::format("\n![{0}](images/options/{0}.png)\n", option.name);
}

}  // namespace

std::string describeOptions()
{
    std::string page = introduction;
    const char* title = nullptr;
    for (const auto& option : getOptions()) {
        if (title != getTitle(option.group)) page += fmt::format("\n## {}\n", title = getTitle(option.group));
        addOption(page, option);
    }
    return page;
}

}  // namespace quillon::report
