#include "report/command/Messages.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

namespace quillon::report {

void complain(const std::string& sentences)
{
    for (std::size_t at = 0; at <= sentences.size();) {
        const auto end = std::min(sentences.find('\n', at), sentences.size());
        fmt::print(stderr, "quillon-report: {}\n", sentences.substr(at, end - at));
        at = end + 1;
    }
}

std::string describeErrorAsJson(const std::string& sentences)
{
    using Json = nlohmann::json;
    return Json{{"error", sentences}}.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

void warn(const std::string& sentence)
{
    complain("warning: " + sentence);
}

void ProgressLine::clear()
{
    const std::lock_guard lock(mutex_);
    if (shown_) fmt::print(stderr, "\r\033[K");
    shown_ = false;
}

void ProgressLine::show(const std::string& text)
{
    using namespace std::chrono_literals;
    if (isatty(STDERR_FILENO) == 0 || std::chrono::steady_clock::now() - start_ < 1s) return;
    const std::lock_guard lock(mutex_);
    shown_ = true;
    fmt::print(stderr, "\r\033[K{}", text);
    static_cast<void>(std::fflush(stderr));
}

Listener ProgressLine::getListener(const std::string& what)
{
    return {[this, what](std::size_t done, std::size_t total) {
                show(fmt::format("{} {} of {}", what, done, total));
            },
            [this](const std::string& sentence) {
                if (!warnings_.insert(sentence).second) return;
                clear();
                warn(sentence);
            }};
}

}  // namespace quillon::report
