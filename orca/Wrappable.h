#pragma once

#include <memory>

#include "support/Export.h"

namespace orca {
class BindingRegistry;
class HostObject;
}  // namespace orca

/// What a library class derives from so that its objects can be bound to host objects.
namespace orca::factory::full {

/// An object that may be bound to a host object. Copies start unbound.
class QUILLON_EXPORT Wrappable {
 public:
    virtual ~Wrappable() = default;

    /// 0: never bound; 1: the host holds the object by its own means; 2: bound. In states 0 and 2 the host's
    /// share is taken with acquireReference and given back with releaseReference.
    virtual unsigned bindingState() const noexcept { return host_ != nullptr ? 2 : 0; }

 protected:
    Wrappable() = default;
    Wrappable(const Wrappable& /*other*/) noexcept {}
    Wrappable& operator=(const Wrappable& /*other*/) noexcept { return *this; }

 private:
    friend class orca::BindingRegistry;
    friend void retract(Wrappable* object) noexcept;

    /// The other end of the binding. Null for the many objects that no host ever saw, which therefore are
    /// destroyed without a look at the registry.
    HostObject* host_ = nullptr;
};

/// A Wrappable that is held by std::shared_ptr.
class QUILLON_EXPORT StdShareable : public std::enable_shared_from_this<StdShareable>, public Wrappable {};

/// Retracts an object that is bound.
QUILLON_EXPORT void retractBound(Wrappable& object) noexcept;

/// Makes the host forget `object`; called by its destructor. Does nothing for an object that is not bound.
inline void retract(Wrappable* object) noexcept
{
    if (object->host_ != nullptr) retractBound(*object);
}

/// Gives the host a share of `object`, which must be bound; a second call changes nothing.
QUILLON_EXPORT void acquireReference(const std::shared_ptr<StdShareable>& object);

/// Takes the host's share of `object` back; the object may die of it.
QUILLON_EXPORT void releaseReference(StdShareable* object);

}  // namespace orca::factory::full
