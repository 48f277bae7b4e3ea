#include "orca/Member.h"

#include <mutex>
#include <set>

#include "orca/Error.h"

namespace orca::factory {
namespace {

std::mutex dataTypesMutex;

std::set<std::string>& dataTypes()
{
    static std::set<std::string> types = {"double", "uint32", "uint64", "logical"};
    return types;
}

bool isDataType(const std::string& name)
{
    const std::lock_guard lock(dataTypesMutex);
    return dataTypes().contains(name);
}

bool isClassName(const std::string& name)
{
    return name.find('.') != std::string::npos && name.find(' ') == std::string::npos;
}

}  // namespace

HostTypeInfo parseHostType(const std::string& text)
{
    using Shape = HostTypeInfo::Shape;
    if (text == "any") return {text, "", Shape::Any};
    if (isClassName(text)) return {text, text, Shape::Object};
    const auto space = text.find(' ');
    const auto element = text.substr(0, space);
    const auto shape = space == std::string::npos ? "" : text.substr(space + 1);
    if (shape == "scalar" && isDataType(element)) return {text, element, Shape::Scalar};
    if (shape == "vector" && (isDataType(element) || isClassName(element)))
        return {text, element, Shape::Vector};
    throw Error(ErrorId::UnknownHostType, {text});
}

void detail::initStringDataTypes()
{
    const std::lock_guard lock(dataTypesMutex);
    dataTypes().insert("OrcaFactoryString");
}

void impl::validateSelfPointer(const void* self)
{
    if (self == nullptr) throw Error(ErrorId::InvalidSelf, {});
}

}  // namespace orca::factory
