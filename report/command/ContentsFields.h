#pragma once

#include <string>

namespace quillon::report {

/// The bytes of a document whose tables of contents are text, in which the numbers of pages are fields of
/// their own. LibreOffice leaves a table of contents as it finds it when it makes a PDF, and updates fields
/// that stand outside of one. Throws: std::runtime_error for a document that cannot be read.
std::string freePageNumbers(std::string document);

}  // namespace quillon::report
