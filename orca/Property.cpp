#include "orca/Property.h"

#include "orca/Error.h"

namespace orca::factory::impl {

PropertyImpl::PropertyImpl(std::string name, const std::string& type, std::string description,
                           std::unique_ptr<Getter> getter, std::unique_ptr<Setter> setter)
    : name_(std::move(name)),
      description_(std::move(description)),
      type_(parseHostType(type)),
      setType_(setter ? parseHostType(setter->getTypeName()) : HostTypeInfo()),
      getter_(std::move(getter)),
      setter_(std::move(setter))
{
}

HostArray PropertyImpl::get(const HostObject& self) const
try {
    return HostArray(getter_->get(self));
} catch (const Error& error) {
    throw error.at(place());
}

void PropertyImpl::set(const HostObject& self, const HostArray& value) const
try {
    if (!isWritable()) throw Error(ErrorId::ReadOnly, {});
    setter_->set(self, value);
} catch (const Error& error) {
    throw error.at(place());
}

}  // namespace orca::factory::impl
