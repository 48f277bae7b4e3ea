#include "report/command/ClassCatalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "chart/host/ModuleEntry.h"
#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "support/FeatureService.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;
using orca::factory::ClassInfo;
using orca::factory::EnumClass;
using orca::factory::OrcaMethod;
using orca::factory::impl::PropertyImpl;

const auto& classes()
{
    return orca::ClassRegistry::instance().getClasses();
}

const EnumClass* asEnum(const ClassInfo& info)
{
    return dynamic_cast<const EnumClass*>(&info);
}

const char* accessOf(const PropertyImpl& property)
{
    return property.isWritable() ? "get, set" : "get";
}

std::string shortName(const std::string& name)
{
    return name.substr(name.rfind('.') + 1);
}

bool isRegistered(const std::string& name)
{
    return orca::ClassRegistry::instance().findClass(name) != nullptr;
}

/// `name`, as a link to its section if it has one.
std::string link(const std::string& name)
{
    if (!isRegistered(name)) return fmt::format("`{}`", name);
    auto anchor = shortName(name);
    std::transform(anchor.begin(), anchor.end(), anchor.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return fmt::format("[{}](#{})", shortName(name), anchor);
}

std::string superclassOf(const ClassInfo& info)
{
    if (asEnum(info) != nullptr) return "enumeration";
    std::string links;
    for (const auto& name : info.getSuperclassNames()) links += (links.empty() ? "" : ", ") + link(name);
    return links;
}

/// Collects the page: each function adds what it is named for.
class Page {
 public:
    void addOverview();
    void addClass(const ClassInfo& info);
    const std::string& getText() const { return text_; }

 private:
    template <typename... Args>
    void add(fmt::format_string<Args...> format, Args&&... args)
    {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Args>(args)...);
    }

    void addMembers(const EnumClass& enumClass);
    void addConstructors(const ClassInfo& info);
    void addProperties(const ClassInfo& info);
    void addMethods(const ClassInfo& info);
    void addInherited(const ClassInfo& info);

    std::string text_;
};

void Page::addOverview()
{
    const auto enumerations = static_cast<std::size_t>(
        std::count_if(classes().begin(), classes().end(), [](const auto* info) { return asEnum(*info); }));
    add("# Classes of the host package\n\n");
    add("{} classes and {} enumerations, in the order of their registration. `quillon-report --classes` "
        "prints\n"
        "this page, and with `--json` the same as JSON.\n\n",
        classes().size() - enumerations, enumerations);
    add("| Class | Superclass | What it is |\n|---|---|---|\n");
    for (const auto* info : classes())
        add("| {} | {} | {} |\n", link(info->getName()), superclassOf(*info), info->getDescription());
}

void Page::addClass(const ClassInfo& info)
{
    add("\n## {}\n\n{}\n\n", shortName(info.getName()), info.getDescription());
    add("`{}`, {}{}\n", info.getName(), asEnum(info) != nullptr ? "" : "superclass ", superclassOf(info));
    if (const auto* const enumClass = asEnum(info)) return addMembers(*enumClass);
    addConstructors(info);
    addProperties(info);
    addMethods(info);
    addInherited(info);
}

void Page::addMembers(const EnumClass& enumClass)
{
    add("\n| Member | Value ({}) |\n|---|---|\n", enumClass.getUnderlyingType());
    for (const auto& member : enumClass.getMembers()) add("| {} | {} |\n", member.name, member.value);
}

void Page::addConstructors(const ClassInfo& info)
{
    if (info.getOwnConstructors().empty()) return add("\nNo constructors.\n");
    add("\nConstructors:\n\n");
    for (const auto& method : info.getOwnConstructors()) add("- `{}`\n", method->getSignature());
}

void Page::addProperties(const ClassInfo& info)
{
    if (info.getOwnProperties().empty()) return;
    add("\n| Property | Type | Access | Meaning |\n|---|---|---|---|\n");
    for (const auto& property : info.getOwnProperties()) {
        auto type = property->getType().text;
        if (property->isWritable() && property->getSetType().text != type)
            type += "; set: " + property->getSetType().text;
        add("| {} | {} | {} | {} |\n", property->getName(), type, accessOf(*property),
            property->getDescription());
    }
}

void Page::addMethods(const ClassInfo& info)
{
    if (info.getOwnMethods().empty()) return;
    add("\nMethods:\n\n");
    for (const auto& method : info.getOwnMethods())
        add("- `{}`: {}\n", method->getSignature(), method->getDescription());
}

void Page::addInherited(const ClassInfo& info)
{
    std::string names;
    for (const auto* property : info.getProperties())
        if (property->getOwner() != info.getName())
            names += (names.empty() ? "" : ", ") + property->getName();
    if (!names.empty()) add("\nInherited: {}.\n", names);
}

Json toJson(const OrcaMethod& method)
{
    auto arguments = Json::array();
    for (std::size_t i = 0; i < method.getInputs().size(); ++i)
        arguments.push_back({{"name", method.getArgumentNames()[i]}, {"type", method.getInputs()[i].text}});
    return {{"name", method.getName()},
            {"signature", method.getSignature()},
            {"arguments", arguments},
            {"returns", method.getOutputs().front().text},
            {"description", method.getDescription()}};
}

Json toJson(const PropertyImpl& property)
{
    Json result = {{"name", property.getName()}, {"type", property.getType().text}};
    if (property.isWritable()) result["setType"] = property.getSetType().text;
    result["access"] = accessOf(property);
    result["description"] = property.getDescription();
    return result;
}

Json toJson(const EnumClass::Member& member)
{
    return {{"name", member.name}, {"value", member.value}};
}

const auto& deref(const EnumClass::Member& member)
{
    return member;
}

template <typename T>
const T& deref(const std::unique_ptr<T>& pointer)
{
    return *pointer;
}

template <typename List>
Json listToJson(const List& list)
{
    auto result = Json::array();
    for (const auto& item : list) result.push_back(toJson(deref(item)));
    return result;
}

Json toJson(const ClassInfo& info)
{
    Json result = {{"name", info.getName()},
                   {"superclasses", info.getSuperclassNames()},
                   {"description", info.getDescription()}};
    if (const auto* const enumClass = asEnum(info)) {
        result["underlyingType"] = enumClass->getUnderlyingType();
        result["members"] = listToJson(enumClass->getMembers());
    } else {
        result["constructors"] = listToJson(info.getOwnConstructors());
        result["properties"] = listToJson(info.getOwnProperties());
        result["methods"] = listToJson(info.getOwnMethods());
    }
    return result;
}

}  // namespace

void registerChartClasses()
{
    setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
}

std::string describeClasses()
{
    Page page;
    page.addOverview();
    for (const auto* info : classes()) page.addClass(*info);
    return page.getText();
}

std::string describeClassesAsJson()
{
    auto list = Json::array();
    for (const auto* info : classes()) list.push_back(toJson(*info));
    return Json{{"classes", list}}.dump(2) + "\n";
}

}  // namespace quillon::report
