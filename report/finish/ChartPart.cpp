#include "report/finish/ChartPart.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <xercesc/util/XMLString.hpp>

#include "report/finish/SeriesNames.h"
#include "report/finish/Waterfall.h"
#include "report/options/ColorText.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

DOMElement* findGroup(DOMElement* plotArea)
{
    for (const auto* name : {u"c:barChart", u"c:lineChart", u"c:pieChart"})
        if (auto* group = findChild(plotArea, name)) return group;
    throw std::logic_error("The chart part has no group of a known chart type.");
}

bool isAxis(const DOMElement* element, const XMLCh* id)
{
    const auto* own = findChild(element, u"c:axId");
    return findChild(element, u"c:crossAx") != nullptr &&
           xercesc::XMLString::equals(own->getAttribute(u"val"), id);
}

}  // namespace

std::u16string_view getGroupName(const SeriesPart& series)
{
    return static_cast<const DOMElement*>(series.element->getParentNode())->getTagName();
}

Axes findAxes(const DOMElement* group)
{
    Axes axes;
    const auto* plotArea = static_cast<const DOMElement*>(group->getParentNode());
    for (const auto* id : findChildren(group, u"c:axId"))
        for (auto* child = plotArea->getFirstElementChild(); child != nullptr;
             child = child->getNextElementSibling()) {
            if (!isAxis(child, id->getAttribute(u"val"))) continue;
            const bool isValue =
                std::u16string_view(child->getTagName()) == u"c:valAx" && axes.category != nullptr;
            (isValue ? axes.value : axes.category) = child;
        }
    return axes;
}

ChartPart::ChartPart(xercesc::DOMDocument* document, const ChartContext& chartContext)
    : doc(document),
      chartSpace(document->getDocumentElement()),
      chart(findChild(chartSpace, u"c:chart")),
      plotArea(findChild(chart, u"c:plotArea")),
      groups({findGroup(plotArea)}),
      axes(findAxes(groups.front())),
      context(chartContext),
      colors(chartContext)
{
    const auto& dataSet = *context.chart.getDataSet();
    std::size_t index = 0;
    for (auto* element : findChildren(groups.front(), u"c:ser")) {
        series.push_back({element, index, *dataSet.getSeries(index)});
        ++index;
    }
    hidden_ = findHidden();
}

std::vector<bool> ChartPart::findHidden() const
{
    std::vector<bool> hidden(series.size());
    constexpr auto base = static_cast<std::size_t>(WaterfallPart::Base);
    if (context.kind == ChartKind::Waterfall && base < hidden.size()) hidden[base] = true;
    for (const auto index : findSeries(*context.chart.getDataSet(), context.options.hidden, "hidden"))
        hidden[index] = true;
    return hidden;
}

std::size_t ChartPart::getColorPosition(const SeriesPart& part) const
{
    constexpr auto firstBelow = static_cast<std::size_t>(WaterfallPart::IncreaseBelow);
    const bool isBelow = context.kind == ChartKind::Waterfall && part.index >= firstBelow;
    return isBelow ? part.index - firstBelow : part.index;
}

PaintColor ChartPart::getStandardColor(const SeriesPart& part) const
{
    const auto position = getColorPosition(part);
    const auto end = hidden_.begin() + static_cast<std::ptrdiff_t>(position);
    return colors.get(position, static_cast<std::size_t>(std::count(hidden_.begin(), end, true)));
}

unsigned long ChartPart::getColumn(const SeriesPart& part) const
{
    if (context.kind == ChartKind::Waterfall)
        return getFurtherColumn(context.data, part.index, context.workbook);
    return getValueColumn(context.data, part.index, context.workbook);
}

std::string Place::describe() const
{
    std::string text = series == nullptr ? "" : ChartPart::describe(*series);
    const auto add = [&text](const std::string& part) {
        if (part.empty()) return;
        text += (text.empty() ? "" : ", ") + part;
    };
    if (point) add("point " + std::to_string(*point + 1));
    add(what);
    add(detail);
    return text;
}

std::string ChartPart::describe(const SeriesPart& part)
{
    return describe(part.index, part.series);
}

std::string ChartPart::describe(std::size_t index, const chart::DataSeries& series)
{
    return "series " + std::to_string(index + 1) + " (" + quoteText(series.getName()) + ")";
}

void ChartPart::warn(const std::string& place, const std::string& sentence)
{
    const auto text = context.describe(place, sentence);
    if (context.listener.warning && told_.insert(text).second) context.listener.warning(text);
}

void ChartPart::warn(const Place& place, const std::string& sentence)
{
    if (context.listener.warning) warn(place.describe(), sentence);
}

void ChartPart::warnNoColor(const Place& place, const std::u16string& text)
{
    if (context.listener.warning) warn(place, describeNoColor(text) + " The default is used.");
}

}  // namespace quillon::report
