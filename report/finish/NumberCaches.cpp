#include "report/finish/NumberCaches.h"

#include <cmath>

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

xercesc::DOMElement* appendNumbers(xercesc::DOMElement* parent, const std::u16string& cells,
                                   const std::u16string& format, const std::vector<double>& values)
{
    auto* reference = appendElement(parent, u"c:numRef");
    appendTextElement(reference, u"c:f", cells);
    auto* cache = appendElement(reference, u"c:numCache");
    appendTextElement(cache, u"c:formatCode", format.empty() ? u"General" : format);
    appendElement(cache, u"c:ptCount", num2str(static_cast<unsigned long>(values.size())).c_str());
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!std::isfinite(values[i])) continue;
        auto* point = appendElement(cache, u"c:pt");
        point->setAttribute(u"idx", num2str(static_cast<unsigned long>(i)).c_str());
        appendTextElement(point, u"c:v", num2str(values[i]));
    }
    return reference;
}

}  // namespace quillon::report
