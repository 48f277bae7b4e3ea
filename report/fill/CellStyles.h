#pragma once

#include <map>
#include <string>
#include <utility>

#include "report/package/Package.h"

namespace quillon::report {

/// The styles of the cells of a workbook, to which number formats are added.
class CellStyles {
 public:
    explicit CellStyles(Package& workbook);
    /// A style like `base`, -1 for none, with a number format, unless that has one already.
    int withFormat(int base, const std::string& numberFormat);

 private:
    int addFormat(int base, const std::string& numberFormat);

    Package& workbook_;
    /// Empty for a workbook without styles.
    std::string part_;
    std::map<std::pair<int, std::string>, int> made_;
};

}  // namespace quillon::report
