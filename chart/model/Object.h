#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "orca/Wrappable.h"
#include "support/Export.h"

namespace quillon::chart {

/// The root of every chart class: shared by handle, and known to the host by a class name.
///
/// Getters of all classes give handles by value, so that the child stays while the caller uses it, and texts
/// and lists as a reference to what the object holds; the lengths of areas and the runs of a paragraph are
/// copies.
class QUILLON_EXPORT Object : public orca::factory::full::StdShareable {
 public:
    /// Makes the host forget the object. An exception there ends the process.
    ~Object() override;

    Object& operator=(const Object&) = delete;

    /// The host name of the object's class, "quillon.chart." and the class name.
    virtual const char* getFullyQualifiedOrcaTypeName() const;

 protected:
    Object() = default;
    Object(const Object&) = default;
};

/// Base of the creators that the create() factories make: an X that leaves the host before any part of X is
/// destroyed.
template <typename X>
class Retracting : public X {
 public:
    using X::X;
    ~Retracting() override { orca::factory::full::retract(this); }
};

/// A deep copy of the object that `handle` holds; an empty handle gives an empty one.
template <typename X>
std::shared_ptr<X> copyOf(const std::shared_ptr<X>& handle)
{
    return handle ? std::shared_ptr<X>(new X(*handle)) : nullptr;
}

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Object> /*type*/)
{
    return "quillon.chart.Object";
}

}  // namespace quillon::chart
