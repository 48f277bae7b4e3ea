#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <set>
#include <string>

#include "report/options/Listener.h"

namespace quillon::report {

/// Writes sentences, one a line, to standard error.
void complain(const std::string& sentences);

/// The same for programs: {"error": "..."}.
std::string describeErrorAsJson(const std::string& sentences);

/// Says what the author should know about a document that is written all the same.
void warn(const std::string& sentence);

/// Shows on a terminal how far a work has come that lasts over a second. Several threads may show and clear
/// at once; a listener is for one.
class ProgressLine {
 public:
    ~ProgressLine() { clear(); }

    void clear();
    void show(const std::string& text);
    /// Shows "what 3 of 10", and prints warnings beside it, each once: a chart and a table may read one file.
    Listener getListener(const std::string& what);

 private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    bool shown_ = false;
    std::set<std::string> warnings_;
};

}  // namespace quillon::report
