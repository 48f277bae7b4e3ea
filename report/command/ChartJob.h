#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "report/options/ChartOptions.h"
#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// One chart that the author asks for: a table, how to read it, and how to show it. An empty text stands for
/// the default.
struct ChartJob : TableOptions {
    std::string table;
    /// The rows of the table that are shown, where they have been read.
    std::shared_ptr<RowSource> rows;
    std::string title;
    std::string heading;
    /// Of a template: the chart that takes the data, or else the placeholder that becomes a chart.
    std::string fill;
    std::string at;
    /// name or position.
    std::string match;
    /// How the chart looks and stands.
    ChartOptions options;
};

/// What an option is for: charts of new documents, charts that a template has, charts put into a template.
enum class JobUse : unsigned char { New = 1, Fill = 2, Insert = 4, Every = 7 };

/// How the command line (behind "--") and a job file name a member of ChartJob; the options of the chart have
/// a table of their own.
struct JobOption {
    using Member = std::variant<std::string ChartJob::*, std::vector<std::string> ChartJob::*,
                                std::size_t ChartJob::*, bool ChartJob::*>;

    /// On the command line, and in a job file.
    const char* name;
    const char* jobName;
    Member member;
    /// The values that are allowed, parted by "|"; empty: any.
    const char* values;
    const char* help;
    const char* group;
    JobUse use;
    /// The least number.
    unsigned least = 0;

    bool isFor(JobUse wanted) const
    {
        return (static_cast<unsigned>(use) & static_cast<unsigned>(wanted)) != 0;
    }
    /// "a whole number, 1 or more", of a number.
    std::string describeNumber() const;
    /// One word for the value in help.
    const char* getValueName() const;
};

/// The options of the job itself, and behind them the options of the table.
const std::vector<JobOption>& getJobOptions();

/// Sets the option of that name, of the job or of the chart, from the text that an author typed.
/// Throws: std::runtime_error that names the option and says what is allowed.
void setFromText(ChartJob& job, const std::string& name, const std::string& text);

}  // namespace quillon::report
