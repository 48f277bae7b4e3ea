#include "python/core/Blocks.h"

#include "python/core/ChartData.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Text.h"

namespace quillon::python {

namespace py = pybind11;

namespace {

report::TableCell readCell(py::handle value)
{
    if (PyUnicode_Check(value.ptr())) return readText(value, "rows");
    const auto parts = py::cast<py::tuple>(value);
    report::TableCell cell(py::cast<double>(parts[0]), readText(parts[1], "rows"));
    cell.isDate = py::cast<bool>(parts[2]);
    return cell;
}

}  // namespace

std::shared_ptr<const chart::Chart> readChart(py::handle value)
{
    auto chart = isHandle(value.ptr()) ? hostOf(value.ptr())->getNative<chart::Chart>() : nullptr;
    if (!chart) throw Refused(PyExc_TypeError, "expected a chart, got " + nameType(value) + ".");
    return chart;
}

report::TextRuns readRuns(py::handle value)
{
    report::TextRuns runs;
    for (const auto& item : value) {
        const auto run = py::cast<py::tuple>(item);
        runs.push_back({.text = readText(run[0], "text"),
                        .bold = py::cast<bool>(run[1]),
                        .italic = py::cast<bool>(run[2]),
                        .link = readText(run[3], "link"),
                        .reference = readText(run[4], "reference")});
    }
    return runs;
}

std::vector<report::ListItem> readListItems(py::handle value)
{
    std::vector<report::ListItem> items;
    for (const auto& entry : value) {
        const auto item = py::cast<py::tuple>(entry);
        constexpr auto sentence = "level: expected 0 to 8.";
        const int level = readInteger(item[1], "level", sentence);
        if (level < 0) throw Refused(PyExc_ValueError, sentence);
        items.push_back({readRuns(item[0]), static_cast<unsigned>(level)});
    }
    return items;
}

report::TextTable readTable(py::handle columns, py::handle rows)
{
    report::TextTable table{.columns = readTexts(columns, "columns")};
    for (const auto& row : rows) {
        auto& cells = table.rows.emplace_back();
        for (const auto& cell : row) cells.push_back(readCell(cell));
    }
    return table;
}

std::vector<std::string> readTexts(py::handle value, const std::string& name)
{
    std::vector<std::string> texts;
    for (const auto& item : value) texts.push_back(readText(item, name));
    return texts;
}

int readInteger(py::handle value, const std::string& name, const char* sentence)
{
    if (PyIndex_Check(value.ptr()) == 0)
        throw Refused(PyExc_TypeError, name + ": expected an integer, got " + nameType(value) + ".");
    const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!number) throw py::error_already_set();
    int overflow = 0;
    const long integer = PyLong_AsLongAndOverflow(number.ptr(), &overflow);
    if (overflow != 0 || integer != static_cast<int>(integer)) throw Refused(PyExc_ValueError, sentence);
    return static_cast<int>(integer);
}

report::ChartData readDetails(py::handle value)
{
    return value.is_none() ? report::ChartData() : readChartData(value);
}

}  // namespace quillon::python
