#include <array>

#include "report/finish/AltText.h"
#include "report/finish/Rules.h"
#include "report/options/Enumerations.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// Without the wrapper nothing is drawn.
void wrapInDrawing(Drawing& drawing)
{
    auto* wrapper = drawing.run->getOwnerDocument()->createElement(u"w:drawing");
    drawing.run->replaceChild(wrapper, drawing.inlineDrawing);
    wrapper->appendChild(drawing.inlineDrawing);
}

void nameEffectExtent(Drawing& drawing)
{
    auto* writers = findChild(drawing.inlineDrawing, u"wp:effectiveExtent");
    drawing.run->getOwnerDocument()->renameNode(writers, nullptr, u"wp:effectExtent");
}

void setSize(Drawing& drawing)
{
    const auto& options = drawing.context.options;
    auto* extent = findChild(drawing.inlineDrawing, u"wp:extent");
    for (const auto& [name, length] : {std::pair(u"cx", options.width), std::pair(u"cy", options.height)})
        replaceAttribute(extent, name, num2str(static_cast<unsigned long>(parseLength(length))).c_str());
}

void describe(Drawing& drawing)
{
    const auto given = readXmlText(drawing.context.options.altText, "alternative text");
    findChild(drawing.inlineDrawing, u"wp:docPr")
        ->setAttribute(u"descr", (given.empty() ? makeAltText(drawing.context) : given).c_str());
}

DOMElement* appendPosition(DOMElement* anchor, const char16_t* name, const char16_t* relativeTo)
{
    auto* position = appendElement(anchor, name);
    position->setAttribute(u"relativeFrom", relativeTo);
    return position;
}

void setAttributes(DOMElement* element,
                   std::initializer_list<std::pair<const char16_t*, const char16_t*>> attributes)
{
    for (const auto& [name, value] : attributes) element->setAttribute(name, value);
}

/// At the side of the text's column, and no higher than the paragraph that holds it.
void appendPlace(DOMElement* anchor, Float side)
{
    setAttributes(appendElement(anchor, u"wp:simplePos"), {{u"x", u"0"}, {u"y", u"0"}});
    auto* across = appendPosition(anchor, u"wp:positionH", u"column");
    appendTextElement(across, u"wp:align", findRow(floatRows, side).token);
    auto* down = appendPosition(anchor, u"wp:positionV", u"paragraph");
    appendTextElement(down, u"wp:posOffset", u"0");
}

/// Text flows around a chart that floats: an anchor holds what the inline drawing did.
void anchorAtSide(Drawing& drawing)
{
    const auto& side = drawing.context.options.floating;
    if (!side) return;
    auto* anchor = drawing.run->getOwnerDocument()->createElement(u"wp:anchor");
    // An eighth of an inch to the text at its sides.
    setAttributes(anchor, {{u"distT", u"0"},
                           {u"distB", u"0"},
                           {u"distL", u"114300"},
                           {u"distR", u"114300"},
                           {u"simplePos", u"0"},
                           {u"relativeHeight", u"251658240"},
                           {u"behindDoc", u"0"},
                           {u"locked", u"0"},
                           {u"layoutInCell", u"1"},
                           {u"allowOverlap", u"0"}});
    appendPlace(anchor, *side);
    while (auto* child = drawing.inlineDrawing->getFirstChild()) anchor->appendChild(child);
    auto* wrap = drawing.run->getOwnerDocument()->createElement(u"wp:wrapSquare");
    wrap->setAttribute(u"wrapText", u"bothSides");
    insertAfter(anchor, wrap, findChild(anchor, u"wp:effectExtent"));
    drawing.inlineDrawing->getParentNode()->replaceChild(anchor, drawing.inlineDrawing)->release();
    drawing.inlineDrawing = anchor;
}

constexpr std::array<DrawingRule, 5> rules = {wrapInDrawing, nameEffectExtent, setSize, describe,
                                              anchorAtSide};

}  // namespace

const std::span<const DrawingRule> drawingRules = rules;

}  // namespace quillon::report
