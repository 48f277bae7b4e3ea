#include "report/command/Help.h"

#include <fmt/format.h>

#include <algorithm>

namespace quillon::report {
namespace {

constexpr std::size_t column = 28;
constexpr std::size_t width = 100;

constexpr auto exitStatus =
    "0 when all is done, 1 when a file, its data or the value of an option is refused, 2 when an option is "
    "unknown, missing or out of place.";

std::string getCommand(const Verb& verb)
{
    return *verb.name == '\0' ? "quillon-report" : fmt::format("quillon-report {}", verb.name);
}

/// Text in lines of the page's width; all but the first begin with `indent` blanks.
std::string wrap(const std::string& text, std::size_t indent)
{
    std::string wrapped;
    std::size_t used = indent;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find(' ', at), text.size());
        const auto word = text.substr(at, end - at);
        if (used + word.size() > width && used > indent) {
            wrapped.back() = '\n';
            wrapped += std::string(indent, ' ');
            used = indent;
        }
        wrapped += word + " ";
        used += word.size() + 1;
        at = end + 1;
    }
    wrapped.pop_back();
    return wrapped;
}

std::string nameArgument(const Argument& argument)
{
    const auto letter = argument.letter == 0 ? std::string() : fmt::format("-{}, ", argument.letter);
    return fmt::format("{}--{}{}{}", letter, argument.name, argument.isFlag() ? "" : " ", argument.value);
}

std::string describeArgument(const Argument& argument)
{
    const auto name = "  " + nameArgument(argument);
    const auto gap =
        name.size() + 2 <= column ? std::string(column - name.size(), ' ') : "\n" + std::string(column, ' ');
    return name + gap + wrap(argument.help, column) + "\n";
}

/// Calls `show` for each group of options, in the order in which they come, with its members.
template <typename Show>
void showGroups(const Verb& verb, const Show& show)
{
    std::vector<std::string> groups;
    for (const auto& argument : verb.getArguments())
        if (!argument.group.empty() &&
            std::find(groups.begin(), groups.end(), argument.group) == groups.end())
            groups.push_back(argument.group);
    for (const auto& group : groups) {
        std::vector<const Argument*> members;
        for (const auto& argument : verb.getArguments())
            if (argument.group == group) members.push_back(&argument);
        show(group, members);
    }
}

std::string indentLines(const std::string& text)
{
    std::string indented = "  ";
    for (const char c : text) indented += c == '\n' ? "\n  " : std::string(1, c);
    return indented + "\n";
}

std::string capitalize(std::string text)
{
    if (text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - ('a' - 'A'));
    return text;
}

std::string describeVerbs()
{
    std::string text = "\nVerbs, which come first (a table of that name is written ./list):\n";
    for (const auto& verb : getVerbs().subspan(1))
        text += fmt::format("  {:<{}}{}\n", verb.name, column - 2, verb.summary);
    return text + "  quillon-report VERB --help tells more.\n";
}

/// Text that the formatter of man pages takes as it is.
std::string escapeRoff(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else if ((c == '.' || c == '\'') && (escaped.empty() || escaped.back() == '\n'))
            escaped += std::string("\\&") + c;
        else
            escaped += c;
    }
    return escaped;
}

std::string describeVerbInManPage(const Verb& verb)
{
    auto page =
        fmt::format(".SH {}\n{}.\n.PP\n{}\n", *verb.name == '\0' ? "DOCUMENTS FROM TABLES" : verb.name,
                    escapeRoff(capitalize(verb.summary)), escapeRoff(verb.details));
    showGroups(verb, [&page](const auto& group, const auto& members) {
        page += fmt::format(".SS {}\n", escapeRoff(group));
        for (const auto* argument : members)
            page += fmt::format(".TP\n.B {}\n{}\n", escapeRoff(nameArgument(*argument)),
                                escapeRoff(argument->help));
    });
    return page + ".SS Examples\n.nf\n" + escapeRoff(verb.examples) + "\n.fi\n";
}

}  // namespace

std::string describeVerb(const Verb& verb)
{
    auto text = fmt::format("Usage: {} {}\n\n{}.\n{}\n", getCommand(verb), verb.usage,
                            wrap(capitalize(verb.summary), 0), wrap(verb.details, 0));
    const bool isFirst = *verb.name == '\0';
    if (isFirst) text += describeVerbs();
    showGroups(verb, [&text](const auto& group, const auto& members) {
        text += fmt::format("\n{}:\n", group);
        for (const auto* argument : members) text += describeArgument(*argument);
    });
    text += "\nExamples:\n" + indentLines(verb.examples);
    return text + "\nExit status: " + wrap(exitStatus, 0) + "\n";
}

std::string describeAsManPage()
{
    std::string page = fmt::format(
        ".TH QUILLON\\-REPORT 1 \"\" \"quillon {}\"\n.SH NAME\nquillon\\-report \\- {}\n.SH SYNOPSIS\n",
        QUILLON_VERSION, escapeRoff(getVerbs().front().summary));
    for (const auto& verb : getVerbs())
        page += fmt::format(".B {}\n{}\n.br\n", escapeRoff(getCommand(verb)), escapeRoff(verb.usage));
    for (const auto& verb : getVerbs()) page += describeVerbInManPage(verb);
    return page + ".SH EXIT STATUS\n" + escapeRoff(exitStatus) + "\n";
}

std::string describeVersion()
{
    return std::string("quillon-report ") + QUILLON_VERSION;
}

}  // namespace quillon::report
