#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/document/Blocks.h"
#include "report/document/TextMarkup.h"
#include "report/options/Language.h"

namespace quillon::report {

/// Throws: std::runtime_error for a table without columns, a row of another length, widths that are none.
void checkTable(const TextTable& table);

/// What stands in a table.
struct TableTexts {
    /// The header row first.
    std::vector<std::vector<std::string>> rows;
    /// By column: whether it is one of numbers.
    std::vector<bool> isNumeric;
};
TableTexts writeTexts(const TextTable& table, const Language& language);

/// Appends a table. `textWidth`: English Metric Units.
/// Throws: std::runtime_error for a style that is none.
void appendTable(xercesc::DOMElement* body, const TextTable& table, std::int64_t textWidth, TextPlace& place);

}  // namespace quillon::report
