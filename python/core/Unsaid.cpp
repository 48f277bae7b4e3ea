#include "python/core/Unsaid.h"

#include <pybind11/stl.h>

#include <memory>
#include <string>
#include <vector>

#include "chart/model/DataSeries.h"
#include "orca/HostType.h"
#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Writing.h"

namespace quillon::python {
namespace {

/// The library's object behind a handle. Throws: Refused when it is not a T.
template <typename T>
std::shared_ptr<T> read(py::handle value, const char* expected = "a chart object")
{
    auto object = isHandle(value.ptr()) ? hostOf(value.ptr())->getNative<T>() : nullptr;
    if (!object)
        throw Refused(PyExc_TypeError,
                      std::string("expected ") + expected + ", got " + Py_TYPE(value.ptr())->tp_name + ".");
    return object;
}

/// The same for an object that is about to change.
template <typename T>
std::shared_ptr<T> readForChange(py::handle value)
{
    auto object = read<T>(value);
    Writing::requireNone(*hostOf(value.ptr()));
    return object;
}

/// The values of a series as the bytes of doubles.
py::bytes readValues(py::handle series)
{
    return guard("values", [&] {
        std::vector<double> values;
        for (const auto& point : read<chart::DataSeries>(series)->getPoints())
            values.push_back(point->getValue());
        return py::bytes(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(double));
    });
}

py::tuple readColor(py::handle color)
{
    return guard("Color", [&] {
        const auto native = read<chart::Color>(color);
        return py::make_tuple(toPython(orca::HostArray(native->getText())), native->isFromTriplet());
    });
}

/// Gives a colour what readColor() told of another one.
void writeColor(py::handle color, const std::u16string& text, bool isFromTriplet)
{
    guard("Color", [&] {
        const auto native = readForChange<chart::Color>(color);
        if (isFromTriplet)
            native->setFromTriplet(0, 0, 0);
        else
            native->setFromText({});
        native->setText(text);
    });
}

py::object makePoint(double x, double value)
{
    auto point = chart::DataPoint::create(x, value);
    return toPython(
        orca::HostArray(orca::factory::HostType<std::shared_ptr<chart::DataPoint>>::toHost(point)));
}

void replaceFill(py::handle format, py::handle fill)
{
    guard("replace_fill", [&] {
        const auto native = readForChange<chart::ShapeFormat>(format);
        native->setFill(read<chart::FillFormat>(fill, "FillFormat"));
    });
}

void replaceBorder(py::handle format, py::handle border)
{
    guard("replace_border", [&] {
        const auto native = readForChange<chart::ShapeFormat>(format);
        native->setBorder(read<chart::BorderFormat>(border, "BorderFormat"));
    });
}

}  // namespace

void defineUnsaid(py::module_& core)
{
    core.def("read_values", readValues);
    core.def("read_color", readColor);
    core.def("write_color", writeColor);
    core.def("make_point", makePoint);
    core.def("replace_fill", replaceFill);
    core.def("replace_border", replaceBorder);
}

}  // namespace quillon::python
