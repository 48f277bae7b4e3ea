#pragma once

#include <vector>

#include "report/fill/SeriesPlan.h"
#include "report/fill/WorkbookFill.h"

namespace quillon::report {

/// Lets series of equal categories have the same cells; categories that differ lose theirs and get others.
void shareCategories(std::vector<SeriesPlan>& series);

/// What the cells of the workbook are to hold, and those whose series has gone.
std::vector<SeriesCells> collectCells(const std::vector<SeriesPlan>& series);
std::vector<SeriesCells> collectRemovedCells(const std::vector<const SeriesMarkup*>& removed);

/// Takes over where the workbook holds the cells, as many as `collectCells` gave.
void takeReferences(std::vector<SeriesPlan>& series, const std::vector<SeriesCells>& cells);

}  // namespace quillon::report
