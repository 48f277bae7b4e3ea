#pragma once

#include <array>
#include <string>
#include <variant>
#include <vector>

#include "report/options/ChartOptions.h"

namespace quillon::report {

/// One chart that the author asks for: a table, and how to show it. An empty text stands for the default.
struct ChartJob {
    std::string table;
    std::string title;
    std::string heading;
    /// The column of the category names. Default: the first.
    std::string category;
    /// Wide tables: the columns that become series. Default: every other column that holds numbers.
    std::vector<std::string> columns;
    /// Long tables: the columns of the series names and of the values; both or none.
    std::string series;
    std::string value;
    /// comma, semicolon or tab. Default: what the header row shows.
    std::string delimiter;
    /// Whether an empty cell shows as a gap; otherwise it is refused.
    bool gaps = false;
    /// How the chart looks and stands.
    ChartOptions options;
};

/// How the command line (behind "--") and a job file name a member of ChartJob; the options of the chart have
/// a table of their own.
struct JobOption {
    const char* name;
    std::variant<std::string ChartJob::*, std::vector<std::string> ChartJob::*, bool ChartJob::*> member;
    const char* help;
};

inline constexpr std::array<JobOption, 8> jobOptions = {{
    {"title", &ChartJob::title, "the chart's title"},
    {"heading", &ChartJob::heading, "a heading above the chart"},
    {"category", &ChartJob::category, "the column of category names (default: the first)"},
    {"columns", &ChartJob::columns, "the columns that become series (default: the others that hold numbers)"},
    {"series", &ChartJob::series, "long table: the column of series names"},
    {"value", &ChartJob::value, "long table: the column of values"},
    {"delimiter", &ChartJob::delimiter, "comma, semicolon or tab (default: what the header row shows)"},
    {"gaps", &ChartJob::gaps, "show empty cells as gaps instead of refusing them"},
}};

}  // namespace quillon::report
