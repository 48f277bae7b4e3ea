#include <pybind11/pybind11.h>

#include "chart/host/ModuleEntry.h"
#include "orca/BindingRegistry.h"
#include "python/core/Calls.h"
#include "python/core/ChartData.h"
#include "python/core/Classes.h"
#include "python/core/Handle.h"
#include "python/core/Members.h"
#include "python/core/Options.h"
#include "python/core/Report.h"
#include "python/core/Template.h"
#include "python/core/Unlocked.h"
#include "python/core/Unsaid.h"
#include "support/FeatureService.h"

namespace quillon::python {
namespace {

/// Makes the chart classes known to the host system.
void loadChartLibrary()
{
    setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
}

void addType(py::module_& module, const char* name, PyTypeObject* type)
{
    module.attr(name) = py::handle(reinterpret_cast<PyObject*>(type));
}

void define(py::module_& module)
{
    using namespace pybind11::literals;
    module.doc() = "The library of charts for Python. Use quillon.chart and quillon.report.";
    loadChartLibrary();
    awaitWorkAtExit();
    addType(module, "Handle", handleType());
    addType(module, "Property", propertyType());
    addType(module, "Method", methodType());
    module.def("load_classes", loadClasses, "namespace"_a, "bases"_a,
               "Makes a type for every class of a namespace, and gives them by name.");
    module.def(
        "constructors",
        [](const py::type& type) {
            return describeConstructors(reinterpret_cast<PyTypeObject*>(type.ptr()));
        },
        "The forms of the constructors of a type: a list of (arguments, result).");
    module.def("call_for_each", callForEach, "object"_a, "method"_a, "values"_a, "place"_a,
               "Calls a method of one number for each number of a sequence or buffer.");
    module.def("bound_objects", orca::BindingRegistry::size,
               "The number of library objects that Python or another host holds.");
    defineUnsaid(module);
    defineReport(module);
    defineTemplate(module);
    defineOptions(module);
    defineChartData(module);
}

/// The types and tables of the library are one for the process, and belong to its first interpreter.
void requireMainInterpreter()
{
    if (PyInterpreterState_Get() != PyInterpreterState_Main())
        throw py::import_error("quillon works in the main interpreter only, and this is a subinterpreter.");
}

/// Fills the module. What is made for the first one is shared with others that the same interpreter asks for.
void fill(py::module_ module)
{
    requireMainInterpreter();
    pybind11::detail::get_internals();
    static const auto& first = *new py::module_([&module] {
        define(module);
        return module;
    }());
    if (!module.is(first)) module.attr("__dict__").attr("update")(first.attr("__dict__"));
}

int execute(PyObject* module) noexcept
try {
    fill(py::reinterpret_borrow<py::module_>(module));
    return 0;
} catch (py::error_already_set& error) {
    error.restore();
    return -1;
} catch (const py::builtin_exception& error) {
    error.set_error();
    return -1;
} catch (const std::exception& error) {
    PyErr_SetString(PyExc_ImportError, error.what());
    return -1;
}

}  // namespace
}  // namespace quillon::python

/// In two phases, so that every interpreter that imports the module comes by.
// NOLINTNEXTLINE(bugprone-reserved-identifier): Python calls it by this name.
extern "C" PYBIND11_EXPORT PyObject* PyInit__core()
{
    static PyModuleDef_Slot slots[] = {{Py_mod_exec, reinterpret_cast<void*>(quillon::python::execute)},
                                       {0, nullptr}};
    static PyModuleDef definition = {
        PyModuleDef_HEAD_INIT, "_core", nullptr, 0, nullptr, slots, nullptr, nullptr, nullptr};
    return PyModuleDef_Init(&definition);
}
