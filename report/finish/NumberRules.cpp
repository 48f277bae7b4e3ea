#include <array>

#include "report/finish/CategoryValues.h"
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
    replaceAttribute(numbers, u"formatCode", readXmlText(format, option).c_str());
    replaceAttribute(numbers, u"sourceLinked", u"0");
}

void formatValueAxes(ChartPart& part)
{
    setFormat(part.axes.value, chooseAxisFormat(part, getScale(part, ScaleKind::Value)), "number-format");
    if (auto* second = findAxis(part, ScaleKind::Second))
        setFormat(second, chooseAxisFormat(part, getScale(part, ScaleKind::Second)), "second-format");
    if (auto* x = findAxis(part, ScaleKind::X)) setFormat(x, chooseXFormat(part), "x-format");
}

/// Dates that became texts have been formatted.
void formatCategoryAxis(ChartPart& part)
{
    const auto& data = part.context.data;
    if (data.categoryKind == CategoryKind::Date && data.categoryFormat.empty())
        return setFormat(part.axes.category, chooseDateScale(data.categoryValues).format, "category-format");
    if (!data.categoryFormat.empty() && !data.categoryValues.empty())
        setFormat(part.axes.category, data.categoryFormat, "category-format");
}

/// Without a format of its own a series stays General, as its cells.
void formatCaches(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto& format = part.getDetails(series).numberFormat;
        if (format.empty()) continue;
        for (auto* values : {u"c:val", u"c:yVal"})
            if (auto* code = findPath(series.element, {values, u"c:numRef", u"c:numCache", u"c:formatCode"}))
                code->setTextContent(readXmlText(format, "number-format").c_str());
    }
}

constexpr std::array rules = {Rule{allKinds, formatCaches}, Rule{axisKinds, formatValueAxes},
                              Rule{categoryKinds, formatCategoryAxis}};

}  // namespace

const std::span<const Rule> numberRules = rules;

}  // namespace quillon::report
