#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orca/ClassInfo.h"
#include "support/Export.h"

namespace orca::factory {

/// Makes members of an enumeration class: from a member, from its name as text, or from its value.
class QUILLON_EXPORT EnumConstructor {
 public:
    explicit EnumConstructor(const EnumClass& enumClass) : enumClass_(enumClass) {}
    /// Throws: Error when the argument does not name a member.
    HostArray operator()(Arguments arguments) const;

 private:
    const EnumClass& enumClass_;
};

/// An enumeration class: named members over numbers.
class QUILLON_EXPORT EnumClass : public ClassInfo {
 public:
    struct Member {
        std::string name;
        std::uint64_t value;
    };

    /// In the order of their registration, which need not be that of their values.
    const std::vector<Member>& getMembers() const { return members_; }
    /// Null for an unknown name. Upper and lower case are different.
    const Member* findMember(std::u16string_view name) const;
    /// The host type of the values: "uint32".
    const std::string& getUnderlyingType() const { return underlyingType_; }

    HostArray construct(Arguments arguments) const override { return EnumConstructor(*this)(arguments); }
    bool isInstance(const full::StdShareable* /*object*/) const override { return false; }

 protected:
    EnumClass(const std::string& name, std::string description, std::string underlyingType,
              std::vector<Member> members)
        : ClassInfo(name, {}, std::move(description)),
          underlyingType_(std::move(underlyingType)),
          members_(std::move(members))
    {
    }

 private:
    std::string underlyingType_;
    std::vector<Member> members_;
};

/// The description of an enumeration and its members, in the order in which the host lists them.
template <typename E>
struct EnumInfo {
    std::string description;
    std::vector<std::pair<std::string, E>> members;
};

/// The class information of an enumeration type.
template <typename E>
class EnumClassInfo : public EnumClass {
 protected:
    explicit EnumClassInfo(const EnumInfo<E>& info)
        : EnumClass(hostName<E>().getText(), info.description, underlyingType(), membersOf(info))
    {
    }

 private:
    static std::string underlyingType()
    {
        const auto type = HostType<std::underlying_type_t<E>>::name();
        return type.substr(0, type.find(' '));
    }
    static std::vector<Member> membersOf(const EnumInfo<E>& info)
    {
        std::vector<Member> members;
        for (const auto& [name, value] : info.members)
            members.push_back({name, static_cast<std::uint64_t>(value)});
        return members;
    }
};

}  // namespace orca::factory
