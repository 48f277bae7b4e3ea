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

/// Runs `work`; what it throws becomes a Python exception. `place`: as in raise().
/// Throws: pybind11::error_already_set.
template <typename Work>
auto guard(const char* place, const Work& work)
{
    try {
        return work();
    } catch (...) {
        raise(place);
    }
    throw pybind11::error_already_set();
}

}  // namespace quillon::python
