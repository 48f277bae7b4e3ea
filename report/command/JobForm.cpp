#include "report/command/JobForm.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <set>

#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/JsonText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Kind = Form::Kind;

JsonNode::Kind getJsonKind(Kind kind)
{
    switch (kind) {
        case Kind::Text:
        case Kind::Path:
            return JsonNode::Kind::Text;
        case Kind::Flag:
            return JsonNode::Kind::Flag;
        case Kind::Number:
        case Kind::Integer:
            return JsonNode::Kind::Number;
        case Kind::List:
            return JsonNode::Kind::List;
        default:
            return JsonNode::Kind::Object;
    }
}

const Form* findAlternative(const Form& form, const JsonNode& node);

bool accepts(const Form& form, const JsonNode& node)
{
    if (form.kind != Kind::Any) return node.is(getJsonKind(form.kind));
    return findAlternative(form, node) != nullptr;
}

/// The first that accepts the value; null when none does.
const Form* findAlternative(const Form& form, const JsonNode& node)
{
    for (const auto* one : form.alternatives)
        if (accepts(*one, node)) return one;
    return nullptr;
}

/// Whether a text is filled in later, as {{region}} is.
bool isFilledIn(const std::string& text)
{
    return text.find("{{") != std::string::npos;
}

class Checker {
 public:
    explicit Checker(const std::filesystem::path& folder) : folder_(folder) {}

    /// `label` names the value in sentences, as in "\"gap\": "; empty where the position says enough.
    void check(const JsonNode& node, const Form& form, const std::string& label);
    std::vector<Problem> takeProblems();

 private:
    /// What holds for all values of the form's kind; the form accepts this one.
    void checkKind(const JsonNode& node, const Form& form, const std::string& label);
    void add(std::size_t position, const std::string& sentence) { problems_.push_back({position, sentence}); }
    void checkText(const JsonNode& node, const Form& form, const std::string& label);
    void checkPath(const JsonNode& node, const std::string& label);
    void checkNumber(const JsonNode& node, const Form& form, const std::string& label);
    void checkTexts(const JsonNode& node);
    void checkMembers(const JsonNode& node, const Form& form, const std::string& label);
    void checkNames(const JsonNode& node, const Form& form);
    void checkChoice(const JsonNode& node, const Form& form, const std::string& label);

    const std::filesystem::path& folder_;
    std::vector<Problem> problems_;
};

void Checker::check(const JsonNode& node, const Form& form, const std::string& label)
{
    if (!accepts(form, node)) return add(node.position, label + "expected " + form.what + ".");
    const auto before = problems_.size();
    checkKind(node, form, label);
    if (!form.check || problems_.size() > before) return;
    try {
        form.check(node);
    } catch (const std::runtime_error& error) {
        add(node.position, label + error.what());
    }
}

void Checker::checkKind(const JsonNode& node, const Form& form, const std::string& label)
{
    switch (form.kind) {
        case Kind::Text:
            return checkText(node, form, label);
        case Kind::Path:
            return checkPath(node, label);
        case Kind::Flag:
            return;
        case Kind::Number:
        case Kind::Integer:
            return checkNumber(node, form, label);
        case Kind::Texts:
            return checkTexts(node);
        case Kind::List:
            for (const auto& item : node.items) check(item, *form.items, label);
            return;
        case Kind::Object:
            return checkMembers(node, form, label);
        case Kind::Any:
            return check(node, *findAlternative(form, node), label);
        case Kind::Choice:
            return checkChoice(node, form, label);
    }
}

void Checker::checkText(const JsonNode& node, const Form& form, const std::string& label)
{
    if (form.choices.empty() || isFilledIn(node.text)) return;
    const auto isMeant = [&](const std::string& choice) {
        return form.ignoresCase ? toLower(choice) == toLower(node.text) : choice == node.text;
    };
    if (std::any_of(form.choices.begin(), form.choices.end(), isMeant)) return;
    add(node.position, fmt::format("{}expected {}, got {}{}", label, joinNames(form.choices),
                                   quoteText(node.text), suggestName(node.text, form.choices)));
}

void Checker::checkPath(const JsonNode& node, const std::string& label)
{
    if (node.text == "-" || isFilledIn(node.text)) return;
    const auto refuse = [&](const std::string& reason) {
        add(node.position, fmt::format("{}cannot read {}: {}.", label, quoteText(node.text, 200), reason));
    };
    if (node.text.find('\0') != std::string::npos) return refuse("a path holds no null characters");
    const auto path = folder_ / node.text;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return refuse("it is a folder");
    if (!std::ifstream(path)) refuse(std::strerror(errno));
}

void Checker::checkNumber(const JsonNode& node, const Form& form, const std::string& label)
{
    const bool isWhole = form.kind != Kind::Integer || node.number == std::floor(node.number);
    if (isWhole && node.number >= form.minimum && node.number <= form.maximum) return;
    add(node.position, fmt::format("{}expected {}, got {}.", label, form.what, node.number));
}

void Checker::checkTexts(const JsonNode& node)
{
    std::set<std::string> names;
    for (const auto& [name, position, value] : node.members) {
        if (!names.insert(name).second) add(position, quoteText(name) + ": the member is there twice.");
        if (!value.is(JsonNode::Kind::Text)) add(value.position, quoteText(name) + ": expected a text.");
    }
}

void Checker::checkMembers(const JsonNode& node, const Form& form, const std::string& label)
{
    checkNames(node, form);
    for (const auto& member : form.members) {
        const auto* value = node.find(member.name);
        if (value != nullptr)
            check(*value, *member.form, quoteText(member.name) + ": ");
        else if (member.isRequired)
            add(node.position,
                fmt::format("{}expected a member {}, {}.", label, quoteText(member.name), member.form->what));
    }
}

/// The names that an object may have; the first ones of many.
std::string listMembers(std::vector<std::string> known)
{
    constexpr std::size_t most = 20;
    if (known.size() <= most) return "; the members are " + joinNames(known) + ".";
    const auto further = known.size() - most;
    known.resize(most);
    return fmt::format("; the members are {} and {} more, which quillon-report --help lists.",
                       join(known, ", "), further);
}

void Checker::checkNames(const JsonNode& node, const Form& form)
{
    std::vector<std::string> known;
    for (const auto& member : form.members) known.push_back(member.name);
    std::set<std::string> names;
    for (const auto& member : node.members) {
        const auto quoted = quoteText(member.name);
        if (!names.insert(member.name).second)
            add(member.position, quoted + ": the member is there twice.");
        else if (std::find(known.begin(), known.end(), member.name) == known.end()) {
            const auto near = suggestName(member.name, known);
            const auto list = near == "." ? listMembers(known) : near;
            add(member.position, fmt::format("{}: unknown member{}", quoted, list));
        }
    }
}

void Checker::checkChoice(const JsonNode& node, const Form& form, const std::string& label)
{
    std::vector<std::string> names;
    for (const auto* one : form.alternatives) {
        names.push_back(one->members.front().name);
        if (node.find(names.back()) != nullptr) return check(node, *one, label);
    }
    for (const auto& member : node.members)
        if (const auto near = findNearName(member.name, names); !near.empty())
            return add(member.position, fmt::format("{}: unknown member; did you mean {}?",
                                                    quoteText(member.name), quoteText(near)));
    add(node.position, label + "expected a member " + joinNames(names) + ".");
}

std::vector<Problem> Checker::takeProblems()
{
    std::stable_sort(problems_.begin(), problems_.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return std::move(problems_);
}

}  // namespace

std::vector<Problem> findProblems(const JsonNode& node, const Form& form, const std::filesystem::path& folder)
{
    Checker checker(folder);
    checker.check(node, form, "");
    return checker.takeProblems();
}

void requireNoProblems(const std::vector<Problem>& problems, const JobText& source)
{
    constexpr std::size_t most = 50;
    const auto& [text, name] = source;
    std::string lines;
    for (std::size_t i = 0; i < std::min(problems.size(), most); ++i)
        lines += (i == 0 ? "" : "\n") + describePosition(text, name, problems[i].position) + ": " +
                 problems[i].sentence;
    if (problems.size() > most) lines += fmt::format("\n{}: and {} more.", name, problems.size() - most);
    if (!lines.empty()) throw std::runtime_error(lines);
}

}  // namespace quillon::report
