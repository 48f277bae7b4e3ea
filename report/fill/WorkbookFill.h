#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "report/fill/CellBlock.h"
#include "report/package/Package.h"
#include "support/Export.h"

namespace quillon::report {

class WorkbookMarkup;

/// A workbook with new numbers.
struct FilledWorkbook {
    /// Of the .xlsx file; empty when the workbook could not be updated.
    std::string bytes;
    /// As they were given, with the references that the chart is to have now.
    std::vector<SeriesCells> series;
    /// Why the workbook could not be updated: "cell B2 holds a formula".
    std::string reason;
};

/// Reads a workbook, or has read it already. Throws: std::runtime_error when the file is no workbook.
using ReadWorkbook = std::function<std::shared_ptr<const WorkbookMarkup>()>;

/// Changes the cells of a chart where they stand; tables, names and filters grow or shrink with them, and all
/// else stays. `series` are those that the chart has from now on, in its order; `removed` those that it had,
/// whose cells are emptied. Series behind a removed one move up into its cells.
QUILLON_EXPORT FilledWorkbook fillWorkbook(const ReadWorkbook& read, std::vector<SeriesCells> series,
                                           const std::vector<SeriesCells>& removed = {});

/// A new workbook with the cells of a chart, whatever references they have: sheet "Sheet1", categories from
/// A2, names from B1, values from B2 down.
QUILLON_EXPORT FilledWorkbook makeFilledWorkbook(std::vector<SeriesCells> series);

/// How a chart part has its workbook.
enum class WorkbookState { Updated, Replaced, Made };

/// What became of the workbook behind a chart part.
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
/// document. `read` is given the name of its part.
QUILLON_EXPORT WorkbookChange
updateWorkbook(Package& document, const std::string& chartPart, const std::string& relationshipId,
               std::vector<SeriesCells> series, const std::vector<SeriesCells>& removed,
               const std::function<std::shared_ptr<const WorkbookMarkup>(const std::string&)>& read);

}  // namespace quillon::report
