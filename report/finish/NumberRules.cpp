#include <array>

#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

void setFormat(DOMElement* axis, const std::string& format, const char* option)
{
    auto* numbers = findChild(axis, u"c:numFmt");
    numbers->setAttribute(u"formatCode", readXmlText(format, option).c_str());
    numbers->setAttribute(u"sourceLinked", u"0");
}

void formatValueAxis(ChartPart& part)
{
    setFormat(part.axes.value, chooseAxisFormat(part), "number-format");
}

/// A format of texts would show nothing.
void formatCategoryAxis(ChartPart& part)
{
    const auto& data = part.context.data;
    if (data.categoryFormat.empty()) return;
    if (data.categoryValues.empty())
        return part.warn("", "category-format is for categories that are dates or numbers; these are texts.");
    setFormat(part.axes.category, data.categoryFormat, "category-format");
}

/// Without a format of its own a series stays General, as its cells.
void formatCaches(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto& format = part.context.data.getDetails(series.index).numberFormat;
        if (format.empty()) continue;
        for (auto* values : {u"c:val", u"c:yVal"})
            if (auto* code = findPath(series.element, {values, u"c:numRef", u"c:numCache", u"c:formatCode"}))
                code->setTextContent(readXmlText(format, "number-format").c_str());
    }
}

constexpr std::array rules = {Rule{allKinds, formatCaches}, Rule{axisKinds, formatValueAxis},
                              Rule{axisKinds, formatCategoryAxis}};

}  // namespace

const std::span<const Rule> numberRules = rules;

}  // namespace quillon::report
