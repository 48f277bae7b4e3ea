#include <pybind11/pybind11.h>

#include "chart/host/ModuleEntry.h"
#include "orca/BindingRegistry.h"
#include "python/core/Calls.h"
#include "python/core/Classes.h"
#include "python/core/Handle.h"
#include "python/core/Members.h"
#include "python/core/Report.h"
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

}  // namespace
}  // namespace quillon::python

PYBIND11_MODULE(_core, module)
{
    using namespace quillon::python;
    using namespace pybind11::literals;
    module.doc() = "The library of charts for Python. Use quillon.chart and quillon.report.";
    loadChartLibrary();
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
    module.def("call_for_each", callForEach, "object"_a, "method"_a, "values"_a,
               "Calls a method of one number for each number of a sequence or buffer.");
    module.def("bound_objects", orca::BindingRegistry::size,
               "The number of library objects that Python or another host holds.");
    defineReport(module);
}
