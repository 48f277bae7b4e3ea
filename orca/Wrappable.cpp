#include "orca/Wrappable.h"

#include "orca/BindingRegistry.h"

namespace orca::factory::full {

void retractBound(Wrappable& object) noexcept
{
    BindingRegistry::remove(object);
}

void acquireReference(const std::shared_ptr<StdShareable>& object)
{
    BindingRegistry::hold(object);
}

void releaseReference(StdShareable* object)
{
    BindingRegistry::letGo(*object);
}

}  // namespace orca::factory::full
