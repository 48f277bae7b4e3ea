#include "orca/ClassInfo.h"

#include <algorithm>

#include "orca/ClassRegistry.h"

namespace orca::factory {

ClassInfo::ClassInfo(const std::string& name, std::vector<std::string> superclassNames,
                     std::string description)
    : name_(internal::makeInterned(name)),
      superclassNames_(std::move(superclassNames)),
      description_(std::move(description)),
      constructorForms_(name)
{
}

bool ClassInfo::isA(std::string_view name) const
{
    return std::any_of(lineage_.begin(), lineage_.end(), [name](const ClassInfo* info) {
        const auto& supers = info->superclassNames_;
        return info->getName() == name || std::find(supers.begin(), supers.end(), name) != supers.end();
    });
}

const impl::PropertyImpl* ClassInfo::findProperty(std::string_view name) const
{
    const auto found = propertiesByName_.find(name);
    return found != propertiesByName_.end() ? found->second : nullptr;
}

const OverloadSet* ClassInfo::findMethod(std::string_view name) const
{
    const auto found = methodsByName_.find(name);
    return found != methodsByName_.end() ? found->second : nullptr;
}

const impl::PropertyImpl& ClassInfo::requireProperty(std::string_view name) const
{
    const auto* const property = findProperty(name);
    if (property == nullptr) throw Error(ErrorId::UnknownProperty, {getName(), name});
    return *property;
}

const OverloadSet& ClassInfo::requireMethod(std::string_view name) const
{
    const auto* const method = findMethod(name);
    if (method == nullptr) throw Error(ErrorId::UnknownMethod, {getName(), name});
    return *method;
}

HostArray ClassInfo::construct(Arguments arguments) const
{
    if (constructors_.empty()) throw Error(ErrorId::NoConstructor, {getName()});
    const auto host = std::make_shared<HostObject>(name_);
    return constructorForms_.invoke(*host, arguments);
}

void ClassInfo::hostObjectDestroyed(const HostObject& host) noexcept
{
    if (host.getObject()->bindingState() != 1) full::releaseReference(host.getObject());
    // An object that died with the share has untied itself.
    if (host.getObject() != nullptr) BindingRegistry::remove(*host.getObject());
}

void ClassInfo::addConstructor(std::unique_ptr<OrcaMethod> method)
{
    method->setOwner(getName());
    constructorForms_.add(*method);
    constructors_.push_back(std::move(method));
}

void ClassInfo::addProperty(std::unique_ptr<impl::PropertyImpl> property)
{
    property->setOwner(getName());
    properties_.push_back(std::move(property));
}

void ClassInfo::addMethod(std::unique_ptr<OrcaMethod> method)
{
    method->setOwner(getName());
    const auto& name = method->getName();
    methodForms_.try_emplace(name, getName() + "." + name).first->second.add(*method);
    methods_.push_back(std::move(method));
}

void ClassInfo::resolve(const ClassRegistry& registry)
{
    lineage_.clear();
    allProperties_.clear();
    addToLineage(*this, registry);
    for (const auto* ancestor : lineage_) collectMembers(*ancestor);
}

void ClassInfo::addToLineage(const ClassInfo& ancestor, const ClassRegistry& registry)
{
    // A class that names itself as an ancestor is not followed twice.
    if (std::find(lineage_.begin(), lineage_.end(), &ancestor) != lineage_.end()) return;
    const auto place = lineage_.insert(lineage_.begin(), &ancestor);
    for (const auto& name : place[0]->superclassNames_)
        if (const auto* const superclass = registry.findClass(name)) addToLineage(*superclass, registry);
}

void ClassInfo::collectMembers(const ClassInfo& ancestor)
{
    for (const auto& property : ancestor.properties_) {
        propertiesByName_[property->getName()] = property.get();
        allProperties_.push_back(property.get());
    }
    for (const auto& method : ancestor.methods_) {
        const std::string_view name = method->getName();
        methodsByName_[name] = &ancestor.methodForms_.find(name)->second;
    }
}

}  // namespace orca::factory
