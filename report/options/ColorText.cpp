#include "report/options/ColorText.h"

#include "chart/model/Color.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {

std::optional<std::u16string> findColorDigits(const std::u16string& text)
{
    const auto digits = text.substr(text.starts_with(u'#') ? 1 : 0);
    if (digits.size() == 6 && digits.find_first_not_of(u"0123456789abcdefABCDEF") == std::u16string::npos)
        return toUpperString(digits);
    if (chart::isRgbColorString(text) || chart::findNamedColor(toLowerString(text)) != nullptr)
        return chart::Color(text).toHexString();
    return std::nullopt;
}

std::string describeNoColor(std::u16string_view text)
{
    return quoteText(text) +
           " is not a colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up to 255.";
}

}  // namespace quillon::report
