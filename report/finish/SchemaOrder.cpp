#include "report/finish/SchemaOrder.h"

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Xml.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// The children that an element may have, in their order, without the prefix "c:".
struct Order {
    std::u16string_view parent;
    std::u16string_view children;
};

// clang-format off: rows of names.
/// As the schema dml-chart.xsd has them.
constexpr Order orders[] = {
    {u"c:chartSpace",
     u"date1904 lang roundedCorners style clrMapOvr pivotSource protection chart spPr txPr externalData "
     u"printSettings userShapes extLst"},
    {u"c:chart",
     u"title autoTitleDeleted pivotFmts view3D floor sideWall backWall plotArea legend plotVisOnly "
     u"dispBlanksAs showDLblsOverMax extLst"},
    {u"c:plotArea",
     u"layout areaChart area3DChart lineChart line3DChart stockChart radarChart scatterChart pieChart "
     u"pie3DChart doughnutChart barChart bar3DChart ofPieChart surfaceChart surface3DChart bubbleChart "
     u"valAx catAx dateAx serAx dTable spPr extLst"},
    {u"c:barChart", u"barDir grouping varyColors ser dLbls gapWidth overlap serLines axId extLst"},
    {u"c:lineChart",
     u"grouping varyColors ser dLbls dropLines hiLowLines upDownBars marker smooth axId extLst"},
    {u"c:pieChart", u"varyColors ser dLbls firstSliceAng extLst"},
    {u"c:areaChart", u"grouping varyColors ser dLbls dropLines axId extLst"},
    {u"c:doughnutChart", u"varyColors ser dLbls firstSliceAng holeSize extLst"},
    {u"c:scatterChart", u"scatterStyle varyColors ser dLbls axId extLst"},
    {u"c:bubbleChart",
     u"varyColors ser dLbls bubble3D bubbleScale showNegBubbles sizeRepresents axId extLst"},
    {u"c:radarChart", u"radarStyle varyColors ser dLbls axId extLst"},
    {u"c:stockChart", u"ser dLbls dropLines hiLowLines upDownBars axId extLst"},
    {u"c:catAx",
     u"axId scaling delete axPos majorGridlines minorGridlines title numFmt majorTickMark minorTickMark "
     u"tickLblPos spPr txPr crossAx crosses crossesAt auto lblAlgn lblOffset tickLblSkip tickMarkSkip "
     u"noMultiLvlLbl extLst"},
    {u"c:valAx",
     u"axId scaling delete axPos majorGridlines minorGridlines title numFmt majorTickMark minorTickMark "
     u"tickLblPos spPr txPr crossAx crosses crossesAt crossBetween majorUnit minorUnit dispUnits extLst"},
    {u"c:dateAx",
     u"axId scaling delete axPos majorGridlines minorGridlines title numFmt majorTickMark minorTickMark "
     u"tickLblPos spPr txPr crossAx crosses crossesAt auto lblOffset baseTimeUnit majorUnit majorTimeUnit "
     u"minorUnit minorTimeUnit extLst"},
    {u"c:scaling", u"logBase orientation max min extLst"},
    {u"c:dLbls",
     u"dLbl delete numFmt spPr txPr dLblPos showLegendKey showVal showCatName showSerName showPercent "
     u"showBubbleSize separator showLeaderLines leaderLines extLst"},
    {u"c:dLbl",
     u"idx delete layout tx numFmt spPr txPr dLblPos showLegendKey showVal showCatName showSerName "
     u"showPercent showBubbleSize separator extLst"},
    {u"c:dPt", u"idx invertIfNegative marker bubble3D explosion spPr pictureOptions extLst"},
    {u"c:title", u"tx layout overlay spPr txPr extLst"},
    {u"c:legend", u"legendPos legendEntry layout overlay spPr txPr extLst"},
    {u"c:trendline",
     u"name spPr trendlineType order period forward backward intercept dispRSqr dispEq trendlineLbl extLst"},
    {u"c:errBars", u"errDir errBarType errValType noEndCap plus minus val spPr extLst"},
    {u"c:marker", u"symbol size spPr extLst"},
    {u"c:dTable", u"showHorzBorder showVertBorder showOutline showKeys spPr txPr extLst"},
    {u"c:dispUnits", u"custUnit builtInUnit dispUnitsLbl extLst"},
    {u"a:ln",
     u"noFill solidFill gradFill pattFill prstDash custDash round bevel miter headEnd tailEnd extLst"},
    {u"c:spPr",
     u"xfrm custGeom prstGeom noFill solidFill gradFill blipFill pattFill grpFill ln effectLst effectDag "
     u"scene3d sp3d extLst"},
};

/// The same for c:ser, by the group that it stands in.
constexpr Order seriesOrders[] = {
    {u"c:barChart",
     u"idx order tx spPr invertIfNegative pictureOptions dPt dLbls trendline errBars cat val shape extLst"},
    {u"c:lineChart", u"idx order tx spPr marker dPt dLbls trendline errBars cat val smooth extLst"},
    {u"c:stockChart", u"idx order tx spPr marker dPt dLbls trendline errBars cat val smooth extLst"},
    {u"c:pieChart", u"idx order tx spPr explosion dPt dLbls cat val extLst"},
    {u"c:doughnutChart", u"idx order tx spPr explosion dPt dLbls cat val extLst"},
    {u"c:areaChart", u"idx order tx spPr pictureOptions dPt dLbls trendline errBars cat val extLst"},
    {u"c:scatterChart", u"idx order tx spPr marker dPt dLbls trendline errBars xVal yVal smooth extLst"},
    {u"c:bubbleChart",
     u"idx order tx spPr invertIfNegative dPt dLbls trendline errBars xVal yVal bubbleSize bubble3D extLst"},
    {u"c:radarChart", u"idx order tx spPr marker dPt dLbls cat val extLst"},
};
// clang-format on

const Order& findOrder(const DOMElement* parent)
{
    const std::u16string_view name = parent->getTagName();
    if (name == u"c:ser") {
        const std::u16string_view group =
            static_cast<const DOMElement*>(parent->getParentNode())->getTagName();
        for (const auto& order : seriesOrders)
            if (order.parent == group) return order;
    }
    for (const auto& order : orders)
        if (order.parent == name) return order;
    throw std::logic_error("The order of the elements in " + std::string(name.begin(), name.end()) +
                           " is not known.");
}

std::u16string_view getLocalName(const DOMElement* element)
{
    const std::u16string_view name = element->getTagName();
    return name.substr(name.find(u':') + 1);
}

/// Where `name` stands in the list of words; the end of the list for one that is not in it.
std::size_t findPosition(std::u16string_view words, std::u16string_view name)
{
    for (std::size_t at = words.find(name); at != std::u16string_view::npos; at = words.find(name, at + 1)) {
        const auto end = at + name.size();
        if ((at == 0 || words[at - 1] == u' ') && (end == words.size() || words[end] == u' ')) return at;
    }
    return words.size();
}

}  // namespace

DOMElement* insertInOrder(DOMElement* parent, DOMElement* child)
{
    const auto words = findOrder(parent).children;
    const auto position = findPosition(words, getLocalName(child));
    auto* previous = parent->getLastElementChild();
    while (previous != nullptr && findPosition(words, getLocalName(previous)) > position)
        previous = previous->getPreviousElementSibling();
    parent->insertBefore(child, previous == nullptr ? parent->getFirstChild() : previous->getNextSibling());
    return child;
}

DOMElement* insertInOrder(DOMElement* parent, const char16_t* name)
{
    return insertInOrder(parent, parent->getOwnerDocument()->createElement(name));
}

DOMElement* insertInOrder(DOMElement* parent, const char16_t* name, const char16_t* val)
{
    auto* child = insertInOrder(parent, name);
    child->setAttribute(u"val", val);
    return child;
}

void putInOrder(DOMElement* parent)
{
    const auto words = findOrder(parent).children;
    std::vector<DOMElement*> misplaced;
    std::size_t last = 0;
    for (auto* child = parent->getFirstElementChild(); child != nullptr;) {
        auto* next = child->getNextElementSibling();
        const auto position = findPosition(words, getLocalName(child));
        if (position == words.size())
            parent->removeChild(child)->release();
        else if (position < last)
            misplaced.push_back(static_cast<DOMElement*>(parent->removeChild(child)));
        else
            last = position;
        child = next;
    }
    for (auto* child : misplaced) insertInOrder(parent, child);
}

DOMElement* replaceInOrder(DOMElement* parent, const char16_t* name, const char16_t* val)
{
    for (auto* child = parent->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (std::u16string_view(child->getTagName()) == name) {
            replaceAttribute(child, u"val", val);
            return child;
        }
    return insertInOrder(parent, name, val);
}

}  // namespace quillon::report
