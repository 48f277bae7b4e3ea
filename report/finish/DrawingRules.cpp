#include <array>

#include "report/finish/AltText.h"
#include "report/finish/Rules.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
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
    auto* named = drawing.run->getOwnerDocument()->createElement(u"wp:effectExtent");
    for (const auto* side : {u"l", u"t", u"r", u"b"}) named->setAttribute(side, u"0");
    auto* writers = findChild(drawing.inlineDrawing, u"wp:effectiveExtent");
    drawing.inlineDrawing->replaceChild(named, writers)->release();
}

void setSize(Drawing& drawing)
{
    const auto& options = drawing.context.options;
    auto* extent = findChild(drawing.inlineDrawing, u"wp:extent");
    for (const auto& [name, length] : {std::pair(u"cx", options.width), std::pair(u"cy", options.height)})
        extent->setAttribute(name, num2str(static_cast<unsigned long>(parseLength(length))).c_str());
}

void describe(Drawing& drawing)
{
    const auto given = readXmlText(drawing.context.options.altText, "alternative text");
    findChild(drawing.inlineDrawing, u"wp:docPr")
        ->setAttribute(u"descr", (given.empty() ? makeAltText(drawing.context) : given).c_str());
}

constexpr std::array<DrawingRule, 4> rules = {wrapInDrawing, nameEffectExtent, setSize, describe};

}  // namespace

const std::span<const DrawingRule> drawingRules = rules;

}  // namespace quillon::report
