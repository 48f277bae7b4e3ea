#pragma once

#include <string>
#include <string_view>

#include "support/Export.h"

namespace orca::internal {

/// The name of a class or type, stored once per process: names are equal when they are the same string.
class Name {
 public:
    constexpr Name() = default;

    /// Empty for the null name.
    QUILLON_EXPORT const std::string& getText() const;
    explicit operator bool() const { return text_ != nullptr; }
    friend bool operator==(Name, Name) = default;

 private:
    friend Name makeInterned(std::string_view text);
    explicit constexpr Name(const std::string* text) : text_(text) {}

    const std::string* text_ = nullptr;
};

/// The name of whatever has none.
inline constexpr Name nullValue;

/// The one name with this text; the null name for an empty one. May be called from several threads.
QUILLON_EXPORT Name makeInterned(std::string_view text);
QUILLON_EXPORT Name makeInterned(std::string&& text);
inline Name makeInterned(const char* text)
{
    return makeInterned(std::string_view(text));
}

/// The last part of a full name: "Title" for "quillon.chart.Title".
constexpr std::string_view shortName(std::string_view fullName)
{
    return fullName.substr(fullName.rfind('.') + 1);
}

}  // namespace orca::internal
