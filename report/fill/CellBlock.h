#pragma once

#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "report/fill/Points.h"
#include "report/options/Nothing.h"
#include "support/Export.h"

namespace quillon::report {

/// What a cell holds: nothing, a finite number, or a text that is not empty, in the notation of cells.
using CellValue = std::variant<Nothing, double, std::string>;

inline bool isNothing(const CellValue& value)
{
    return std::holds_alternative<Nothing>(value);
}

/// What cells hold one after the other.
class QUILLON_EXPORT CellLine {
 public:
    explicit CellLine(std::shared_ptr<const Points> points) : points_(std::move(points)) {}
    explicit CellLine(std::string text)
        : CellLine(std::make_shared<Points>(Points{.areText = true, .texts = {std::move(text)}}))
    {
    }

    std::size_t getSize() const { return points_->getSize(); }
    /// Nothing for a missing point, and past the end.
    CellValue get(std::size_t index) const;
    bool isNumber(std::size_t index) const
    {
        return index < points_->numbers.size() && std::isfinite(points_->numbers[index]);
    }
    bool operator==(const CellLine& other) const
    {
        return points_ == other.points_ || *points_ == *other.points_;
    }

 private:
    /// Series share what they have in common.
    std::shared_ptr<const Points> points_;
};

/// The cells that one reference of a chart names, and what they are to hold.
struct CellBlock {
    /// As the chart writes it: "'Sheet 1'!$B$2:$B$7", "(Sheet1!$B$2,Sheet1!$B$4)", "Sheet1!$B:$B", "Sales" or
    /// "Table1[North]". Empty where there are no cells yet; filling puts them beside those of the others.
    std::string reference = {};
    /// One value after the other; several lines for the levels of categories, the outermost first.
    std::vector<CellLine> lines = {};
    /// For cells that have no format of their own, "mmm yy". Empty: none.
    std::string numberFormat = {};
};

/// The cells of a series. What the chart holds as literals, or does without, is nothing.
struct SeriesCells {
    std::optional<CellBlock> name = {};
    std::optional<CellBlock> categories = {};
    std::optional<CellBlock> values = {};
    /// Sizes of bubbles, amounts of error bars: as many for each series.
    std::vector<CellBlock> more = {};
};

constexpr std::size_t nameBlock = 0;
constexpr std::size_t categoriesBlock = 1;
constexpr std::size_t valuesBlock = 2;

/// The blocks of a series in a fixed order: name, categories, values, more; null where it has none.
std::vector<CellBlock*> getBlocks(SeriesCells& series);

}  // namespace quillon::report
