#include <boost/algorithm/string/split.hpp>
#include <map>
#include <set>

#include "chart/model/DataSeriesFormatOptions.h"
#include "report/document/ChartParts.h"
#include "tests/host/HostTest.h"
#include "tests/report/MarkupReader.h"

namespace quillon::report {
namespace {

using chart::fullName;
using chart::make;
using orca::HostArray;

/// A host program sets a property of a chart, and finds the value in the document.
struct Row {
    /// Of the class that declares it: "BorderFormat.Width".
    std::string property;
    /// A chart type, and the way from its chart to the object: "ColumnChart.series.Format.Border".
    std::string object;
    HostArray value;
    /// Of the chart part.
    std::string path;
    std::string expected;
};

class ShownCatalogue : public chart::HostTest {
 protected:
    HostArray visit(HostArray object)
    {
        for (const auto* info : orca::classOf(object).getLineage()) visited_.insert(shorten(info->getName()));
        visited_.insert(shorten(orca::classOf(object).getName()));
        return object;
    }

    static std::string shorten(const std::string& name) { return name.substr(name.rfind('.') + 1); }

    /// The object that a property holds; where it holds none yet, a new one.
    static HostArray getOrMake(const HostArray& object, const std::string& property)
    {
        if (orca::get(object, property).isEmpty()) {
            const auto& info = orca::classOf(object).requireProperty(property);
            orca::set(object, property, orca::construct(info.getType().text));
        }
        return orca::get(object, property);
    }

    HostArray step(const HostArray& object, const std::string& name)
    {
        if (name == "series") return orca::call(orca::get(object, "DataSet"), "getSeries", {2});
        if (name == "point") return orca::call(step(object, "series"), "getPoint", {2});
        if (name == "run") return omGetArrayElement(orca::get(object, "Content"), 0);
        if (name == "options") return options_ = make("PieChartDataSeriesFormatOptions");
        return getOrMake(object, name);
    }

    HostArray walk(HostArray object, const std::vector<std::string>& names)
    {
        for (const auto& name : names) object = visit(step(object, name));
        return object;
    }

    /// Two series of two points. A pie shows the first series, which stands twice in its set.
    static HostArray makeChart(const std::string& type)
    {
        const auto set = make("DataSet", {HostArray::textArray({u"a", u"b"})});
        const auto only = make("DataSeries", {u"North"});
        for (const auto* name : {u"North", u"South"}) {
            const auto series = type == "PieChart" ? only : make("DataSeries", {name});
            if (orca::get(series, "Size").getNumber() == 0)
                for (const double value : {1, 2}) orca::call(series, "appendPoint", {value});
            orca::call(set, "appendSeries", {series});
        }
        const auto chart = make(type);
        orca::set(chart, "DataSet", set);
        return chart;
    }

    std::string write(const HostArray& chart) const
    {
        ChartOptions options;
        options.formatOptions = options_.getNative<chart::DataSeriesFormatOptions>();
        options.width = options.height = "10cm";
        const Listener listener = {.warning = [](const auto& sentence) { ADD_FAILURE() << sentence; }};
        return makeChartParts(*chart.getNative<chart::Chart>(), options, 1, "rId1", listener).chart;
    }

    void check(const Row& row)
    {
        SCOPED_TRACE(row.property + " of " + row.object + " = " + row.value.describe());
        std::vector<std::string> names;
        boost::split(names, row.object, [](char c) { return c == '.'; });
        options_ = HostArray();
        const auto chart = visit(makeChart(names.front()));
        const auto object = walk(chart, {names.begin() + 1, names.end()});
        const auto dot = row.property.find('.');
        EXPECT_TRUE(orca::classOf(object).isA(fullName(row.property.substr(0, dot))) ||
                    orca::classOf(object).getName() == fullName(row.property.substr(0, dot)));
        if (const auto flag = row.value.getLogical()) orca::set(object, row.property.substr(dot + 1), !*flag);
        const auto before = MarkupReader(write(chart)).find(row.path);
        orca::set(object, row.property.substr(dot + 1), row.value);
        EXPECT_EQ(MarkupReader(write(chart)).find(row.path), row.expected);
        EXPECT_NE(before, row.expected) << "shown before it is set";
        values_[row.property].insert(row.value.describe() + row.expected);
        options_ = HostArray();
    }

    std::set<std::string> visited_;
    /// By property, the values that rows set.
    std::map<std::string, std::set<std::string>> values_;
    HostArray options_;
};

/// Classes whose objects show nothing, or cannot be set by a host, and why.
const std::map<std::string, std::string> unshown = {
    {"ElementArea", "no chart holds one"},
    {"PieChartSlice", "no chart holds one"},
    {"LegendPosition", "has no settings; the option `legend` places a legend"},
    {"LegendPositionRelative", "has no settings; the option `legend` places a legend"},
    {"Effects", "has no settings"},
    {"ShadowEffect", "has no settings"},
    {"GlowEffect", "has no settings"},
    {"SoftEdgesEffect", "has no settings"},
    {"ThreeDEffect", "has no settings"},
    {"GradientBorderFormat", "a host cannot replace a border"},
    {"GradientFillFormat", "a host cannot replace a fill"},
    {"PatternFillFormat", "a host cannot replace a fill"},
    {"PictureFillFormat", "a host cannot replace a fill"},
};

/// Of a chart with two series of two points.
std::vector<Row> makeTreeRows()
{
    const auto noValue = make("DataLabelFormat");
    orca::set(orca::get(orca::get(noValue, "Options"), "ContentOptions"), "ContainsValue", false);
    const auto only = make("DataSet");
    orca::call(only, "appendSeries", {make("DataSeries", {u"Only"})});
    return {
        {"Chart.DataSet", "LineChart", make("DataSet"), "c:lineChart/c:ser", "-"},
        {"Chart.DataSet", "ColumnChart", only, "c:ser/c:tx/c:strRef/c:strCache/c:pt/c:v", "Only"},
        {"Chart.ChartTitle", "BarChart", make("Title", {u"Sales"}), "c:title/c:tx/c:rich/a:p/a:r/a:t",
         "Sales"},
        {"Chart.ChartTitle", "PieChart", make("Title", {u"Costs"}), "c:title/c:tx/c:rich/a:p/a:r/a:t",
         "Costs"},
        {"Chart.PlotArea", "LineChart", make("PlotArea", {u"1cm", u"2cm", u"3cm", u"4cm"}),
         "c:manualLayout/c:h/@val", "0.3"},
        {"Chart.PlotArea", "PieChart", make("PlotArea", {u"1cm", u"2cm", u"3cm", u"4cm"}),
         "c:manualLayout/c:w/@val", "0.4"},
        {"DataPoint.Value", "ColumnChart.point", 5, "c:ser[2]/c:val/c:numRef/c:numCache/c:pt[2]/c:v", "5"},
        {"DataPoint.Value", "PieChart.point", 0.5, "c:ser/c:val/c:numRef/c:numCache/c:pt[2]/c:v", "0.5"},
        {"DataPoint.Format", "ColumnChart.point", make("DataPointShapeFormat", {u"red"}),
         "c:ser[2]/c:dPt/c:spPr/a:solidFill/a:srgbClr/@val", "FF0000"},
        {"DataPoint.Format", "BarChart.point", make("DataPointShapeFormat", {u"red", u"blue"}),
         "c:ser[2]/c:dPt/c:spPr/a:ln/a:solidFill/a:srgbClr/@val", "0000FF"},
        {"DataPoint.LabelFormat", "ColumnChart.point", make("DataLabelFormat"),
         "c:ser[2]/c:dLbls/c:dLbl/c:idx/@val", "1"},
        {"DataPoint.LabelFormat", "PieChart.point", noValue, "c:dLbl/c:showVal/@val", "0"},
        {"DataSeries.Name", "ColumnChart.series", u"East", "c:ser[2]/c:tx/c:strRef/c:strCache/c:pt/c:v",
         "East"},
        {"DataSeries.Name", "PieChart.series", u"West", "c:ser/c:tx/c:strRef/c:strCache/c:pt/c:v", "West"},
        {"DataSeries.Format", "ColumnChart.series", make("DataSeriesShapeFormat", {u"red"}),
         "c:ser[2]/c:spPr/a:solidFill/a:srgbClr/@val", "FF0000"},
        {"DataSeries.Format", "LineChart.series", make("DataSeriesShapeFormat", {u"white", u"blue"}),
         "c:ser[2]/c:spPr/a:ln/a:solidFill/a:srgbClr/@val", "0000FF"},
        {"DataSeries.LabelFormat", "BarChart.series", make("DataLabelFormat"),
         "c:ser[2]/c:dLbls/c:showVal/@val", "1"},
        {"DataSeries.LabelFormat", "LineChart.series", noValue, "c:ser[2]/c:dLbls/c:showVal/@val", "0"},
        {"DataSet.Categories", "ColumnChart.DataSet", HostArray::textArray({u"x", u"y"}),
         "c:ser[1]/c:cat/c:strRef/c:strCache/c:pt/c:v", "x y"},
        {"DataSet.Categories", "LineChart.DataSet", HostArray::textArray({u"z"}),
         "c:ser[2]/c:cat/c:strRef/c:strCache/c:ptCount/@val", "1"},
        {"Text.Content", "ColumnChart.ChartTitle.Text.run", u"Sales", "c:title/c:tx/c:rich/a:p/a:r/a:t",
         "Sales"},
        {"Text.Content", "PieChart.ChartTitle.Text.run", u"<&>", "c:title/c:tx/c:rich/a:p/a:r/a:t", "<&>"},
        {"TextBase.Color", "ColumnChart.ChartTitle.Text.run", make("Color", {u"red"}),
         "a:r/a:rPr/a:solidFill/a:srgbClr/@val", "FF0000"},
        {"TextBase.Color", "LineChart.ChartTitle.Text", make("Color", {u"rgb(0,128,255)"}),
         "a:r/a:rPr/a:solidFill/a:srgbClr/@val", "0080FF"},
        {"PieChartDataSeriesFormatOptions.PieExplosion", "PieChart.options", 20, "c:ser/c:explosion/@val",
         "20"},
        {"PieChartDataSeriesFormatOptions.PieExplosion", "PieChart.options", 100, "c:ser/c:explosion/@val",
         "100"},
        {"PieChartDataSeriesFormatOptions.FirstSliceAngle", "PieChart.options", 90,
         "c:pieChart/c:firstSliceAng/@val", "90"},
        {"PieChartDataSeriesFormatOptions.FirstSliceAngle", "PieChart.options", 360,
         "c:pieChart/c:firstSliceAng/@val", "360"},
        {"AreaBase.Height", "ColumnChart.PlotArea", u"10cm", "c:manualLayout/c:h/@val", "1"},
        {"AreaBase.Height", "PieChart.PlotArea", u"50mm", "c:manualLayout/c:h/@val", "0.5"},
        {"AreaBase.Width", "ColumnChart.PlotArea", u"2.5cm", "c:manualLayout/c:w/@val", "0.25"},
        {"AreaBase.Width", "PieChart.PlotArea", u"0cm", "c:manualLayout/c:w/@val", "0"},
        {"PlotArea.X", "ColumnChart.PlotArea", u"1cm", "c:manualLayout/c:x/@val", "0.1"},
        {"PlotArea.X", "LineChart.PlotArea", u"1cm", "c:manualLayout/c:xMode/@val", "edge"},
        {"PlotArea.Y", "ColumnChart.PlotArea", u"9cm", "c:manualLayout/c:y/@val", "0.9"},
        {"PlotArea.Y", "LineChart.PlotArea", u"1cm", "c:manualLayout/c:layoutTarget/@val", "inner"},
    };
}

/// What a label says, for the labels of a series and of a single point.
std::vector<Row> makeLabelRows()
{
    const std::pair<std::string, std::string> places[] = {{"ColumnChart.series", "c:ser[2]/c:dLbls/"},
                                                          {"PieChart.point", "c:ser/c:dLbls/c:dLbl/"}};
    std::vector<Row> rows;
    for (const auto& [owner, labels] : places) {
        const auto add = [&, &o = owner, &l = labels](const char* name, const HostArray& value,
                                                      const std::string& path, const char* expected) {
            rows.push_back({std::string("DataLabelContentOptions.") + name,
                            o + ".LabelFormat.Options.ContentOptions", value, l + path, expected});
        };
        for (const bool flag : {false, true}) {
            const auto* expected = flag ? "1" : "0";
            add("ContainsValue", flag, "c:showVal/@val", expected);
            add("ContainsCategoryName", flag, "c:showCatName/@val", expected);
            add("ContainsSeriesName", flag, "c:showSerName/@val", expected);
            add("ContainsLegendKey", flag, "c:showLegendKey/@val", expected);
        }
        add("Separator", u"Semicolon", "c:separator", "; ");
        add("Separator", u"Period", "c:separator", ". ");
        add("Separator", u"NewLine", "c:separator", "\n");
        add("Separator", u"Space", "c:separator", " ");
    }
    const std::string lines = "DataLabelContentOptions.ShowLeaderLines";
    const std::string content = ".LabelFormat.Options.ContentOptions";
    rows.push_back({lines, "LineChart.series" + content, true,
                    "c:ser[2]/c:dLbls/c:extLst/c:ext/c15:showLeaderLines/@val", "1"});
    rows.push_back({lines, "PieChart.series" + content, true, "c:ser/c:dLbls/c:showLeaderLines/@val", "1"});
    rows.push_back({lines, "PieChart.series" + content, false, "c:ser/c:dLbls/c:showLeaderLines/@val", "0"});
    rows.push_back({lines, "PieChart.point" + content, true, "c:ser/c:dLbls/c:showLeaderLines/@val", "1"});
    return rows;
}

/// What has a fill and a border: the object, and its properties in the markup.
struct ShapePlace {
    std::string object;
    std::string path;
    /// The fill whose colour is not set: automatic, or else white.
    bool isAutomatic;
};

std::vector<ShapePlace> makeFilledPlaces()
{
    return {
        {"ColumnChart.series.Format", "c:ser[2]/c:spPr/", true},
        {"PieChart.series.Format", "c:ser/c:spPr/", true},
        {"BarChart.point.Format", "c:ser[2]/c:dPt/c:spPr/", true},
        {"PieChart.point.Format", "c:ser/c:dPt[2]/c:spPr/", true},
        {"ColumnChart.series.LabelFormat.ShapeFormat", "c:ser[2]/c:dLbls/c:spPr/", false},
        {"LineChart.point.LabelFormat.ShapeFormat", "c:ser[2]/c:dLbls/c:dLbl/c:spPr/", false},
        {"PieChart.PlotArea.Format", "c:plotArea/c:spPr/", false},
    };
}

void addFillRows(const ShapePlace& place, std::vector<Row>& rows)
{
    const auto object = place.object + ".Fill";
    const auto color = place.path + "a:solidFill/a:srgbClr/@val";
    rows.push_back({"Format.Color", object, u"rgb(255,128,0)", color, "FF8000"});
    rows.push_back({"Format.Color", object, u"#FFFFFE", color, "FFFFFE"});
    rows.push_back({"Color.Color", object + ".Color", u"CornflowerBlue", color, "6495ED"});
    rows.push_back({"Color.Color", object + ".Color", HostArray::row({0, 0.5, 1}), color, "0080FF"});
    const std::string unset = place.isAutomatic ? "a:schemeClr" : "a:srgbClr";
    const auto alpha = place.path + "a:solidFill/" + unset + "/a:alpha/@val";
    rows.push_back({"Format.Transparency", object, 25, alpha, "75000"});
    rows.push_back({"Format.Transparency", object, 100, alpha, "0"});
}

/// `color` is the way from the a:ln to the colour of a border whose colour is not set.
void addBorderRows(const ShapePlace& place, const std::string& color, std::vector<Row>& rows)
{
    const auto object = place.object + ".Border";
    const auto line = place.path + "a:ln/";
    rows.push_back({"Format.Color", object, u"navy", line + "a:solidFill/a:srgbClr/@val", "000080"});
    rows.push_back(
        {"Color.Color", object + ".Color", u"#ab12ef", line + "a:solidFill/a:srgbClr/@val", "AB12EF"});
    rows.push_back({"Format.Transparency", object, 40, line + color + "/a:alpha/@val", "60000"});
    rows.push_back({"BorderFormat.Width", object, 3, line + "@w", "38100"});
    rows.push_back({"BorderFormat.Width", object, 0.25, line + "@w", "3175"});
    const struct {
        const char* property;
        std::vector<std::pair<const char16_t*, const char*>> values;
        const char* path;
    } enumerations[] = {
        {"CapType", {{u"Round", "rnd"}, {u"Square", "sq"}}, "@cap"},
        {"CompoundType",
         {{u"Double", "dbl"}, {u"ThinThick", "thinThick"}, {u"ThickThin", "thickThin"}, {u"Triple", "tri"}},
         "@cmpd"},
        {"DashType",
         {{u"RoundDot", "sysDot"},
          {u"SquareDot", "sysDash"},
          {u"Dash", "dash"},
          {u"DashDot", "dashDot"},
          {u"LongDash", "lgDash"},
          {u"LongDashDot", "lgDashDot"},
          {u"LongDashDotDot", "lgDashDotDot"}},
         "a:prstDash/@val"},
        {"DashType", {{u"RoundDot", "rnd"}}, "@cap"},
        {"JoinType", {{u"Miter", "800000"}}, "a:miter/@lim"},
        {"JoinType", {{u"Bevel", ""}}, "a:bevel"},
    };
    for (const auto& [property, values, path] : enumerations)
        for (const auto& [value, expected] : values)
            rows.push_back(
                {std::string("SolidBorderFormat.") + property, object, value, line + path, expected});
}

std::vector<Row> makeShapeRows()
{
    std::vector<Row> rows;
    for (const auto& place : makeFilledPlaces()) {
        addFillRows(place, rows);
        addBorderRows(place, "a:solidFill/a:srgbClr", rows);
    }
    const ShapePlace lines[] = {{"LineChart.series.Format", "c:ser[2]/c:spPr/", true},
                                {"LineChart.point.Format", "c:ser[2]/c:dPt/c:spPr/", true}};
    for (const auto& place : lines) addBorderRows(place, "a:solidFill/a:schemeClr", rows);
    return rows;
}

TEST_F(ShownCatalogue, HasAPlaceInTheMarkupForEveryWritableProperty)
{
    for (const auto& rows : {makeTreeRows(), makeLabelRows(), makeShapeRows()})
        for (const auto& row : rows) check(row);

    for (const auto* info : orca::ClassRegistry::instance().getClasses()) {
        const auto name = shorten(info->getName());
        for (const auto& property : info->getOwnProperties())
            if (property->isWritable()) {
                EXPECT_GE(values_[name + "." + property->getName()].size(), 2U)
                    << name << "." << property->getName() << " needs two rows";
            }
        const bool isConstructible = !info->getOwnConstructors().empty();
        EXPECT_TRUE(!isConstructible || visited_.contains(name) != unshown.contains(name))
            << name << " needs a row, or a reason why it shows nothing";
    }
}

}  // namespace
}  // namespace quillon::report
