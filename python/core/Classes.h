#pragma once

#include <pybind11/pybind11.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orca/EnumClassInfo.h"
#include "orca/HostArray.h"
#include "orca/HostObject.h"

/// The Python types of the registered classes.
namespace quillon::python {

/// An enumeration and its Python counterpart.
struct Enumeration {
    const orca::factory::EnumClass* enumClass;
    pybind11::object type;
    /// In the order of the host's members.
    std::vector<pybind11::object> members;
};

/// Makes a Python type for every class of a namespace, from what the registry tells of it, and returns a
/// dictionary of them by name; later calls return the same types. `bases` names Python classes from which
/// some of them inherit besides. Throws: pybind11::error_already_set.
pybind11::dict loadClasses(const std::string& namespaceName, const pybind11::dict& bases);

/// Makes the host object of a handle from the arguments of a constructor; for Py_tp_init.
int initializeHandle(PyObject* handle, PyObject* arguments, PyObject* keywords) noexcept;

/// What the constructors of a type look like to Python code; see describeForms().
pybind11::list describeConstructors(PyTypeObject* type);

/// The Python type of the class of `host`. Throws: Refused when there is none.
PyTypeObject* typeOf(const orca::HostObject& host);
/// Null for a name that no loaded class has.
PyTypeObject* findType(const std::string& className);
const Enumeration* findEnumeration(const std::string& className);

pybind11::object memberOf(const orca::EnumMember& member);
/// None when `object` is not a member of an enumeration of the library.
std::optional<orca::EnumMember> findMember(PyObject* object);

/// "Title" for "quillon.chart.Title".
std::string shortName(std::string_view className);

}  // namespace quillon::python
