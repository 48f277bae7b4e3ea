#include "python/core/Conversion.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "orca/EnumClassInfo.h"
#include "python/core/Classes.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/NumberBuffer.h"

namespace quillon::python {
namespace {

using Kind = ValueType::Kind;
using orca::HostArray;

template <typename T>
using Shared = std::shared_ptr<const T>;

py::object owned(PyObject* reference)
{
    if (reference == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(reference);
}

py::object makeText(const std::u16string& text)
{
    int native = PY_LITTLE_ENDIAN ? -1 : 1;
    const auto* const bytes = reinterpret_cast<const char*>(text.data());
    return owned(
        PyUnicode_DecodeUTF16(bytes, static_cast<Py_ssize_t>(2 * text.size()), "surrogatepass", &native));
}

template <typename T, typename Convert>
py::object makeList(const std::vector<T>& elements, const Convert& convert)
{
    py::list list(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        PyList_SET_ITEM(list.ptr(), static_cast<Py_ssize_t>(i), convert(elements[i]).release().ptr());
    return list;
}

/// Makes a Python object of each kind of host value.
struct ToPython {
    py::object operator()(const orca::EmptyValue& /*value*/) const { return py::none(); }
    py::object operator()(double number) const { return owned(PyFloat_FromDouble(number)); }
    py::object operator()(std::uint32_t number) const { return owned(PyLong_FromUnsignedLong(number)); }
    py::object operator()(std::uint64_t number) const { return owned(PyLong_FromUnsignedLongLong(number)); }
    py::object operator()(bool truth) const { return py::bool_(truth); }
    py::object operator()(const orca::EnumMember& member) const { return memberOf(member); }
    py::object operator()(const std::shared_ptr<orca::HostObject>& object) const
    {
        return object ? wrap(object) : py::none();
    }
    py::object operator()(const Shared<std::u16string>& text) const { return makeText(*text); }
    py::object operator()(const Shared<std::vector<std::u16string>>& texts) const
    {
        return makeList(*texts, makeText);
    }
    template <typename Elements>
    py::object operator()(const std::shared_ptr<Elements>& array) const
    {
        return makeList(array->elements, *this);
    }
    py::object operator()(const HostArray& value) const { return toPython(value); }
};

bool isBytes(PyObject* value)
{
    return PyBytes_Check(value) || PyByteArray_Check(value);
}

bool isNumber(PyObject* value)
{
    if (PyFloat_Check(value) || PyLong_Check(value)) return true;
    const auto* const methods = Py_TYPE(value)->tp_as_number;
    return methods != nullptr && (methods->nb_float != nullptr || methods->nb_index != nullptr);
}

/// Whether the items of `value` have an order and a number. Text and bytes are taken as a whole, and the
/// items of a mapping are only its keys.
bool isSequence(PyObject* value)
{
    if (PyList_Check(value) || PyTuple_Check(value)) return true;
    if (PyUnicode_Check(value) || isBytes(value) || !PySequence_Check(value)) return false;
    if (PySequence_Size(value) < 0) {
        // An array without a dimension has no length.
        if (PyErr_ExceptionMatches(PyExc_TypeError) == 0) throw py::error_already_set();
        PyErr_Clear();
        return false;
    }
    return !py::isinstance(value, py::module_::import("collections.abc").attr("Mapping"));
}

[[noreturn]] void refuseType(PyObject* value, const std::string& expected)
{
    throw Refused(PyExc_TypeError, "expected " + expected + ", got " + Py_TYPE(value)->tp_name + ".");
}

[[noreturn]] void refuseValue(PyObject* value, const std::string& expected)
{
    throw Refused(PyExc_ValueError, "expected " + expected + ", got " + describe(value) + ".");
}

double toDouble(PyObject* value)
{
    if (PyFloat_CheckExact(value)) return PyFloat_AS_DOUBLE(value);
    if (!isNumber(value)) refuseType(value, "float");
    const double number = PyFloat_AsDouble(value);
    if (number != -1 || PyErr_Occurred() == nullptr) return number;
    const bool isTooLarge = PyErr_ExceptionMatches(PyExc_OverflowError) != 0;
    if (!isTooLarge && PyErr_ExceptionMatches(PyExc_TypeError) == 0) throw py::error_already_set();
    PyErr_Clear();
    if (isTooLarge) refuseValue(value, "a number in the range of float");
    refuseType(value, "float");
}

/// The whole number that `value` is, if it is one that the host has.
std::optional<std::uint64_t> findWholeNumber(PyObject* value)
{
    if (!PyIndex_Check(value)) {
        const double number = toDouble(value);
        const double limit = std::ldexp(1.0, std::numeric_limits<std::uint64_t>::digits);
        if (!(number >= 0 && number < limit) || number != std::trunc(number)) return std::nullopt;
        return static_cast<std::uint64_t>(number);
    }
    const auto whole = PyLong_AsUnsignedLongLong(owned(PyNumber_Index(value)).ptr());
    if (PyErr_Occurred() == nullptr) return whole;
    if (!PyErr_ExceptionMatches(PyExc_OverflowError)) throw py::error_already_set();
    PyErr_Clear();
    return std::nullopt;
}

HostArray toWholeNumber(PyObject* value, const ValueType& type)
{
    if (!isNumber(value)) refuseType(value, "int");
    const auto number = findWholeNumber(value);
    if (!number || *number > type.maximum)
        refuseValue(value, "a whole number from 0 to " + std::to_string(type.maximum));
    return {*number};
}

HostArray toLogical(PyObject* value)
{
    if (PyBool_Check(value)) return {value == Py_True};
    if (!isNumber(value)) refuseType(value, "bool");
    const double number = toDouble(value);
    if (number != 0 && number != 1) refuseValue(value, "bool");
    return {number == 1};
}

std::u16string toText(PyObject* value)
{
    if (!PyUnicode_Check(value)) refuseType(value, "str");
    // It has a byte order mark in front. A lone surrogate raises a UnicodeEncodeError, which is a ValueError.
    const auto bytes = owned(PyUnicode_AsUTF16String(value));
    std::u16string text(static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())) / 2, u'\0');
    std::memcpy(text.data(), PyBytes_AS_STRING(bytes.ptr()), 2 * text.size());
    return text.substr(1);
}

std::string itemPlace(std::size_t index)
{
    return "item " + std::to_string(index) + " (from 0): ";
}

/// Converts every item of a sequence; an error tells the item. The items are held while they are converted,
/// because conversion may run Python code that changes the sequence.
template <typename Convert>
auto convertItems(PyObject* sequence, const Convert& convert)
{
    const auto items = owned(PySequence_Fast(sequence, "expected a sequence"));
    std::vector<decltype(convert(sequence))> result;
    result.reserve(static_cast<std::size_t>(PySequence_Fast_GET_SIZE(items.ptr())));
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(items.ptr()); ++i) {
        const auto item = py::reinterpret_borrow<py::object>(PySequence_Fast_GET_ITEM(items.ptr(), i));
        try {
            result.push_back(convert(item.ptr()));
        } catch (const Refused& refused) {
            throw Refused(refused.type, itemPlace(result.size()) + refused.what());
        }
    }
    return result;
}

HostArray toTexts(PyObject* value)
{
    if (value == Py_None) return {};
    if (!isSequence(value)) refuseType(value, "Sequence[str]");
    return HostArray::textArray(convertItems(value, toText));
}

HostArray toObject(PyObject* value, const ValueType& type)
{
    if (value == Py_None) return {};
    if (type.type == nullptr || !PyObject_TypeCheck(value, type.type))
        refuseType(value, type.name + " or None");
    return {hostOf(value)};
}

HostArray toObjects(PyObject* value, const ValueType& type)
{
    if (value == Py_None) return {};
    if (!isSequence(value)) refuseType(value, type.name);
    const auto objects = convertItems(value, [&](PyObject* item) { return toObject(item, type); });
    auto array = orca::omCreateORCAMatrix(1, objects.size(), orca::internal::nullValue);
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (!objects[i].isEmpty()) orca::omSetArrayElement(array, i, objects[i]);
    return array;
}

HostArray toMember(PyObject* value, const ValueType& type)
{
    if (const auto member = findMember(value); member && member->enumClass == type.enumeration->enumClass)
        return {*member};
    if (!PyUnicode_Check(value)) refuseType(value, type.name);
    return {toText(value)};
}

const ValueType& typeOfAnyObject()
{
    static const ValueType type{Kind::Object, 0, nullptr, handleType(), "object of the library"};
    return type;
}

/// A sequence is of what its first item is of.
HostArray toArray(PyObject* sequence)
{
    const auto list = owned(PySequence_List(sequence));
    if (PyList_GET_SIZE(list.ptr()) == 0) return {};
    auto* const first = PyList_GET_ITEM(list.ptr(), 0);
    if (PyUnicode_Check(first)) return toTexts(list.ptr());
    if (isHandle(first)) return toObjects(list.ptr(), typeOfAnyObject());
    return HostArray::row(convertItems(list.ptr(), toDouble));
}

HostArray toAny(PyObject* value)
{
    if (value == Py_None) return {};
    if (PyUnicode_Check(value)) return {toText(value)};
    if (PyBool_Check(value)) return {value == Py_True};
    if (isHandle(value)) return {hostOf(value)};
    if (const auto member = findMember(value)) return {*member};
    if (auto numbers = readNumberBuffer(value)) return HostArray::row(std::move(*numbers));
    if (isSequence(value)) return toArray(value);
    if (isNumber(value)) return {toDouble(value)};
    refuseType(value, "str, a number, a sequence of them, or an object of the library");
}

}  // namespace

py::object toPython(const HostArray& value)
{
    return std::visit(ToPython(), value.getProxy());
}

bool fits(PyObject* value, const ValueType& type)
{
    switch (type.kind) {
        case Kind::Number:
        case Kind::WholeNumber:
        case Kind::Logical:
            return isNumber(value);
        case Kind::Text:
            return PyUnicode_Check(value) != 0;
        case Kind::Texts:
        case Kind::Objects:
            return value == Py_None || isSequence(value);
        case Kind::Member:
            return PyUnicode_Check(value) || findMember(value);
        case Kind::Object:
            return value == Py_None || (type.type != nullptr && PyObject_TypeCheck(value, type.type));
        case Kind::Any:
            break;
    }
    return true;
}

HostArray toHost(PyObject* value, const ValueType& type)
{
    switch (type.kind) {
        case Kind::Number:
            return {toDouble(value)};
        case Kind::WholeNumber:
            return toWholeNumber(value, type);
        case Kind::Logical:
            return toLogical(value);
        case Kind::Text:
            return {toText(value)};
        case Kind::Texts:
            return toTexts(value);
        case Kind::Member:
            return toMember(value, type);
        case Kind::Object:
            return toObject(value, type);
        case Kind::Objects:
            return toObjects(value, type);
        case Kind::Any:
            break;
    }
    return toAny(value);
}

std::vector<double> toNumbers(PyObject* values)
{
    if (auto numbers = readNumberBuffer(values)) return std::move(*numbers);
    if (!isSequence(values)) refuseType(values, "a sequence of numbers");
    return convertItems(values, toDouble);
}

std::string describe(PyObject* value)
{
    constexpr std::size_t limit = 40;
    const auto text = py::reinterpret_steal<py::object>(PyObject_Repr(value));
    const char* const bytes = text ? PyUnicode_AsUTF8(text.ptr()) : nullptr;
    if (bytes != nullptr && std::string_view(bytes).size() <= limit) return bytes;
    const bool isFailure = PyErr_Occurred() != nullptr && PyErr_ExceptionMatches(PyExc_Exception) == 0;
    if (isFailure) throw py::error_already_set();
    PyErr_Clear();
    return std::string("a large ") + Py_TYPE(value)->tp_name;
}

}  // namespace quillon::python
