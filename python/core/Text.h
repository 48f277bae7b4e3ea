#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace quillon::python {

/// The name of the type of a value, for messages.
inline std::string nameType(pybind11::handle value)
{
    return Py_TYPE(value.ptr())->tp_name;
}

/// A text in UTF-8. `name` stands in front of messages.
/// Throws: Refused for what is not a text, pybind11::error_already_set for a lone surrogate.
std::string readText(pybind11::handle value, const std::string& name);

/// The bytes of a path, as the system takes them. Throws: pybind11::error_already_set for what is none.
std::string readPath(pybind11::handle value);

}  // namespace quillon::python
