#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The text of a string item, in a cell or shared by several, without what is written above it.
std::string readStringItem(std::string_view text, Span markup);

/// The texts that cells of a workbook share, by their positions.
class WorkbookStrings {
 public:
    /// Empty for a workbook that shares none. The caller keeps the workbook.
    explicit WorkbookStrings(const Package& workbook);

    std::size_t getSize() const { return items_.size(); }
    /// In UTF-8.
    std::string getText(std::size_t position) const;
    /// Takes those texts out of the workbook, or a copy of it, of which `isLeft` says so by position. The
    /// others keep their positions.
    void remove(Package& workbook, const std::vector<bool>& isLeft) const;

 private:
    void readItems();

    /// Null without one.
    std::unique_ptr<const XmlSpans> xml_;
    /// What stands in the items.
    std::vector<Span> items_;
};

}  // namespace quillon::report
