#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <fstream>
#include <iterator>

#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::factory::ClassInfo;
using orca::factory::EnumClass;
using orca::factory::impl::PropertyImpl;

std::string describe(const EnumClass& info)
{
    std::vector<std::string> members;
    for (const auto& member : info.getMembers())
        members.push_back(member.name + " " + std::to_string(member.value));
    return info.getName() + ", " + info.getUnderlyingType() + ", " + info.getDescription() + "\n  " +
           boost::join(members, ", ") + "\n";
}

std::string describe(const PropertyImpl& property)
{
    auto result = "  " + property.getName() + ": " + property.getType().text + ", get";
    if (property.isWritable()) result += " set";
    if (property.isWritable() && property.getSetType().text != property.getType().text)
        result += " " + property.getSetType().text;
    return result + "\n";
}

std::string describe(const ClassInfo& info)
{
    if (const auto* const enumClass = dynamic_cast<const EnumClass*>(&info)) return describe(*enumClass);
    auto result = info.getName() + " < " + boost::join(info.getSuperclassNames(), ", ");
    for (const auto& form : info.getOwnConstructors()) result += " " + form->getArgumentList();
    result += "\n";
    for (const auto& property : info.getOwnProperties()) result += describe(*property);
    for (const auto& form : info.getOwnMethods())
        result += "  " + form->getName() + form->getArgumentList() + " -> " +
                  form->getOutputs().front().text + "\n";
    return result;
}

class Catalogue : public HostTest {};

/// The table of what must be there, written by hand: every class in the order of registration with its
/// superclass and constructors, then its properties and methods, or its members, each in the order of
/// declaration. "~" stands for "quillon.chart.", "$" for "OrcaFactoryString".

TEST_F(Catalogue, HoldsEveryClassAndMemberInItsOrder)
{
    std::string catalogue;
    for (const auto* info : orca::ClassRegistry::instance().getClasses()) catalogue += describe(*info);
    boost::replace_all(catalogue, "quillon.chart.", "~");
    boost::replace_all(catalogue, "OrcaFactoryString", "$");
    std::ifstream file(QUILLON_CATALOGUE);
    EXPECT_EQ(catalogue, std::string(std::istreambuf_iterator<char>(file), {}));
}

}  // namespace
}  // namespace quillon::chart
