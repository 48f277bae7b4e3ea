#include "report/command/CommandLine.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

template <typename... Args>
[[noreturn]] void misused(fmt::format_string<Args...> text, Args&&... args)
{
    throw UsageError(fmt::format(text, std::forward<Args>(args)...));
}

/// Whether a word begins an option; a minus alone stands for standard input.
bool isOption(const std::string& word)
{
    return word.size() > 1 && word.front() == '-';
}

}  // namespace

CommandLine::CommandLine(std::span<const Argument> arguments, const std::vector<std::string>& words)
    : arguments_(arguments)
{
    bool areFiles = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto& word = words[i];
        if (areFiles || !isOption(word)) {
            words_.push_back({nullptr, word});
        } else if (word == "--") {
            areFiles = true;
        } else {
            const bool isLong = word[1] == '-';
            const auto equals = isLong ? word.find('=') : std::string::npos;
            const auto& argument = find(isLong ? word.substr(0, equals) : word.substr(0, 2));
            const bool isJoined = isLong ? equals != std::string::npos : word.size() > 2;
            if (argument.isFlag() && isJoined) misused("--{} takes no value.", argument.name);
            if (!argument.isFlag() && !isJoined && i + 1 == words.size())
                misused("--{}: expected a value, {}.", argument.name, argument.value);
            if (argument.isFlag())
                words_.push_back({&argument, {}});
            else if (isJoined)
                words_.push_back({&argument, word.substr(isLong ? equals + 1 : 2)});
            else
                words_.push_back({&argument, takeValue(argument, words[++i])});
        }
    }
    requireOnce();
    requireUtf8();
}

/// A word that is an option is hardly meant as a value, which has been forgotten.
const std::string& CommandLine::takeValue(const Argument& argument, const std::string& word) const
{
    if (findKnown(word.substr(0, word.find('='))) != nullptr)
        misused("--{}: expected a value, {}, got the option {}; --{}={} takes it as a value.", argument.name,
                argument.value, quoteText(word), argument.name, word);
    return word;
}

const Argument* CommandLine::findKnown(const std::string& word) const
{
    for (const auto& argument : arguments_)
        if (word == "--" + argument.name ||
            (argument.letter != 0 && word == std::string{'-', argument.letter}))
            return &argument;
    return nullptr;
}

const Argument& CommandLine::find(const std::string& word) const
{
    if (const auto* known = findKnown(word)) return *known;
    std::vector<std::string> names;
    for (const auto& argument : arguments_)
        if (!argument.group.empty()) names.push_back("--" + argument.name);
    const auto near = findNearName(word, names);
    misused("There is no option {}{}", quoteText(word),
            near.empty() ? std::string(".") : "; did you mean " + near + "?");
}

void CommandLine::requireOnce() const
{
    std::set<const Argument*> forAll;
    std::set<const Argument*> forTable;
    std::string table;
    for (const auto& word : words_) {
        if (word.argument == nullptr) {
            table = word.text;
            forTable.clear();
        } else if (!word.argument->isRepeatable()) {
            auto& given = word.argument->isPerTable() ? forTable : forAll;
            if (given.insert(word.argument).second) continue;
            const bool isForTable = word.argument->isPerTable() && !table.empty();
            misused("--{} is given twice{}; it takes one value.", word.argument->name,
                    isForTable ? " for " + quoteText(table) : "");
        }
    }
}

/// Names of files may be any bytes.
void CommandLine::requireUtf8() const
{
    for (const auto& word : words_) {
        if (word.argument == nullptr || word.argument->value == "FILE") continue;
        try {
            toUtf16(word.text);
        } catch (const std::runtime_error&) {
            throw std::runtime_error(fmt::format("--{}: expected text in UTF-8, got {}.", word.argument->name,
                                                 quoteText(word.text)));
        }
    }
}

bool CommandLine::has(const std::string& name) const
{
    return std::any_of(words_.begin(), words_.end(),
                       [&](const auto& word) { return word.argument && word.argument->name == name; });
}

std::vector<std::string> CommandLine::getAll(const std::string& name) const
{
    std::vector<std::string> values;
    for (const auto& word : words_)
        if (word.argument && word.argument->name == name) values.push_back(word.text);
    return values;
}

std::string CommandLine::get(const std::string& name) const
{
    const auto values = getAll(name);
    return values.empty() ? std::string() : values.back();
}

std::vector<std::string> CommandLine::getFiles() const
{
    std::vector<std::string> files;
    for (const auto& word : words_)
        if (word.argument == nullptr) files.push_back(word.text);
    return files;
}

}  // namespace quillon::report
