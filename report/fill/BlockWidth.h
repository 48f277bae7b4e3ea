#pragma once

#include <cstdint>

#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The width in English Metric Units that a paragraph has for its content: that of its column, cell or text
/// box, without its indentation. `main` is the root of the main part, which knows the page.
std::int64_t findBlockWidth(const XmlElement& paragraph, const XmlElement& main);

/// The first element of that name in or below another one.
XmlElement findInside(const XmlElement& element, Ns ns, std::string_view name);

/// The value of an attribute as a whole number; `otherwise` when there is none.
std::int64_t readInteger(const XmlElement& element, Ns ns, std::string_view name, std::int64_t otherwise);

}  // namespace quillon::report
