#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/OptionChecks.h"
#include "report/options/Options.h"
#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Texts = std::vector<std::string>;
using TextPairs = std::vector<std::pair<std::string, std::string>>;

[[noreturn]] void refuse(const std::string& name, const std::string& sentence)
{
    throw std::runtime_error(name + ": " + sentence);
}

std::string toText(double number)
{
    return toUtf8(num2str(number));
}

std::string describeNumber(const Option& option)
{
    const std::string what = option.form == OptionForm::Integer ? "a whole number" : "a number";
    if (std::isfinite(option.maximum))
        return what + " from " + toText(option.minimum) + " to " + toText(option.maximum);
    return option.minimum > 0 ? what + " above 0" : what;
}

bool isChoice(const Option& option, const std::string& text)
{
    return std::any_of(option.choices.begin(), option.choices.end(),
                       [&text](const char* choice) { return text == choice; });
}

void requireChoice(const Option& option, const std::string& text, const std::string& name)
{
    if (!isChoice(option, text))
        refuse(name, "expected " + joinNames(option.choices) + ", got " + quoteText(text) +
                         suggestName(text, {option.choices.begin(), option.choices.end()}));
}

/// Spells a choice as the table does, whatever its capitals.
void spellChoice(const Option& option, std::string& text)
{
    for (const auto* choice : option.choices)
        if (toLower(choice) == toLower(text)) text = choice;
}

OptionValue spellChoices(const Option& option, OptionValue value)
{
    if (auto* text = std::get_if<std::string>(&value)) spellChoice(option, *text);
    if (auto* texts = std::get_if<Texts>(&value))
        for (auto& text : *texts) spellChoice(option, text);
    return value;
}

void requireNumber(const Option& option, double number, const std::string& name)
{
    const bool isWhole = option.form != OptionForm::Integer || number == std::floor(number);
    if (!std::isfinite(number) || !isWhole || number < option.minimum || number > option.maximum)
        refuse(name, "expected " + describeNumber(option) + ", got " + toText(number) + ".");
}

bool hasForm(OptionForm form, const OptionValue& value)
{
    switch (form) {
        case OptionForm::Flag:
            return std::holds_alternative<bool>(value);
        case OptionForm::Number:
        case OptionForm::Integer:
            return std::holds_alternative<double>(value);
        case OptionForm::Text:
        case OptionForm::Choice:
            return std::holds_alternative<std::string>(value);
        case OptionForm::Choices:
        case OptionForm::Texts:
            return std::holds_alternative<Texts>(value);
        case OptionForm::TextPairs:
            return std::holds_alternative<TextPairs>(value);
    }
    return false;
}

void checkValue(const Option& option, const OptionValue& value, const std::string& name)
{
    if (!hasForm(option.form, value)) refuse(name, "expected " + describeForm(option) + ".");
    if (const auto* number = std::get_if<double>(&value)) requireNumber(option, *number, name);
    if (option.form == OptionForm::Choice) requireChoice(option, std::get<std::string>(value), name);
    if (option.form == OptionForm::Choices)
        for (const auto& text : std::get<Texts>(value)) requireChoice(option, text, name);
    try {
        option.check(value);
    } catch (const std::runtime_error& error) {
        refuse(name, error.what());
    }
}

double readNumber(const Option& option, const std::string& text, const std::string& name)
{
    const auto number = readPlainNumber<double>(text);
    if (!number) refuse(name, "expected " + describeNumber(option) + ", got " + quoteText(text) + ".");
    return *number;
}

TextPairs readPairs(const std::string& text, const std::string& name)
{
    TextPairs pairs;
    for (const auto& item : splitList(text)) {
        const auto equals = item.rfind('=');
        if (equals == std::string::npos)
            refuse(name, "expected pairs, as in North=red, got " + quoteText(item) + ".");
        pairs.emplace_back(item.substr(0, equals), item.substr(equals + 1));
    }
    return pairs;
}

}  // namespace

std::string describeForm(const Option& option)
{
    switch (option.form) {
        case OptionForm::Flag:
            return "true or false";
        case OptionForm::Number:
        case OptionForm::Integer:
            return describeNumber(option);
        case OptionForm::Choice:
            return joinNames(option.choices);
        case OptionForm::Choices:
            return "a list of " + joinNames(option.choices);
        case OptionForm::Texts:
            return "a list of texts";
        case OptionForm::TextPairs:
            return "pairs, as in North=red";
        case OptionForm::Text:
            break;
    }
    return "a text";
}

std::string describeKinds(ChartKinds kinds)
{
    std::vector<const char*> names;
    std::vector<const char*> others;
    for (const auto& row : kindRows) (kinds.contains(row.value) ? names : others).push_back(row.name);
    if (others.empty()) return "every type of chart";
    return others.size() < names.size() ? "charts other than " + joinNames(others)
                                        : joinNames(names) + " charts";
}

OptionValue readOptionText(const Option& option, const std::string& text, const std::string& name)
{
    switch (option.form) {
        case OptionForm::Flag:
            return true;
        case OptionForm::Number:
        case OptionForm::Integer:
            return readNumber(option, text, name);
        case OptionForm::Choices:
        case OptionForm::Texts:
            return splitList(text);
        case OptionForm::TextPairs:
            return readPairs(text, name);
        case OptionForm::Text:
        case OptionForm::Choice:
            break;
    }
    return text;
}

void setOption(ChartOptions& options, const Option& option, const OptionValue& value, const std::string& name)
{
    const auto spelled = spellChoices(option, value);
    checkValue(option, spelled, name);
    option.set(options, spelled);
}

void checkOptions(const ChartOptions& options, ChartKind kind)
{
    static const ChartOptions standard;
    for (const auto& option : getOptions()) {
        const auto value = option.get(options);
        if (value == option.get(standard)) continue;
        checkValue(option, value, option.name);
        if (!option.kinds.contains(kind))
            throw ChartError("", std::string(option.name) + " is for " + describeKinds(option.kinds) +
                                     "; this is " + (kind == ChartKind::Area ? "an " : "a ") +
                                     findRow(kindRows, kind).name + " chart.");
    }
    checkTogether(options, kind);
}

}  // namespace quillon::report
