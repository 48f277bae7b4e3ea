#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "report/options/ChartOptions.h"
#include "report/options/Nothing.h"
#include "support/Export.h"

/// The one table of the options of a chart. The command line, job files, Python's keywords, messages and the
/// documentation follow from it.
namespace quillon::report {

/// What an option is about; help and documentation are divided so.
enum class OptionGroup : std::uint8_t { Chart, Place, Axes, Labels, Series, Trends, Look };

/// How people write the value of an option.
enum class OptionForm : std::uint8_t { Flag, Number, Integer, Text, Choice, Choices, Texts, TextPairs };

/// The value of an option, whoever wrote it; nothing for one that is not given. A choice is its name.
using OptionValue = std::variant<Nothing, bool, double, std::string, std::vector<std::string>,
                                 std::vector<std::pair<std::string, std::string>>>;

struct Option {
    /// As on the command line after "--", and in a job file; Python has "_" for "-".
    const char* name;
    OptionGroup group;
    /// The kinds of chart that it is for.
    ChartKinds kinds;
    OptionForm form;
    /// The names of a choice, in order.
    std::span<const char* const> choices;
    /// What they mean, in the same order.
    std::span<const char* const> choiceMeanings;
    /// The range of a number, both ends included.
    double minimum;
    double maximum;
    /// What stands for the value in help: "a length", "hundreds, thousands ...".
    const char* values;
    /// One line that a report author understands.
    const char* meaning;
    /// What holds where it is not given; empty when that goes without saying.
    const char* standard;
    /// Throws: std::runtime_error that says what is allowed.
    void (*check)(const OptionValue& value);
    OptionValue (*get)(const ChartOptions& options);
    /// Requires: a value of the option's form.
    void (*set)(ChartOptions& options, const OptionValue& value);
};

/// All options, in the order of their groups.
QUILLON_EXPORT std::span<const Option> getOptions();

/// The option of that name, or null.
QUILLON_EXPORT const Option* findOption(std::string_view name);

/// The values of an option: "true or false", "a number from 0 to 100", "low, next, high or none" ...
QUILLON_EXPORT std::string describeForm(const Option& option);

/// "every type of chart", "line or area charts", "charts other than pie or doughnut".
QUILLON_EXPORT std::string describeKinds(ChartKinds kinds);

/// The value in the text that an author typed: items of a list have commas between, pairs "name=text".
/// Throws: std::runtime_error for text that is not a value of the option; `name` is the option's in the
/// message.
QUILLON_EXPORT OptionValue readOptionText(const Option& option, const std::string& text,
                                          const std::string& name);

/// Sets an option. Throws: std::runtime_error that names the option as `name` and says what is allowed.
QUILLON_EXPORT void setOption(ChartOptions& options, const Option& option, const OptionValue& value,
                              const std::string& name);

/// Refuses options that do not suit the kind of chart, and values out of range.
/// Throws: ChartError that names the option and says what is allowed.
QUILLON_EXPORT void checkOptions(const ChartOptions& options, ChartKind kind);

}  // namespace quillon::report
