#pragma once

#include <string>
#include <string_view>

namespace quillon::report {

/// Refuses `path` where LibreOffice, which makes PDFs, is missing.
/// Throws: std::runtime_error that says how to install it.
void requirePdf(const std::string& path);

/// The document as LibreOffice prints it. Throws: std::runtime_error with what went wrong.
std::string makePdf(std::string_view document);

}  // namespace quillon::report
