#include "orca/HostObject.h"

#include "orca/ClassInfo.h"
#include "orca/ClassRegistry.h"

namespace orca {

HostObject::~HostObject()
{
    if (object_ != nullptr) factory::ClassInfo::hostObjectDestroyed(*this);
}

void HostObject::setObject(factory::full::StdShareable* object)
{
    // An object that is gone keeps its class, so that messages can name the member that was asked for.
    if (object != nullptr) class_ = nullptr;
    object_ = object;
    castType_ = nullptr;
}

const factory::ClassInfo* HostObject::getClass() const
{
    if (class_ == nullptr) class_ = ClassRegistry::instance().findClassOf(className_, object_);
    return class_;
}

}  // namespace orca
