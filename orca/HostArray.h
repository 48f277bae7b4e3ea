#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "orca/HostObject.h"
#include "orca/Name.h"
#include "support/Export.h"

namespace orca {

class HostArray;

namespace factory {
class EnumClass;
}

/// Elements column by column.
template <typename T>
struct Matrix {
    std::size_t rows = 0;
    std::size_t columns = 0;
    std::vector<T> elements;
    friend bool operator==(const Matrix&, const Matrix&) = default;
};

/// Values of any kind.
using CellArray = Matrix<HostArray>;

/// Objects of one class or, if heterogeneous, of several that descend from it. Elements may be null.
struct ObjectArray : Matrix<std::shared_ptr<HostObject>> {
    internal::Name className;
    bool heterogeneous = false;
    friend bool operator==(const ObjectArray&, const ObjectArray&) = default;
};

/// A member of an enumeration class.
struct EnumMember {
    const factory::EnumClass* enumClass = nullptr;
    /// The member's position in the class, from 0.
    std::size_t index = 0;
    friend bool operator==(const EnumMember&, const EnumMember&) = default;
};

/// No elements, of a class or of none.
struct EmptyValue {
    internal::Name className;
    friend bool operator==(const EmptyValue&, const EmptyValue&) = default;
};

namespace factory {

/// A host value in its raw form, as it crosses the boundary. Scalars stand in place, all else is shared, and
/// changes only while a single value holds it.
using HostArrayProxy =
    std::variant<EmptyValue, double, std::uint32_t, std::uint64_t, bool, EnumMember,
                 std::shared_ptr<HostObject>, std::shared_ptr<const std::u16string>,
                 std::shared_ptr<const std::vector<std::u16string>>, std::shared_ptr<const Matrix<double>>,
                 std::shared_ptr<const Matrix<std::uint32_t>>, std::shared_ptr<const Matrix<std::uint64_t>>,
                 std::shared_ptr<ObjectArray>, std::shared_ptr<const CellArray>>;

}  // namespace factory

/// A value of the host: numbers, truth values, text, enumeration members, objects, cells, or nothing. It is
/// cheap to copy and, but for the objects it names, never changes once made.
class QUILLON_EXPORT HostArray {
 public:
    /// Empty, of no class.
    HostArray() = default;
    /// Requires: no null pointer in `proxy`.
    explicit HostArray(factory::HostArrayProxy proxy) : value_(std::move(proxy)) {}

    /// Scalars. Whole numbers of the language are doubles, as numbers of the host are.
    HostArray(double number) : value_(number) {}
    HostArray(int number) : value_(static_cast<double>(number)) {}
    HostArray(std::uint32_t number) : value_(number) {}
    HostArray(std::uint64_t number) : value_(number) {}
    HostArray(std::same_as<bool> auto truth) : value_(truth) {}
    /// A member of no class is empty. Throws: Error for a member that the class does not have.
    HostArray(EnumMember member);
    /// A null object is empty.
    HostArray(std::shared_ptr<HostObject> object);
    HostArray(std::u16string text);
    HostArray(const char16_t* text) : HostArray(std::u16string(text)) {}

    /// Empty, of a class.
    static HostArray empty(internal::Name className)
    {
        return HostArray(factory::HostArrayProxy(EmptyValue{className}));
    }
    /// A row of texts.
    static HostArray textArray(std::vector<std::u16string> texts);
    /// A matrix of double, uint32_t or uint64_t; one element makes a scalar.
    /// Throws: Error when the number of elements is not rows times columns.
    template <typename T>
    static HostArray matrix(std::size_t rows, std::size_t columns, std::vector<T> elements);
    /// A row of doubles.
    static HostArray row(std::vector<double> elements);
    /// Throws: as matrix().
    static HostArray cells(std::size_t rows, std::size_t columns, std::vector<HostArray> elements);
    static HostArray objects(ObjectArray array);

    const factory::HostArrayProxy& getProxy() const { return value_; }

    /// The length of a text is its number of columns.
    std::size_t getRowCount() const;
    std::size_t getColumnCount() const;
    std::size_t getElementCount() const { return getRowCount() * getColumnCount(); }
    bool isEmpty() const { return getElementCount() == 0; }

    /// A numeric scalar, however it is stored.
    std::optional<double> getNumber() const;
    std::optional<bool> getLogical() const;
    /// A text, or the one element of a text array; null for anything else.
    const std::u16string* getText() const;
    /// Null unless the value holds several texts.
    const std::vector<std::u16string>* getTextArray() const;
    /// The elements of a numeric matrix of several elements, as doubles; none for anything else.
    std::optional<std::vector<double>> getMatrixElements() const;
    const EnumMember* getMember() const { return std::get_if<EnumMember>(&value_); }
    /// Null unless the value is a cell array.
    const CellArray* getCells() const;
    /// Null unless the value holds several objects.
    const ObjectArray* getObjectArray() const;
    /// The object, or the first of an object array; null for anything else.
    HostObject* getFirstObject() const;
    /// The one object that the value names. Throws: Error when it does not name exactly one.
    HostObject& getOneObject() const;
    /// The library object behind getFirstObject() as a T, shared. Empty when there is none or it is not a T.
    template <typename T>
    std::shared_ptr<T> getNative() const
    {
        const auto* const object = getFirstObject();
        return object ? object->getNative<T>() : nullptr;
    }

    /// What the value is, for a message: "double scalar 2.5", "1x3 double matrix", "text".
    std::string describe() const;

    /// Objects are equal when they are the same object.
    friend QUILLON_EXPORT bool operator==(const HostArray& left, const HostArray& right);

 private:
    friend QUILLON_EXPORT void omSetArrayElement(HostArray& array, std::size_t index,
                                                 const HostArray& element);
    friend QUILLON_EXPORT void omSetClassOfHeterogeneousArray(HostArray& array, internal::Name className);

    /// The objects of the value as an array that no other value shares.
    ObjectArray& own();

    factory::HostArrayProxy value_;
};

/// An object array without objects yet.
QUILLON_EXPORT HostArray omCreateORCAMatrix(std::size_t rows, std::size_t columns, internal::Name className);

/// Puts the object that `element` names at a position from 0, column by column.
/// Throws: Error for a position outside or an element that is not one object.
QUILLON_EXPORT void omSetArrayElement(HostArray& array, std::size_t index, const HostArray& element);

/// The object at a position from 0; a place without object gives an empty value of the array's class.
/// Throws: Error for a position outside.
QUILLON_EXPORT HostArray omGetArrayElement(const HostArray& array, std::size_t index);

/// Declares that the objects of `array` may be of several classes that descend from `className`.
/// Throws: Error when that class is registered and does not allow it.
QUILLON_EXPORT void omSetClassOfHeterogeneousArray(HostArray& array, internal::Name className);

}  // namespace orca
