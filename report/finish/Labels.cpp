#include "report/finish/Labels.h"

#include "report/finish/SchemaOrder.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

const char16_t* toText(bool flag)
{
    return flag ? u"1" : u"0";
}

/// All flags are written: readers take a missing one as true.
void setContent(DOMElement* label, const LabelSettings& settings)
{
    if (!settings.numberFormat.empty()) {
        auto* format = insertInOrder(label, u"c:numFmt");
        format->setAttribute(u"formatCode", settings.numberFormat.c_str());
        format->setAttribute(u"sourceLinked", u"0");
    }
    if (settings.shape.fill.isSet() || settings.shape.border.isSet())
        setShape(insertInOrder(label, u"c:spPr"), settings.shape);
    if (settings.textColor != TextColor::Grey)
        fillTextProperties(insertInOrder(label, u"c:txPr"), settings.textColor);
    if (settings.position)
        insertInOrder(label, u"c:dLblPos", findRow(labelPositionRows, *settings.position).token);
    insertInOrder(label, u"c:showLegendKey", toText(settings.legendKey));
    insertInOrder(label, u"c:showVal", toText(settings.value));
    insertInOrder(label, u"c:showCatName", toText(settings.category));
    insertInOrder(label, u"c:showSerName", toText(settings.series));
    insertInOrder(label, u"c:showPercent", toText(settings.percent));
    insertInOrder(label, u"c:showBubbleSize", u"0");
    if (settings.separator != nullptr)
        insertInOrder(label, u"c:separator")->setTextContent(settings.separator);
}

/// Outside pies, leader lines came later than the elements of charts.
void addLeaderLinesExtension(DOMElement* labels)
{
    auto* extension = appendElement(insertInOrder(labels, u"c:extLst"), u"c:ext");
    extension->setAttribute(u"uri", u"{CE6537A1-D6FC-4f65-9D91-7224C49458BB}");
    extension->setAttribute(u"xmlns:c15", u"http://schemas.microsoft.com/office/drawing/2012/chart");
    appendElement(extension, u"c15:showLeaderLines", u"1");
}

void removeAllButPoints(DOMElement* labels)
{
    for (auto* child = labels->getFirstElementChild(); child != nullptr;) {
        auto* next = child->getNextElementSibling();
        if (std::u16string_view(child->getTagName()) != u"c:dLbl") labels->removeChild(child)->release();
        child = next;
    }
}

/// The last label of a point before that one, or null; one of the point itself is removed. Labels stand in
/// the order of their points, in front of all else.
DOMElement* findLastLabel(DOMElement* labels, std::size_t point)
{
    auto* label = labels->getLastElementChild();
    while (label != nullptr) {
        auto* previous = label->getPreviousElementSibling();
        const bool isLabel = std::u16string_view(label->getTagName()) == u"c:dLbl";
        const auto index = isLabel ? str2uint(findChild(label, u"c:idx")->getAttribute(u"val")) : 0;
        if (isLabel && index < point) return label;
        if (isLabel && index == point) labels->removeChild(label)->release();
        label = previous;
    }
    return nullptr;
}

}  // namespace

DOMElement* setLabels(const SeriesPart& series, const LabelSettings& settings)
{
    auto* labels = findChild(series.element, u"c:dLbls");
    if (labels == nullptr)
        labels = insertInOrder(series.element, u"c:dLbls");
    else
        removeAllButPoints(labels);
    const bool isPie = hasSlices(series);
    setContent(labels, settings);
    insertInOrder(labels, u"c:showLeaderLines", toText(settings.leaderLines && isPie));
    if (settings.leaderLines && !isPie) addLeaderLinesExtension(labels);
    return labels;
}

DOMElement* setPointLabel(DOMElement* labels, std::size_t point, const LabelSettings& settings)
{
    auto* label = labels->getOwnerDocument()->createElement(u"c:dLbl");
    insertAfter(labels, label, findLastLabel(labels, point));
    appendElement(label, u"c:idx", num2str(static_cast<unsigned long>(point)).c_str());
    setContent(label, settings);
    return label;
}

}  // namespace quillon::report
