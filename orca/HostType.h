#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "orca/HostArray.h"
#include "orca/Member.h"
#include "support/Export.h"

/// The conversions between host values and C++ values: one HostType for each C++ type.
namespace orca::factory {

/// A class or enumeration whose host name is stated beside it, by a function in its own namespace:
/// `constexpr const char* hostNameOf(std::type_identity<Title>) { return "quillon.chart.Title"; }`.
/// Subclasses do not inherit it.
template <typename T>
concept NamedForHost = requires
{
    hostNameOf(std::type_identity<T>());
};

/// The host name of a class or enumeration.
template <NamedForHost T>
internal::Name hostName()
{
    static const auto name = internal::makeInterned(hostNameOf(std::type_identity<T>()));
    return name;
}

/// The text of a value. Throws: Error for anything but text.
QUILLON_EXPORT std::u16string extractString(const HostArrayProxy& value);
/// Whether a value is a text array.
QUILLON_EXPORT bool isStringVector(const HostArrayProxy& value);
/// The elements of a text array. Requires: isStringVector(value).
QUILLON_EXPORT std::vector<std::u16string> extractFromStringVector(const HostArrayProxy& value);
/// Raises the error for an element, counted from 1, that should be text; `got` says what it is.
[[noreturn]] QUILLON_EXPORT void errorMustBeString(std::size_t position,
                                                   const std::string& got = "something else");
/// Raises the error for a value that is neither text array nor cell array.
[[noreturn]] QUILLON_EXPORT void errorMustBeCellArray(const std::string& got = "something else");

namespace detail {

/// The number of a numeric scalar. Throws: Error for anything else, and for uint32 and uint64 when the number
/// is negative, fractional, too large or not a number.
QUILLON_EXPORT double toDouble(const HostArray& value);
QUILLON_EXPORT std::uint32_t toUint32(const HostArray& value);
QUILLON_EXPORT std::uint64_t toUint64(const HostArray& value);
/// Takes a logical scalar, or a numeric 0 or 1. Throws: Error for anything else.
QUILLON_EXPORT bool toLogical(const HostArray& value);
/// Takes a text array or a cell array of texts; no value and an empty matrix stand for no texts.
/// Throws: Error for anything else.
QUILLON_EXPORT std::vector<std::u16string> toTexts(const HostArray& value);
/// Whether toTexts() takes a value of this kind; the elements of a cell array are not looked at.
QUILLON_EXPORT bool mayBeTexts(const HostArray& value);
/// The value of the member of `enumClass` that `value` is or names. Throws: Error for anything else.
QUILLON_EXPORT std::uint64_t toEnumValue(const EnumClass& enumClass, const HostArray& value);
QUILLON_EXPORT HostArray fromEnumValue(const EnumClass& enumClass, std::uint64_t value);
/// The registered enumeration class. Throws: Error when there is none of that name.
QUILLON_EXPORT const EnumClass& requireEnumClass(internal::Name name);
QUILLON_EXPORT bool isNumber(const HostArray& value);

/// The host object bound to `object`, which is announced under `typeName` if it is not bound yet; the host
/// gets its share.
QUILLON_EXPORT std::shared_ptr<HostObject> share(const std::shared_ptr<full::StdShareable>& object,
                                                 const char* typeName);
/// Whether a value without elements may stand for an object of a class: it names no class, that one, or a
/// subclass.
QUILLON_EXPORT bool isEmptyOf(internal::Name className, const HostArray& value);
/// Raises the error for a value that is not of a type.
[[noreturn]] QUILLON_EXPORT void errorWrongType(const std::string& expected, const HostArray& got);

}  // namespace detail

/// For each C++ type: its host type string, both conversions, and accepts(), which tells whether a value is
/// of the type when an overload is chosen: ranges are not checked, and numbers do not count as truth values.
template <typename T>
struct HostType;

/// What the types of numbers share.
template <typename T, T (*convert)(const HostArray&)>
struct NumberType {
    static HostArrayProxy toHost(T number) { return number; }
    static T fromHost(const HostArray& value) { return convert(value); }
    static bool accepts(const HostArray& value) { return detail::isNumber(value); }
};

template <>
struct HostType<double> : NumberType<double, detail::toDouble> {
    static std::string name() { return "double scalar"; }
};

template <>
struct HostType<std::uint32_t> : NumberType<std::uint32_t, detail::toUint32> {
    static std::string name() { return "uint32 scalar"; }
};

template <>
struct HostType<std::uint64_t> : NumberType<std::uint64_t, detail::toUint64> {
    static std::string name() { return "uint64 scalar"; }
};

template <>
struct HostType<bool> {
    static std::string name() { return "logical scalar"; }
    static HostArrayProxy toHost(bool truth) { return truth; }
    static bool fromHost(const HostArray& value) { return detail::toLogical(value); }
    static bool accepts(const HostArray& value) { return value.getLogical().has_value(); }
};

template <>
struct HostType<std::u16string> {
    static std::string name()
    {
        detail::initStringDataTypes();
        return "OrcaFactoryString scalar";
    }
    static HostArrayProxy toHost(const std::u16string& text) { return HostArray(text).getProxy(); }
    static std::u16string fromHost(const HostArray& value) { return extractString(value.getProxy()); }
    static bool accepts(const HostArray& value) { return value.getText() != nullptr; }
};

template <>
struct HostType<std::vector<std::u16string>> {
    static std::string name()
    {
        detail::initStringDataTypes();
        return "OrcaFactoryString vector";
    }
    static HostArrayProxy toHost(const std::vector<std::u16string>& texts)
    {
        return HostArray::cells(1, texts.size(), std::vector<HostArray>(texts.begin(), texts.end()))
            .getProxy();
    }
    static std::vector<std::u16string> fromHost(const HostArray& value) { return detail::toTexts(value); }
    static bool accepts(const HostArray& value) { return detail::mayBeTexts(value); }
};

template <typename E>
requires std::is_enum_v<E>
struct HostType<E> {
    static std::string name() { return hostName<E>().getText(); }
    static HostArrayProxy toHost(E member)
    {
        return detail::fromEnumValue(enumClass(), static_cast<std::uint64_t>(member)).getProxy();
    }
    static E fromHost(const HostArray& value)
    {
        return static_cast<E>(detail::toEnumValue(enumClass(), value));
    }
    static bool accepts(const HostArray& value)
    {
        return value.getMember() != nullptr ? value.getMember()->enumClass == &enumClass()
                                            : value.getText() != nullptr;
    }

 private:
    static const EnumClass& enumClass()
    {
        static const EnumClass& result = detail::requireEnumClass(hostName<E>());
        return result;
    }
};

/// A null handle is an empty value of the class, and a value without elements is a null handle.
template <typename C>
struct HostType<std::shared_ptr<C>> {
    static std::string name() { return hostName<C>().getText(); }
    static HostArrayProxy toHost(const std::shared_ptr<C>& object)
    {
        if (!object) return EmptyValue{hostName<C>()};
        return detail::share(object, object->getFullyQualifiedOrcaTypeName());
    }
    static std::shared_ptr<C> fromHost(const HostArray& value)
    {
        if (value.isEmpty()) return nullptr;
        auto result = value.getNative<C>();
        if (!result) detail::errorWrongType(name(), value);
        return result;
    }
    static bool accepts(const HostArray& value)
    {
        if (value.isEmpty()) return detail::isEmptyOf(hostName<C>(), value);
        const auto* const object = value.getFirstObject();
        return object != nullptr && object->getObjectAs<C>() != nullptr;
    }
};

template <typename C>
struct HostType<std::vector<std::shared_ptr<C>>> {
    static std::string name() { return hostName<C>().getText() + " vector"; }
    static HostArrayProxy toHost(const std::vector<std::shared_ptr<C>>& objects)
    {
        auto array = omCreateORCAMatrix(1, objects.size(), hostName<C>());
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i])
                omSetArrayElement(array, i, HostArray(HostType<std::shared_ptr<C>>::toHost(objects[i])));
        omSetClassOfHeterogeneousArray(array, hostName<C>());
        return array.getProxy();
    }
};

}  // namespace orca::factory
