#include "orca/ClassRegistry.h"

#include <algorithm>
#include <set>

#include "orca/Error.h"

namespace orca {

using factory::ClassInfo;

ClassRegistry& ClassRegistry::instance()
{
    // Never destroyed: host values may outlive every static object.
    static auto& registry = *new ClassRegistry;
    return registry;
}

const ClassInfo* ClassRegistry::findClass(std::string_view name) const
{
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : nullptr;
}

const ClassInfo& ClassRegistry::requireClass(std::string_view name) const
{
    const auto* const result = findClass(name);
    if (result == nullptr) throw Error(ErrorId::UnknownClass, {name});
    return *result;
}

const ClassInfo* ClassRegistry::findClassOf(internal::Name name,
                                            const factory::full::StdShareable* object) const
{
    if (const auto* const named = findClass(name.getText())) return named;
    const ClassInfo* deepest = nullptr;
    for (const auto* info : inOrder_) {
        const bool isDeeper = deepest == nullptr || info->getLineage().size() > deepest->getLineage().size();
        if (isDeeper && info->isInstance(object)) deepest = info;
    }
    return deepest;
}

void ClassRegistry::add(COSNamespace&& added)
{
    requireNew(added);
    namespaces_.push_back(added.getName());
    for (auto& info : added.classes_) {
        inOrder_.push_back(info.get());
        byName_.emplace(info->getName(), info.get());
        classes_.push_back(std::move(info));
    }
    for (const auto& info : classes_) info->resolve(*this);
}

void ClassRegistry::requireNew(const COSNamespace& added) const
{
    if (std::find(namespaces_.begin(), namespaces_.end(), added.getName()) != namespaces_.end())
        throw Error(ErrorId::DuplicateNamespace, {added.getName()});
    std::set<std::string_view> names;
    for (const auto& info : added.classes_)
        if (findClass(info->getName()) != nullptr || !names.insert(info->getName()).second)
            throw Error(ErrorId::DuplicateClass, {info->getName()});
}

void factory::registerOrcaNamespace(const std::string& name, void (*populate)(COSNamespace*))
{
    COSNamespace added(name);
    populate(&added);
    ClassRegistry::instance().add(std::move(added));
}

}  // namespace orca
