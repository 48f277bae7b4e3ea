#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quillon::report {

/// How new series, and new categories, find the old ones whose look they take.
enum class Match : std::uint8_t {
    /// By name; what is left over by position.
    Name,
    Position
};

/// What a fill is told beyond the data.
struct FillOptions {
    Match match = Match::Name;
    /// Of the chart. Default, empty: it stays.
    std::string title = {};
    /// Of the values, as in a cell of a worksheet: "0.0%". Default, empty: each series keeps its own.
    std::string numberFormat = {};
};

/// How a table in a document shows numbers, as a cell of a worksheet does: "0.0%". Empty: as the data says.
struct TableFormats {
    std::string numberFormat = {};
    /// Of categories that are dates or numbers.
    std::string categoryFormat = {};
};

/// What a fill changed in a chart. Texts are UTF-8.
struct FillReport {
    enum class Change : std::uint8_t { Matched, Renamed, Added, Removed };

    struct Series {
        Change change;
        /// Its name now; that it had for a series that was removed.
        std::string name;
        /// The name it had, where it was renamed; where it was added, that of the series whose look it took.
        std::string before;
    };

    /// The chart's number in the document.
    std::size_t number = 0;
    /// What it was asked for by; where that is its number, its title, or else its name in the document.
    std::string chart;
    /// In the order of the data, then what was removed.
    std::vector<Series> series;
    std::size_t pointsBefore = 0;
    std::size_t pointsAfter = 0;
    /// Sentences on what an author ought to know.
    std::vector<std::string> warnings;

    std::size_t count(Change change) const
    {
        std::size_t found = 0;
        for (const auto& row : series) found += row.change == change ? 1 : 0;
        return found;
    }
};

}  // namespace quillon::report
