#include "orca/HostArray.h"

#include <type_traits>
#include <utility>

#include "orca/ClassInfo.h"
#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "orca/Error.h"
#include "support/Text.h"

namespace orca {
namespace {

template <typename T>
using Shared = std::shared_ptr<const T>;
using Shape = std::pair<std::size_t, std::size_t>;

template <typename T>
constexpr const char* numberName = "double";
template <>
constexpr const char* numberName<std::uint32_t> = "uint32";
template <>
constexpr const char* numberName<std::uint64_t> = "uint64";

std::string shapeText(std::size_t rows, std::size_t columns)
{
    return std::to_string(rows) + "x" + std::to_string(columns) + " ";
}

template <typename T>
void requireShape(const Matrix<T>& matrix)
{
    const auto count = matrix.elements.size();
    const bool fits = matrix.columns == 0
                          ? count == 0
                          : count % matrix.columns == 0 && count / matrix.columns == matrix.rows;
    if (fits) return;
    throw Error(ErrorId::BadShape,
                {std::to_string(matrix.rows), std::to_string(matrix.columns), std::to_string(count)});
}

struct ShapeOf {
    Shape operator()(const EmptyValue& /*value*/) const { return {0, 0}; }
    Shape operator()(const Shared<std::u16string>& text) const
    {
        return {text->empty() ? 0 : 1, text->size()};
    }
    Shape operator()(const Shared<std::vector<std::u16string>>& texts) const { return {1, texts->size()}; }
    Shape operator()(const std::shared_ptr<HostObject>& /*object*/) const { return {1, 1}; }
    template <typename T>
    Shape operator()(const T& value) const
    {
        if constexpr (std::is_scalar_v<T> || std::is_same_v<T, EnumMember>)
            return {1, 1};
        else
            return {value->rows, value->columns};
    }
};

struct Description {
    std::string operator()(const EmptyValue& value) const
    {
        return value.className ? "empty " + value.className.getText() : "empty";
    }
    std::string operator()(bool truth) const
    {
        return truth ? "logical scalar true" : "logical scalar false";
    }
    std::string operator()(const EnumMember& member) const
    {
        return member.enumClass->getName() + "." + member.enumClass->getMembers()[member.index].name;
    }
    std::string operator()(const std::shared_ptr<HostObject>& object) const
    {
        return object->getClassName() ? object->getClassName().getText() : "object without class name";
    }
    std::string operator()(const Shared<std::u16string>& /*text*/) const { return "text"; }
    std::string operator()(const Shared<std::vector<std::u16string>>& texts) const
    {
        return shapeText(1, texts->size()) + "text array";
    }
    std::string operator()(const std::shared_ptr<ObjectArray>& array) const
    {
        return shapeText(array->rows, array->columns) + array->className.getText() + " array";
    }
    std::string operator()(const Shared<CellArray>& cells) const
    {
        return shapeText(cells->rows, cells->columns) + "cell array";
    }
    template <typename T>
    std::string operator()(const Shared<Matrix<T>>& matrix) const
    {
        return shapeText(matrix->rows, matrix->columns) + numberName<T> + " matrix";
    }
    template <typename T>
    std::string operator()(T number) const
    {
        using Printed = std::conditional_t<std::is_integral_v<T>, unsigned long, double>;
        return std::string(numberName<T>) + " scalar " + quillon::toUtf8(quillon::num2str(Printed{number}));
    }
};

struct Equality {
    template <typename T>
    bool operator()(const Shared<T>& left, const Shared<T>& right) const
    {
        return left == right || *left == *right;
    }
    bool operator()(const std::shared_ptr<ObjectArray>& left, const std::shared_ptr<ObjectArray>& right) const
    {
        return left == right || *left == *right;
    }
    template <typename T>
    bool operator()(const T& left, const T& right) const
    {
        return left == right;
    }
    template <typename T, typename U>
    bool operator()(const T& /*left*/, const U& /*right*/) const
    {
        return false;
    }
};

void requireIndex(std::size_t index, std::size_t count)
{
    if (index < count) return;
    throw Error(ErrorId::IndexOutOfRange, {std::to_string(count), std::to_string(index + 1)});
}

}  // namespace

HostArray::HostArray(EnumMember member)
{
    if (member.enumClass == nullptr) return;
    requireIndex(member.index, member.enumClass->getMembers().size());
    value_ = member;
}

HostArray::HostArray(std::shared_ptr<HostObject> object)
{
    if (object) value_ = std::move(object);
}

HostArray::HostArray(std::u16string text) : value_(std::make_shared<const std::u16string>(std::move(text))) {}

HostArray HostArray::textArray(std::vector<std::u16string> texts)
{
    return HostArray(std::make_shared<const std::vector<std::u16string>>(std::move(texts)));
}

template <typename T>
HostArray HostArray::matrix(std::size_t rows, std::size_t columns, std::vector<T> elements)
{
    Matrix<T> matrix{rows, columns, std::move(elements)};
    requireShape(matrix);
    if (matrix.elements.size() == 1) return {matrix.elements.front()};
    return HostArray(std::make_shared<const Matrix<T>>(std::move(matrix)));
}

template HostArray HostArray::matrix(std::size_t, std::size_t, std::vector<double>);
template HostArray HostArray::matrix(std::size_t, std::size_t, std::vector<std::uint32_t>);
template HostArray HostArray::matrix(std::size_t, std::size_t, std::vector<std::uint64_t>);

HostArray HostArray::row(std::vector<double> elements)
{
    const auto count = elements.size();
    return matrix(1, count, std::move(elements));
}

HostArray HostArray::cells(std::size_t rows, std::size_t columns, std::vector<HostArray> elements)
{
    CellArray cells{rows, columns, std::move(elements)};
    requireShape(cells);
    return HostArray(std::make_shared<const CellArray>(std::move(cells)));
}

HostArray HostArray::objects(ObjectArray array)
{
    requireShape(array);
    return HostArray(std::make_shared<ObjectArray>(std::move(array)));
}

std::size_t HostArray::getRowCount() const
{
    return std::visit(ShapeOf(), value_).first;
}

std::size_t HostArray::getColumnCount() const
{
    return std::visit(ShapeOf(), value_).second;
}

std::optional<double> HostArray::getNumber() const
{
    if (const auto* const number = std::get_if<double>(&value_)) return *number;
    if (const auto* const number = std::get_if<std::uint32_t>(&value_)) return *number;
    if (const auto* const number = std::get_if<std::uint64_t>(&value_)) return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<bool> HostArray::getLogical() const
{
    if (const auto* const truth = std::get_if<bool>(&value_)) return *truth;
    return std::nullopt;
}

const std::u16string* HostArray::getText() const
{
    if (const auto* const text = std::get_if<Shared<std::u16string>>(&value_)) return text->get();
    const auto* const texts = getTextArray();
    return texts != nullptr && texts->size() == 1 ? &texts->front() : nullptr;
}

const std::vector<std::u16string>* HostArray::getTextArray() const
{
    const auto* const texts = std::get_if<Shared<std::vector<std::u16string>>>(&value_);
    return texts != nullptr ? texts->get() : nullptr;
}

std::optional<std::vector<double>> HostArray::getMatrixElements() const
{
    using Elements = std::optional<std::vector<double>>;
    return std::visit(
        []<typename T>(const T& value) -> Elements {
            if constexpr (std::is_same_v<T, Shared<Matrix<double>>> ||
                          std::is_same_v<T, Shared<Matrix<std::uint32_t>>> ||
                          std::is_same_v<T, Shared<Matrix<std::uint64_t>>>)
                return std::vector<double>(value->elements.begin(), value->elements.end());
            else
                return std::nullopt;
        },
        value_);
}

const CellArray* HostArray::getCells() const
{
    const auto* const cells = std::get_if<Shared<CellArray>>(&value_);
    return cells != nullptr ? cells->get() : nullptr;
}

const ObjectArray* HostArray::getObjectArray() const
{
    const auto* const objects = std::get_if<std::shared_ptr<ObjectArray>>(&value_);
    return objects != nullptr ? objects->get() : nullptr;
}

HostObject* HostArray::getFirstObject() const
{
    if (const auto* const object = std::get_if<std::shared_ptr<HostObject>>(&value_)) return object->get();
    const auto* const objects = getObjectArray();
    return objects != nullptr && !objects->elements.empty() ? objects->elements.front().get() : nullptr;
}

HostObject& HostArray::getOneObject() const
{
    const auto* const objects = getObjectArray();
    auto* const object = getFirstObject();
    if (object == nullptr || (objects != nullptr && objects->elements.size() != 1))
        throw Error(ErrorId::NotOneObject, {describe()});
    return *object;
}

std::string HostArray::describe() const
{
    return std::visit(Description(), value_);
}

bool operator==(const HostArray& left, const HostArray& right)
{
    return std::visit(Equality(), left.value_, right.value_);
}

HostArray omCreateORCAMatrix(std::size_t rows, std::size_t columns, internal::Name className)
{
    ObjectArray array{{rows, columns, {}}, className};
    array.elements.resize(rows * columns);
    return HostArray::objects(std::move(array));
}

ObjectArray& HostArray::own()
{
    const auto* const shared = std::get_if<std::shared_ptr<ObjectArray>>(&value_);
    if (shared == nullptr) {
        auto& object = getOneObject();
        *this = objects({{1, 1, {object.shared_from_this()}}, object.getClassName()});
    } else if (shared->use_count() != 1) {
        *this = objects(ObjectArray(**shared));
    }
    return *std::get<std::shared_ptr<ObjectArray>>(value_);
}

void omSetArrayElement(HostArray& array, std::size_t index, const HostArray& element)
{
    auto object = element.getOneObject().shared_from_this();
    requireIndex(index, array.getElementCount());
    array.own().elements[index] = std::move(object);
}

HostArray omGetArrayElement(const HostArray& array, std::size_t index)
{
    requireIndex(index, array.getElementCount());
    const auto* const objects = array.getObjectArray();
    if (objects == nullptr) return {array.getOneObject().shared_from_this()};
    const auto& object = objects->elements[index];
    return object ? HostArray(object) : HostArray::empty(objects->className);
}

void omSetClassOfHeterogeneousArray(HostArray& array, internal::Name className)
{
    const auto* const info = ClassRegistry::instance().findClass(className.getText());
    if (info != nullptr && !info->isHeterogeneous())
        throw Error(ErrorId::NotHeterogeneous, {className.getText()});
    auto& objects = array.own();
    objects.className = className;
    objects.heterogeneous = true;
}

}  // namespace orca
