#pragma once

#include <pybind11/pybind11.h>

#include <memory>

#include "orca/HostObject.h"

namespace quillon::python {

namespace py = pybind11;

/// A Python object that stands for a host object, and shares its life. A host object has one handle at a
/// time, so that reading the same chart object twice gives the same Python object.
struct Handle {
    PyObject_HEAD PyObject* weakReferences;
    std::shared_ptr<orca::HostObject> host;
};

/// The Python type from which the types of all chart classes descend; a borrowed reference.
/// Throws: py::error_already_set.
PyTypeObject* handleType();

/// Null when `object` is no handle.
inline Handle* asHandle(PyObject* object)
{
    return PyObject_TypeCheck(object, handleType()) ? reinterpret_cast<Handle*>(object) : nullptr;
}

/// Makes the handle of an object that has none. Throws: py::error_already_set.
py::object makeHandle(PyTypeObject* type, std::shared_ptr<orca::HostObject> host);

/// The handle of a host object, made if there is none, of the Python type of its class.
/// Throws: py::error_already_set; Refused when the class has no Python type.
py::object wrap(const std::shared_ptr<orca::HostObject>& host);

}  // namespace quillon::python
