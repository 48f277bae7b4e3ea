#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>

#include "orca/Wrappable.h"
#include "support/Export.h"

namespace orca {

/// Which library objects the host knows, and the share of each that the host holds.
class QUILLON_EXPORT BindingRegistry {
 public:
    /// The one registry of the process.
    static BindingRegistry& instance();

    /// Binds `object`; a second call changes nothing.
    void announce(factory::full::StdShareable& object);
    /// Forgets `object` and gives up the host's share of it.
    void remove(factory::full::Wrappable& object) noexcept;

    void acquire(const std::shared_ptr<factory::full::StdShareable>& object);
    void release(factory::full::StdShareable& object) noexcept;

    std::size_t size() const noexcept { return shares_.size(); }

 private:
    std::unordered_map<factory::full::Wrappable*, std::shared_ptr<factory::full::StdShareable>> shares_;
};

}  // namespace orca
