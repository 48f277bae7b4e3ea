#pragma once

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "support/Text.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {

inline constexpr double gap = NAN;

/// A cache as word processors write it.
inline std::string makeNumberCache(const std::vector<std::string>& values,
                                   const std::string& format = "General")
{
    std::string points;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!values[i].empty())
            points += "<c:pt idx=\"" + std::to_string(i) + "\"><c:v>" + values[i] + "</c:v></c:pt>";
    return "<c:numCache><c:formatCode>" + format + "</c:formatCode><c:ptCount val=\"" +
           std::to_string(values.size()) + "\"/>" + points + "</c:numCache>";
}

inline std::string makeTextCache(const std::vector<std::string>& texts)
{
    std::string points;
    for (std::size_t i = 0; i < texts.size(); ++i)
        points += "<c:pt idx=\"" + std::to_string(i) + "\"><c:v>" + texts[i] + "</c:v></c:pt>";
    return "<c:strCache><c:ptCount val=\"" + std::to_string(texts.size()) + "\"/>" + points + "</c:strCache>";
}

inline std::string makeRange(char column, std::size_t count)
{
    return std::string("<c:f>Sheet1!$") + column + "$2:$" + column + "$" + std::to_string(count + 1) +
           "</c:f>";
}

inline std::string makeTextReference(char column, const std::vector<std::string>& texts)
{
    return "<c:strRef>" + makeRange(column, texts.size()) + makeTextCache(texts) + "</c:strRef>";
}

inline std::string makeNumberReference(char column, const std::vector<std::string>& values,
                                       const std::string& format = "General")
{
    return "<c:numRef>" + makeRange(column, values.size()) + makeNumberCache(values, format) + "</c:numRef>";
}

inline std::string makeUniqueId(int number)
{
    return "<c:extLst><c:ext uri=\"{C3380CC4-5D6E-409C-BE32-E72D297353CC}\" "
           "xmlns:c16=\"http://schemas.microsoft.com/office/drawing/2014/chart\"><c16:uniqueId "
           "val=\"{0000000" +
           std::to_string(number) + "-540D-4294-840A-C4F566D988F3}\"/></c:ext></c:extLst>";
}

/// The markup of a c:ser element in column B, C ... of the sheet, by position.
struct TestSeries {
    int position;
    std::string name;
    std::vector<std::string> values;
    /// Between c:tx and the categories.
    std::string format = {};
    std::string categories = makeTextReference('A', {"Jan", "Feb", "Mar"});
    std::string numberFormat = "General";
    std::string behind = {};

    std::string make() const
    {
        const auto number = std::to_string(position);
        const char column = static_cast<char>('B' + position);
        return "<c:ser><c:idx val=\"" + number + "\"/><c:order val=\"" + number +
               "\"/><c:tx><c:strRef><c:f>Sheet1!$" + column + "$1</c:f>" + makeTextCache({name}) +
               "</c:strRef></c:tx>" + format +
               (categories.empty() ? "" : "<c:cat>" + categories + "</c:cat>") + "<c:val>" +
               makeNumberReference(column, values, numberFormat) + "</c:val>" + behind +
               makeUniqueId(position) + "</c:ser>";
    }
};

inline std::string makeAccent(const std::string& color)
{
    return "<c:spPr><a:solidFill>" + color + "</a:solidFill></c:spPr>";
}

inline std::string makeGroup(const std::string& name, const std::string& settings,
                             const std::vector<TestSeries>& series, const std::string& axes)
{
    std::string markup = "<c:" + name + ">" + settings;
    for (const auto& one : series) markup += one.make();
    for (const char axis : axes) markup += std::string("<c:axId val=\"") + axis + "\"/>";
    return markup + "</c:" + name + ">";
}

inline std::string makeAxis(const std::string& name, char id, char crossed, const std::string& rest = "")
{
    return "<c:" + name + "><c:axId val=\"" + id +
           "\"/><c:scaling/><c:delete val=\"0\"/><c:axPos val=\"b\"/>"
           "<c:numFmt formatCode=\"General\" sourceLinked=\"1\"/><c:crossAx val=\"" +
           crossed + "\"/><c:crosses val=\"autoZero\"/>" + rest + "</c:" + name + ">";
}

inline const std::string columnSettings =
    "<c:barDir val=\"col\"/><c:grouping val=\"clustered\"/><c:varyColors val=\"0\"/>";
inline const std::string lineSettings = "<c:grouping val=\"standard\"/><c:varyColors val=\"0\"/>";
inline const std::string textAxes =
    makeAxis("catAx", '1', '2',
             "<c:auto val=\"1\"/><c:lblAlgn val=\"ctr\"/><c:lblOffset val=\"100\"/>"
             "<c:noMultiLvlLbl val=\"0\"/>") +
    makeAxis("valAx", '2', '1');

/// A whole chart part.
inline std::string makeChartPart(const std::string& plotArea, const std::string& before = "",
                                 const std::string& behind = "")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
           "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
           "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><c:chart>" +
           before + "<c:autoTitleDeleted val=\"1\"/><c:plotArea><c:layout/>" + plotArea + "</c:plotArea>" +
           behind +
           "<c:plotVisOnly val=\"1\"/></c:chart><c:externalData r:id=\"rId1\"><c:autoUpdate val=\"0\"/>"
           "</c:externalData></c:chartSpace>";
}

/// A document whose charts are the given parts.
inline Template makeTemplate(const std::vector<std::string>& parts)
{
    Document document;
    for (std::size_t i = 0; i < parts.size(); ++i) document.addChart(makeChart<chart::ColumnChart>());
    Package package(document.toBytes());
    for (std::size_t i = 0; i < parts.size(); ++i)
        package.setPart("word/charts/chart" + std::to_string(i + 1) + ".xml", parts[i]);
    return Template(package.toBytes());
}

inline std::string getChartPart(const Template& document, int number = 1)
{
    return document.getPackage().getPart("word/charts/chart" + std::to_string(number) + ".xml");
}

using NamedValues = std::pair<std::string, std::vector<double>>;

inline ChartData makeData(const std::vector<std::string>& categories, const std::vector<NamedValues>& series)
{
    std::vector<std::u16string> names;
    for (const auto& category : categories) names.push_back(toUtf16(category));
    ChartData data(chart::DataSet::create(names));
    for (const auto& [name, values] : series) appendSeries(*data.dataSet, toUtf16(name), values);
    return data;
}

}  // namespace quillon::report
