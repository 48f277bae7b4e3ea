#include "python/core/Options.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "python/core/Errors.h"
#include "python/core/Text.h"

namespace quillon::python {
namespace {

namespace py = pybind11;
using report::ChartOptions;
using report::Legend;

Legend readLegend(py::handle value)
{
    constexpr std::array<std::pair<const char*, Legend>, 6> places = {{{"auto", Legend::Automatic},
                                                                       {"none", Legend::None},
                                                                       {"right", Legend::Right},
                                                                       {"top", Legend::Top},
                                                                       {"left", Legend::Left},
                                                                       {"bottom", Legend::Bottom}}};
    const auto text = readText(value, "legend");
    for (const auto& [name, legend] : places)
        if (text == name) return legend;
    throw Refused(PyExc_ValueError,
                  "legend: expected auto, none, right, top, left or bottom, got \"" + text + "\".");
}

bool readFlag(py::handle value, const std::string& name)
{
    if (!PyBool_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected bool, got " + nameType(value) + ".");
    return value.ptr() == Py_True;
}

struct Row {
    const char* name;
    void (*read)(ChartOptions& options, py::handle value);
};

constexpr Row rows[] = {
    {"width", [](ChartOptions& options, py::handle value) { options.width = readText(value, "width"); }},
    {"height", [](ChartOptions& options, py::handle value) { options.height = readText(value, "height"); }},
    {"legend", [](ChartOptions& options, py::handle value) { options.legend = readLegend(value); }},
    {"alt_text",
     [](ChartOptions& options, py::handle value) { options.altText = readText(value, "alt_text"); }},
    {"workbook",
     [](ChartOptions& options, py::handle value) { options.workbook = readFlag(value, "workbook"); }},
};

const Row& findRow(const std::string& name)
{
    const auto* const found =
        std::find_if(std::begin(rows), std::end(rows), [&name](const Row& row) { return name == row.name; });
    if (found == std::end(rows)) throw Refused(PyExc_TypeError, "there is no option \"" + name + "\".");
    return *found;
}

}  // namespace

ChartOptions readOptions(const py::dict& options)
{
    ChartOptions result;
    for (const auto& [name, value] : options) {
        const auto& row = findRow(readText(name, "option"));
        if (!value.is_none()) row.read(result, value);
    }
    return result;
}

}  // namespace quillon::python
