#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace quillon::report {

/// The number that the text is, from its first character to its last: digits, with a minus and, of a
/// `double`, with a point and an exponent. Nothing for another text, and for a number beyond the type.
template <typename Number>
std::optional<Number> readPlainNumber(std::string_view text)
{
    Number number = 0;
    const auto* const behind = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), behind, number);
    if (error != std::errc() || end != behind) return {};
    return number;
}

}  // namespace quillon::report
