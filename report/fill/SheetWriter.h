#pragma once

#include <string>

#include "report/fill/CellWrites.h"
#include "report/fill/SheetMarkup.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The part of a worksheet with all that was written to its cells, the area that it uses now, and changes to
/// what stands behind the rows. What stays is copied up to where something changes.
std::string writeSheet(const SheetMarkup& sheet, const CellWrites& writes, Edits& behind);

}  // namespace quillon::report
