#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "chart/model/PieChartDataSeriesFormatOptions.h"

/// Charts and what belongs to one chart type.
namespace quillon::chart::mi {

struct CosObject : CosClass<Object> {
    CosObject() : CosClass("The root of every chart class.", "corvala.mixin.Heterogeneous") {}
};

struct CosChart : CosClass<Chart> {
    CosChart() : CosClass("A chart: its data, its title and its plot area. A new chart has none of them.")
    {
        property<&Chart::getDataSet, &Chart::setDataSet>("DataSet", "The data that the chart shows.");
        property<&Chart::getTitle, &Chart::setTitle>("ChartTitle",
                                                     "The title; empty for a chart without one.");
        property<&Chart::getPlotArea, &Chart::setPlotArea>("PlotArea",
                                                           "The region in which the data is drawn.");
    }
};

struct CosBarChart : CosClass<BarChart, Chart> {
    CosBarChart() : CosClass("A chart of horizontal bars.") { constructor<>(); }
};

struct CosColumnChart : CosClass<ColumnChart, Chart> {
    CosColumnChart() : CosClass("A chart of vertical columns.") { constructor<>(); }
};

struct CosLineChart : CosClass<LineChart, Chart> {
    CosLineChart() : CosClass("A chart of lines.") { constructor<>(); }
};

struct CosPieChart : CosClass<PieChart, Chart> {
    CosPieChart() : CosClass("A pie, meant for one series.") { constructor<>(); }
};

/// Its superclass is not registered.
struct CosPieChartSlice : CosClass<PieChartSlice> {
    CosPieChartSlice() : CosClass("A slice of a pie chart; it has no settings.", "quillon.chart.ChartSlice")
    {
        constructor<>();
    }
};

struct CosDataSeriesFormatOptions : CosClass<DataSeriesFormatOptions> {
    CosDataSeriesFormatOptions() : CosClass("Options for all series of a chart; only pies have some.")
    {
        constructor<>();
    }
};

struct CosPieChartDataSeriesFormatOptions
    : CosClass<PieChartDataSeriesFormatOptions, DataSeriesFormatOptions> {
    using Options = PieChartDataSeriesFormatOptions;

    CosPieChartDataSeriesFormatOptions() : CosClass("How a pie's slices are pulled out and where they start.")
    {
        constructor<>();
        constructor<std::uint32_t>({"explosion"});
        constructor<std::uint32_t, std::uint32_t>({"explosion", "firstSliceAngle"});
        property<&Options::getPieExplosion, &Options::setPieExplosion>(
            "PieExplosion", "How far the slices are pulled out: percent, 0 to 100.");
        property<&Options::getFirstSliceAngle, &Options::setFirstSliceAngle>(
            "FirstSliceAngle", "Where the first slice starts: degrees, 0 to 360.");
    }
};

}  // namespace quillon::chart::mi
