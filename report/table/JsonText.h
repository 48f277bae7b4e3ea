#pragma once

#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// Places in a JSON text that is parsed by events, which come without positions.
namespace quillon::report {

/// Hands a text to the parser and counts how much it took.
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

/// "job.json:3:12", for a position in the text; columns count characters, from 1.
std::string describePosition(std::string_view text, const std::string& name, std::size_t position);

/// The quote that opens the text whose closing one is the last character that was taken.
std::size_t findOpeningQuote(std::string_view text, std::size_t taken);

/// Says where and why the text is refused by the parser, which took `taken` of it.
/// Throws: std::runtime_error.
[[noreturn]] void failParsing(std::string_view text, const std::string& name, std::size_t taken,
                              const std::string& token, const nlohmann::detail::exception& error);

}  // namespace quillon::report
