#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/document/PageMarkup.h"
#include "report/package/Package.h"
#include "report/package/ThemeColors.h"
#include "report/package/XmlSpans.h"

/// What a document takes over from the one that it looks like.
namespace quillon::report {

/// Throws: std::runtime_error that names the file when it cannot serve as a template.
void requireTemplate(const Package& package, const std::string& path);

/// Leaves out what only the text of the document refers to, so that no numbers, pictures or remarks of an
/// earlier report hide in one that looks like it: charts, pictures, comments, footnotes, headers of other
/// sections, the picture of the first page.
void removeText(Package& package);

/// The part that the main part is related to in that way, or nothing.
std::string findRelated(const Package& package, std::string_view kind);
/// What that part holds; empty without one.
std::string readRelated(const std::optional<Package>& package, std::string_view kind);

/// The colours of its theme; those of new documents where there is none that can be read.
ThemeColors readTheme(const Package& package);

/// Between the margins of the pages of a section, a w:sectPr; in English Metric Units.
std::int64_t readTextWidth(const XmlElement& section);
/// The headers and footers of the last section of a w:body, its own or those that it goes on with.
std::vector<PageLineReference> readPageLines(const XmlElement& body);

}  // namespace quillon::report
