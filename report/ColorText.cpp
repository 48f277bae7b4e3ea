#include "report/ColorText.h"

#include "chart/model/Color.h"
#include "support/Text.h"

namespace quillon::report {

bool isColorText(const std::u16string& text)
{
    if (text.starts_with(u'#'))
        return text.size() == 7 &&
               text.find_first_not_of(u"0123456789abcdefABCDEF", 1) == std::u16string::npos;
    return chart::isRgbColorString(text) || chart::findNamedColor(toLowerString(text)) != nullptr;
}

}  // namespace quillon::report
