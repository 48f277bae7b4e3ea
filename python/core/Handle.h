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
    /// Null until the object is initialised.
    std::shared_ptr<orca::HostObject> host;
};

/// The Python type from which the types of all chart classes descend; a borrowed reference.
/// Throws: py::error_already_set.
PyTypeObject* handleType();

inline bool isHandle(PyObject* object)
{
    return PyObject_TypeCheck(object, handleType()) != 0;
}

/// The host object of a handle. Throws: Refused for a handle that is not initialised.
const std::shared_ptr<orca::HostObject>& hostOf(PyObject* handle);

/// Gives a handle its host object, which has no handle yet. Throws: Refused when it has one already.
void bind(PyObject* handle, std::shared_ptr<orca::HostObject> host);

/// The handle of a host object, made if there is none, of the Python type of its class.
/// Throws: py::error_already_set; Refused when the class has no Python type.
py::object wrap(const std::shared_ptr<orca::HostObject>& host);

}  // namespace quillon::python
