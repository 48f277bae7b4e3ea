#include "orca/HostType.h"

#include <cmath>
#include <limits>

#include "orca/BindingRegistry.h"
#include "orca/ClassInfo.h"
#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "orca/Error.h"
#include "support/Text.h"

namespace orca::factory {
namespace {

/// The whole number that a numeric scalar stands for, if the unsigned type T has it.
template <typename T>
T toUnsigned(const HostArray& value, const char* typeName)
{
    if (const auto* const wide = std::get_if<std::uint64_t>(&value.getProxy()))
        if (*wide <= std::numeric_limits<T>::max()) return static_cast<T>(*wide);
    const auto number = value.getNumber();
    // The limit is the first power of two past the type, which a double holds exactly.
    const double limit = std::ldexp(1.0, std::numeric_limits<T>::digits);
    if (!number || !(*number >= 0 && *number < limit) || *number != std::trunc(*number))
        detail::errorWrongType(typeName, value);
    return static_cast<T>(*number);
}

std::string memberNames(const EnumClass& enumClass)
{
    return quillon::join(enumClass.getMembers(), ", ", &EnumClass::Member::name);
}

/// Whether a value stands for no texts: no value, an empty matrix or an empty cell array. An empty text is a
/// text.
bool isNoTexts(const HostArray& value)
{
    const auto* const none = std::get_if<EmptyValue>(&value.getProxy());
    if (none != nullptr) return !none->className;
    return value.isEmpty() && (value.getCells() != nullptr || value.getMatrixElements());
}

/// `text` for a message, which is no place for what lies outside ASCII.
std::string quoted(const std::u16string& text)
{
    std::string result = "\"";
    for (const char16_t c : text) result += c < 0x80 ? static_cast<char>(c) : '?';
    return result + "\"";
}

}  // namespace

std::u16string extractString(const HostArrayProxy& value)
{
    if (const auto* const text = std::get_if<std::shared_ptr<const std::u16string>>(&value)) return **text;
    if (isStringVector(value)) {
        auto texts = extractFromStringVector(value);
        if (texts.size() == 1) return std::move(texts.front());
    }
    detail::errorWrongType("text", HostArray(value));
}

bool isStringVector(const HostArrayProxy& value)
{
    return std::holds_alternative<std::shared_ptr<const std::vector<std::u16string>>>(value);
}

std::vector<std::u16string> extractFromStringVector(const HostArrayProxy& value)
{
    return *std::get<std::shared_ptr<const std::vector<std::u16string>>>(value);
}

void errorMustBeString(std::size_t position, const std::string& got)
{
    throw Error(ErrorId::MustBeString, {std::to_string(position), got});
}

void errorMustBeCellArray(const std::string& got)
{
    throw Error(ErrorId::MustBeCellArray, {got});
}

namespace detail {

bool isEmptyOf(internal::Name className, const HostArray& value)
{
    const auto* const empty = std::get_if<EmptyValue>(&value.getProxy());
    if (empty == nullptr || !empty->className || empty->className == className) return true;
    const auto* const info = ClassRegistry::instance().findClass(empty->className.getText());
    return info != nullptr && info->isA(className.getText());
}

double toDouble(const HostArray& value)
{
    const auto number = value.getNumber();
    if (!number) errorWrongType("double scalar", value);
    return *number;
}

std::uint32_t toUint32(const HostArray& value)
{
    return toUnsigned<std::uint32_t>(value, "uint32 scalar");
}

std::uint64_t toUint64(const HostArray& value)
{
    return toUnsigned<std::uint64_t>(value, "uint64 scalar");
}

bool toLogical(const HostArray& value)
{
    if (const auto truth = value.getLogical()) return *truth;
    const auto number = value.getNumber();
    if (!number || (*number != 0 && *number != 1)) errorWrongType("logical scalar", value);
    return *number == 1;
}

std::vector<std::u16string> toTexts(const HostArray& value)
{
    if (isNoTexts(value)) return {};
    if (isStringVector(value.getProxy())) return extractFromStringVector(value.getProxy());
    const auto* const cells = value.getCells();
    if (cells == nullptr) errorMustBeCellArray(value.describe());
    std::vector<std::u16string> texts;
    texts.reserve(cells->elements.size());
    for (const auto& cell : cells->elements) {
        if (cell.getText() == nullptr) errorMustBeString(texts.size() + 1, cell.describe());
        texts.push_back(extractString(cell.getProxy()));
    }
    return texts;
}

bool mayBeTexts(const HostArray& value)
{
    return isNoTexts(value) || isStringVector(value.getProxy()) || value.getCells() != nullptr;
}

std::uint64_t toEnumValue(const EnumClass& enumClass, const HostArray& value)
{
    if (const auto* const member = value.getMember(); member != nullptr && member->enumClass == &enumClass)
        return enumClass.getMembers()[member->index].value;
    const auto* const text = value.getText();
    if (text == nullptr) errorWrongType(enumClass.getName(), value);
    const auto* const member = enumClass.findMember(*text);
    if (member == nullptr) throw Error(ErrorId::UnknownMember, {memberNames(enumClass), quoted(*text)});
    return member->value;
}

HostArray fromEnumValue(const EnumClass& enumClass, std::uint64_t value)
{
    const auto& members = enumClass.getMembers();
    for (std::size_t i = 0; i < members.size(); ++i)
        if (members[i].value == value) return EnumMember{&enumClass, i};
    throw Error(ErrorId::UnknownMember, {memberNames(enumClass), std::to_string(value)});
}

const EnumClass& requireEnumClass(internal::Name name)
{
    const auto* const result =
        dynamic_cast<const EnumClass*>(ClassRegistry::instance().findClass(name.getText()));
    if (result == nullptr) throw Error(ErrorId::UnknownClass, {name.getText()});
    return *result;
}

bool isNumber(const HostArray& value)
{
    return value.getNumber().has_value();
}

std::shared_ptr<HostObject> share(const std::shared_ptr<full::StdShareable>& object, const char* typeName)
{
    auto host = BindingRegistry::announce(*object, internal::makeInterned(typeName));
    if (object->bindingState() != 1) full::acquireReference(object);
    return host;
}

void errorWrongType(const std::string& expected, const HostArray& got)
{
    throw Error(ErrorId::WrongType, {expected, got.describe()});
}

}  // namespace detail
}  // namespace orca::factory
