#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/Export.h"

namespace quillon::report {

/// A rectangle of cells, by 0-based numbers, both ends included.
struct Area {
    std::uint32_t top = 0;
    std::uint32_t left = 0;
    std::uint32_t bottom = 0;
    std::uint32_t right = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the check mistakes the 0 that an ordering is compared with.
    auto operator<=>(const Area& other) const = default;
    std::uint32_t getHeight() const { return bottom - top + 1; }
    std::uint32_t getWidth() const { return right - left + 1; }
    std::uint64_t countCells() const { return std::uint64_t{getHeight()} * getWidth(); }
    bool contains(std::uint32_t row, std::uint32_t column) const
    {
        return row >= top && row <= bottom && column >= left && column <= right;
    }
    bool contains(const Area& other) const
    {
        return contains(other.top, other.left) && contains(other.bottom, other.right);
    }
    bool overlaps(const Area& other) const
    {
        return top <= other.bottom && other.top <= bottom && left <= other.right && other.left <= right;
    }
    /// The smallest area that holds both.
    Area join(const Area& other) const;
};

/// As many as all references of a chart, or a table, may name: each is looked at, and a file names a whole
/// sheet in a few bytes.
constexpr std::uint64_t maximumCells = 1 << 23;

/// "B2:B7" or "$B$2", as in a sheet; a whole column or row reaches to the sheet's end. Nothing when it is
/// none.
std::optional<Area> parseArea(std::string_view text);
/// "B2" or "$B$2".
std::string formatCell(std::uint32_t row, std::uint32_t column, bool isAbsolute = false);
std::string formatArea(const Area& area, bool isAbsolute = false);

/// The cells of a reference, in one sheet.
struct QUILLON_EXPORT CellRange {
    /// As written before the cells: "'Sheet 1'!".
    std::string prefix;
    std::vector<Area> areas;
    bool hasParentheses = false;
    /// Whether values follow each other to the right; otherwise down.
    bool isRow = false;

    bool operator==(const CellRange& other) const { return prefix == other.prefix && areas == other.areas; }
    /// The name of the sheet, without quotes.
    std::string getSheet() const;
    /// How many values there are in a line, and how many lines stand beside each other.
    std::size_t getLength() const;
    std::size_t getLineCount() const;
    /// The range for as many values, at least one: cut, or with its last area continued.
    CellRange resize(std::size_t length) const;
    /// The last `count` lines of an only area.
    CellRange keepLines(std::size_t count) const;
    CellRange shift(std::int64_t rows, std::int64_t columns) const;
    std::string format() const;
};

/// The formula OFFSET(base, rows, columns, height, 1) of one column.
struct CellOffset {
    /// Cells, or a name.
    std::string_view base;
    std::int64_t rows = 0;
    std::int64_t columns = 0;
    /// Whether it says how many rows there are; those of the base otherwise.
    bool hasHeight = false;
};

/// Nothing when `formula` is anything else. The result names its text.
std::optional<CellOffset> parseOffset(std::string_view formula);

/// Nothing when `text` is anything but cells of one sheet.
QUILLON_EXPORT std::optional<CellRange> parseRange(std::string_view text);

}  // namespace quillon::report
