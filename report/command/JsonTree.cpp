#include "report/command/JsonTree.h"

#include <algorithm>
#include <cstdint>

#include "report/table/Fail.h"
#include "report/table/JsonText.h"

namespace quillon::report {
namespace {

using Json = nlohmann::json;

constexpr std::size_t deepest = 100;

/// Makes the tree of the parser's events. At each the parser has taken the token and no more, but for a
/// number, whose end shows in the character behind it.
class TreeBuilder {
 public:
    TreeBuilder(const std::string& text, const std::string& name, const std::size_t& taken)
        : text_(text), name_(name), taken_(taken)
    {
    }

    JsonNode takeRoot() { return std::move(root_); }

    bool null() { return add({JsonNode::Kind::Null, taken_ - 4}); }
    bool boolean(bool value) { return add({JsonNode::Kind::Flag, taken_ - (value ? 4 : 5), value}); }
    bool number_integer(std::int64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_float(double value, const std::string& /*digits*/) { return addNumber(value); }
    bool string(std::string& value)
    {
        return add({JsonNode::Kind::Text, findOpeningQuote(text_, taken_), false, 0, std::move(value)});
    }
    static bool binary(const std::vector<std::uint8_t>& /*value*/) { return false; }

    bool start_object(std::size_t /*size*/) { return open(JsonNode::Kind::Object); }
    bool start_array(std::size_t /*size*/) { return open(JsonNode::Kind::List); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(std::string& name)
    {
        open_.back()->members.push_back({std::move(name), findOpeningQuote(text_, taken_), {}});
        return true;
    }

    bool parse_error(std::size_t position, const std::string& token, const Json::exception& error)
    {
        failParsing(text_, name_, position, token, error);
    }

 private:
    bool add(JsonNode node)
    {
        place(std::move(node));
        return true;
    }

    bool addNumber(double value)
    {
        auto end = std::min(taken_, text_.size());
        const auto isPart = [](char c) {
            return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
        };
        while (end > 0 && !isPart(text_[end - 1])) --end;
        while (end > 0 && isPart(text_[end - 1])) --end;
        return add({JsonNode::Kind::Number, end, false, value});
    }

    JsonNode& place(JsonNode node)
    {
        if (open_.empty()) return root_ = std::move(node);
        auto& parent = *open_.back();
        if (parent.is(JsonNode::Kind::List)) return parent.items.emplace_back(std::move(node));
        return parent.members.back().value = std::move(node);
    }

    bool open(JsonNode::Kind kind)
    {
        if (open_.size() == deepest)
            fail("{}: more than {} levels of lists and objects.", describePosition(text_, name_, taken_ - 1),
                 deepest);
        open_.push_back(&place({kind, taken_ - 1}));
        return true;
    }

    bool close()
    {
        open_.pop_back();
        return true;
    }

    const std::string& text_;
    const std::string& name_;
    const std::size_t& taken_;
    JsonNode root_;
    /// A value moves only when one is added beside it, and then it is open no longer.
    std::vector<JsonNode*> open_;
};

}  // namespace

const JsonNode* JsonNode::find(std::string_view name) const
{
    for (const auto& member : members)
        if (member.name == name) return &member.value;
    return nullptr;
}

JsonNode parseJson(const std::string& text, const std::string& name)
{
    std::size_t taken = 0;
    TreeBuilder builder(text, name, taken);
    const CountingIterator first(text.data(), &taken);
    const CountingIterator last(text.data() + text.size(), &taken);
    Json::sax_parse(first, last, &builder, Json::input_format_t::json, true, true);
    return builder.takeRoot();
}

}  // namespace quillon::report
