#pragma once

#include <memory>
#include <typeinfo>

#include "orca/Name.h"
#include "orca/Wrappable.h"
#include "support/Export.h"

namespace orca {

namespace factory {
class ClassInfo;
}

/// The host's side of a bound object. It lives as long as a host value names it, and gives up its share of
/// the library object when the last one goes.
class QUILLON_EXPORT HostObject : public std::enable_shared_from_this<HostObject> {
 public:
    explicit HostObject(internal::Name className) : className_(className) {}
    ~HostObject();
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

    /// The name under which the object was announced; it need not be that of a registered class.
    internal::Name getClassName() const { return className_; }

    /// The class that describes the object: the registered one of its name, otherwise the most derived
    /// registered one that the library object belongs to. Null when there is none.
    const factory::ClassInfo* getClass() const;

    /// The bound library object. Null before it is bound and once the library has destroyed it.
    factory::full::StdShareable* getObject() const { return object_; }

    /// The bound library object as a T; null when there is none or it is not a T. A dynamic_cast costs more
    /// than most members, so the last one is kept.
    template <typename T>
    T* getObjectAs() const
    {
        if (castType_ != &typeid(T)) {
            castObject_ = dynamic_cast<T*>(object_);
            castType_ = &typeid(T);
        }
        return static_cast<T*>(castObject_);
    }

    /// The bound library object as a T, shared. Empty when there is none or it is not a T.
    template <typename T>
    std::shared_ptr<T> getNative() const
    {
        auto* const object = getObjectAs<T>();
        return object ? std::shared_ptr<T>(object_->shared_from_this(), object) : nullptr;
    }

 private:
    friend class BindingRegistry;

    void setObject(factory::full::StdShareable* object);

    internal::Name className_;
    mutable const factory::ClassInfo* class_ = nullptr;
    factory::full::StdShareable* object_ = nullptr;
    mutable const std::type_info* castType_ = nullptr;
    mutable void* castObject_ = nullptr;
    std::shared_ptr<factory::full::StdShareable> share_;
};

}  // namespace orca
