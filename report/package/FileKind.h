#pragma once

#include <string>
#include <string_view>

/// What people take for a document, recognised and named.
namespace quillon::report {

/// Returns the bytes of a zip file. Throws: std::runtime_error that says what the file is instead.
std::string requireZip(std::string bytes);

/// Checks the content type of a main part. Throws: std::runtime_error that says what the package is when it
/// is not a word-processing document.
void requireDocumentType(std::string_view contentType);

}  // namespace quillon::report
