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
    object_ = object;
    castType_ = nullptr;
}

const factory::ClassInfo* HostObject::getClass() const
{
    if (class_ == nullptr) class_ = ClassRegistry::instance().findClassOf(className_, object_);
    return class_;
}

}  // namespace orca
