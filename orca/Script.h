#pragma once

#include <initializer_list>
#include <string_view>

#include "orca/ClassInfo.h"
#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "orca/Error.h"
#include "orca/HostArray.h"
#include "support/Export.h"

/// What a script front end needs: to make objects and to use them by names.
///
/// A name is looked up at every call. A front end that repeats a call looks it up once, with
/// ClassInfo::findProperty and ClassInfo::findMethod, and keeps the result. What there is to name, the
/// ClassRegistry lists.
namespace orca {

/// Makes an object of a class, or gives the member of an enumeration class.
/// Throws: Error for an unknown class, or arguments that none of its forms takes; what the library throws.
QUILLON_EXPORT HostArray construct(std::string_view className, Arguments arguments = {});

/// The class of the one object that `object` names. Throws: Error when no class describes it.
QUILLON_EXPORT const factory::ClassInfo& classOf(const HostArray& object);

/// Throws: Error for an unknown name; as factory::impl::PropertyImpl.
QUILLON_EXPORT HostArray get(const HostArray& object, std::string_view property);
QUILLON_EXPORT void set(const HostArray& object, std::string_view property, const HostArray& value);

/// Throws: Error for an unknown name; as factory::OverloadSet.
QUILLON_EXPORT HostArray call(const HostArray& object, std::string_view method, Arguments arguments = {});

inline HostArray construct(std::string_view className, std::initializer_list<HostArray> arguments)
{
    return construct(className, Arguments(arguments.begin(), arguments.size()));
}
inline HostArray call(const HostArray& object, std::string_view method,
                      std::initializer_list<HostArray> arguments)
{
    return call(object, method, Arguments(arguments.begin(), arguments.size()));
}

}  // namespace orca
