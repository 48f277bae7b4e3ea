#include "python/core/ChartData.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "orca/HostType.h"
#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Text.h"

namespace quillon::python {
namespace {

using report::CategoryKind;
using report::ChartData;
using report::SeriesDetails;
using Texts = std::vector<std::u16string>;

constexpr std::array<std::pair<const char*, CategoryKind>, 4> kinds = {
    {{"automatic", CategoryKind::Automatic},
     {"text", CategoryKind::Text},
     {"date", CategoryKind::Date},
     {"number", CategoryKind::Number}}};

/// Adds the name of a field to what is wrong with its value.
template <typename Read>
auto readField(py::handle owner, const char* name, const Read& read)
try {
    return read(owner.attr(name));
} catch (const Refused& refused) {
    throw Refused(refused.type, std::string(name) + ": " + refused.what());
}

CategoryKind readKind(py::handle value)
{
    const auto text = readText(value, "category_kind");
    for (const auto& [name, kind] : kinds)
        if (text == name) return kind;
    throw Refused(PyExc_ValueError,
                  "category_kind: expected automatic, text, date or number, got \"" + text + "\".");
}

Texts readTexts(py::handle value)
{
    static const ValueType type{ValueType::Kind::Texts, 0, nullptr, nullptr, "Sequence[str]"};
    return orca::factory::HostType<Texts>::fromHost(toHost(value.ptr(), type));
}

/// Empty, or one value for each of `expected` categories or points.
template <typename T>
std::vector<T> requireSize(std::vector<T> values, std::size_t expected, const char* what)
{
    if (values.empty() || values.size() == expected) return values;
    throw Refused(PyExc_ValueError, "expected " + std::to_string(expected) + ", one for each " + what +
                                        ", got " + std::to_string(values.size()) + ".");
}

std::vector<double> readNumbers(py::handle owner, const char* name, std::size_t expected, const char* what)
{
    return readField(owner, name, [&](const py::object& value) {
        return requireSize(toNumbers(value.ptr()), expected, what);
    });
}

SeriesDetails readDetails(py::handle value, std::size_t points)
{
    if (!py::hasattr(value, "number_format"))
        throw Refused(PyExc_TypeError, "expected SeriesDetails, got " + nameType(value) + ".");
    return {readText(value.attr("number_format"), "number_format"),
            readNumbers(value, "sizes", points, "point"), readNumbers(value, "errors_plus", points, "point"),
            readNumbers(value, "errors_minus", points, "point")};
}

py::list readList(const py::object& value)
{
    if (!py::isinstance<py::iterable>(value) || py::isinstance<py::str>(value))
        throw Refused(PyExc_TypeError, "expected a list, got " + nameType(value) + ".");
    return {value};
}

std::vector<SeriesDetails> readSeries(const py::object& list, const chart::DataSet& set)
{
    std::vector<SeriesDetails> result;
    for (const auto& item : readList(list)) {
        if (result.size() == set.getSeriesCount())
            throw Refused(PyExc_ValueError,
                          "expected at most " + std::to_string(result.size()) + ", one for each series.");
        try {
            result.push_back(readDetails(item, set.getSeries(result.size())->getSize()));
        } catch (const Refused& refused) {
            throw Refused(refused.type,
                          "item " + std::to_string(result.size()) + " (from 0): " + refused.what());
        }
    }
    return result;
}

std::vector<Texts> readLevels(const py::object& list, std::size_t categories)
{
    std::vector<Texts> result;
    for (const auto& level : readList(list))
        result.push_back(requireSize(readTexts(level), categories, "category"));
    return result;
}

std::shared_ptr<chart::DataSet> findDataSet(py::handle value)
{
    return isHandle(value.ptr()) ? hostOf(value.ptr())->getNative<chart::DataSet>() : nullptr;
}

std::shared_ptr<chart::DataSet> readDataSet(py::handle value)
{
    if (auto set = findDataSet(value)) return set;
    throw Refused(PyExc_TypeError, "expected a data set, got " + nameType(value) + ".");
}

py::list makeTexts(const Texts& texts)
{
    py::list result;
    for (const auto& text : texts) result.append(toPython(orca::HostArray(text)));
    return result;
}

py::object makeDetails(const py::object& type, const SeriesDetails& details)
{
    return type(details.numberFormat, details.sizes, details.errorsPlus, details.errorsMinus);
}

}  // namespace

report::ChartData readChartData(py::handle value)
{
    if (auto set = findDataSet(value)) return set;
    if (!py::hasattr(value, "data_set"))
        throw Refused(PyExc_TypeError, "expected chart data or a data set, got " + nameType(value) + ".");
    ChartData data(readField(value, "data_set", readDataSet));
    const auto count = data.dataSet->getCategories().size();
    data.categoryKind = readKind(value.attr("category_kind"));
    data.categoryValues = readNumbers(value, "category_values", count, "category");
    data.categoryFormat = readText(value.attr("category_format"), "category_format");
    data.levels = readField(value, "levels", [&](const py::object& list) { return readLevels(list, count); });
    data.categoryNames = readField(value, "category_names", [&](const py::object& list) {
        return requireSize(readTexts(list), data.levels.size() + 1, "level and one for the categories");
    });
    data.totals = readField(value, "totals", readTexts);
    data.series =
        readField(value, "series", [&](const py::object& list) { return readSeries(list, *data.dataSet); });
    return data;
}

py::object makeChartData(const report::ChartData& data)
{
    const auto module = py::module_::import("quillon.report");
    const auto detailsType = module.attr("SeriesDetails");
    const auto* const kind = std::find_if(kinds.begin(), kinds.end(),
                                          [&](const auto& row) { return row.second == data.categoryKind; });
    py::list levels;
    for (const auto& level : data.levels) levels.append(makeTexts(level));
    py::list series;
    for (const auto& details : data.series) series.append(makeDetails(detailsType, details));
    const auto set = orca::factory::HostType<std::shared_ptr<chart::DataSet>>::toHost(data.dataSet);
    return module.attr("ChartData")(toPython(orca::HostArray(set)), kind->first, data.categoryValues,
                                    data.categoryFormat, levels, makeTexts(data.totals), series,
                                    makeTexts(data.categoryNames));
}

void defineChartData(py::module_& core)
{
    core.def("check_chart_data", [](py::handle value) {
        return guard("ChartData", [&] { return makeChartData(readChartData(value)); });
    });
}

}  // namespace quillon::python
