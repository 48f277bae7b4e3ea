#include "python/core/Text.h"

#include "python/core/Errors.h"

namespace quillon::python {

namespace py = pybind11;

std::string readText(pybind11::handle value, const std::string& name)
{
    if (!PyUnicode_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected str, got " + nameType(value) + ".");
    Py_ssize_t size = 0;
    const auto* bytes = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
    if (bytes == nullptr) throw pybind11::error_already_set();
    return {bytes, static_cast<std::size_t>(size)};
}

std::string readPath(py::handle value)
{
    PyObject* converted = nullptr;
    if (PyUnicode_FSConverter(value.ptr(), &converted) == 0) throw py::error_already_set();
    return py::reinterpret_steal<py::bytes>(converted);
}

}  // namespace quillon::python
