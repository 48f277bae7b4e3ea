#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace quillon::python {

/// Calls a method of `object` once for each number of a sequence or buffer, and drops what it returns. All
/// numbers are converted first, so that one that is refused leaves the object as it was.
/// Throws: pybind11::error_already_set.
void callForEach(const pybind11::object& object, const std::string& method, const pybind11::object& values,
                 const std::string& place);

}  // namespace quillon::python
