#pragma once

#include <cstdint>
#include <xercesc/dom/DOM.hpp>

#include "report/document/Blocks.h"
#include "report/document/TextMarkup.h"

namespace quillon::report {

/// Throws: std::runtime_error for a table without columns, a row of another length, widths that are none.
void checkTable(const TextTable& table);

/// Appends a table. `textWidth`: English Metric Units.
/// Throws: std::runtime_error for a style that is none.
void appendTable(xercesc::DOMElement* body, const TextTable& table, std::int64_t textWidth, TextPlace& place);

}  // namespace quillon::report
