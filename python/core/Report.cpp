#include "python/core/Report.h"

#include <pybind11/stl.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chart/model/Chart.h"
#include "python/core/Blocks.h"
#include "python/core/ChartData.h"
#include "python/core/Errors.h"
#include "python/core/Hearing.h"
#include "python/core/Options.h"
#include "python/core/Text.h"
#include "python/core/Unlocked.h"
#include "report/document/ChartParts.h"
#include "report/document/Document.h"
#include "report/document/Preview.h"

namespace quillon::python {

namespace py = pybind11;

namespace {

[[noreturn]] void raiseFileError(const report::FileError& error, const std::string& path)
{
    const auto name = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    PyErr_SetObject(PyExc_OSError,
                    py::make_tuple(error.getNumber(), std::strerror(error.getNumber()), name).ptr());
    throw py::error_already_set();
}

/// The table of a chart's data: (columns, rows).
py::tuple makeTable(py::handle data, py::handle header)
{
    return guard("add_table", [&] {
        const auto table = report::makeTable(readChartData(data), readText(header, "header"));
        return py::make_tuple(table.columns, table.rows);
    });
}

/// A report::Document that Python code may use on several threads: while one writes it, the others are
/// refused.
class Document {
 public:
    /// Template: the path of a document whose look it takes, or None.
    explicit Document(py::handle path) : document_(path.is_none() ? report::Document() : open(path)) {}

    void addHeading(py::handle text, py::handle level)
    {
        guard("add_heading", [&] {
            use().addHeading(readText(text, "text"),
                             readInteger(level, "level", "Heading level: expected 1 to 9."));
        });
    }

    void addParagraph(py::handle runs, py::handle style)
    {
        guard("add_paragraph", [&] { use().addParagraph(readRuns(runs), readText(style, "style")); });
    }

    void addList(py::handle items, bool isNumbered)
    {
        const auto kind = isNumbered ? report::ListKind::Numbers : report::ListKind::Bullets;
        guard("add_list", [&] { use().addList(readListItems(items), kind); });
    }

    void addChart(py::handle chart, py::handle data, const py::dict& options)
    {
        guard("add_chart", [&] {
            const auto native = readChart(chart);
            use().addChart(native, readOptions(options), readDetails(data));
            charts_.push_back(native);
        });
    }

    /// A list of (chart, data, options).
    void addCharts(const py::list& charts)
    {
        guard("add_charts", [&] {
            std::vector<report::PlacedChart> placed;
            for (const auto& item : charts) {
                const auto parts = py::cast<py::tuple>(item);
                placed.push_back(
                    {readChart(parts[0]), readOptions(py::cast<py::dict>(parts[2])), readDetails(parts[1])});
            }
            use().addCharts(placed);
            for (const auto& one : placed) charts_.push_back(one.chart);
        });
    }

    void addCaption(py::handle text, py::handle label, py::handle name)
    {
        guard("add_caption", [&] {
            use().addCaption({readText(text, "text"), readText(label, "label"), readText(name, "name")});
        });
    }

    void addTable(py::handle table)
    {
        guard("add_table", [&] { use().addTable(readTable(table)); });
    }

    void addImage(const py::bytes& bytes, py::handle width, py::handle height, py::handle altText)
    {
        guard("add_image", [&] {
            use().addImage(
                bytes, {readText(width, "width"), readText(height, "height"), readText(altText, "alt_text")});
        });
    }

    void addPageBreak()
    {
        guard("add_page_break", [&] { use().addPageBreak(); });
    }

    /// Margins: top, right, bottom, left.
    void startSection(py::handle paper, bool isLandscape, const py::tuple& margins)
    {
        guard("start_section", [&] {
            use().startSection({readText(paper, "paper"), isLandscape, readText(margins[0], "top"),
                                readText(margins[1], "right"), readText(margins[2], "bottom"),
                                readText(margins[3], "left")});
        });
    }

    void setHeader(py::handle runs)
    {
        guard("set_header", [&] { use().setHeader({readRuns(runs)}); });
    }

    void setFooter(py::handle runs)
    {
        guard("set_footer", [&] { use().setFooter({readRuns(runs)}); });
    }

    void addContents(py::handle levels)
    {
        guard("add_table_of_contents", [&] {
            use().addTableOfContents(readInteger(levels, "levels", "Levels of contents: expected 1 to 9."));
        });
    }

    void setProperties(py::handle title, py::handle author, py::handle keywords, py::handle language)
    {
        guard("set_properties", [&] {
            use().setProperties({readText(title, "title"), readText(author, "author"),
                                 readText(keywords, "keywords"), readText(language, "language")});
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
    static report::Document open(py::handle path)
    {
        return guard("Document", [&] { return report::Document(readPath(path)); });
    }

    report::Document& use()
    {
        Writing::requireNone(this);
        return document_;
    }

    report::Document document_;
    Writing::Roots charts_;
};

/// The chart part, the workbook, the run, and the sentences on what was replaced.
py::tuple makeChartParts(py::handle chart, py::handle data, const py::dict& options,
                         std::size_t drawingNumber, const std::string& relationshipId,
                         const std::string& theme)
{
    return guard("chart", [&] {
        const auto native = readChart(chart);
        const auto chosen = readOptions(options);
        const auto details = readDetails(data);
        Hearing hearing;
        report::ChartParts parts;
        write({native}, nullptr, [&] {
            parts = report::makeChartParts(*native, chosen, drawingNumber, relationshipId,
                                           hearing.getListener(), details, report::readThemeColors(theme));
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
        Hearing hearing;
        report::Preview preview;
        write({native}, nullptr,
              [&] { preview = report::makePreview(*native, chosen, hearing.getListener()); });
        return py::make_tuple(py::bytes(preview.document), preview.width, preview.height,
                              hearing.takeWarnings());
    });
}

void writeFile(py::handle path, const py::bytes& bytes)
{
    const auto name = readPath(path);
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
        .def("add_list", &Document::addList)
        .def("add_chart", &Document::addChart)
        .def("add_charts", &Document::addCharts)
        .def("add_caption", &Document::addCaption)
        .def("add_table", &Document::addTable)
        .def("add_image", &Document::addImage)
        .def("add_page_break", &Document::addPageBreak)
        .def("start_section", &Document::startSection)
        .def("set_header", &Document::setHeader)
        .def("set_footer", &Document::setFooter)
        .def("add_table_of_contents", &Document::addContents)
        .def("set_properties", &Document::setProperties)
        .def("to_bytes", &Document::toBytes);
    // Only the function below makes one: what __new__ gives would be a document before it is initialised.
    reinterpret_cast<PyTypeObject*>(document.ptr())->tp_new = nullptr;
    core.def("make_document", [](py::handle path) { return std::make_unique<Document>(path); });
    core.def("make_chart_parts", makeChartParts);
    core.def("make_table", makeTable);
    core.def("make_preview", makePreview);
    core.def("write_file", writeFile);
}

}  // namespace quillon::python
