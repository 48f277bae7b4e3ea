#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quillon::report {

/// A chart of a document, as Template::getCharts lists it. Texts are UTF-8.
struct FoundChart {
    /// From 1, in reading order.
    std::size_t number = 0;
    /// As in the word processor's list of drawings: "Chart 1".
    std::string name = {};
    /// The alternative text.
    std::string altText = {};
    std::string title = {};
    /// The kinds of its groups: "column", "line", "3-D pie" ...
    std::vector<std::string> types = {};
    /// The names of its series.
    std::vector<std::string> series = {};
    /// Of the longest series.
    std::size_t points = 0;
    /// "body", "header, table" ...
    std::string place = {};
    /// Why it cannot be filled; empty when it can.
    std::string problem = {};
};

}  // namespace quillon::report
