#include "orca/BindingRegistry.h"

namespace orca {

using factory::full::StdShareable;
using factory::full::Wrappable;

BindingRegistry& BindingRegistry::instance()
{
    static BindingRegistry registry;
    return registry;
}

void BindingRegistry::announce(StdShareable& object)
{
    shares_.try_emplace(&object);
    object.bound_ = true;
}

void BindingRegistry::remove(Wrappable& object) noexcept
{
    object.bound_ = false;
    // The share goes after the entry, because its release may destroy the object and come back here.
    auto entry = shares_.extract(&object);
}

void BindingRegistry::acquire(const std::shared_ptr<StdShareable>& object)
{
    shares_.at(object.get()) = object;
}

void BindingRegistry::release(StdShareable& object) noexcept
{
    if (const auto found = shares_.find(&object); found != shares_.end()) {
        const auto share = std::move(found->second);
    }
}

}  // namespace orca
