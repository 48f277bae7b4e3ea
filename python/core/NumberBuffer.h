#pragma once

#include <pybind11/pybind11.h>

#include <optional>
#include <vector>

namespace quillon::python {

/// The numbers of an object that offers its memory as a row of numbers, as arrays do, in any byte order and
/// with any distance between them. None for bytes, for a single number, and for formats that are not numbers
/// of the machine: their items, if they have some, must be asked one by one.
/// Throws: Refused for more than one dimension.
std::optional<std::vector<double>> readNumberBuffer(PyObject* object);

}  // namespace quillon::python
