#include "python/core/Classes.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <unordered_map>

#include "orca/ClassRegistry.h"
#include "python/core/Errors.h"
#include "python/core/Forms.h"
#include "python/core/Handle.h"
#include "python/core/Members.h"

namespace quillon::python {
namespace {

using orca::factory::ClassInfo;
using orca::factory::EnumClass;

struct Class {
    const ClassInfo* info;
    orca::internal::Name name;
    PyTypeObject* type;
    std::vector<Form> constructors;
};

/// What has been loaded. Like the registry it only grows and is never destroyed.
struct Catalogue {
    std::unordered_map<std::string, py::dict> namespaces;
    std::unordered_map<const ClassInfo*, Class> classes;
    std::unordered_map<const PyTypeObject*, const Class*> classesByType;
    std::unordered_map<const EnumClass*, Enumeration> enumerations;
    std::unordered_map<const PyObject*, const Enumeration*> enumerationsByType;
    std::deque<Property> properties;
    std::deque<Method> methods;
};

Catalogue& catalogue()
{
    static auto& instance = *new Catalogue;
    return instance;
}

template <typename Map, typename Key>
auto* find(Map& map, const Key& key)
{
    const auto found = map.find(key);
    return found != map.end() ? &found->second : nullptr;
}

/// The nearest class that a type is or descends from: Python code may have derived from one.
const Class* classOf(PyTypeObject* type)
{
    for (; type != nullptr; type = type->tp_base)
        if (const auto* const found = find(catalogue().classesByType, type)) return *found;
    return nullptr;
}

/// Makes the types of one namespace.
class Loader {
 public:
    Loader(std::string namespaceName, const py::dict& bases)
        : namespace_(std::move(namespaceName)), bases_(bases)
    {
        for (const auto* info : orca::ClassRegistry::instance().getClasses())
            if (info->getName().starts_with(namespace_ + ".")) infos_.push_back(info);
    }

    /// Members name types, so that all types are made first.
    py::dict load()
    {
        for (const auto* info : infos_) add(*info);
        for (const auto* info : infos_)
            if (auto* const added = find(catalogue().classes, info)) addMembers(*added);
        return dictionary();
    }

 private:
    void add(const ClassInfo& info)
    {
        if (const auto* const enumClass = dynamic_cast<const EnumClass*>(&info))
            addEnumeration(*enumClass);
        else
            getType(info);
    }

    void addEnumeration(const EnumClass& enumClass)
    {
        py::list values;
        for (const auto& member : enumClass.getMembers())
            values.append(py::make_tuple(member.name, member.value));
        const auto name = shortName(enumClass.getName());
        const auto make = py::module_::import("enum").attr("Enum");
        Enumeration added{&enumClass, make(name, values, py::arg("module") = namespace_), {}};
        added.type.attr("__doc__") = enumClass.getDescription();
        for (const auto& member : enumClass.getMembers())
            added.members.push_back(added.type[member.name.c_str()]);
        const auto& kept = catalogue().enumerations.emplace(&enumClass, std::move(added)).first->second;
        catalogue().enumerationsByType.emplace(kept.type.ptr(), &kept);
    }

    PyTypeObject* getType(const ClassInfo& info)
    {
        if (const auto* const made = find(catalogue().classes, &info)) return made->type;
        py::dict members;
        members["__module__"] = namespace_;
        members["__slots__"] = py::tuple();
        const auto name = shortName(info.getName());
        const py::handle metatype(reinterpret_cast<PyObject*>(&PyType_Type));
        auto type = metatype(name, basesOf(info), members);
        // Kept for good, like all that stands in the catalogue.
        auto* const result = reinterpret_cast<PyTypeObject*>(type.release().ptr());
        const auto hostName = orca::internal::makeInterned(info.getName());
        const auto added = catalogue().classes.emplace(&info, Class{&info, hostName, result, {}}).first;
        catalogue().classesByType.emplace(result, &added->second);
        return result;
    }

    py::tuple basesOf(const ClassInfo& info)
    {
        const auto base = py::reinterpret_borrow<py::object>(reinterpret_cast<PyObject*>(baseOf(info)));
        const py::str name(shortName(info.getName()));
        if (!bases_.contains(name)) return py::make_tuple(base);
        return py::make_tuple(bases_[name], base);
    }

    /// A class whose superclass nobody registered descends from the root, the first class of the namespace.
    PyTypeObject* baseOf(const ClassInfo& info)
    {
        for (const auto& name : info.getSuperclassNames())
            if (const auto* const base = orca::ClassRegistry::instance().findClass(name))
                return getType(*base);
        return &info == infos_.front() ? handleType() : getType(*infos_.front());
    }

    static void addMembers(Class& added)
    {
        for (const auto& constructor : added.info->getOwnConstructors())
            added.constructors.emplace_back(*constructor);
        const py::handle type(reinterpret_cast<PyObject*>(added.type));
        type.attr("__doc__") = documentationOf(added);
        for (const auto& property : added.info->getOwnProperties())
            type.attr(property->getName().c_str()) =
                makeDescriptor(catalogue().properties.emplace_back(added.type, *property));
        for (const auto& method : added.info->getOwnMethods())
            if (!type.attr("__dict__").contains(method->getName())) addMethod(added, method->getName());
    }

    static void addMethod(const Class& added, const std::string& name)
    {
        const py::handle type(reinterpret_cast<PyObject*>(added.type));
        type.attr(name.c_str()) =
            makeDescriptor(catalogue().methods.emplace_back(added.type, name, *added.info->findMethod(name)));
    }

    static std::string documentationOf(const Class& added)
    {
        auto text = added.info->getDescription();
        for (const auto& form : added.constructors)
            text += (&form == &added.constructors.front() ? "\n\n" : "\n") +
                    shortName(added.info->getName()) + form.getArgumentText();
        return text;
    }

    /// In the order of the registration.
    py::dict dictionary() const
    {
        py::dict result;
        for (const auto* info : infos_) {
            const py::str name(shortName(info->getName()));
            if (const auto* const enumeration = findEnumeration(info->getName()))
                result[name] = enumeration->type;
            else
                result[name] = py::handle(reinterpret_cast<PyObject*>(findType(info->getName())));
        }
        return result;
    }

    std::string namespace_;
    py::dict bases_;
    std::vector<const ClassInfo*> infos_;
};

/// Calls a constructor with what Py_tp_init is given.
std::shared_ptr<orca::HostObject> construct(const Class& made, PyObject* arguments, PyObject* keywords)
{
    std::vector<PyObject*> values(&PyTuple_GET_ITEM(arguments, 0),
                                  &PyTuple_GET_ITEM(arguments, 0) + PyTuple_GET_SIZE(arguments));
    Call call{nullptr, values.size(), nullptr};
    py::tuple names;
    if (keywords != nullptr) {
        names = py::tuple(py::reinterpret_borrow<py::dict>(keywords));
        for (const auto& [name, value] : py::reinterpret_borrow<py::dict>(keywords))
            values.push_back(value.ptr());
        call.names = names.ptr();
    }
    call.values = values.data();
    auto host = std::make_shared<orca::HostObject>(made.name);
    choose(made.constructors, call).invoke(*host, call);
    return host;
}

}  // namespace

py::dict loadClasses(const std::string& namespaceName, const py::dict& bases)
{
    auto& namespaces = catalogue().namespaces;
    const auto* const loaded = find(namespaces, namespaceName);
    return loaded != nullptr
               ? *loaded
               : namespaces.emplace(namespaceName, Loader(namespaceName, bases).load()).first->second;
}

int initializeHandle(PyObject* handle, PyObject* arguments, PyObject* keywords) noexcept
try {
    const auto* const made = classOf(Py_TYPE(handle));
    if (made == nullptr || made->constructors.empty())
        throw Refused(PyExc_TypeError, "the class has no constructor.");
    bind(handle, construct(*made, arguments, keywords));
    return 0;
} catch (...) {
    raise(Py_TYPE(handle)->tp_name);
    return -1;
}

py::list describeConstructors(PyTypeObject* type)
{
    const auto* const made = classOf(type);
    return made != nullptr ? describeForms(made->constructors) : py::list();
}

PyTypeObject* typeOf(const orca::HostObject& host)
{
    const auto* const made = find(catalogue().classes, host.getClass());
    if (made == nullptr)
        throw Refused(PyExc_TypeError,
                      "the class " + host.getClassName().getText() + " is not known to Python.");
    return made->type;
}

PyTypeObject* findType(const std::string& className)
{
    const auto* const info = orca::ClassRegistry::instance().findClass(className);
    const auto* const made = find(catalogue().classes, info);
    return made != nullptr ? made->type : nullptr;
}

const Enumeration* findEnumeration(const std::string& className)
{
    const auto* const info = orca::ClassRegistry::instance().findClass(className);
    return find(catalogue().enumerations, dynamic_cast<const EnumClass*>(info));
}

py::object memberOf(const orca::EnumMember& member)
{
    const auto* const enumeration = find(catalogue().enumerations, member.enumClass);
    if (enumeration == nullptr)
        throw Refused(PyExc_TypeError,
                      "the enumeration " + member.enumClass->getName() + " is not known to Python.");
    return enumeration->members[member.index];
}

std::optional<orca::EnumMember> findMember(PyObject* object)
{
    auto* const type = reinterpret_cast<PyObject*>(Py_TYPE(object));
    const auto* const enumeration = find(catalogue().enumerationsByType, type);
    if (enumeration == nullptr) return std::nullopt;
    const auto& members = (*enumeration)->members;
    const auto isObject = [object](const py::object& member) { return member.ptr() == object; };
    const auto found = std::find_if(members.begin(), members.end(), isObject);
    if (found == members.end()) return std::nullopt;
    return orca::EnumMember{(*enumeration)->enumClass, static_cast<std::size_t>(found - members.begin())};
}

std::string shortName(std::string_view className)
{
    return std::string(className.substr(className.rfind('.') + 1));
}

}  // namespace quillon::python
