#pragma once

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "report/fill/Points.h"
#include "report/options/Nothing.h"
#include "report/package/Package.h"
#include "support/Export.h"

namespace quillon::report {

/// What a cell holds: nothing, a finite number, or a text that is not empty, in the notation of cells.
using CellValue = std::variant<Nothing, double, std::string>;

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

/// A workbook with new numbers.
struct FilledWorkbook {
    /// Of the .xlsx file; empty when the workbook could not be updated.
    std::string bytes;
    /// As they were given, with the references that the chart is to have now.
    std::vector<SeriesCells> series;
    /// Why the workbook could not be updated: "cell B2 holds a formula".
    std::string reason;
};

/// Changes the cells of a chart where they stand; tables, names and filters grow or shrink with them, and all
/// else stays. `series` are those that the chart has from now on, in its order; `removed` those that it had,
/// whose cells are emptied. Series behind a removed one move up into its cells.
QUILLON_EXPORT FilledWorkbook fillWorkbook(const std::string& workbook, std::vector<SeriesCells> series,
                                           const std::vector<SeriesCells>& removed = {});

/// A new workbook with the cells of a chart, whatever references they have: sheet "Sheet1", categories from
/// A2, names from B1, values from B2 down.
QUILLON_EXPORT FilledWorkbook makeFilledWorkbook(std::vector<SeriesCells> series);

/// How a chart part has its workbook.
enum class WorkbookState { Updated, Replaced, Made };

/// Changes the workbook behind a chart part in its document.
struct WorkbookChange {
    WorkbookState state;
    std::vector<SeriesCells> series;
    /// The relationship of the chart part that the chart is to name.
    std::string relationshipId;
    /// A sentence when the workbook is another than before; empty otherwise.
    std::string warning;
};

/// Updates the workbook that the relationship `relationshipId` of `chartPart` leads to; an external one, one
/// that is missing (then the id may be empty) or that cannot be updated gives way to a new one inside the
/// document.
QUILLON_EXPORT WorkbookChange updateWorkbook(Package& document, const std::string& chartPart,
                                             const std::string& relationshipId,
                                             std::vector<SeriesCells> series,
                                             const std::vector<SeriesCells>& removed = {});

}  // namespace quillon::report
