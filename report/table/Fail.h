#pragma once

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

namespace quillon::report {

/// Throws a std::runtime_error with a sentence for the author.
template <typename... Args>
[[noreturn]] void fail(fmt::format_string<Args...> text, Args&&... args)
{
    throw std::runtime_error(fmt::format(text, std::forward<Args>(args)...));
}

}  // namespace quillon::report
