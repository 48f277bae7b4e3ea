#pragma once

#include "report/table/Sheet.h"

namespace quillon::report {

/// Gives merged cells the meaning that people see in them, within a range of the sheet. A text or date over
/// several rows stands in each of them that holds anything else. Texts over several columns that have names
/// below them, a header of two rows, go in front of these: "2024" over "North" and "South" becomes
/// "2024 North" and "2024 South". A text that begins in the first column is a title, and no part of names.
void resolveMerges(Sheet& sheet, const SheetRange& range);

}  // namespace quillon::report
