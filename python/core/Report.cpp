#include "python/core/Report.h"

#include <pybind11/stl.h>

#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "chart/model/Chart.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "report/document/ChartParts.h"
#include "report/document/Document.h"
#include "report/options/Options.h"

namespace quillon::python {
namespace {

std::string nameType(py::handle value)
{
    return Py_TYPE(value.ptr())->tp_name;
}

std::string readText(py::handle value, const std::string& name)
{
    if (!PyUnicode_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected str, got " + nameType(value) + ".");
    Py_ssize_t size = 0;
    const auto* bytes = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
    if (bytes == nullptr) throw py::error_already_set();
    return {bytes, static_cast<std::size_t>(size)};
}

int readLevel(py::handle value)
{
    if (PyIndex_Check(value.ptr()) == 0)
        throw Refused(PyExc_TypeError, "level: expected an integer, got " + nameType(value) + ".");
    const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!number) throw py::error_already_set();
    int overflow = 0;
    const long level = PyLong_AsLongAndOverflow(number.ptr(), &overflow);
    if (overflow != 0 || level != static_cast<int>(level))
        throw Refused(PyExc_ValueError, "Heading level: expected 1 to 9.");
    return static_cast<int>(level);
}

std::shared_ptr<const chart::Chart> readChart(py::handle value)
{
    auto chart = isHandle(value.ptr()) ? hostOf(value.ptr())->getNative<chart::Chart>() : nullptr;
    if (!chart) throw Refused(PyExc_TypeError, "expected a chart, got " + nameType(value) + ".");
    return chart;
}

bool readWorkbook(py::handle value)
{
    if (!PyBool_Check(value.ptr()))
        throw Refused(PyExc_TypeError, "workbook: expected bool, got " + nameType(value) + ".");
    return value.ptr() == Py_True;
}

/// The keyword arguments that every function with a chart has; None leaves a length at its default.
struct OptionArguments {
    py::handle width;
    py::handle height;
    py::handle legend;
    py::handle altText;
    py::handle workbook;
};

report::ChartOptions readOptions(const OptionArguments& arguments)
{
    report::ChartOptions options;
    if (!arguments.width.is_none()) options.width = readText(arguments.width, "width");
    if (!arguments.height.is_none()) options.height = readText(arguments.height, "height");
    report::setOption(options, *report::findOption("legend"), readText(arguments.legend, "legend"), "legend");
    options.altText = readText(arguments.altText, "alt_text");
    options.workbook = readWorkbook(arguments.workbook);
    return options;
}

[[noreturn]] void raiseFileError(const report::FileError& error, const std::string& path)
{
    const auto name = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    PyErr_SetObject(PyExc_OSError,
                    py::make_tuple(error.getNumber(), std::strerror(error.getNumber()), name).ptr());
    throw py::error_already_set();
}

/// Runs `work`; what it throws becomes a Python exception. `place` is the function, in the words of Python.
template <typename Work>
auto guard(const char* place, const Work& work)
{
    try {
        return work();
    } catch (...) {
        raise(place);
    }
    throw py::error_already_set();
}

/// A report::Document that Python code may use on several threads: while one writes it, the others are
/// refused.
class Document {
 public:
    void addHeading(py::handle text, py::handle level)
    {
        guard("add_heading", [&] { use().addHeading(readText(text, "text"), readLevel(level)); });
    }

    void addParagraph(py::handle text)
    {
        guard("add_paragraph", [&] { use().addParagraph(readText(text, "text")); });
    }

    void addChart(py::handle chart, const OptionArguments& arguments)
    {
        guard("add_chart", [&] { use().addChart(readChart(chart), readOptions(arguments)); });
    }

    /// The package, and the sentences on what was replaced in its charts.
    std::pair<py::bytes, std::vector<std::string>> toBytes(const py::object& progress)
    {
        return guard("to_bytes", [&] {
            std::vector<std::string> warnings;
            const auto bytes = write(progress, warnings);
            return std::pair(py::bytes(bytes), std::move(warnings));
        });
    }

 private:
    /// Marks the document as being written. Made and destroyed under the interpreter's lock.
    class Writing {
     public:
        explicit Writing(Document& document) : document_(document) { document_.isWritten_ = true; }
        ~Writing() { document_.isWritten_ = false; }
        Writing(const Writing&) = delete;
        Writing& operator=(const Writing&) = delete;

     private:
        Document& document_;
    };

    report::Document& use()
    {
        if (isWritten_) throw Refused(PyExc_RuntimeError, "the document is being written.");
        return document_;
    }

    std::string write(const py::object& progress, std::vector<std::string>& warnings)
    {
        auto& document = use();
        const Writing writing(*this);
        report::Listener listener;
        listener.warning = [&warnings](const std::string& sentence) { warnings.push_back(sentence); };
        if (!progress.is_none())
            listener.progress = [&progress](std::size_t done, std::size_t total) {
                const py::gil_scoped_acquire lock;
                progress(done, total);
            };
        const py::gil_scoped_release unlocked;
        return document.toBytes(listener);
    }

    report::Document document_;
    bool isWritten_ = false;
};

/// The chart part, the workbook, the run, and the sentences on what was replaced.
py::tuple makeChartParts(py::handle chart, const OptionArguments& arguments, std::size_t drawingNumber,
                         const std::string& relationshipId)
{
    return guard("chart", [&] {
        const auto native = readChart(chart);
        const auto options = readOptions(arguments);
        std::vector<std::string> warnings;
        const auto parts = [&] {
            const py::gil_scoped_release unlocked;
            return report::makeChartParts(
                *native, options, drawingNumber, relationshipId,
                {.warning = [&](const std::string& sentence) { warnings.push_back(sentence); }});
        }();
        return py::make_tuple(py::bytes(parts.chart), py::bytes(parts.workbook), py::bytes(parts.run),
                              warnings);
    });
}

void writeFile(py::handle path, const py::bytes& bytes)
{
    PyObject* converted = nullptr;
    if (PyUnicode_FSConverter(path.ptr(), &converted) == 0) throw py::error_already_set();
    const std::string name = py::reinterpret_steal<py::bytes>(converted);
    const auto content = static_cast<std::string_view>(bytes);
    try {
        const py::gil_scoped_release unlocked;
        report::writeFile(name, content);
    } catch (const report::FileError& error) {
        raiseFileError(error, name);
    }
}

}  // namespace

void defineReport(py::module_& core)
{
    py::class_<Document>(core, "Document")
        .def(py::init())
        .def("add_heading", &Document::addHeading)
        .def("add_paragraph", &Document::addParagraph)
        .def("add_chart",
             [](Document& document, py::handle chart, py::handle width, py::handle height, py::handle legend,
                py::handle altText, py::handle workbook) {
                 document.addChart(chart, {width, height, legend, altText, workbook});
             })
        .def("to_bytes", &Document::toBytes);
    core.def("make_chart_parts",
             [](py::handle chart, py::handle width, py::handle height, py::handle legend, py::handle altText,
                py::handle workbook, std::size_t drawingNumber, const std::string& relationshipId) {
                 return makeChartParts(chart, {width, height, legend, altText, workbook}, drawingNumber,
                                       relationshipId);
             });
    core.def("write_file", writeFile);
}

}  // namespace quillon::python
