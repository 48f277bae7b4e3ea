#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "orca/ClassInfo.h"
#include "python/core/Forms.h"

/// The members of classes as Python knows them: descriptors in the dictionaries of their types, which hold
/// what was looked up once.
namespace quillon::python {

/// A property of a class. Lasts as long as the process.
struct Property {
    Property(PyTypeObject* ownerType, const orca::factory::impl::PropertyImpl& property);

    PyTypeObject* owner;
    const orca::factory::impl::PropertyImpl& impl;
    ValueType type;
    /// Of a property that is not read-only.
    ValueType setType;
    /// "DataPoint.Value"
    std::string place;
    std::string documentation;
};

/// A method of a class, with all its forms. Lasts as long as the process.
struct Method {
    Method(PyTypeObject* ownerType, const std::string& name, const orca::factory::OverloadSet& overloads);

    PyTypeObject* owner;
    std::vector<Form> forms;
    /// "DataSeries.appendPoint"
    std::string place;
    std::string documentation;
};

/// The Python types of the descriptors; borrowed references. Throw: pybind11::error_already_set.
PyTypeObject* propertyType();
PyTypeObject* methodType();

/// The descriptors. Throw: pybind11::error_already_set.
pybind11::object makeDescriptor(const Property& property);
pybind11::object makeDescriptor(const Method& method);

/// The method behind a descriptor; null when `object` is none.
const Method* asMethod(PyObject* object);

/// What the forms look like to Python code: a list of (arguments, result) with (name, type) for each
/// argument.
pybind11::list describeForms(const std::vector<Form>& forms);

}  // namespace quillon::python
