#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/DataSet.h"

/// The numbers of a chart: a set of series of points.
namespace quillon::chart::mi {

struct CosDataPoint : CosClass<DataPoint> {
    CosDataPoint() : CosClass("One value of a series, with formats of its own if it has any.")
    {
        constructor<>();
        constructor<double>({"value"});
        property<&DataPoint::getValue, &DataPoint::setValue>("Value", "The point's value.");
        property<&DataPoint::getFormat, &DataPoint::setFormat>("Format", "The point's own shape format.");
        property<&DataPoint::getLabelFormat, &DataPoint::setLabelFormat>("LabelFormat",
                                                                         "The point's own label format.");
        method<&DataPoint::getX>("getX", {}, "The X coordinate.");
        method<&DataPoint::getY>("getY", {}, "The point's value.");
    }
};

struct CosDataSeries : CosClass<DataSeries> {
    using Series = DataSeries;
    using Point = std::shared_ptr<DataPoint>;

    /// The host counts from 1; a 0 wraps around to a position that no series has.
    static Point getPoint(const Series& series, std::uint64_t index) { return series.getPoint(index - 1); }

    CosDataSeries() : CosClass("A named list of points, in the order of the categories.")
    {
        constexpr auto appendValue = orca::factory::overload<double>(&Series::appendPoint);
        constexpr auto appendPair = orca::factory::overload<double, double>(&Series::appendPoint);
        constexpr auto appendPoint = orca::factory::overload<Point>(&Series::appendPoint);

        constructor<>();
        constructor<std::u16string>({"name"});
        property<&Series::getName, &Series::setName>("Name", "The name that a legend shows.");
        property<&Series::getSize>("Size", "The number of points.");
        property<&Series::getFormat, &Series::setFormat>("Format", "The shape format of the series.");
        property<&Series::getLabelFormat, &Series::setLabelFormat>("LabelFormat",
                                                                   "The label format of the series.");
        method<appendValue>("appendPoint", {"value"}, "Appends a new point with X 0 and returns it.");
        method<appendPair>("appendPoint", {"x", "y"}, "Appends a new point and returns it.");
        method<appendPoint>("appendPoint", {"point"}, "Appends the point itself and returns it.");
        method<getPoint>("getPoint", {"index"}, "The point at a position, counted from 1.");
    }
};

struct CosDataSet : CosClass<DataSet> {
    using Series = std::shared_ptr<DataSeries>;

    /// The host counts from 1; a 0 wraps around to a position that no set has.
    static Series getSeries(const DataSet& set, std::uint64_t index) { return set.getSeries(index - 1); }

    CosDataSet() : CosClass("The data of a chart: category names, and series that run over them.")
    {
        constexpr auto appendSeries = orca::factory::overload<Series>(&DataSet::appendSeries);

        constructor<>();
        constructor<std::vector<std::u16string>>({"categories"});
        property<&DataSet::getCategories, &DataSet::setCategories>("Categories",
                                                                   "The category names, one for each point.");
        property<&DataSet::getSeriesCount>("SeriesCount", "The number of series.");
        method<appendSeries>("appendSeries", {"series"},
                             "Appends a series with as many points as the first one and returns it.");
        method<getSeries>("getSeries", {"index"},
                          "The series at a position, counted from 1; empty in a set without series.");
        method<&DataSet::getSeriesCount>("getSeriesCount", {}, "The number of series.");
    }
};

}  // namespace quillon::chart::mi
