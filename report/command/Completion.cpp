#include "report/command/Completion.h"

#include <fmt/format.h>

#include <set>
#include <vector>

#include "report/command/Verbs.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

std::vector<std::string> listOptions(const Verb& verb)
{
    std::vector<std::string> names;
    for (const auto& argument : verb.getArguments())
        if (!argument.group.empty()) names.push_back("--" + argument.name);
    return names;
}

std::vector<std::string> listVerbs()
{
    std::vector<std::string> names;
    for (const auto& verb : getVerbs().subspan(1)) names.emplace_back(verb.name);
    return names;
}

constexpr auto bashHead = R"text(# Completion of quillon-report for bash.
_quillon_report()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words options choices=""
    # --type=line are three words.
    if [[ $word == "=" ]]; then
        word=""
    elif [[ $before == "=" ]]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
)text";

constexpr auto bashTail = R"text(    esac
    if [[ -n $choices ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word"; compgen -f -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _quillon_report quillon-report
)text";

/// A case for each option that has choices; those that verbs share have the same.
std::string listChoicesInBash()
{
    std::string cases;
    std::set<std::string> known;
    for (const auto& verb : getVerbs())
        for (const auto& argument : verb.getArguments())
            if (!argument.choices.empty() && !argument.group.empty() && known.insert(argument.name).second)
                cases +=
                    fmt::format("    --{}) choices=\"{}\" ;;\n", argument.name, join(argument.choices, " "));
    return cases;
}

std::string completeInBash()
{
    std::string script = bashHead;
    script += fmt::format("    words=\"{}\"\n    case ${{COMP_WORDS[1]}} in\n", join(listVerbs(), " "));
    for (const auto& verb : getVerbs().subspan(1))
        script += fmt::format("    {}) options=\"{}\" ;;\n", verb.name, join(listOptions(verb), " "));
    script += fmt::format("    *) options=\"{}\" ;;\n    esac\n    case $before in\n",
                          join(listOptions(getVerbs().front()), " "));
    return script + listChoicesInBash() + bashTail;
}

/// Text inside the brackets of a description.
std::string escapeZsh(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '\'')
            escaped += "'\\''";
        else
            escaped +=
                c == '[' || c == ']' || c == ':' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
    }
    return escaped;
}

std::string describeInZsh(const Argument& argument)
{
    auto line =
        fmt::format("'*--{}{}[{}]", argument.name, argument.isFlag() ? "" : "=", escapeZsh(argument.help));
    if (!argument.isFlag())
        line += fmt::format(":{}:{}", argument.value,
                            argument.choices.empty() ? "_files" : "(" + join(argument.choices, " ") + ")");
    return line + "'";
}

std::string describeInZsh(const Verb& verb)
{
    std::string lines = "_arguments";
    for (const auto& argument : verb.getArguments())
        if (!argument.group.empty()) lines += " \\\n        " + describeInZsh(argument);
    return lines + " \\\n        '*:file:_files'";
}

std::string completeInZsh()
{
    std::string script =
        "#compdef quillon-report\n# Completion of quillon-report for zsh.\n_quillon_report()\n{\n";
    script +=
        fmt::format("    if ((CURRENT == 2)); then\n        compadd {}\n    fi\n    case $words[2] in\n",
                    join(listVerbs(), " "));
    for (const auto& verb : getVerbs().subspan(1))
        script += fmt::format("    {})\n        {}\n        ;;\n", verb.name, describeInZsh(verb));
    return script + fmt::format("    *)\n        {}\n        ;;\n    esac\n}}\n_quillon_report \"$@\"\n",
                                describeInZsh(getVerbs().front()));
}

}  // namespace

std::string describeCompletion(const std::string& shell)
{
    if (shell == "bash") return completeInBash();
    if (shell == "zsh") return completeInZsh();
    throw UsageError("--completion: expected bash or zsh.");
}

}  // namespace quillon::report
