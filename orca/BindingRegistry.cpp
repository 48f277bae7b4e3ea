#include "orca/BindingRegistry.h"

#include <atomic>

#include "orca/Error.h"

namespace orca {

using factory::full::StdShareable;
using factory::full::Wrappable;

namespace {

std::atomic<std::size_t> bindingCount = 0;

}  // namespace

std::shared_ptr<HostObject> BindingRegistry::announce(StdShareable& object, internal::Name typeName)
{
    if (object.host_ != nullptr) return object.host_->shared_from_this();
    auto host = std::make_shared<HostObject>(typeName);
    bind(object, *host);
    return host;
}

void BindingRegistry::announceForConstructor(StdShareable& object, internal::Name typeName, HostObject& host,
                                             bool isNew)
{
    if (isNew && (object.host_ != nullptr || host.object_ != nullptr))
        throw Error(ErrorId::AlreadyBound, {typeName.getText()});
    remove(object);
    if (host.object_ != nullptr) remove(*host.object_);
    host.className_ = typeName;
    bind(object, host);
}

void BindingRegistry::bind(StdShareable& object, HostObject& host) noexcept
{
    object.host_ = &host;
    host.setObject(&object);
    bindingCount.fetch_add(1, std::memory_order_relaxed);
}

void BindingRegistry::remove(Wrappable& object) noexcept
{
    if (object.host_ == nullptr) return;
    // The share goes last, because it may be all that keeps the object alive.
    const auto share = std::move(object.host_->share_);
    object.host_->setObject(nullptr);
    object.host_ = nullptr;
    bindingCount.fetch_sub(1, std::memory_order_relaxed);
}

void BindingRegistry::hold(const std::shared_ptr<StdShareable>& object)
{
    if (object->host_ != nullptr && !object->host_->share_) object->host_->share_ = object;
}

void BindingRegistry::letGo(StdShareable& object) noexcept
{
    if (object.host_ != nullptr) const auto share = std::move(object.host_->share_);
}

std::size_t BindingRegistry::size() noexcept
{
    return bindingCount.load(std::memory_order_relaxed);
}

}  // namespace orca
