#include <array>
#include <cmath>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/finish/TextBody.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// The light grey of the axes.
void drawPaleLine(DOMElement* line)
{
    auto* color = drawThinLine(line);
    appendElement(color, u"a:lumMod", u"15000");
    appendElement(color, u"a:lumOff", u"85000");
}

/// A word processor frames a chart that says nothing of its outline.
void frameChart(ChartPart& part)
{
    replaceInOrder(part.chartSpace, u"c:roundedCorners", u"0");
    auto* line = appendElement(insertInOrder(part.chartSpace, u"c:spPr"), u"a:ln");
    if (part.context.options.frame)
        drawPaleLine(line);
    else
        appendElement(line, u"a:noFill");
}

void addDataTable(ChartPart& part)
{
    if (!part.context.options.dataTable) return;
    auto* table = insertInOrder(part.plotArea, u"c:dTable");
    for (const auto* what : {u"c:showHorzBorder", u"c:showVertBorder", u"c:showOutline", u"c:showKeys"})
        appendElement(table, what, u"1");
    drawPaleLine(appendElement(appendElement(table, u"c:spPr"), u"a:ln"));
}

/// What has no text properties of its own takes these: legend, labels, data table, units.
void setSizeOfTexts(ChartPart& part)
{
    fillTextProperties(insertInOrder(part.chartSpace, u"c:txPr"));
}

bool isInTitle(const ChartPart& part, const xercesc::DOMNode* node)
{
    while (node != part.chart && node->getParentNode() != part.chart) {
        node = node->getParentNode();
        if (node == part.chartSpace) return false;
    }
    return std::u16string_view(node->getNodeName()) == u"c:title";
}

void setFont(DOMElement* properties, const std::u16string& font)
{
    for (const auto* script : {u"a:latin", u"a:ea", u"a:cs"}) {
        auto* face = findChild(properties, script);
        if (face == nullptr) face = appendElement(properties, script);
        face->setAttribute(u"typeface", font.c_str());
    }
}

/// Of all text properties, whoever wrote them.
void setFonts(ChartPart& part)
{
    const auto font = readXmlText(part.context.options.font, "font");
    const auto& size = part.context.options.fontSize;
    if (font.empty() && !size) return;
    constexpr double titleFactor = 1.5;
    const auto* all = part.doc->getElementsByTagName(u"a:defRPr");
    for (XMLSize_t i = 0; i < all->getLength(); ++i) {
        auto* properties = static_cast<DOMElement*>(all->item(i));
        if (!font.empty()) setFont(properties, font);
        if (!size) continue;
        const double points = isInTitle(part, properties) ? *size * titleFactor : *size;
        properties->setAttribute(u"sz",
                                 num2str(static_cast<unsigned long>(std::lround(points * 100))).c_str());
    }
}

constexpr std::array rules = {Rule{allKinds, frameChart}, Rule{axisKinds, addDataTable},
                              Rule{allKinds, setSizeOfTexts}, Rule{allKinds, setFonts}};

}  // namespace

const std::span<const Rule> lookRules = rules;

}  // namespace quillon::report
