#pragma once

#include <memory>
#include <string>
#include <utility>

#include "orca/HostArray.h"
#include "orca/HostType.h"
#include "orca/Member.h"
#include "support/Export.h"

namespace orca::factory::impl {

/// Reads a property of the library object behind a host object.
class QUILLON_EXPORT Getter {
 public:
    virtual ~Getter() = default;
    virtual HostArrayProxy get(const HostObject& self) const = 0;
    /// The host type string of what it gives.
    virtual std::string getTypeName() const = 0;
};

/// Writes a property of the library object behind a host object.
class QUILLON_EXPORT Setter {
 public:
    virtual ~Setter() = default;
    virtual void set(const HostObject& self, const HostArray& value) const = 0;
    /// The host type string of what it takes.
    virtual std::string getTypeName() const = 0;
};

/// Binds a const member function of C that returns a T, by value or by reference.
template <typename T, typename C, typename Function = T (C::*)() const, typename Result = T>
class ClassGetter final : public Getter {
 public:
    explicit ClassGetter(Function function) : function_(function) {}
    HostArrayProxy get(const HostObject& self) const override
    {
        return HostType<T>::toHost((resolveSelf<C>(self).*function_)());
    }
    std::string getTypeName() const override { return HostType<T>::name(); }

 private:
    Function function_;
};

/// Binds a member function of C that takes a T, by value or by const reference.
template <typename T, typename C, typename Function = void (C::*)(T)>
class ClassSetter final : public Setter {
 public:
    explicit ClassSetter(Function function) : function_(function) {}
    void set(const HostObject& self, const HostArray& value) const override
    {
        auto converted = HostType<T>::fromHost(value);
        (resolveSelf<C>(self).*function_)(std::move(converted));
    }
    std::string getTypeName() const override { return HostType<T>::name(); }

 private:
    Function function_;
};

/// Binds a free function that makes the raw host value; for a property of several host forms.
template <typename C>
class AdaptedClassGetter final : public Getter {
 public:
    using Function = HostArrayProxy (*)(const C& self);
    explicit AdaptedClassGetter(Function function) : function_(function) {}
    HostArrayProxy get(const HostObject& self) const override { return function_(resolveSelf<C>(self)); }
    std::string getTypeName() const override { return "any"; }

 private:
    Function function_;
};

/// Binds a free function that takes the raw host value.
template <typename C>
class AdaptedClassSetter final : public Setter {
 public:
    using Function = void (*)(C& self, const HostArrayProxy& value);
    explicit AdaptedClassSetter(Function function) : function_(function) {}
    void set(const HostObject& self, const HostArray& value) const override
    {
        function_(resolveSelf<C>(self), value.getProxy());
    }
    std::string getTypeName() const override { return "any"; }

 private:
    Function function_;
};

/// A property of a class: its name, its host type, and how it is read and written.
class QUILLON_EXPORT PropertyImpl {
 public:
    /// Read-only without `setter`. Throws: Error when `type` is not a host type string.
    PropertyImpl(std::string name, const std::string& type, std::string description,
                 std::unique_ptr<Getter> getter, std::unique_ptr<Setter> setter = nullptr);

    const std::string& getName() const { return name_; }
    const std::string& getDescription() const { return description_; }
    /// The type that reading gives.
    const HostTypeInfo& getType() const { return type_; }
    /// The type that writing takes, which may be another one. Requires: isWritable().
    const HostTypeInfo& getSetType() const { return setType_; }
    bool isWritable() const { return setter_ != nullptr; }
    /// The name of the class that declares the property.
    const std::string& getOwner() const { return owner_; }
    void setOwner(const std::string& className) { owner_ = className; }

    /// Throws: Error when `self` is gone or of another class, and what the library throws.
    HostArray get(const HostObject& self) const;
    /// Throws: as get(), and Error when the property is read-only or `value` is not of its type; the property
    /// then keeps its value.
    void set(const HostObject& self, const HostArray& value) const;

    /// The same for the one object that `self` names.
    HostArray get(const HostArray& self) const { return get(self.getOneObject()); }
    void set(const HostArray& self, const HostArray& value) const { set(self.getOneObject(), value); }

 private:
    std::string place() const { return owner_ + "." + name_; }

    std::string name_;
    std::string description_;
    std::string owner_;
    HostTypeInfo type_;
    HostTypeInfo setType_;
    std::unique_ptr<Getter> getter_;
    std::unique_ptr<Setter> setter_;
};

}  // namespace orca::factory::impl
