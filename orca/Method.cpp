#include "orca/Method.h"

#include "support/Text.h"

namespace orca::factory {
namespace {

std::vector<HostTypeInfo> parseAll(const std::vector<std::string>& types)
{
    std::vector<HostTypeInfo> result;
    result.reserve(types.size());
    for (const auto& type : types) result.push_back(parseHostType(type));
    return result;
}

}  // namespace

OrcaMethod::OrcaMethod(std::string name, MethodAttributes attributes, std::string description)
    : name_(std::move(name)), attributes_(attributes), description_(std::move(description))
{
}

void OrcaMethod::createSignatureImpl(std::vector<std::string> signature, bool isStatic,
                                     const std::string& name, const std::vector<std::string>& inputTypes,
                                     const std::vector<std::string>& outputTypes)
{
    isStatic_ = isStatic;
    inputs_ = parseAll(inputTypes);
    outputs_ = parseAll(outputTypes);
    argumentNames_ = std::move(signature);
    std::vector<std::string> arguments;
    for (std::size_t i = 0; i < inputs_.size(); ++i)
        arguments.push_back(argumentNames_[i] + ": " + inputs_[i].text);
    signature_ = name + "(" + quillon::join(arguments, ", ") + ")";
    if (!isConstructor()) signature_ += " -> " + outputs_.front().text;
}

std::string OrcaMethod::getArgumentList() const
{
    return "(" + quillon::join(inputs_, ", ", &HostTypeInfo::text) + ")";
}

Error OrcaMethod::locate(const Error& error, std::size_t position) const
{
    const std::string method = isConstructor() ? owner_ : owner_ + "." + name_;
    return error.at(position == 0 ? method : method + ", argument " + std::to_string(position));
}

HostArray OverloadSet::invoke(const HostArray& self, Arguments arguments) const
{
    return invoke(self.getOneObject(), arguments);
}

const OrcaMethod& OverloadSet::choose(Arguments arguments) const
{
    const OrcaMethod* onlyOfSize = nullptr;
    std::size_t countOfSize = 0;
    for (const auto* method : methods_) {
        if (method->getInputs().size() != arguments.size()) continue;
        if (method->accepts(arguments)) return *method;
        onlyOfSize = method;
        ++countOfSize;
    }
    // The only form with as many arguments says best which of them is wrong.
    if (countOfSize == 1) return *onlyOfSize;
    refuse(arguments);
}

void OverloadSet::refuse(Arguments arguments) const
{
    const auto given = quillon::join(arguments, ", ", &HostArray::describe);
    const auto forms = quillon::join(methods_, " or ", &OrcaMethod::getArgumentList);
    throw Error(ErrorId::NoOverload, {given, forms}).at(place_);
}

}  // namespace orca::factory
