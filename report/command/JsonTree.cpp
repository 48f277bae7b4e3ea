#include "report/command/JsonTree.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

using Json = nlohmann::json;

constexpr std::size_t deepest = 100;

/// Hands the text to the parser and counts how much it took: its events come without positions.
class CountingIterator {
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* at, std::size_t* taken) : at_(at), taken_(taken) {}

    reference operator*() const { return *at_; }
    CountingIterator& operator++()
    {
        ++at_;
        ++*taken_;
        return *this;
    }
    CountingIterator operator++(int)
    {
        auto before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return at_ == other.at_; }
    bool operator!=(const CountingIterator& other) const { return at_ != other.at_; }

 private:
    const char* at_;
    std::size_t* taken_;
};

/// Makes the tree of the parser's events. At each the parser has taken the token and no more, but for a
/// number, whose end shows in the character behind it.
class TreeBuilder {
 public:
    TreeBuilder(const std::string& text, const std::string& name, const std::size_t& taken)
        : text_(text), name_(name), taken_(taken)
    {
    }

    JsonNode takeRoot() { return std::move(root_); }

    bool null() { return add(JsonNode(JsonNode::Kind::Null, taken_ - 4)); }
    bool boolean(bool value)
    {
        JsonNode node(JsonNode::Kind::Flag, taken_ - (value ? 4 : 5));
        node.flag = value;
        return add(std::move(node));
    }
    bool number_integer(std::int64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_float(double value, const std::string& /*digits*/) { return addNumber(value); }
    bool string(std::string& value)
    {
        JsonNode node(JsonNode::Kind::Text, findQuote());
        node.text = std::move(value);
        return add(std::move(node));
    }
    static bool binary(const std::vector<std::uint8_t>& /*value*/) { return false; }

    bool start_object(std::size_t /*size*/) { return open(JsonNode::Kind::Object); }
    bool start_array(std::size_t /*size*/) { return open(JsonNode::Kind::List); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(std::string& name)
    {
        open_.back()->members.push_back({std::move(name), findQuote(), JsonNode()});
        return true;
    }

    bool parse_error(std::size_t position, const std::string& token, const Json::exception& error)
    {
        const auto place = describePosition(text_, name_, position > 0 ? position - 1 : 0);
        if (error.id == 406) fail("{}: the number {} is too large.", place, quoteText(token));
        const std::string sentence = error.what();  // "[...] parse error at line 1, column 2: what is wrong"
        const auto colon = sentence.find(": ");
        const auto reason = std::string_view(sentence).substr(colon == std::string::npos ? 0 : colon + 2);
        fail("{}: not well-formed JSON: {}.", place, showText(reason));
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
        JsonNode node(JsonNode::Kind::Number, end);
        node.number = value;
        return add(std::move(node));
    }

    /// The quote that opens the text whose closing one was taken last.
    std::size_t findQuote() const
    {
        for (std::size_t at = taken_ - 1; at-- > 0;) {
            if (text_[at] != '"') continue;
            std::size_t slashes = 0;
            while (slashes < at && text_[at - 1 - slashes] == '\\') ++slashes;
            if (slashes % 2 == 0) return at;
        }
        return 0;
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
        open_.push_back(&place(JsonNode(kind, taken_ - 1)));
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

JsonNode::JsonNode(Kind kindHere, std::size_t positionHere) : kind(kindHere), position(positionHere) {}

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

std::string describePosition(const std::string& text, const std::string& name, std::size_t position)
{
    const auto before = std::string_view(text).substr(0, position);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const auto lineStart = before.rfind('\n') + 1;  // 0 where there is none
    const auto column = std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(),
                                      [](char c) { return (c & 0xC0) != 0x80; }) +
                        1;
    return fmt::format("{}:{}:{}", name, line, column);
}

}  // namespace quillon::report
