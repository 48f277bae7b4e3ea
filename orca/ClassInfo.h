#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "orca/Method.h"
#include "orca/Name.h"
#include "orca/Property.h"
#include "support/Export.h"

namespace orca {

class ClassRegistry;

namespace factory {

/// What the host knows of a class: its names, constructors, properties and methods.
class QUILLON_EXPORT ClassInfo {
 public:
    virtual ~ClassInfo() = default;
    ClassInfo(const ClassInfo&) = delete;
    ClassInfo& operator=(const ClassInfo&) = delete;

    /// The full host name: "quillon.chart.Title".
    const std::string& getName() const { return name_.getText(); }
    /// The names of the superclasses, registered or not.
    const std::vector<std::string>& getSuperclassNames() const { return superclassNames_; }
    const std::string& getDescription() const { return description_; }

    /// The members that the class itself declares, in the order of their declaration.
    const std::vector<std::unique_ptr<OrcaMethod>>& getOwnConstructors() const { return constructors_; }
    const std::vector<std::unique_ptr<impl::PropertyImpl>>& getOwnProperties() const { return properties_; }
    const std::vector<std::unique_ptr<OrcaMethod>>& getOwnMethods() const { return methods_; }

    /// The registered classes that the class descends from, and itself as the last.
    const std::vector<const ClassInfo*>& getLineage() const { return lineage_; }
    /// Whether the class is the named one or descends from it; the name need not be registered.
    bool isA(std::string_view name) const;
    /// Whether arrays of the class may mix its subclasses.
    bool isHeterogeneous() const { return isA("corvala.mixin.Heterogeneous"); }

    /// All properties: those of the superclasses first, each in the order of its declaration.
    const std::vector<const impl::PropertyImpl*>& getProperties() const { return allProperties_; }
    /// A property of the class or a superclass; null when there is none of that name. What it returns lasts
    /// as long as the process, so that it can be kept and used again.
    const impl::PropertyImpl* findProperty(std::string_view name) const;
    /// The forms of a method of the class or a superclass; null when there is none of that name. It can be
    /// kept like a property.
    const OverloadSet* findMethod(std::string_view name) const;

    /// As find. Throws: Error for an unknown name.
    const impl::PropertyImpl& requireProperty(std::string_view name) const;
    const OverloadSet& requireMethod(std::string_view name) const;

    /// Makes a new object, or gives an enumeration member.
    /// Throws: Error when no constructor takes the arguments, and what the library throws.
    virtual HostArray construct(Arguments arguments) const;

    /// Whether a library object is of this class.
    virtual bool isInstance(const full::StdShareable* object) const = 0;

    /// Called when a host object is destroyed: gives up the host's share of its library object and unties the
    /// two.
    static void hostObjectDestroyed(const HostObject& object) noexcept;

 protected:
    ClassInfo(const std::string& name, std::vector<std::string> superclassNames, std::string description);

    void addConstructor(std::unique_ptr<OrcaMethod> method);
    void addProperty(std::unique_ptr<impl::PropertyImpl> property);
    void addMethod(std::unique_ptr<OrcaMethod> method);

 private:
    friend class orca::ClassRegistry;

    /// Finds the superclasses among the registered classes and collects all members; called again whenever
    /// classes are added.
    void resolve(const ClassRegistry& registry);
    void addToLineage(const ClassInfo& ancestor, const ClassRegistry& registry);
    void collectMembers(const ClassInfo& ancestor);

    internal::Name name_;
    std::vector<std::string> superclassNames_;
    std::string description_;
    std::vector<std::unique_ptr<OrcaMethod>> constructors_;
    std::vector<std::unique_ptr<impl::PropertyImpl>> properties_;
    std::vector<std::unique_ptr<OrcaMethod>> methods_;
    OverloadSet constructorForms_;
    std::map<std::string, OverloadSet, std::less<>> methodForms_;

    std::vector<const ClassInfo*> lineage_;
    std::vector<const impl::PropertyImpl*> allProperties_;
    std::unordered_map<std::string_view, const impl::PropertyImpl*> propertiesByName_;
    std::unordered_map<std::string_view, const OverloadSet*> methodsByName_;
};

namespace detail {

/// The parts of a pointer to a member function, or to a free function whose first argument is the object.
template <typename Function>
struct FunctionParts;

template <typename R, typename C, typename... Args>
struct FunctionParts<R (C::*)(Args...)> {
    using Result = R;
    using Class = C;
    using Signature = R(std::remove_cvref_t<Args>...);
    static constexpr std::size_t argumentCount = sizeof...(Args);
};
template <typename R, typename C, typename... Args>
struct FunctionParts<R (C::*)(Args...) const> : FunctionParts<R (C::*)(Args...)> {
};
template <typename R, typename C, typename... Args>
struct FunctionParts<R (*)(C&, Args...)> : FunctionParts<R (C::*)(Args...)> {
};
template <typename R, typename C, typename... Args>
struct FunctionParts<R (*)(const C&, Args...)> : FunctionParts<R (C::*)(Args...)> {
};

/// The type that a setter takes.
template <typename Signature>
struct FirstArgument;
template <typename R, typename T>
struct FirstArgument<R(T)> {
    using Type = T;
};

}  // namespace detail

/// Picks the form of an overloaded member function that takes Args.
template <typename... Args>
struct Overload {
    template <typename R, typename C>
    constexpr auto operator()(R (C::*function)(Args...)) const
    {
        return function;
    }
};
template <typename... Args>
inline constexpr Overload<Args...> overload;

/// A class whose objects are bound to host objects: handles if `IsValue` is false, never copied on the way.
/// Subclasses declare their members with the functions below, one line each; the host types follow from the
/// C++ functions that are bound.
template <typename Root, bool IsValue>
class HandleClassInfo : public ClassInfo {
 protected:
    using ClassInfo::ClassInfo;
    static_assert(!IsValue, "chart objects are shared handles");

    /// A constructor over C::create(Args...).
    template <typename C, typename... Args>
    void constructor(impl::ArgumentNames<sizeof...(Args)> argumentNames = {})
    {
        constexpr auto create = [](Args... arguments) { return C::create(std::move(arguments)...); };
        using Method = impl::MethodImpl<std::shared_ptr<C>(Args...), true, C, decltype(create)>;
        const std::string name(internal::shortName(getName()));
        addConstructor(std::make_unique<Method>(name, argumentNames, "", create));
    }

    /// A property over a const member function that reads it and, unless it is read-only, one that writes it.
    template <auto Get, auto Set = nullptr>
    void property(std::string name, std::string description)
    {
        using Function = decltype(Get);
        using Parts = detail::FunctionParts<Function>;
        using Result = typename Parts::Result;
        using T = std::remove_cvref_t<Result>;
        addProperty(std::make_unique<impl::PropertyImpl>(
            std::move(name), HostType<T>::name(), std::move(description),
            std::make_unique<impl::ClassGetter<T, typename Parts::Class, Function, Result>>(Get),
            makeSetter<Set>()));
    }

    /// A property of type "any" over functions of raw host values.
    template <typename C>
    void adaptedProperty(std::string name, std::string description,
                         typename impl::AdaptedClassGetter<C>::Function get,
                         typename impl::AdaptedClassSetter<C>::Function set)
    {
        addProperty(std::make_unique<impl::PropertyImpl>(std::move(name), "any", std::move(description),
                                                         std::make_unique<impl::AdaptedClassGetter<C>>(get),
                                                         std::make_unique<impl::AdaptedClassSetter<C>>(set)));
    }

    /// One form of a method over a member function, or over a free function that takes the object first.
    template <auto Function, typename Parts = detail::FunctionParts<decltype(Function)>>
    void method(std::string name, impl::ArgumentNames<Parts::argumentCount> argumentNames,
                std::string description)
    {
        using Method =
            impl::MethodImpl<typename Parts::Signature, false, typename Parts::Class, decltype(Function)>;
        addMethod(std::make_unique<Method>(std::move(name), argumentNames, std::move(description), Function));
    }

 private:
    template <auto Set>
    static std::unique_ptr<impl::Setter> makeSetter()
    {
        if constexpr (std::is_same_v<decltype(Set), std::nullptr_t>) {
            return nullptr;
        } else {
            using Parts = detail::FunctionParts<decltype(Set)>;
            using T = typename detail::FirstArgument<typename Parts::Signature>::Type;
            return std::make_unique<impl::ClassSetter<T, typename Parts::Class, decltype(Set)>>(Set);
        }
    }
};

/// A HandleClassInfo for objects that are held by std::shared_ptr.
template <typename Root>
class StdShareableHandleClassInfo : public HandleClassInfo<Root, false> {
    static_assert(std::is_base_of_v<full::StdShareable, Root>);

 protected:
    using HandleClassInfo<Root, false>::HandleClassInfo;
};

}  // namespace factory
}  // namespace orca
