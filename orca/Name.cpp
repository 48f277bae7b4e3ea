#include "orca/Name.h"

#include <functional>
#include <mutex>
#include <set>

namespace orca::internal {
namespace {

/// Names live as long as the process: values that carry them may outlive every static object.
const std::string& store(std::string_view text)
{
    static auto& mutex = *new std::mutex;
    static auto& names = *new std::set<std::string, std::less<>>;
    const std::lock_guard lock(mutex);
    const auto found = names.find(text);
    return found != names.end() ? *found : *names.emplace(text).first;
}

}  // namespace

const std::string& Name::getText() const
{
    static const auto& none = *new std::string;
    return text_ != nullptr ? *text_ : none;
}

Name makeInterned(std::string_view text)
{
    if (text.empty()) return nullValue;
    // Objects of one class tend to come in a row, so the last name often is the next one.
    thread_local const std::string* last = nullptr;
    if (last == nullptr || *last != text) last = &store(text);
    return Name(last);
}

Name makeInterned(std::string&& text)
{
    return makeInterned(std::string_view(text));
}

}  // namespace orca::internal
