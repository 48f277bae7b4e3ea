#include "report/command/TableArguments.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>

#include "report/options/Enumerations.h"
#include "report/options/ListText.h"

namespace quillon::report {
namespace {

constexpr std::array<std::pair<OptionGroup, const char*>, 7> titles = {{
    {OptionGroup::Chart, "The chart"},
    {OptionGroup::Place, "Place"},
    {OptionGroup::Axes, "Axes and numbers"},
    {OptionGroup::Labels, "Labels"},
    {OptionGroup::Series, "Series"},
    {OptionGroup::Trends, "Trends and error bars"},
    {OptionGroup::Look, "Look"},
}};

bool isEvery(ChartKinds kinds)
{
    return std::all_of(kindRows.begin(), kindRows.end(),
                       [kinds](const auto& row) { return kinds.contains(row.value); });
}

std::string describe(const Option& option)
{
    std::string help = option.meaning;
    if (!option.choices.empty()) help += ": " + joinNames(option.choices);
    if (!isEvery(option.kinds)) help += "; for " + describeKinds(option.kinds);
    if (*option.standard != '\0') help += fmt::format(" (default: {})", option.standard);
    return help;
}

bool isList(OptionForm form)
{
    return form == OptionForm::Choices || form == OptionForm::Texts || form == OptionForm::TextPairs;
}

Argument makeArgument(const Option& option)
{
    return {.name = option.name,
            .value = option.form == OptionForm::Flag ? ""
                     : *option.values != '\0'        ? option.values
                                                     : "TEXT",
            .help = describe(option),
            .group = getTitle(option.group),
            .choices = {option.choices.begin(), option.choices.end()},
            .often = isList(option.form) ? Often::RepeatedlyPerTable : Often::OncePerTable};
}

Argument makeArgument(const JobOption& option)
{
    const bool isRepeatable = std::holds_alternative<std::vector<std::string> ChartJob::*>(option.member);
    return {.name = option.name,
            .value = option.getValueName(),
            .help = option.help,
            .group = option.group,
            .choices = splitValues(option.values),
            .often = isRepeatable ? Often::RepeatedlyPerTable : Often::OncePerTable};
}

/// The texts of options; what is given repeatedly adds up to one list.
using Texts = std::map<const Argument*, std::string>;

void addText(Texts& texts, const CommandLine::Word& word)
{
    const auto [place, isNew] = texts.emplace(word.argument, word.text);
    if (!isNew) place->second += "," + word.text;
}

}  // namespace

const char* getTitle(OptionGroup group)
{
    for (const auto& [value, title] : titles)
        if (value == group) return title;
    return "";
}

std::vector<Argument> makeTableArguments(JobUse use)
{
    std::vector<Argument> arguments;
    for (const auto& option : getJobOptions())
        if (option.isFor(use)) arguments.push_back(makeArgument(option));
    for (const auto& option : getOptions()) arguments.push_back(makeArgument(option));
    return arguments;
}

std::vector<ChartJob> readTables(const CommandLine& commandLine, std::size_t skipped)
{
    std::vector<std::string> tables;
    std::vector<Texts> texts(1);
    for (const auto& word : commandLine.getWords()) {
        if (word.argument == nullptr && skipped > 0) {
            --skipped;
        } else if (word.argument == nullptr) {
            tables.push_back(word.text);
            texts.emplace_back();
        } else if (word.argument->isPerTable()) {
            addText(texts.back(), word);
        }
    }
    std::vector<ChartJob> jobs(tables.size());
    for (std::size_t i = 0; i < tables.size(); ++i) {
        auto& own = texts[i + 1];
        own.insert(texts.front().begin(), texts.front().end());
        jobs[i].table = tables[i];
        for (const auto& [argument, text] : own) setFromText(jobs[i], argument->name, text);
    }
    return jobs;
}

}  // namespace quillon::report
