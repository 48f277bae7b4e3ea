#pragma once

#include "report/package/Package.h"

namespace quillon::report {

/// Makes text of the tables of contents of a document, in which the numbers of pages are fields of their own.
/// LibreOffice leaves a table of contents as it finds it when it makes a PDF, and updates fields that stand
/// outside of one. Throws: std::runtime_error for a document that cannot be read.
void freePageNumbers(Package& document);

}  // namespace quillon::report
