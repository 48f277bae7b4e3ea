#pragma once

#include <array>
#include <string>
#include <variant>
#include <vector>

namespace quillon::report {

/// One chart that the author asks for: a table, and how to show it. An empty text stands for the default.
struct ChartJob {
    std::string table;
    /// bar, column, line or pie. Default: column.
    std::string type;
    std::string title;
    std::string heading;
    /// One colour per series, or per slice of a pie, in order.
    std::vector<std::string> colors;
    /// The column of the category names. Default: the first.
    std::string category;
    /// Wide tables: the columns that become series. Default: every other column that holds numbers.
    std::vector<std::string> columns;
    /// Long tables: the columns of the series names and of the values; both or none.
    std::string series;
    std::string value;
    /// comma, semicolon or tab. Default: what the header row shows.
    std::string delimiter;
    /// auto, none, right, top, left or bottom. Default: auto.
    std::string legend;
    /// Lengths with a unit. Default: 6in by 3.5in.
    std::string width;
    std::string height;
    std::string altText;
    /// Whether an empty cell shows as a gap; otherwise it is refused.
    bool gaps = false;
    bool noWorkbook = false;
};

/// How the command line (behind "--") and a job file name a member of ChartJob.
struct JobOption {
    const char* name;
    std::variant<std::string ChartJob::*, std::vector<std::string> ChartJob::*, bool ChartJob::*> member;
    const char* help;
};

inline constexpr std::array<JobOption, 15> jobOptions = {{
    {"type", &ChartJob::type, "bar, column, line or pie (default: column)"},
    {"title", &ChartJob::title, "the chart's title"},
    {"heading", &ChartJob::heading, "a heading above the chart"},
    {"colors", &ChartJob::colors,
     "a colour for each series (each slice of a pie): names, #rrggbb or rgb(r,g,b)"},
    {"category", &ChartJob::category, "the column of category names (default: the first)"},
    {"columns", &ChartJob::columns, "the columns that become series (default: the others that hold numbers)"},
    {"series", &ChartJob::series, "long table: the column of series names"},
    {"value", &ChartJob::value, "long table: the column of values"},
    {"delimiter", &ChartJob::delimiter, "comma, semicolon or tab (default: what the header row shows)"},
    {"legend", &ChartJob::legend, "auto, none, right, top, left or bottom (default: auto)"},
    {"width", &ChartJob::width, "a length in cm, mm, in or pt (default: 6in)"},
    {"height", &ChartJob::height, "a length in cm, mm, in or pt (default: 3.5in)"},
    {"alt-text", &ChartJob::altText, "what a screen reader says (default: made from the data)"},
    {"gaps", &ChartJob::gaps, "show empty cells as gaps instead of refusing them"},
    {"no-workbook", &ChartJob::noWorkbook, "leave out the workbook that makes the data editable"},
}};

/// Splits at commas that stand outside parentheses: "red,rgb(1,2,3)" gives two. Blanks around an item are
/// dropped.
std::vector<std::string> splitList(const std::string& text);

}  // namespace quillon::report
