#pragma once

#include <span>
#include <string>

#include "orca/HostArray.h"
#include "support/Export.h"

namespace orca {

/// What is passed to a method or constructor.
using Arguments = std::span<const HostArray>;

namespace factory {

/// What a host type string says: "double scalar", "quillon.chart.Text vector", "any".
struct HostTypeInfo {
    enum class Shape { Any, Scalar, Vector, Object };

    std::string text;
    /// The type of an element: "double", a class name; empty for "any".
    std::string element;
    Shape shape = Shape::Any;
};

/// Reads a host type string.
/// Throws: Error for anything but the name of a data type or class.
QUILLON_EXPORT HostTypeInfo parseHostType(const std::string& text);

namespace detail {
/// Makes "OrcaFactoryString" a data type; called before a class declares a member of such a type.
QUILLON_EXPORT void initStringDataTypes();
}  // namespace detail

namespace impl {

/// Refuses a null pointer: the receiving object is not of the member's class. Throws: Error.
QUILLON_EXPORT void validateSelfPointer(const void* self);

/// The library object behind `self` as a C. Throws: Error when it is gone or not a C.
template <typename C>
C& resolveSelf(const HostObject& self)
{
    auto* const object = self.getObjectAs<C>();
    validateSelfPointer(object);
    return *object;
}

}  // namespace impl
}  // namespace factory
}  // namespace orca
