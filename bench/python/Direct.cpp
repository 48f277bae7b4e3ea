#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <chrono>

#include "chart/model/ColumnChart.h"
#include "chart/model/DataSet.h"

/// The members that python_bench.py measures, bound by hand: what the package is compared with.
PYBIND11_MODULE(quillon_direct, module)
{
    namespace py = pybind11;
    using namespace quillon::chart;
    using Point = std::shared_ptr<DataPoint>;

    py::class_<DataPoint, Point>(module, "DataPoint")
        .def(py::init(&DataPoint::create<double>))
        .def_property("Value", &DataPoint::getValue, &DataPoint::setValue);
    py::class_<DataSeries, std::shared_ptr<DataSeries>>(module, "DataSeries")
        .def(py::init(&DataSeries::create<const std::u16string&>))
        .def_property("Name", &DataSeries::getName, &DataSeries::setName)
        .def_property_readonly("Size", &DataSeries::getSize)
        .def("appendPoint", py::overload_cast<double>(&DataSeries::appendPoint))
        .def("appendPoint", py::overload_cast<double, double>(&DataSeries::appendPoint))
        .def("appendPoint", py::overload_cast<Point>(&DataSeries::appendPoint));
    py::class_<DataSet, std::shared_ptr<DataSet>>(module, "DataSet").def(py::init([] {
        return DataSet::create();
    }));
    py::class_<Chart, std::shared_ptr<Chart>>(module, "ColumnChart")
        .def(py::init([] { return ColumnChart::create(); }))
        .def_property("DataSet", &Chart::getDataSet, &Chart::setDataSet);

    // Appends a point for each value, and returns the seconds that this takes.
    module.def("append_points", [](DataSeries& series, const std::vector<double>& values) {
        const auto start = std::chrono::steady_clock::now();
        for (const double value : values) series.appendPoint(value);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    });
}
