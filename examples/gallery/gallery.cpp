// The charts of the gallery from C++, each in a function of its own: gallery reads the tables of the current
// folder.
#include <iostream>

#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/table/ChartTable.h"

namespace {

using namespace quillon::report;
using quillon::chart::Chart;
using quillon::chart::ColumnChart;
using quillon::chart::Title;

std::shared_ptr<Chart> makeChart(const ChartData& data, const char16_t* title)
{
    auto chart = ColumnChart::create();
    chart->setDataSet(data.dataSet);
    chart->setTitle(Title::create(title));
    return chart;
}

void save(const std::string& path, const ChartData& data, const char16_t* title, const ChartOptions& options)
{
    Document document;
    document.addChart(makeChart(data, title), options, data);
    document.save(path);
}

void revenueTarget()
{
    const auto data = readChartData("revenue-target.csv", {});
    save("revenue-target.docx", data, u"December took us past the year’s target",
         {.kind = ChartKind::Column,
          .valueTitle = "Revenue, EUR thousand",
          .valueMax = 400,
          .valueStep = 100,
          .second = {"Target reached"},
          .secondTitle = "Share of the year’s target",
          .secondFormat = "0%",
          .secondMax = 1.2,
          .secondStep = 0.3,
          .gap = 60,
          .line = {"Target reached"}});
}

void heating()
{
    const auto data = readChartData("heating.csv", {});
    save("heating.docx", data, u"Only March took more heat than last year",
         {.kind = ChartKind::Column,
          .legend = Legend::Top,
          .valueTitle = "Heat, MWh",
          .valueStep = 100,
          .gap = 50,
          .markers = true,
          .seriesColors = {{"2025", "#4472C4"}, {"2024", "#7F7F7F"}},
          .line = {"2024"}});
}

void budget()
{
    const auto data = readChartData("budget.csv", {.gaps = true});
    save("budget.docx", data, u"Savings pay for four fifths of what is new, EUR million",
         {.kind = ChartKind::Waterfall,
          .legend = Legend::None,
          .gridlines = Gridlines::None,
          .noValueAxis = true,
          .labels = {Label::Value},
          .labelFormat = "0.0",
          .gap = 30,
          .totals = {"2025", "2026"}});
}

void survey()
{
    const auto data = readChartData("survey.csv", {});
    save("survey.docx", data, u"We know our work, but not why we meet",
         {.kind = ChartKind::Bar,
          .legend = Legend::Top,
          .gridlines = Gridlines::None,
          .noValueAxis = true,
          .labels = {Label::Value},
          .labelFormat = "0\"%\"",
          .gap = 40,
          .stacking = Stacking::Percent,
          .colors = {"#7FB3D5", "#E5E7E9", "#F0B27A"}});
}

void heatSources()
{
    const auto data = readChartData("heat-sources.csv", {});
    save("heat-sources.docx", data, u"Three quarters of all homes heat without oil and gas",
         {.kind = ChartKind::Doughnut, .legend = Legend::Right, .labels = {Label::Percent}});
}

void price()
{
    const auto data = readChartData("price.csv", {});
    save("price.docx", data, u"The price rose by a third, after a weak summer",
         {.kind = ChartKind::Line,
          .valueTitle = "EUR per kg",
          .numberFormat = "General",
          .valueMin = 20,
          .trendline = Trendline::MovingAverage,
          .period = 8});
}

void population()
{
    const auto data = readChartData("population.csv", {});
    save("population.docx", data, u"Women live longer",
         {.kind = ChartKind::Bar,
          .legend = Legend::None,
          .valueTitle = "←  Women          Share of each, %          Men  →",
          .numberFormat = "0;0",
          .valueMin = -8,
          .valueMax = 8,
          .valueStep = 2,
          .gap = 10,
          .overlap = 100,
          .colors = {"#8E6C9E", "#3E8E8C"}});
}

void iceCream()
{
    const auto data = readChartData("ice-cream.csv", {.x = "Temperature"});
    save("ice-cream.docx", data, u"Each degree sells thirteen more ice creams",
         {.kind = ChartKind::Scatter,
          .valueTitle = "Ice creams a day",
          .valueStep = 100,
          .xTitle = "Temperature at noon, °C",
          .xMin = 10,
          .xMax = 40,
          .xStep = 5,
          .colors = {"#D9603B"},
          .trendline = Trendline::Linear});
}

void products()
{
    const auto data = readChartData("products.csv", {.x = "Margin", .gaps = true});
    save("products.docx", data, u"What earns most grows fastest",
         {.kind = ChartKind::Bubble,
          .legend = Legend::Top,
          .valueTitle = "Growth, %",
          .xTitle = "Margin, %",
          .xMin = 5,
          .xMax = 55,
          .sizes = {"Revenue"}});
}

void bicycles()
{
    const auto data = readChartData("bicycles.csv", {});
    save("bicycles.docx", data, u"Two bicycles, two purposes",
         {.kind = ChartKind::Radar,
          .legend = Legend::Right,
          .valueMax = 10,
          .valueStep = 2,
          .noValueAxis = true,
          .markers = true});
}

void sharePrice()
{
    const auto data = readChartData("share-price.csv", {});
    save("share-price.docx", data, u"Shares recovered in the second half of September",
         {.kind = ChartKind::Stock,
          .categoryTitle = "September 2025",
          .valueTitle = "EUR",
          .numberFormat = "General",
          .categoryFormat = "d",
          .valueMin = 54});
}

void smallMultiples()
{
    const ChartOptions options{.height = "2.2in",
                               .categoryFormat = "mmmmm",
                               .valueMax = 150,
                               .valueStep = 50,
                               .gap = 20,
                               .colors = {"#2E86AB"},
                               .fontSize = 8};
    std::vector<PlacedChart> charts;
    for (const auto& [city, title] :
         {std::pair("Coastal", u"Rain on the coast, mm"), std::pair("Inland", u"Rain inland, mm"),
          std::pair("Southern", u"Rain in the south, mm")}) {
        const auto data = readChartData(
            "small-multiples.csv",
            {.category = {"Month"}, .columns = {"Rain"}, .where = {std::string("City=") + city}});
        charts.push_back({makeChart(data, title), options, data});
    }
    Document document;
    document.addCharts(charts);
    document.save("small-multiples.docx");
}

void seedlings()
{
    const auto data = readChartData("seedlings.csv", {});
    save("seedlings.docx", data, u"Growth slows after two weeks",
         {.kind = ChartKind::Line,
          .valueTitle = "Height, mm",
          .valueMax = 140,
          .valueStep = 20,
          .markers = true,
          .colors = {"#5B8C3A"},
          .errorPlus = {"Spread"},
          .errorMinus = {"Spread"}});
}

void electricity()
{
    const auto data = readChartData("electricity.csv", {});
    save("electricity.docx", data, u"Wind has overtaken water",
         {.kind = ChartKind::Area,
          .valueTitle = "TWh",
          .stacking = Stacking::Normal,
          .colors = {"#3D7EA6", "#9CC5A1", "#F2C14E"}});
}

void branches()
{
    const auto data = readChartData("branches.csv", {});
    save("branches.docx", data, u"Harbour and Station grow fastest, sales in EUR million",
         {.kind = ChartKind::Column,
          .legend = Legend::Top,
          .gridlines = Gridlines::None,
          .noValueAxis = true,
          .labels = {Label::Value},
          .labelFormat = "0.0",
          .gap = 60,
          .colors = {"#BDD7EE", "#5B9BD5", "#1F4E79"}});
}

void day()
{
    const auto data = readChartData("day.csv", {});
    save("day.docx", data, u"Where the hours of a day go",
         {.kind = ChartKind::Pie,
          .legend = Legend::None,
          .labels = {Label::Category, Label::Value},
          .labelPosition = LabelPosition::OutsideEnd,
          .labelFormat = "0.0\" h\"",
          .palette = {"#34568B", "#E98973", "#88B2CC", "#E7B10A", "#7FA99B", "#A9907E"},
          .explosion = 6});
}

void guests()
{
    const auto data = readChartData("guests.csv", {.category = {"Year", "Quarter"}});
    save("guests.docx", data, u"Each summer brings more guests",
         {.kind = ChartKind::Column,
          .numberFormat = "#,##0",
          .valueStep = 4000,
          .gap = 30,
          .colors = {"#E0A030"}});
}

void users()
{
    const auto data = readChartData("users.csv", {});
    save("users.docx", data, u"Users grow tenfold every two years",
         {.kind = ChartKind::Line, .valueTitle = "Users", .log = 10, .markers = true});
}

void complaints()
{
    const auto data = readChartData("complaints.csv", {.sort = "descending", .top = 6});
    save("complaints.docx", data, u"Four in ten complaints are about late deliveries",
         {.kind = ChartKind::Bar,
          .gridlines = Gridlines::None,
          .noValueAxis = true,
          .labels = {Label::Value},
          .gap = 40,
          .colors = {"#B5483F"}});
}

void punctuality()
{
    const auto data = readChartData("punctuality.csv", {});
    save("punctuality.docx", data, u"Only line 3 missed its target",
         {.kind = ChartKind::Column,
          .categoryTitle = "Line",
          .valueTitle = "Trains on time, %",
          .valueMax = 100,
          .valueStep = 20,
          .gap = 50,
          .seriesColors = {{"On time", "#8FA8BF"}, {"Target", "#404040"}},
          .categoryColors = {{"3", "#C0504D"}},
          .dashed = {"Target"},
          .line = {"Target"}});
}

void forecast()
{
    const auto data = readChartData("forecast.csv", {.gaps = true});
    save("forecast.docx", data, u"Next year passes half a million visitors",
         {.kind = ChartKind::Line,
          .valueTitle = "Visitors, thousand",
          .valueMin = 0,
          .seriesColors = {{"Visitors", "#1F4E79"}, {"Forecast", "#1F4E79"}},
          .dashed = {"Forecast"}});
}

void schedule()
{
    const auto data = readChartData("schedule.csv", {});
    save("schedule.docx", data, u"We move in after 25 weeks",
         {.kind = ChartKind::Bar,
          .valueTitle = "Week",
          .valueStep = 5,
          .labels = {Label::Value},
          .labelFormat = "0\" wk\"",
          .gap = 40,
          .stacking = Stacking::Normal,
          .seriesColors = {{"Weeks", "#3D7EA6"}},
          .hidden = {"Start"}});
}

void defects()
{
    const auto data = readChartData("defects.csv", {});
    save("defects.docx", data, u"Two causes make three fifths of all defects",
         {.kind = ChartKind::Column,
          .legend = Legend::Top,
          .valueTitle = "Defects",
          .valueMax = 60,
          .valueStep = 15,
          .second = {"Share of all"},
          .secondFormat = "0%",
          .secondMin = 0,
          .secondMax = 1,
          .secondStep = 0.25,
          .gap = 20,
          .markers = true,
          .line = {"Share of all"}});
}

void downtime()
{
    const auto data = readChartData("downtime.csv", {});
    save("downtime.docx", data, u"Hours of downtime a year",
         {.kind = ChartKind::Column,
          .width = "3in",
          .height = "2in",
          .gridlines = Gridlines::None,
          .noValueAxis = true,
          .labels = {Label::Value},
          .gap = 30});
}

}  // namespace

int main()
try {
    for (const auto make :
         {revenueTarget, heating,  budget,     survey,         heatSources, price,       population, iceCream,
          products,      bicycles, sharePrice, smallMultiples, seedlings,   electricity, branches,   day,
          guests,        users,    complaints, downtime,       punctuality, forecast,    schedule,   defects})
        make();
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
