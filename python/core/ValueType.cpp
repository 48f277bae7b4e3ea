#include "python/core/ValueType.h"

#include <limits>
#include <string_view>

#include "python/core/Classes.h"

namespace quillon::python {
namespace {

using Kind = ValueType::Kind;
using Shape = orca::factory::HostTypeInfo::Shape;

struct Row {
    const char* host;
    Kind kind;
    const char* python;
    std::uint64_t maximum = 0;
};

constexpr Row rows[] = {
    {"any", Kind::Any, "Any"},
    {"double scalar", Kind::Number, "float"},
    {"uint32 scalar", Kind::WholeNumber, "int", std::numeric_limits<std::uint32_t>::max()},
    {"uint64 scalar", Kind::WholeNumber, "int", std::numeric_limits<std::uint64_t>::max()},
    {"logical scalar", Kind::Logical, "bool"},
    {"OrcaFactoryString scalar", Kind::Text, "str"},
    {"OrcaFactoryString vector", Kind::Texts, "list[str]"},
};

}  // namespace

ValueType resolveResult(const orca::factory::HostTypeInfo& type)
{
    for (const auto& row : rows)
        if (type.text == row.host) return {row.kind, row.maximum, nullptr, nullptr, row.python};
    if (const auto* const enumeration = findEnumeration(type.element))
        return {Kind::Member, 0, enumeration, nullptr, shortName(type.element)};
    if (type.element.find('.') == std::string::npos) return {Kind::Any, 0, nullptr, nullptr, "list[float]"};
    auto* const python = findType(type.element);
    const auto name = shortName(type.element);
    if (type.shape == Shape::Vector) return {Kind::Objects, 0, nullptr, python, "list[" + name + "]"};
    return {Kind::Object, 0, nullptr, python, name};
}

ValueType resolveInput(const orca::factory::HostTypeInfo& type)
{
    constexpr std::string_view list = "list[";
    auto result = resolveResult(type);
    if (result.name.starts_with(list)) result.name.replace(0, list.size(), "Sequence[");
    return result;
}

}  // namespace quillon::python
