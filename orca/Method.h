#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "orca/BindingRegistry.h"
#include "orca/Error.h"
#include "orca/HostArray.h"
#include "orca/HostType.h"
#include "orca/Member.h"
#include "support/Export.h"

namespace orca::factory {

/// What may be done with a method.
struct MethodAttributes {
    /// Whether the method makes the object that it is called on.
    bool isConstructor = false;
};

/// One form of a method or constructor: a name, the types it takes, and the type it gives.
class QUILLON_EXPORT OrcaMethod {
 public:
    OrcaMethod(std::string name, MethodAttributes attributes, std::string description);
    virtual ~OrcaMethod() = default;
    OrcaMethod(const OrcaMethod&) = delete;
    OrcaMethod& operator=(const OrcaMethod&) = delete;

    const std::string& getName() const { return name_; }
    const std::string& getDescription() const { return description_; }
    bool isConstructor() const { return attributes_.isConstructor; }
    bool isStatic() const { return isStatic_; }
    /// "appendPoint(x: double scalar, y: double scalar) -> quillon.chart.DataPoint"; a constructor's ends
    /// with its arguments.
    const std::string& getSignature() const { return signature_; }
    /// The argument types alone: "(double scalar, double scalar)".
    std::string getArgumentList() const;
    const std::vector<HostTypeInfo>& getInputs() const { return inputs_; }
    const std::vector<HostTypeInfo>& getOutputs() const { return outputs_; }
    const std::vector<std::string>& getArgumentNames() const { return argumentNames_; }
    void setOwner(const std::string& className) { owner_ = className; }

    /// Whether number and types of the arguments are those of this form; ranges are not checked.
    virtual bool accepts(Arguments arguments) const = 0;
    /// Calls the method on `self`. A constructor binds its new object to `self` and returns it.
    /// Requires: as many arguments as getInputs().
    /// Throws: Error for an argument that is not of its type, and what the library throws.
    virtual HostArray invoke(HostObject& self, Arguments arguments) const = 0;

 protected:
    /// Gives the method its form. `signature` names the arguments, as many as `inputTypes`.
    /// Throws: Error for anything but host type strings.
    void createSignatureImpl(std::vector<std::string> signature, bool isStatic, const std::string& name,
                             const std::vector<std::string>& inputTypes,
                             const std::vector<std::string>& outputTypes);
    /// The same error with class, method and position of the argument; position 0 is the receiving object.
    Error locate(const Error& error, std::size_t position) const;

 private:
    std::string name_;
    MethodAttributes attributes_;
    std::string description_;
    std::string owner_;
    bool isStatic_ = false;
    std::string signature_;
    std::vector<std::string> argumentNames_;
    std::vector<HostTypeInfo> inputs_;
    std::vector<HostTypeInfo> outputs_;
};

namespace impl {

/// The names of the arguments of a bound function: as many as it has, or the declaration does not compile.
template <std::size_t Count>
class ArgumentNames {
 public:
    template <typename... Names>
    requires(sizeof...(Names) == Count) constexpr ArgumentNames(Names... names) : names_{names...} {}
    std::vector<std::string> getNames() const { return {names_.begin(), names_.end()}; }

 private:
    std::array<const char*, Count> names_;
};

template <typename Signature, bool IsStatic, typename C, typename Callable>
class MethodImpl;

/// Binds `Callable`: an instance method takes a C& first, a static one makes a new object.
template <typename Result, typename... Args, bool IsStatic, typename C, typename Callable>
class MethodImpl<Result(Args...), IsStatic, C, Callable> final : public OrcaMethod {
 public:
    MethodImpl(std::string name, ArgumentNames<sizeof...(Args)> argumentNames, std::string description,
               Callable callable)
        : OrcaMethod(std::move(name), {IsStatic}, std::move(description)), callable_(callable)
    {
        createSignatureImpl(
            argumentNames.getNames(), IsStatic, getName(), {HostType<Args>::name()...},
            {IsStatic ? hostName<C>().getText() : HostType<std::remove_cvref_t<Result>>::name()});
    }

    bool accepts(Arguments arguments) const override
    {
        return arguments.size() == sizeof...(Args) &&
               acceptsAll(arguments, std::index_sequence_for<Args...>());
    }

    HostArray invoke(HostObject& self, Arguments arguments) const override
    {
        return invokeAll(self, arguments, std::index_sequence_for<Args...>());
    }

 private:
    template <std::size_t... I>
    bool acceptsAll([[maybe_unused]] Arguments arguments, std::index_sequence<I...> /*positions*/) const
    {
        return (HostType<Args>::accepts(arguments[I]) && ...);
    }

    template <std::size_t... I>
    HostArray invokeAll(HostObject& self, [[maybe_unused]] Arguments arguments,
                        std::index_sequence<I...> /*positions*/) const
    {
        [[maybe_unused]] C* const object = resolve(self);
        // The braces convert the arguments from first to last.
        std::tuple<Args...> values{convert<Args>(arguments, I)...};
        try {
            if constexpr (IsStatic)
                return std::apply([&](auto&... value) { return construct(self, std::move(value)...); },
                                  values);
            else
                return std::apply([&](auto&... value) { return call(*object, std::move(value)...); }, values);
        } catch (const Error& error) {
            throw locate(error, 0);
        }
    }

    /// The receiving object; null for a constructor.
    C* resolve(HostObject& self) const
    try {
        if constexpr (IsStatic)
            return nullptr;
        else
            return &resolveSelf<C>(self);
    } catch (const Error& error) {
        throw locate(error, 0);
    }

    template <typename T>
    T convert(Arguments arguments, std::size_t index) const
    try {
        return HostType<T>::fromHost(arguments[index]);
    } catch (const Error& error) {
        throw locate(error, index + 1);
    }

    HostArray construct(HostObject& self, Args&&... arguments) const
    {
        const auto object = callable_(std::move(arguments)...);
        const auto name = internal::makeInterned(object->getFullyQualifiedOrcaTypeName());
        BindingRegistry::announceForConstructor(*object, name, self, true);
        if (object->bindingState() != 1) full::acquireReference(object);
        return self.shared_from_this();
    }

    HostArray call(C& object, Args&&... arguments) const
    {
        return HostArray(HostType<std::remove_cvref_t<Result>>::toHost(
            std::invoke(callable_, object, std::move(arguments)...)));
    }

    Callable callable_;
};

}  // namespace impl

/// The forms of one method, or the constructors of one class, in the order of their declaration.
class QUILLON_EXPORT OverloadSet {
 public:
    /// `place` stands in front of messages.
    explicit OverloadSet(std::string place) : place_(std::move(place)) {}

    void add(const OrcaMethod& method) { methods_.push_back(&method); }
    const std::vector<const OrcaMethod*>& getMethods() const { return methods_; }

    /// Calls the first form that the arguments suit.
    /// Throws: Error when none does, and as OrcaMethod::invoke.
    HostArray invoke(HostObject& self, Arguments arguments) const
    {
        return choose(arguments).invoke(self, arguments);
    }
    HostArray invoke(const HostArray& self, Arguments arguments) const;

 private:
    const OrcaMethod& choose(Arguments arguments) const;
    [[noreturn]] void refuse(Arguments arguments) const;

    std::string place_;
    std::vector<const OrcaMethod*> methods_;
};

}  // namespace orca::factory
