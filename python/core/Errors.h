#pragma once

#include <pybind11/pybind11.h>

#include <stdexcept>
#include <string>

namespace quillon::python {

/// A value that Python code gave and that is refused; becomes a Python exception of `type`.
struct Refused : std::runtime_error {
    Refused(PyObject* exceptionType, const std::string& sentence)
        : std::runtime_error(sentence), type(exceptionType)
    {
    }
    PyObject* type;
};

/// Makes a Python exception of the C++ exception that is being handled. `place` says where it happened, in
/// the words of Python: "DataPoint.Value".
void raise(const std::string& place) noexcept;

}  // namespace quillon::python
