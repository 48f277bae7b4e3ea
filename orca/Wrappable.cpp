#include "orca/Wrappable.h"

#include "orca/BindingRegistry.h"

namespace orca::factory::full {

void retract(Wrappable* object) noexcept
{
    if (object->bound_) BindingRegistry::instance().remove(*object);
}

void acquireReference(const std::shared_ptr<StdShareable>& object)
{
    BindingRegistry::instance().acquire(object);
}

void releaseReference(StdShareable* object)
{
    BindingRegistry::instance().release(*object);
}

}  // namespace orca::factory::full
