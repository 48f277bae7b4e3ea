#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "orca/HostArray.h"
#include "python/core/ValueType.h"

/// Values on their way between Python and the host system.
namespace quillon::python {

/// A host value as Python knows it: bool, float, int, str, an enumeration member, a handle, a list, or None
/// for an empty value. Throws: pybind11::error_already_set.
pybind11::object toPython(const orca::HostArray& value);

/// Whether `value` is of a type, as far as the choice between the forms of a method needs it.
bool fits(PyObject* value, const ValueType& type);

/// Throws: Refused for a value that is not of the type; pybind11::error_already_set for what it raises
/// itself.
orca::HostArray toHost(PyObject* value, const ValueType& type);

/// The numbers of a buffer or a sequence. Throws: as toHost().
std::vector<double> toNumbers(PyObject* values);

/// A value for a message: its representation, or its type when that is long.
std::string describe(PyObject* value);

}  // namespace quillon::python
