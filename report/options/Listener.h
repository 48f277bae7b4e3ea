#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quillon::report {

/// What a caller hears while a document is written. An empty function hears nothing.
struct Listener {
    /// Called after each chart with the number of charts done and of all charts.
    std::function<void(std::size_t done, std::size_t total)> progress = nullptr;
    /// Called with a sentence on something that was replaced, or left out, so that the document stays valid.
    std::function<void(const std::string& sentence)> warning = nullptr;
};

}  // namespace quillon::report
