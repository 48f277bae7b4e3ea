#pragma once

#include <optional>
#include <string>

#include "report/fill/CellWrites.h"
#include "report/fill/SheetMarkup.h"
#include "report/package/Archive.h"
#include "report/package/Edits.h"

namespace quillon::report {

/// The part of a worksheet with all that was written to its cells, the area that it uses now, and changes to
/// what stands behind the rows. What stays is copied up to where something changes. Packed as it is written:
/// a second text of that size would be the largest thing in memory. Nothing when the part stays as it is,
/// `bytes`.
std::optional<PackedBytes> packSheet(const std::string& bytes, const SheetMarkup& sheet,
                                     const CellWrites& writes, Edits& behind);

}  // namespace quillon::report
