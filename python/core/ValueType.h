#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>

#include "orca/Member.h"

namespace quillon::python {

struct Enumeration;

/// What a member takes or gives, ready for use at every call.
struct ValueType {
    enum class Kind { Any, Number, WholeNumber, Logical, Text, Texts, Member, Object, Objects };

    Kind kind = Kind::Any;
    /// Whole numbers: the largest.
    std::uint64_t maximum = 0;
    /// Members: their enumeration.
    const Enumeration* enumeration = nullptr;
    /// Objects: their Python type. Null when nobody registered the class.
    PyTypeObject* type = nullptr;
    /// The type in the words of Python: "float", "list[str]", "Sequence[str]", "Title".
    std::string name;
};

/// The type of what a member gives. Requires: the Python types of all classes are made.
ValueType resolveResult(const orca::factory::HostTypeInfo& type);

/// The type of what a member takes: any sequence where it would give a list. Requires: as resolveResult().
ValueType resolveInput(const orca::factory::HostTypeInfo& type);

}  // namespace quillon::python
