#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "chart/model/Object.h"
#include "orca/ClassInfo.h"

/// What the host knows of the chart classes: one class information object for each.
namespace quillon::chart::mi {

/// Base of the class information of every chart class.
class CosObjectClassInfo : public orca::factory::StdShareableHandleClassInfo<Object> {
 protected:
    CosObjectClassInfo(orca::internal::Name name, std::string superclass, std::string description)
        : StdShareableHandleClassInfo(name.getText(), {std::move(superclass)}, std::move(description))
    {
    }
};

/// The class information of C. A subclass declares the members of C in its constructor, one row for each.
template <typename C, typename Super = Object>
class CosClass : public CosObjectClassInfo {
    static_assert(std::is_base_of_v<Super, C>);

 public:
    bool isInstance(const orca::factory::full::StdShareable* object) const override
    {
        return dynamic_cast<const C*>(object) != nullptr;
    }

 protected:
    /// `superclass` is the host name of Super unless the host is told another one.
    explicit CosClass(std::string description,
                      std::string superclass = orca::factory::hostName<Super>().getText())
        : CosObjectClassInfo(orca::factory::hostName<C>(), std::move(superclass), std::move(description))
    {
    }

    /// A constructor over C::create(Args...).
    template <typename... Args>
    void constructor(orca::factory::impl::ArgumentNames<sizeof...(Args)> argumentNames = {})
    {
        CosObjectClassInfo::constructor<C, Args...>(argumentNames);
    }
};

}  // namespace quillon::chart::mi
