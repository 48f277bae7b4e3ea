#include "python/core/Template.h"

#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <string>

#include "python/core/Blocks.h"
#include "python/core/ChartData.h"
#include "python/core/Errors.h"
#include "python/core/Hearing.h"
#include "python/core/Options.h"
#include "python/core/Text.h"
#include "python/core/Unlocked.h"
#include "report/fill/FillWords.h"
#include "report/fill/Template.h"

namespace quillon::python {
namespace {

namespace py = pybind11;

report::Match readMatch(const std::string& text)
{
    if (text == "name") return report::Match::Name;
    if (text == "position") return report::Match::Position;
    throw Refused(PyExc_ValueError, "match: expected name or position, got \"" + text + "\".");
}

/// In the order of quillon.report.FillReport.
py::tuple toTuple(const report::FillReport& filled)
{
    py::list series;
    for (const auto& row : filled.series)
        series.append(py::make_tuple(nameOf(row.change), row.name, row.before));
    return py::make_tuple(filled.number, filled.chart, series, filled.pointsBefore, filled.pointsAfter,
                          filled.warnings);
}

/// A report::Template that Python code may use on several threads: while one works on it, the others are
/// refused.
class Template {
 public:
    explicit Template(report::Template document) : document_(std::move(document)) {}

    /// In the order of quillon.report.FoundChart.
    py::list getCharts()
    {
        return guard("charts", [&] {
            py::list charts;
            for (const auto& chart : use().getCharts())
                charts.append(py::make_tuple(chart.number, chart.name, chart.altText, chart.title,
                                             chart.types, chart.series, chart.points, chart.place,
                                             chart.problem));
            return charts;
        });
    }

    py::list getPlaceholders()
    {
        return guard("placeholders", [&] {
            py::list placeholders;
            for (const auto& [name, kind, part] : use().getPlaceholders())
                placeholders.append(py::make_tuple(name, nameOf(kind), part));
            return placeholders;
        });
    }

    py::object getData(py::handle chart)
    {
        return guard("get_data", [&] { return makeChartData(use().getChartData(readText(chart, "chart"))); });
    }

    py::tuple fill(py::handle chart, py::handle data, py::handle match, py::handle title,
                   py::handle numberFormat)
    {
        return guard("fill", [&] {
            auto& document = use();
            const auto name = readText(chart, "chart");
            const auto read = readChartData(data);
            const report::FillOptions options{readMatch(readText(match, "match")), readText(title, "title"),
                                              readText(numberFormat, "number_format")};
            report::FillReport filled;
            write({read.dataSet}, this, [&] { filled = document.fill(name, read, options); });
            return toTuple(filled);
        });
    }

    /// The sentences on what was replaced.
    std::vector<std::string> insert(py::handle placeholder, py::handle chart, py::handle data,
                                    const py::dict& options)
    {
        return guard("insert", [&] {
            auto& document = use();
            const auto name = readText(placeholder, "placeholder");
            const auto native = readChart(chart);
            const auto chosen = readOptions(options);
            const auto details = readDetails(data);
            Hearing hearing;
            write({native}, this,
                  [&] { document.insert(name, *native, chosen, details, hearing.getListener()); });
            return hearing.takeWarnings();
        });
    }

    void insertTable(py::handle placeholder, py::handle data, py::handle numberFormat,
                     py::handle categoryFormat)
    {
        guard("insert_table", [&] {
            use().insertTable(
                readText(placeholder, "placeholder"), readChartData(data),
                {readText(numberFormat, "number_format"), readText(categoryFormat, "category_format")});
        });
    }

    std::size_t replace(py::handle placeholder, py::handle text)
    {
        return guard("replace", [&] {
            return use().replace(readText(placeholder, "placeholder"), readText(text, "text"));
        });
    }

    std::unique_ptr<Template> copy()
    {
        return guard("copy", [&] { return std::make_unique<Template>(use()); });
    }

    py::bytes toBytes()
    {
        return guard("to_bytes", [&] {
            const auto& document = use();
            std::string bytes;
            write({}, this, [&] { bytes = document.toBytes(); });
            return py::bytes(bytes);
        });
    }

 private:
    report::Template& use()
    {
        Writing::requireNone(this);
        return document_;
    }

    report::Template document_;
};

/// Of a path, or of the bytes of a file.
std::unique_ptr<Template> openTemplate(py::handle source)
{
    return guard("open", [&] {
        std::optional<report::Template> document;
        if (PyBytes_Check(source.ptr()) != 0) {
            const std::string bytes = py::reinterpret_borrow<py::bytes>(source);
            runUnlocked([&] { document.emplace(bytes); });
        } else {
            const auto path = readPath(source);
            runUnlocked([&] { document = report::Template::open(path); });
        }
        return std::make_unique<Template>(std::move(*document));
    });
}

}  // namespace

void defineTemplate(py::module_& core)
{
    auto document = py::class_<Template>(core, "Template", py::is_final());
    document.def("get_charts", &Template::getCharts)
        .def("get_placeholders", &Template::getPlaceholders)
        .def("get_data", &Template::getData)
        .def("fill", &Template::fill)
        .def("insert", &Template::insert)
        .def("insert_table", &Template::insertTable)
        .def("replace", &Template::replace)
        .def("copy", &Template::copy)
        .def("to_bytes", &Template::toBytes);
    // Only the function below makes one: what __new__ gives would be a template before it is initialised.
    reinterpret_cast<PyTypeObject*>(document.ptr())->tp_new = nullptr;
    core.def("open_template", openTemplate);
}

}  // namespace quillon::python
