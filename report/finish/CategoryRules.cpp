#include <array>
#include <unordered_set>

#include "report/finish/CategoryValues.h"
#include "report/finish/NumberCaches.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/SeriesNumbers.h"
#include "report/finish/ShownChart.h"
#include "report/finish/Waterfall.h"
#include "report/package/Xml.h"
#include "report/workbook/CellNames.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

DOMElement* makeCategoryNumbers(const ChartPart& part)
{
    const auto& data = part.context.data;
    const auto column = getCategoryColumn(data);
    auto* holder = part.doc->createElement(u"c:cat");
    appendNumbers(holder, getCellRange(column, data.categoryValues.size()),
                  readXmlText(getCategoryFormat(data), "category-format"), data.categoryValues);
    return holder;
}

void appendLevel(DOMElement* cache, const std::vector<std::u16string>& texts)
{
    auto* level = appendElement(cache, u"c:lvl");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].empty()) continue;
        auto* point = appendElement(level, u"c:pt");
        point->setAttribute(u"idx", num2str(static_cast<unsigned long>(i)).c_str());
        appendTextElement(point, u"c:v", escapeCharacters(texts[i]));
    }
}

/// The innermost level comes first.
DOMElement* makeLevels(const ChartPart& part)
{
    const auto& data = part.context.data;
    const auto& categories = data.dataSet->getCategories();
    auto* holder = part.doc->createElement(u"c:cat");
    auto* reference = appendElement(holder, u"c:multiLvlStrRef");
    appendTextElement(reference, u"c:f",
                      u"Sheet1!$A$2:$" + getColumnLetters(getCategoryColumn(data)) + u"$" +
                          num2str(static_cast<unsigned long>(categories.size() + 1)));
    auto* cache = appendElement(reference, u"c:multiLvlStrCache");
    appendElement(cache, u"c:ptCount", num2str(static_cast<unsigned long>(categories.size())).c_str());
    appendLevel(cache, categories);
    std::for_each(data.levels.rbegin(), data.levels.rend(),
                  [cache](const auto& level) { appendLevel(cache, level); });
    return holder;
}

void replaceCategories(const ChartPart& part, DOMElement* categories)
{
    for (const auto& series : part.series)
        series.element->replaceChild(categories->cloneNode(true), findChild(series.element, u"c:cat"))
            ->release();
    categories->release();
}

void writeCategories(ChartPart& part)
{
    const auto& data = part.context.data;
    if (!data.levels.empty()) return replaceCategories(part, makeLevels(part));
    if (hasCategoryNumbers(data)) replaceCategories(part, makeCategoryNumbers(part));
}

const char16_t* getToken(DateUnit unit)
{
    switch (unit) {
        case DateUnit::Days:
            return u"days";
        case DateUnit::Months:
            return u"months";
        case DateUnit::Years:
            break;
    }
    return u"years";
}

void makeDateAxis(DOMElement* axis, const DateScale& scale)
{
    if (axis == nullptr) return;
    axis->getOwnerDocument()->renameNode(axis, nullptr, u"c:dateAx");
    putInOrder(axis);
    replaceInOrder(axis, u"c:auto", u"0");
    replaceInOrder(axis, u"c:baseTimeUnit", getToken(scale.base));
    replaceInOrder(axis, u"c:majorUnit", num2str(static_cast<unsigned long>(scale.step)).c_str());
    replaceInOrder(axis, u"c:majorTimeUnit", getToken(scale.unit));
}

void makeDateAxes(ChartPart& part)
{
    if (!hasDateAxis(part.context)) return;
    const auto scale = chooseDateScale(part.context.data.categoryValues);
    makeDateAxis(part.axes.category, scale);
    makeDateAxis(part.secondAxes.category, scale);
}

/// X values stand in the place of the categories where all series share them.
void writeX(const ChartPart& part, const SeriesPart& series)
{
    const auto& data = part.context.data;
    const bool isShared = data.categoryKind != CategoryKind::Text;
    const auto column =
        isShared ? getCategoryColumn(data) : getFurtherColumn(data, series.index, part.context.workbook);
    series.element->removeChild(findChild(series.element, u"c:cat"))->release();
    auto* x = insertInOrder(series.element, u"c:xVal");
    appendNumbers(x, getCellRange(column, series.series.getSize()),
                  isShared ? readXmlText(getCategoryFormat(data), "category-format") : u"General",
                  listX(series.series));
}

void placePoints(ChartPart& part)
{
    for (const auto& series : part.series) {
        writeX(part, series);
        part.doc->renameNode(findChild(series.element, u"c:val"), nullptr, u"c:yVal");
        putInOrder(series.element);
    }
}

void sizeBubbles(ChartPart& part)
{
    for (const auto& series : part.series) {
        auto* sizes = insertInOrder(series.element, u"c:bubbleSize");
        const auto& values = part.context.data.getDetails(series.index).sizes;
        appendNumbers(sizes, getCellRange(part.getColumn(series) + 1, values.size()), u"General", values);
        insertInOrder(series.element, u"c:bubble3D", u"0");
    }
}

/// Both axes show numbers; what they say stands at the ends, below all points and left of them.
void makeXAxis(ChartPart& part)
{
    auto* axis = part.axes.category;
    part.doc->renameNode(axis, nullptr, u"c:valAx");
    putInOrder(axis);
    insertInOrder(axis, u"c:crossBetween", u"midCat");
    replaceInOrder(axis, u"c:axPos", u"b");
    replaceInOrder(axis, u"c:tickLblPos", u"low");
    replaceInOrder(part.axes.value, u"c:axPos", u"l");
    replaceInOrder(part.axes.value, u"c:tickLblPos", u"low");
    replaceInOrder(part.axes.value, u"c:crossBetween", u"midCat");
}

void appendName(DOMElement* waterfall, const chart::DataSeries& series, unsigned long column)
{
    auto* name = appendElement(appendElement(waterfall, u"c:tx"), u"c:strRef");
    appendTextElement(name, u"c:f", getNameCell(column));
    auto* cache = appendElement(name, u"c:strCache");
    appendElement(cache, u"c:ptCount", u"1");
    auto* point = appendElement(cache, u"c:pt");
    point->setAttribute(u"idx", u"0");
    appendTextElement(point, u"c:v", escapeCharacters(series.getName()));
}

void appendValues(DOMElement* waterfall, const ChartData& data, unsigned long column)
{
    const auto values = listValues(*data.dataSet->getSeries(0));
    appendNumbers(appendElement(waterfall, u"c:val"), getCellRange(column, values.size()),
                  readXmlText(data.getDetails(0).numberFormat, "number-format"), values);
}

void appendTotals(DOMElement* waterfall, const ChartData& data)
{
    const std::unordered_set<std::u16string_view> totals(data.totals.begin(), data.totals.end());
    const auto& categories = data.dataSet->getCategories();
    for (std::size_t i = 0; i < categories.size(); ++i)
        if (totals.contains(categories[i]))
            appendElement(waterfall, u"q:total", num2str(static_cast<unsigned long>(i)).c_str());
}

/// What tells a waterfall from other stacks, and which series draw no data of their own: the author's series,
/// for whoever reads or fills the chart.
void markWaterfall(ChartPart& part)
{
    constexpr auto base = static_cast<std::size_t>(WaterfallPart::Base);
    if (part.series.size() <= base) return;
    const auto& data = part.context.data;
    const auto column = getValueColumn(data, 0, part.context.workbook);
    auto* extension = appendElement(insertInOrder(part.series[base].element, u"c:extLst"), u"c:ext");
    extension->setAttribute(u"uri", toUtf16(waterfallMark).c_str());
    extension->setAttribute(u"xmlns:q", u"urn:quillon:chart");
    auto* waterfall = appendElement(extension, u"q:waterfall");
    appendName(waterfall, *data.dataSet->getSeries(0), column);
    appendValues(waterfall, data, column);
    appendTotals(waterfall, data);
}

constexpr std::array rules = {
    Rule{allKinds.without(pointKinds), writeCategories},
    Rule{categoryKinds, makeDateAxes},
    Rule{pointKinds, placePoints},
    Rule{ChartKinds(ChartKind::Bubble), sizeBubbles},
    Rule{pointKinds, makeXAxis},
    Rule{ChartKinds(ChartKind::Waterfall), markWaterfall},
};

}  // namespace

const std::span<const Rule> categoryRules = rules;

}  // namespace quillon::report
