#include "orca/Script.h"

namespace orca {

HostArray construct(std::string_view className, Arguments arguments)
{
    return ClassRegistry::instance().requireClass(className).construct(arguments);
}

const factory::ClassInfo& classOf(const HostArray& object)
{
    const auto* const result = object.getOneObject().getClass();
    if (result == nullptr) throw Error(ErrorId::UnknownClass, {object.describe()});
    return *result;
}

HostArray get(const HostArray& object, std::string_view property)
{
    return classOf(object).requireProperty(property).get(object);
}

void set(const HostArray& object, std::string_view property, const HostArray& value)
{
    classOf(object).requireProperty(property).set(object, value);
}

HostArray call(const HostArray& object, std::string_view method, Arguments arguments)
{
    return classOf(object).requireMethod(method).invoke(object, arguments);
}

}  // namespace orca
