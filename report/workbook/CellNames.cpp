#include "report/workbook/CellNames.h"

#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

std::u16string getNameCell(unsigned long column)
{
    return u"Sheet1!$" + getColumnLetters(column) + u"$1";
}

std::u16string getCellRange(unsigned long column, unsigned long count)
{
    const auto letters = u"$" + getColumnLetters(column) + u"$";
    const auto first = u"Sheet1!" + letters + u"2";
    return count == 0 ? first : first + u":" + letters + num2str(count + 1);
}

}  // namespace quillon::report
