#include "bench/BareBuilder.h"

#include <array>
#include <initializer_list>
#include <utility>

#include "support/Text.h"

namespace quillon::bench {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using Attributes = std::initializer_list<std::pair<const char16_t*, const char16_t*>>;

constexpr auto chartNamespace = u"http://schemas.openxmlformats.org/drawingml/2006/chart";
constexpr auto mainNamespace = u"http://schemas.openxmlformats.org/drawingml/2006/main";
constexpr auto relationshipsNamespace =
    u"http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr auto categoryAxisId = u"751708752";
constexpr auto valueAxisId = u"713724112";
constexpr std::array<const char16_t*, 6> palette = {u"4472C4", u"ED7D31", u"A5A5A5",
                                                    u"FFC000", u"5B9BD5", u"70AD47"};

class Builder {
 public:
    Builder(DOMDocument* doc, const PlainChart& chart) : doc_(doc), chart_(chart) {}

    void build() const;

 private:
    DOMElement* add(DOMElement* parent, const char16_t* name, Attributes attributes = {}) const;
    void addText(DOMElement* parent, const char16_t* name, const std::u16string& text) const;
    void addSchemeFill(DOMElement* parent, const char16_t* lumMod, const char16_t* lumOff) const;
    void addSolidFill(DOMElement* parent, const char16_t* color) const;
    void addEmptyShape(DOMElement* parent) const;
    void addThinLine(DOMElement* parent) const;
    DOMElement* addTextBody(DOMElement* parent, const char16_t* rotation, Attributes fontAttributes) const;
    void addTitle(DOMElement* chart) const;
    void addAxisStart(DOMElement* axis, const char16_t* id, const char16_t* position) const;
    void addAxisFormat(DOMElement* axis) const;
    void addAxisText(DOMElement* axis, const char16_t* crossId) const;
    void addCategoryAxis(DOMElement* plotArea) const;
    void addValueAxis(DOMElement* plotArea) const;
    void addGroup(DOMElement* plotArea) const;
    void addSeries(DOMElement* group, std::size_t index) const;
    void addSeriesShape(DOMElement* ser, std::size_t index) const;
    void addPoint(DOMElement* ser, std::size_t index) const;
    void addCachedPoint(DOMElement* cache, std::size_t index, const std::u16string& text) const;
    void addCategories(DOMElement* ser) const;
    void addValues(DOMElement* ser, std::size_t index) const;
    void addLabels(DOMElement* group) const;

    DOMDocument* doc_;
    const PlainChart& chart_;
};

DOMElement* Builder::add(DOMElement* parent, const char16_t* name, Attributes attributes) const
{
    auto* element = doc_->createElement(name);
    for (const auto& [attribute, value] : attributes) element->setAttribute(attribute, value);
    parent->appendChild(element);
    return element;
}

void Builder::addText(DOMElement* parent, const char16_t* name, const std::u16string& text) const
{
    auto* element = add(parent, name);
    if (!text.empty()) element->appendChild(doc_->createTextNode(text.c_str()));
}

void Builder::addSchemeFill(DOMElement* parent, const char16_t* lumMod, const char16_t* lumOff) const
{
    auto* color = add(add(parent, u"a:solidFill"), u"a:schemeClr", {{u"val", u"tx1"}});
    add(color, u"a:lumMod", {{u"val", lumMod}});
    add(color, u"a:lumOff", {{u"val", lumOff}});
}

void Builder::addSolidFill(DOMElement* parent, const char16_t* color) const
{
    add(add(parent, u"a:solidFill"), u"a:srgbClr", {{u"val", color}});
}

void Builder::addEmptyShape(DOMElement* parent) const
{
    auto* shape = add(parent, u"c:spPr");
    add(shape, u"a:noFill");
    add(add(shape, u"a:ln"), u"a:noFill");
    add(shape, u"a:effectLst");
}

void Builder::addThinLine(DOMElement* parent) const
{
    auto* line =
        add(parent, u"a:ln", {{u"w", u"9525"}, {u"cap", u"flat"}, {u"cmpd", u"sng"}, {u"algn", u"ctr"}});
    addSchemeFill(line, u"15000", u"85000");
    add(line, u"a:round");
    add(parent, u"a:effectLst");
}

DOMElement* Builder::addTextBody(DOMElement* parent, const char16_t* rotation,
                                 Attributes fontAttributes) const
{
    add(parent, u"a:bodyPr",
        {{u"rot", rotation},
         {u"spcFirstLastPara", u"1"},
         {u"vertOverflow", u"ellipsis"},
         {u"vert", u"horz"},
         {u"wrap", u"square"},
         {u"anchor", u"ctr"},
         {u"anchorCtr", u"1"}});
    add(parent, u"a:lstStyle");
    auto* paragraph = add(parent, u"a:p");
    auto* font = add(add(paragraph, u"a:pPr"), u"a:defRPr", fontAttributes);
    addSchemeFill(font, u"65000", u"35000");
    add(font, u"a:latin", {{u"typeface", u"+mn-lt"}});
    add(font, u"a:ea", {{u"typeface", u"+mn-ea"}});
    add(font, u"a:cs", {{u"typeface", u"+mn-cs"}});
    return paragraph;
}

void Builder::addTitle(DOMElement* chart) const
{
    const Attributes font = {
        {u"sz", u"1400"},         {u"b", u"0"},       {u"i", u"0"},   {u"u", u"none"},
        {u"strike", u"noStrike"}, {u"kern", u"1200"}, {u"spc", u"0"}, {u"baseline", u"0"}};
    auto* title = add(chart, u"c:title");
    auto* paragraph = addTextBody(add(add(title, u"c:tx"), u"c:rich"), u"0", font);
    auto* run = add(paragraph, u"a:r");
    add(run, u"a:rPr", {{u"lang", u"en-US"}});
    addText(run, u"a:t", chart_.title);
    add(paragraph, u"a:endParaRPr", {{u"lang", u"en-US"}});
    add(title, u"c:overlay", {{u"val", u"0"}});
    addEmptyShape(title);
    add(addTextBody(add(title, u"c:txPr"), u"0", font), u"a:endParaRPr", {{u"lang", u"en-US"}});
    add(chart, u"c:autoTitleDeleted", {{u"val", u"0"}});
}

void Builder::addAxisStart(DOMElement* axis, const char16_t* id, const char16_t* position) const
{
    add(axis, u"c:axId", {{u"val", id}});
    add(add(axis, u"c:scaling"), u"c:orientation", {{u"val", u"minMax"}});
    add(axis, u"c:delete", {{u"val", u"0"}});
    add(axis, u"c:axPos", {{u"val", position}});
}

void Builder::addAxisFormat(DOMElement* axis) const
{
    add(axis, u"c:numFmt", {{u"formatCode", u"General"}, {u"sourceLinked", u"1"}});
    add(axis, u"c:majorTickMark", {{u"val", u"none"}});
    add(axis, u"c:minorTickMark", {{u"val", u"none"}});
    add(axis, u"c:tickLblPos", {{u"val", u"nextTo"}});
}

void Builder::addAxisText(DOMElement* axis, const char16_t* crossId) const
{
    auto* paragraph = addTextBody(add(axis, u"c:txPr"), u"-60000000",
                                  {{u"sz", u"900"},
                                   {u"b", u"0"},
                                   {u"i", u"0"},
                                   {u"u", u"none"},
                                   {u"strike", u"noStrike"},
                                   {u"kern", u"1200"},
                                   {u"baseline", u"0"}});
    add(paragraph, u"a:endParaRPr", {{u"lang", u"en-US"}});
    add(axis, u"c:crossAx", {{u"val", crossId}});
    add(axis, u"c:crosses", {{u"val", u"autoZero"}});
}

void Builder::addCategoryAxis(DOMElement* plotArea) const
{
    auto* axis = add(plotArea, u"c:catAx");
    addAxisStart(axis, categoryAxisId, u"l");
    addAxisFormat(axis);
    auto* shape = add(axis, u"c:spPr");
    add(shape, u"a:noFill");
    addThinLine(shape);
    addAxisText(axis, valueAxisId);
    add(axis, u"c:auto", {{u"val", u"1"}});
    add(axis, u"c:lblAlgn", {{u"val", u"ctr"}});
    add(axis, u"c:lblOffset", {{u"val", u"100"}});
    add(axis, u"c:noMultiLvlLbl", {{u"val", u"0"}});
}

void Builder::addValueAxis(DOMElement* plotArea) const
{
    auto* axis = add(plotArea, u"c:valAx");
    addAxisStart(axis, valueAxisId, u"b");
    addThinLine(add(add(axis, u"c:majorGridlines"), u"c:spPr"));
    addAxisFormat(axis);
    addEmptyShape(axis);
    addAxisText(axis, categoryAxisId);
    add(axis, u"c:crossBetween", {{u"val", u"between"}});
}

void Builder::addSeriesShape(DOMElement* ser, std::size_t index) const
{
    auto* shape = add(ser, u"c:spPr");
    if (chart_.type == ChartType::Line) {
        addSolidFill(add(shape, u"a:ln"), palette[index % 6]);
    } else {
        addSolidFill(shape, palette[index % 6]);
        add(add(shape, u"a:ln"), u"a:noFill");
    }
    add(shape, u"a:effectLst");
}

void Builder::addPoint(DOMElement* ser, std::size_t index) const
{
    auto* point = add(ser, u"c:dPt");
    add(point, u"c:idx", {{u"val", num2str(index).c_str()}});
    add(point, u"c:bubble3D", {{u"val", u"0"}});
    auto* shape = add(point, u"c:spPr");
    addSolidFill(shape, chart_.formattedPoints ? u"FF0000" : palette[index % 6]);
    addSolidFill(add(shape, u"a:ln", {{u"w", u"19050"}}),
                 chart_.formattedPoints ? u"0000FF" : palette[index % 6]);
    add(shape, u"a:effectLst");
}

void Builder::addCachedPoint(DOMElement* cache, std::size_t index, const std::u16string& text) const
{
    auto* point = add(cache, u"c:pt", {{u"idx", num2str(index).c_str()}});
    addText(point, u"c:v", text);
}

void Builder::addCategories(DOMElement* ser) const
{
    const auto count = chart_.categories.size();
    auto* reference = add(add(ser, u"c:cat"), u"c:strRef");
    addText(reference, u"c:f", u"Sheet1!$A$2:$A$" + num2str(count + 1));
    auto* cache = add(reference, u"c:strCache");
    add(cache, u"c:ptCount", {{u"val", num2str(count).c_str()}});
    for (std::size_t k = 0; k < count; ++k) addCachedPoint(cache, k, chart_.categories[k]);
}

std::u16string columnLetter(std::size_t seriesIndex)
{
    return seriesIndex < 25 ? std::u16string(1, static_cast<char16_t>(u'B' + seriesIndex)) : std::u16string();
}

void Builder::addValues(DOMElement* ser, std::size_t index) const
{
    const auto& values = chart_.series[index];
    const auto column = columnLetter(index);
    auto* reference = add(add(ser, u"c:val"), u"c:numRef");
    addText(reference, u"c:f", u"Sheet1!$" + column + u"$2:$" + column + u"$" + num2str(values.size() + 1));
    auto* cache = add(reference, u"c:numCache");
    addText(cache, u"c:formatCode", u"General");
    add(cache, u"c:ptCount", {{u"val", num2str(values.size()).c_str()}});
    for (std::size_t k = 0; k < values.size(); ++k) addCachedPoint(cache, k, num2str(values[k]));
}

void Builder::addSeries(DOMElement* group, std::size_t index) const
{
    const auto number = num2str(index);
    auto* ser = add(group, u"c:ser");
    add(ser, u"c:idx", {{u"val", number.c_str()}});
    add(ser, u"c:order", {{u"val", number.c_str()}});
    auto* reference = add(add(ser, u"c:tx"), u"c:strRef");
    addText(reference, u"c:f", u"Sheet1!$" + columnLetter(index) + u"$1");
    auto* cache = add(reference, u"c:strCache");
    add(cache, u"c:ptCount", {{u"val", u"1"}});
    addCachedPoint(cache, 0, u"Series " + number);
    addSeriesShape(ser, index);
    add(add(ser, u"c:marker"), u"c:symbol", {{u"val", u"none"}});
    if (chart_.formattedPoints || chart_.type == ChartType::Pie)
        for (std::size_t k = 0; k < chart_.series[index].size(); ++k) addPoint(ser, k);
    add(ser, u"c:invertIfNegative");
    addCategories(ser);
    addValues(ser, index);
}

void Builder::addLabels(DOMElement* group) const
{
    auto* labels = add(group, u"c:dLbls");
    for (const auto* name : {u"c:showLegendKey", u"c:showVal", u"c:showCatName", u"c:showSerName",
                             u"c:showPercent", u"c:showBubbleSize", u"c:showLeaderLines"})
        add(labels, name, {{u"val", u"0"}});
}

void Builder::addGroup(DOMElement* plotArea) const
{
    constexpr std::array names = {u"c:barChart", u"c:barChart", u"c:lineChart", u"c:pieChart"};
    auto* group = add(plotArea, names[static_cast<std::size_t>(chart_.type)]);
    if (chart_.type == ChartType::Bar) add(group, u"c:barDir", {{u"val", u"bar"}});
    if (chart_.type == ChartType::Column) add(group, u"c:barDir", {{u"val", u"col"}});
    if (chart_.type == ChartType::Line) add(group, u"c:grouping", {{u"val", u"standard"}});
    if (chart_.type == ChartType::Line) add(group, u"c:varyColors", {{u"val", u"1"}});
    if (chart_.type == ChartType::Pie) add(group, u"c:varyColors", {{u"val", u"0"}});
    for (std::size_t i = 0; i < chart_.series.size(); ++i)
        addSeries(group, chart_.type == ChartType::Pie ? 0 : i);
    addLabels(group);
    if (chart_.type == ChartType::Pie) return;
    add(group, u"c:gapWidth", {{u"val", u"219"}});
    add(group, u"c:axId", {{u"val", categoryAxisId}});
    add(group, u"c:axId", {{u"val", valueAxisId}});
    addCategoryAxis(plotArea);
    addValueAxis(plotArea);
}

void Builder::build() const
{
    auto* space = doc_->createElementNS(chartNamespace, u"c:chartSpace");
    space->setAttribute(u"xmlns:a", mainNamespace);
    space->setAttribute(u"xmlns:r", relationshipsNamespace);
    space->setAttribute(u"xmlns:c16r2", u"http://schemas.microsoft.com/office/drawing/2015/06/chart");
    doc_->appendChild(space);
    add(space, u"c:date1904", {{u"val", u"0"}});
    add(space, u"c:lang", {{u"val", u"en-US"}});
    add(space, u"c:roundedCorners", {{u"val", u"1"}});
    add(space, u"c:style", {{u"val", u"2"}});
    auto* chart = add(space, u"c:chart");
    addTitle(chart);
    auto* plotArea = add(chart, u"c:plotArea");
    add(plotArea, u"c:layout");
    addGroup(plotArea);
}

}  // namespace

void buildBare(DOMDocument* doc, const PlainChart& chart)
{
    Builder(doc, chart).build();
}

}  // namespace quillon::bench
