#include "orca/EnumClassInfo.h"

#include <algorithm>

namespace orca::factory {

HostArray EnumConstructor::operator()(Arguments arguments) const
try {
    const std::string form = "one member name, or one " + enumClass_.getUnderlyingType() + " scalar";
    if (arguments.size() != 1)
        throw Error(ErrorId::WrongType, {form, std::to_string(arguments.size()) + " arguments"});
    const auto& argument = arguments.front();
    const auto value =
        detail::isNumber(argument) ? detail::toUint64(argument) : detail::toEnumValue(enumClass_, argument);
    return detail::fromEnumValue(enumClass_, value);
} catch (const Error& error) {
    throw error.at(enumClass_.getName());
}

const EnumClass::Member* EnumClass::findMember(std::u16string_view name) const
{
    const auto found = std::find_if(members_.begin(), members_.end(), [name](const Member& member) {
        return std::equal(name.begin(), name.end(), member.name.begin(), member.name.end());
    });
    return found != members_.end() ? &*found : nullptr;
}

}  // namespace orca::factory
