#pragma once

#include <cstddef>
#include <memory>

#include "orca/HostObject.h"
#include "orca/Name.h"
#include "orca/Wrappable.h"
#include "support/Export.h"

namespace orca {

/// Ties library objects to host objects, one to one. Each end points at the other, so that nothing is looked
/// up and different threads may work on different objects.
class QUILLON_EXPORT BindingRegistry {
 public:
    BindingRegistry() = delete;

    /// The host object that `object` is bound to; binds a new one, named `typeName`, if there is none.
    static std::shared_ptr<HostObject> announce(factory::full::StdShareable& object, internal::Name typeName);

    /// Binds `object` to the host object that the host is constructing, which takes the name `typeName`.
    /// `isNew` says that neither of the two may be bound yet; otherwise older bindings give way.
    /// Throws: Error when one of them is bound already.
    static void announceForConstructor(factory::full::StdShareable& object, internal::Name typeName,
                                       HostObject& host, bool isNew);

    /// Unties `object`; does nothing when it is not bound.
    static void remove(factory::full::Wrappable& object) noexcept;

    /// The number of objects bound now.
    static std::size_t size() noexcept;

 private:
    friend void factory::full::acquireReference(const std::shared_ptr<factory::full::StdShareable>& object);
    friend void factory::full::releaseReference(factory::full::StdShareable* object);

    static void bind(factory::full::StdShareable& object, HostObject& host) noexcept;
    static void hold(const std::shared_ptr<factory::full::StdShareable>& object);
    static void letGo(factory::full::StdShareable& object) noexcept;
};

}  // namespace orca
