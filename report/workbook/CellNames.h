#pragma once

#include <string>

namespace quillon::report {

/// "Sheet1!$B$1": the cell with the name of the column of that 0-based number.
std::u16string getNameCell(unsigned long column);

/// "Sheet1!$B$2:$B$4": the cells below it, `count` of them; the first alone where there are none.
std::u16string getCellRange(unsigned long column, unsigned long count);

}  // namespace quillon::report
