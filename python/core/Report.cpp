#include "python/core/Report.h"

#include <pybind11/stl.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chart/model/Chart.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Options.h"
#include "python/core/Text.h"
#include "python/core/Unlocked.h"
#include "python/core/Writing.h"
#include "report/document/ChartParts.h"
#include "report/document/Document.h"
#include "report/document/Preview.h"

namespace quillon::python {
namespace {

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

[[noreturn]] void raiseFileError(const report::FileError& error, const std::string& path)
{
    const auto name = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    PyErr_SetObject(PyExc_OSError,
                    py::make_tuple(error.getNumber(), std::strerror(error.getNumber()), name).ptr());
    throw py::error_already_set();
}

/// Runs `work`, which writes `roots` for `document`, with the interpreter's lock released and changes
/// refused.
void write(Writing::Roots roots, const void* document, const std::function<void()>& work)
{
    const Writing writing(std::move(roots), document);
    runUnlocked(work);
}

/// Hears what is said of a chart while it is written.
class Hearing {
 public:
    explicit Hearing(PyObject* progress) : progress_(progress) {}

    report::Listener getListener()
    {
        report::Listener listener;
        listener.warning = [this](const std::string& sentence) { warnings_.push_back(sentence); };
        if (progress_ != Py_None)
            listener.progress = [this](std::size_t done, std::size_t total) {
                runLocked([&] { tell(done, total); });
            };
        return listener;
    }

    std::vector<std::string> takeWarnings() { return std::move(warnings_); }

 private:
    void tell(std::size_t done, std::size_t total)
    {
        auto* const result = PyObject_CallFunction(progress_, "nn", static_cast<Py_ssize_t>(done),
                                                   static_cast<Py_ssize_t>(total));
        if (result == nullptr) throw py::error_already_set();
        Py_DECREF(result);
    }

    PyObject* progress_;
    std::vector<std::string> warnings_;
};

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

    void addChart(py::handle chart, const py::dict& options)
    {
        guard("add_chart", [&] {
            const auto native = readChart(chart);
            use().addChart(native, readOptions(options));
            charts_.push_back(native);
        });
    }

    /// The package, and the sentences on what was replaced in its charts.
    std::pair<py::bytes, std::vector<std::string>> toBytes(const py::object& progress)
    {
        return guard("to_bytes", [&] {
            const auto& document = use();
            Hearing hearing(progress.ptr());
            std::string bytes;
            write(charts_, this, [&] { bytes = document.toBytes(hearing.getListener()); });
            return std::pair(py::bytes(bytes), hearing.takeWarnings());
        });
    }

 private:
    report::Document& use()
    {
        Writing::requireNone(this);
        return document_;
    }

    report::Document document_;
    Writing::Roots charts_;
};

/// The chart part, the workbook, the run, and the sentences on what was replaced.
py::tuple makeChartParts(py::handle chart, const py::dict& options, std::size_t drawingNumber,
                         const std::string& relationshipId)
{
    return guard("chart", [&] {
        const auto native = readChart(chart);
        const auto chosen = readOptions(options);
        Hearing hearing(Py_None);
        report::ChartParts parts;
        write({native}, nullptr, [&] {
            parts =
                report::makeChartParts(*native, chosen, drawingNumber, relationshipId, hearing.getListener());
        });
        return py::make_tuple(py::bytes(parts.chart), py::bytes(parts.workbook), py::bytes(parts.run),
                              hearing.takeWarnings());
    });
}

/// A document that shows the chart, the chart's width and height, and the sentences on what was replaced.
py::tuple makePreview(py::handle chart, const py::dict& options)
{
    return guard("preview", [&] {
        const auto native = readChart(chart);
        const auto chosen = readOptions(options);
        Hearing hearing(Py_None);
        report::Preview preview;
        write({native}, nullptr,
              [&] { preview = report::makePreview(*native, chosen, hearing.getListener()); });
        return py::make_tuple(py::bytes(preview.document), preview.width, preview.height,
                              hearing.takeWarnings());
    });
}

void writeFile(py::handle path, const py::bytes& bytes)
{
    PyObject* converted = nullptr;
    if (PyUnicode_FSConverter(path.ptr(), &converted) == 0) throw py::error_already_set();
    const std::string name = py::reinterpret_steal<py::bytes>(converted);
    const auto content = static_cast<std::string_view>(bytes);
    try {
        runUnlocked([&] { report::writeFile(name, content); });
    } catch (const report::FileError& error) {
        raiseFileError(error, name);
    }
}

}  // namespace

void defineReport(py::module_& core)
{
    auto document = py::class_<Document>(core, "Document", py::is_final());
    document.def("add_heading", &Document::addHeading)
        .def("add_paragraph", &Document::addParagraph)
        .def("add_chart", &Document::addChart)
        .def("to_bytes", &Document::toBytes);
    // Only the function below makes one: what __new__ gives would be a document before it is initialised.
    reinterpret_cast<PyTypeObject*>(document.ptr())->tp_new = nullptr;
    core.def("make_document", [] { return std::make_unique<Document>(); });
    core.def("make_chart_parts", makeChartParts);
    core.def("make_preview", makePreview);
    core.def("write_file", writeFile);
}

}  // namespace quillon::python
