#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The styles of the cells of a workbook, to which number formats are added.
class CellStyles {
 public:
    /// The part with the styles; null for a workbook without.
    explicit CellStyles(std::shared_ptr<const XmlSpans> styles) : xml_(std::move(styles)) {}

    /// A style like `base`, -1 for none, with a number format, unless that has one already.
    int withFormat(int base, const std::string& numberFormat);
    /// Puts the styles that were added into the workbook.
    void save(Package& workbook) const;

 private:
    int addStyle(int base, const std::string& numberFormat);
    int addFormat(const std::string& numberFormat);

    std::shared_ptr<const XmlSpans> xml_;
    /// The numbers of styles by what they are like and their format, and those of formats by their codes.
    std::map<std::pair<int, std::string>, int> styles_;
    std::map<std::string, int> formats_;
    /// What was added, as markup.
    std::string newStyles_;
    int newStyleCount_ = 0;
    std::string newFormats_;
    int newFormatCount_ = 0;
};

}  // namespace quillon::report
