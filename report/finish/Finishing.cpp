#include "report/finish/Finishing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>
#include <stdexcept>
#include <vector>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/options/ColorText.h"
#include "report/package/Xml.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

/// The places in a chart part that the rules work on, and what they know of the chart.
struct ChartPart {
    DOMDocument* doc;
    DOMElement* chartSpace;
    DOMElement* chart;
    /// c:barChart, c:lineChart or c:pieChart.
    DOMElement* group;
    std::vector<DOMElement*> series;
    const FinishingContext& context;

    std::set<std::string> warnings;

    bool isGroup(const char16_t* name) const { return std::u16string_view(group->getTagName()) == name; }
    /// Reports each sentence once; the slices of a pie share their series' format.
    void warn(const std::string& sentence)
    {
        if (warnings.insert(sentence).second && context.warn) context.warn(sentence);
    }
};

DOMElement* findGroup(DOMElement* plotArea)
{
    for (const auto* name : {u"c:barChart", u"c:lineChart", u"c:pieChart"})
        if (auto* group = findChild(plotArea, name)) return group;
    throw std::logic_error("The chart part has no group of a known chart type.");
}

std::string describeSeries(const ChartPart& part, std::size_t index)
{
    const auto series = part.context.chart.getDataSet()->getSeries(index);
    return "chart " + std::to_string(part.context.drawingNumber) + ", series " + std::to_string(index + 1) +
           " (\"" + toUtf8(escapeCharacters(series->getName())) + "\")";
}

/// A pie repeats its first series; a word processor wants it once.
void keepOneSeriesOfPie(ChartPart& part)
{
    if (!part.isGroup(u"c:pieChart")) return;
    while (part.series.size() > 1) {
        part.group->removeChild(part.series.back())->release();
        part.series.pop_back();
    }
}

/// Bars have no marker, and they and their points must say that negative values keep their colour.
void finishBarSeries(ChartPart& part)
{
    if (!part.isGroup(u"c:barChart")) return;
    for (auto* series : part.series) {
        removeChildren(series, u"c:marker");
        auto* invert = findChild(series, u"c:invertIfNegative");
        invert->setAttribute(u"val", u"0");
        insertAfter(series, invert, findChild(series, u"c:spPr"));
        for (auto* point : findChildren(series, u"c:dPt"))
            insertAfter(point, makeElement(part.doc, u"c:invertIfNegative", u"0"),
                        findChild(point, u"c:idx"));
    }
}

/// Lines cannot be inverted, and must say that they are straight.
void finishLineSeries(ChartPart& part)
{
    if (!part.isGroup(u"c:lineChart")) return;
    for (auto* series : part.series) {
        removeChildren(series, u"c:invertIfNegative");
        series->appendChild(makeElement(part.doc, u"c:smooth", u"0"));
    }
}

/// Slices have no marker and cannot be inverted.
void finishPieSeries(ChartPart& part)
{
    if (!part.isGroup(u"c:pieChart")) return;
    for (auto* series : part.series) {
        removeChildren(series, u"c:marker");
        removeChildren(series, u"c:invertIfNegative");
    }
}

void dropGapWidthOfLines(ChartPart& part)
{
    if (part.isGroup(u"c:lineChart")) removeChildren(part.group, u"c:gapWidth");
}

void addGroupingOfBars(ChartPart& part)
{
    if (!part.isGroup(u"c:barChart")) return;
    auto* direction = findChild(part.group, u"c:barDir");
    auto* grouping = makeElement(part.doc, u"c:grouping", u"clustered");
    insertAfter(part.group, grouping, direction);
    insertAfter(part.group, makeElement(part.doc, u"c:varyColors", u"0"), grouping);
}

/// Slices differ in colour, the points of a line do not. Where slices may not differ, a reader gives those
/// with the colour of the series one of its own.
void varyColorsOfSlicesAlone(ChartPart& part)
{
    if (part.isGroup(u"c:barChart")) return;
    findChild(part.group, u"c:varyColors")->setAttribute(u"val", part.isGroup(u"c:pieChart") ? u"1" : u"0");
}

void setColorsBelow(DOMElement* element, const std::u16string& digits)
{
    if (std::u16string_view(element->getTagName()) == u"a:srgbClr")
        element->setAttribute(u"val", digits.c_str());
    for (auto* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        setColorsBelow(child, digits);
}

/// Gives the colours below `element`, which the writer took from `format`, six digits. What is no colour
/// becomes `standard`, with a warning.
void finishColors(ChartPart& part, DOMElement* element, const chart::Format* format,
                  const std::u16string& standard, const std::string& place)
{
    if (element == nullptr || format == nullptr || !format->getColor()) return;
    const auto& text = format->getColor()->getText();
    const auto digits = findColorDigits(text);
    setColorsBelow(element, digits.value_or(standard));
    if (digits) return;
    part.warn(place + ": \"" + toUtf8(escapeCharacters(text)) +
              "\" is no colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up to 255. "
              "The default is used.");
}

/// A slice without a format of its own has that of its series. The default of a slice is its own, that of any
/// other point its series'.
void finishPointColors(ChartPart& part, std::size_t seriesIndex, const chart::DataSeries& series)
{
    const bool isPie = part.isGroup(u"c:pieChart");
    for (auto* point : findChildren(part.series[seriesIndex], u"c:dPt")) {
        const auto index = str2uint(findChild(point, u"c:idx")->getAttribute(u"val"));
        const chart::ShapeFormat* own = series.getPoint(index)->getFormat().get();
        const chart::ShapeFormat* format = own != nullptr ? own : series.getFormat().get();
        if (format == nullptr) continue;
        auto place = describeSeries(part, seriesIndex);
        if (own != nullptr) place += ", point " + std::to_string(index + 1);
        const auto& standard = chart::getPaletteColor(isPie ? index : seriesIndex);
        auto* properties = findChild(point, u"c:spPr");
        finishColors(part, findChild(properties, u"a:solidFill"), format->getFill().get(), standard,
                     place + ", fill");
        finishColors(part, findChild(properties, u"a:ln"), format->getBorder().get(), standard,
                     place + ", border");
    }
}

void makeColorsHexadecimal(ChartPart& part)
{
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        const auto& series = *part.context.chart.getDataSet()->getSeries(i);
        const auto& format = series.getFormat();
        finishColors(part, findChild(part.series[i], u"c:spPr"), format ? format->getFill().get() : nullptr,
                     chart::getPaletteColor(i), describeSeries(part, i) + ", fill");
        finishPointColors(part, i, series);
    }
}

/// "Sheet1!$AA$2:$AA$4": the cells of a column, "$AA", below its first row.
std::u16string getCellRange(const std::u16string& column, unsigned long count)
{
    return u"Sheet1!" + column + u"$2:" + column + u"$" + num2str(count + 1);
}

/// The writer knows the letters of columns A to Z alone.
void writeColumnLetters(ChartPart& part)
{
    for (std::size_t i = 25; i < part.series.size(); ++i) {
        const auto column = u"$" + getColumnLetters(i + 1);
        const auto size = part.context.chart.getDataSet()->getSeries(i)->getSize();
        findPath(part.series[i], {u"c:tx", u"c:strRef", u"c:f"})
            ->setTextContent((u"Sheet1!" + column + u"$1").c_str());
        findPath(part.series[i], {u"c:val", u"c:numRef", u"c:f"})
            ->setTextContent(getCellRange(column, size).c_str());
    }
}

/// A reference to no cell at all would end above its start; it stays on its first cell.
void keepReferencesInOrder(ChartPart& part)
{
    const auto& dataSet = *part.context.chart.getDataSet();
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        const auto column = u"Sheet1!$" + getColumnLetters(i + 1) + u"$2";
        if (dataSet.getCategories().empty())
            findPath(part.series[i], {u"c:cat", u"c:strRef", u"c:f"})->setTextContent(u"Sheet1!$A$2");
        if (dataSet.getSeries(i)->getSize() == 0)
            findPath(part.series[i], {u"c:val", u"c:numRef", u"c:f"})->setTextContent(column.c_str());
    }
}

/// What is not a number is left out of its cache and shows as a gap; the count stays.
void leaveOutMissingValues(ChartPart& part)
{
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        const auto& points = part.context.chart.getDataSet()->getSeries(i)->getPoints();
        auto* cache = findPath(part.series[i], {u"c:val", u"c:numRef", u"c:numCache"});
        auto* cached = findChild(cache, u"c:pt");
        for (std::size_t k = 0; k < points.size(); ++k) {
            auto* next = cached->getNextElementSibling();
            const double value = points[k]->getValue();
            if (std::abs(value) > maximumNumber)
                throw std::runtime_error(
                    describeSeries(part, i) + ", point " + std::to_string(k + 1) + ": the value is " +
                    toUtf8(num2str(value)) +
                    "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.");
            if (std::isnan(value)) cache->removeChild(cached)->release();
            cached = next;
        }
    }
}

void escapeCache(DOMElement* cache, const std::function<const std::u16string&(std::size_t)>& getText)
{
    std::size_t index = 0;
    for (auto* point : findChildren(cache, u"c:pt")) {
        const auto& text = getText(index++);
        const auto escaped = escapeCharacters(text);
        if (escaped != text) point->getFirstElementChild()->setTextContent(escaped.c_str());
    }
}

/// Characters that XML cannot hold: the caches have a notation for them, the title has none.
void escapeTexts(ChartPart& part)
{
    const auto& title = part.context.chart.getTitle();
    if (title)
        requireXmlText(title->getText()->getContent().at(0)->getContent(),
                       "chart " + std::to_string(part.context.drawingNumber) + ", title");
    const auto& dataSet = *part.context.chart.getDataSet();
    for (std::size_t i = 0; i < part.series.size(); ++i) {
        const auto series = dataSet.getSeries(i);
        escapeCache(findPath(part.series[i], {u"c:tx", u"c:strRef", u"c:strCache"}),
                    [&](std::size_t) -> const std::u16string& { return series->getName(); });
        escapeCache(findPath(part.series[i], {u"c:cat", u"c:strRef", u"c:strCache"}),
                    [&](std::size_t k) -> const std::u16string& { return dataSet.getCategories()[k]; });
    }
}

const char16_t* getLegendPlace(const ChartPart& part)
{
    switch (part.context.options.legend) {
        case Legend::None:
            return nullptr;
        case Legend::Right:
            return u"r";
        case Legend::Top:
            return u"t";
        case Legend::Left:
            return u"l";
        case Legend::Bottom:
            return u"b";
        case Legend::Automatic:
            break;
    }
    const bool wanted = part.series.size() > 1 || part.isGroup(u"c:pieChart");
    return wanted ? u"b" : nullptr;
}

void addLegend(ChartPart& part)
{
    const auto* place = getLegendPlace(part);
    if (place == nullptr) return;
    auto* legend = part.doc->createElement(u"c:legend");
    legend->appendChild(makeElement(part.doc, u"c:legendPos", place));
    legend->appendChild(makeElement(part.doc, u"c:overlay", u"0"));
    part.chart->appendChild(legend);
}

void showGapsAndVisibleCellsOnly(ChartPart& part)
{
    part.chart->appendChild(makeElement(part.doc, u"c:plotVisOnly", u"1"));
    part.chart->appendChild(makeElement(part.doc, u"c:dispBlanksAs", u"gap"));
}

void linkWorkbook(ChartPart& part)
{
    if (part.context.workbookRelationshipId == nullptr) return;
    auto* external = part.doc->createElement(u"c:externalData");
    external->setAttribute(u"r:id", part.context.workbookRelationshipId);
    external->appendChild(makeElement(part.doc, u"c:autoUpdate", u"0"));
    part.chartSpace->appendChild(external);
}

/// The rules for the chart part, in the order in which they are applied.
constexpr std::array chartRules = {
    keepOneSeriesOfPie,
    finishBarSeries,
    finishLineSeries,
    finishPieSeries,
    dropGapWidthOfLines,
    addGroupingOfBars,
    varyColorsOfSlicesAlone,
    writeColumnLetters,
    keepReferencesInOrder,
    makeColorsHexadecimal,
    leaveOutMissingValues,
    escapeTexts,
    addLegend,
    showGapsAndVisibleCellsOnly,
    linkWorkbook,
};

/// The inline drawing of the writer, and what the rules know of the chart.
struct Drawing {
    DOMElement* run;
    DOMElement* inlineDrawing;
    const FinishingContext& context;
};

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
    auto* extent = findChild(drawing.inlineDrawing, u"wp:extent");
    extent->setAttribute(u"cx", num2str(static_cast<unsigned long>(drawing.context.width)).c_str());
    extent->setAttribute(u"cy", num2str(static_cast<unsigned long>(drawing.context.height)).c_str());
}

const char16_t* getTypeName(const chart::Chart& chart)
{
    if (dynamic_cast<const chart::BarChart*>(&chart) != nullptr) return u"Bar chart";
    if (dynamic_cast<const chart::ColumnChart*>(&chart) != nullptr) return u"Column chart";
    if (dynamic_cast<const chart::LineChart*>(&chart) != nullptr) return u"Line chart";
    if (dynamic_cast<const chart::PieChart*>(&chart) != nullptr) return u"Pie chart";
    return u"Chart";
}

/// The series that the chart shows: of a pie, the first alone.
std::vector<std::shared_ptr<chart::DataSeries>> getShownSeries(const chart::Chart& chart)
{
    auto shown = *chart.getDataSet()->getSeriesList();
    if (dynamic_cast<const chart::PieChart*>(&chart) != nullptr && shown.size() > 1) shown.resize(1);
    return shown;
}

/// "values from 1.5 to 20", or nothing for a chart without numbers.
std::u16string describeRange(const std::vector<std::shared_ptr<chart::DataSeries>>& shown)
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const auto& series : shown)
        for (const auto& point : series->getPoints()) {
            low = std::fmin(low, point->getValue());
            high = std::fmax(high, point->getValue());
        }
    return low <= high ? u"; values from " + num2str(low) + u" to " + num2str(high) : u"";
}

std::u16string describeSeriesNames(const std::vector<std::shared_ptr<chart::DataSeries>>& shown)
{
    constexpr unsigned long named = 5;
    std::u16string names;
    for (unsigned long i = 0; i < std::min(shown.size(), named); ++i)
        names += (i == 0 ? u"; series " : u", ") + escapeCharacters(shown[i]->getName());
    if (shown.size() > named) names += u" and " + num2str(shown.size() - named) + u" more";
    return names;
}

std::u16string makeAltText(const chart::Chart& chart)
{
    std::u16string text = getTypeName(chart);
    if (chart.getTitle())
        text += u": " + escapeCharacters(chart.getTitle()->getText()->getContent().at(0)->getContent());
    const auto shown = getShownSeries(chart);
    return text + describeSeriesNames(shown) + describeRange(shown);
}

void describe(Drawing& drawing)
{
    const auto& context = drawing.context;
    const auto given = readXmlText(context.options.altText,
                                   "chart " + std::to_string(context.drawingNumber) + ", alternative text");
    findChild(drawing.inlineDrawing, u"wp:docPr")
        ->setAttribute(u"descr", (given.empty() ? makeAltText(context.chart) : given).c_str());
}

/// The rules for the drawing, in the order in which they are applied.
constexpr std::array drawingRules = {wrapInDrawing, nameEffectExtent, setSize, describe};

}  // namespace

void finishChartPart(DOMDocument* doc, const FinishingContext& context)
{
    auto* chartSpace = doc->getDocumentElement();
    auto* chart = findChild(chartSpace, u"c:chart");
    auto* group = findGroup(findChild(chart, u"c:plotArea"));
    ChartPart part{doc, chartSpace, chart, group, findChildren(group, u"c:ser"), context, {}};
    for (const auto& rule : chartRules) rule(part);
}

void finishDrawing(DOMElement* run, const FinishingContext& context)
{
    Drawing drawing{run, findChild(run, u"wp:inline"), context};
    for (const auto& rule : drawingRules) rule(drawing);
}

}  // namespace quillon::report
