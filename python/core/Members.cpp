#include "python/core/Members.h"

#include <structmember.h>

#include "python/core/Classes.h"
#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Writing.h"

namespace quillon::python {
namespace {

struct PropertyDescriptor {
    PyObject_HEAD const Property* property;
};

struct MethodDescriptor {
    PyObject_HEAD const Method* method;
    vectorcallfunc call;
};

const Property& propertyOf(PyObject* self)
{
    return *reinterpret_cast<PropertyDescriptor*>(self)->property;
}

const Method& methodOf(PyObject* self)
{
    return *reinterpret_cast<MethodDescriptor*>(self)->method;
}

/// The host object behind `object`. Throws: Refused when that is not an object of the class that has the
/// member.
template <typename Member>
orca::HostObject& receiverOf(PyObject* object, const Member& member)
{
    if (PyObject_TypeCheck(object, member.owner)) return *hostOf(object);
    throw Refused(PyExc_TypeError, std::string("expected an object of class ") + member.owner->tp_name +
                                       ", got " + Py_TYPE(object)->tp_name + ".");
}

/// Throws: Refused when a chart that is being written holds the object, or the one that the property gives
/// and that a value of another type is written into, as the text of a colour is.
void requireUnwritten(const orca::HostObject& host, const Property& property)
{
    if (!Writing::isAny()) return;
    Writing::requireNone(host);
    if (property.type.kind != ValueType::Kind::Object || property.setType.kind == ValueType::Kind::Object)
        return;
    if (const auto child = property.impl.get(host); !child.isEmpty())
        Writing::requireNone(child.getOneObject());
}

PyObject* getProperty(PyObject* self, PyObject* object, PyObject* /*type*/)
try {
    if (object == nullptr) return Py_NewRef(self);
    const auto& property = propertyOf(self);
    return toPython(property.impl.get(receiverOf(object, property))).release().ptr();
} catch (...) {
    raise(propertyOf(self).place);
    return nullptr;
}

int setProperty(PyObject* self, PyObject* object, PyObject* value)
try {
    const auto& property = propertyOf(self);
    if (value == nullptr) throw Refused(PyExc_AttributeError, "a property cannot be deleted.");
    if (!property.impl.isWritable()) throw Refused(PyExc_AttributeError, "the property is read-only.");
    const auto& receiver = receiverOf(object, property);
    const auto converted = toHost(value, property.setType);
    requireUnwritten(receiver, property);
    property.impl.set(receiver, converted);
    return 0;
} catch (...) {
    raise(propertyOf(self).place);
    return -1;
}

PyObject* callMethod(PyObject* self, PyObject* const* values, std::size_t flags, PyObject* names)
try {
    const auto& method = methodOf(self);
    const auto count = static_cast<std::size_t>(PyVectorcall_NARGS(flags));
    if (count == 0) throw Refused(PyExc_TypeError, "expected an object to call the method on.");
    auto& host = receiverOf(values[0], method);
    const Call call{values + 1, count - 1, names};
    return toPython(choose(method.forms, call).invoke(host, call)).release().ptr();
} catch (...) {
    raise(methodOf(self).place);
    return nullptr;
}

PyObject* bindMethod(PyObject* self, PyObject* object, PyObject* /*type*/)
{
    return object == nullptr ? Py_NewRef(self) : PyMethod_New(self, object);
}

void destroyDescriptor(PyObject* self)
{
    auto* const type = Py_TYPE(self);
    type->tp_free(self);
    Py_DECREF(type);
}

PyObject* makeText(const std::string& text)
{
    return PyUnicode_FromStringAndSize(text.data(), static_cast<Py_ssize_t>(text.size()));
}

std::string memberName(const std::string& place)
{
    return place.substr(place.rfind('.') + 1);
}

/// What the descriptors of either sort tell about themselves.
template <auto MemberOf>
struct Attributes {
    static PyObject* name(PyObject* self, void* /*unused*/)
    {
        return makeText(memberName(MemberOf(self).place));
    }
    static PyObject* qualifiedName(PyObject* self, void* /*unused*/)
    {
        return makeText(MemberOf(self).place);
    }
    static PyObject* documentation(PyObject* self, void* /*unused*/)
    {
        return makeText(MemberOf(self).documentation);
    }
    static PyObject* owner(PyObject* self, void* /*unused*/)
    {
        return Py_NewRef(reinterpret_cast<PyObject*>(MemberOf(self).owner));
    }
};

PyObject* represent(const char* kind, const std::string& place)
{
    return PyUnicode_FromFormat("<%s %s>", kind, place.c_str());
}

PyObject* representProperty(PyObject* self)
{
    return represent("property", propertyOf(self).place);
}

PyObject* representMethod(PyObject* self)
{
    return represent("method", methodOf(self).place);
}

PyObject* typeName(PyObject* self, void* /*unused*/)
{
    return makeText(propertyOf(self).type.name);
}

PyObject* setTypeName(PyObject* self, void* /*unused*/)
{
    const auto& property = propertyOf(self);
    if (!property.impl.isWritable()) Py_RETURN_NONE;
    return makeText(property.setType.name);
}

/// None for several forms: Python knows no signature for them.
PyObject* textSignature(PyObject* self, void* /*unused*/)
{
    const auto& forms = methodOf(self).forms;
    if (forms.size() != 1) Py_RETURN_NONE;
    std::string arguments = "($self";
    for (const auto& name : forms.front().getMethod().getArgumentNames()) arguments += ", " + name;
    return makeText(arguments + ")");
}

PyObject* methodForms(PyObject* self, void* /*unused*/)
try {
    return describeForms(methodOf(self).forms).release().ptr();
} catch (...) {
    raise(methodOf(self).place);
    return nullptr;
}

PyTypeObject* makeType(PyType_Spec& spec)
{
    auto* const type = PyType_FromSpec(&spec);
    if (type == nullptr) throw py::error_already_set();
    return reinterpret_cast<PyTypeObject*>(type);
}

template <typename Descriptor>
py::object allocate(PyTypeObject* type, Descriptor*& descriptor)
{
    auto result = py::reinterpret_steal<py::object>(type->tp_alloc(type, 0));
    if (!result) throw py::error_already_set();
    descriptor = reinterpret_cast<Descriptor*>(result.ptr());
    return result;
}

std::string documentationOf(const orca::factory::impl::PropertyImpl& impl, const ValueType& type,
                            const ValueType& setType)
{
    auto text = type.name;
    if (!impl.isWritable()) text += ", read-only";
    if (impl.isWritable() && setType.name != type.name) text += ", set from " + setType.name;
    return text + ". " + impl.getDescription();
}

std::string documentationOf(const std::string& name, const std::vector<Form>& forms)
{
    std::string text;
    for (const auto& form : forms)
        text += name + form.getArgumentText() + " -> " + form.getResultName() + "\n    " +
                form.getMethod().getDescription() + "\n";
    return text;
}

}  // namespace

PyTypeObject* propertyType()
{
    using Of = Attributes<propertyOf>;
    static PyGetSetDef attributes[] = {
        {"__name__", Of::name, nullptr, nullptr, nullptr},
        {"__qualname__", Of::qualifiedName, nullptr, nullptr, nullptr},
        {"__doc__", Of::documentation, nullptr, nullptr, nullptr},
        {"__objclass__", Of::owner, nullptr, nullptr, nullptr},
        {"type_name", typeName, nullptr, "The type that reading gives.", nullptr},
        {"set_type_name", setTypeName, nullptr, "The type that writing takes; None for a read-only one.",
         nullptr},
        {}};
    static PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(destroyDescriptor)},
                                  {Py_tp_descr_get, reinterpret_cast<void*>(getProperty)},
                                  {Py_tp_descr_set, reinterpret_cast<void*>(setProperty)},
                                  {Py_tp_repr, reinterpret_cast<void*>(representProperty)},
                                  {Py_tp_getset, attributes},
                                  {0, nullptr}};
    static PyType_Spec spec = {
        "quillon._core.Property", sizeof(PropertyDescriptor), 0,
        Py_TPFLAGS_DEFAULT | Py_TPFLAGS_IMMUTABLETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
    static PyTypeObject* const type = makeType(spec);
    return type;
}

PyTypeObject* methodType()
{
    using Of = Attributes<methodOf>;
    static PyMemberDef members[] = {
        {"__vectorcalloffset__", T_PYSSIZET, offsetof(MethodDescriptor, call), READONLY, nullptr}, {}};
    static PyGetSetDef attributes[] = {
        {"__name__", Of::name, nullptr, nullptr, nullptr},
        {"__qualname__", Of::qualifiedName, nullptr, nullptr, nullptr},
        {"__doc__", Of::documentation, nullptr, nullptr, nullptr},
        {"__objclass__", Of::owner, nullptr, nullptr, nullptr},
        {"__text_signature__", textSignature, nullptr, nullptr, nullptr},
        {"forms", methodForms, nullptr, "The forms: arguments, as (name, type), and result.", nullptr},
        {}};
    static PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(destroyDescriptor)},
                                  {Py_tp_descr_get, reinterpret_cast<void*>(bindMethod)},
                                  {Py_tp_call, reinterpret_cast<void*>(PyVectorcall_Call)},
                                  {Py_tp_repr, reinterpret_cast<void*>(representMethod)},
                                  {Py_tp_members, members},
                                  {Py_tp_getset, attributes},
                                  {0, nullptr}};
    // As for functions, the interpreter then calls without making a bound method first.
    static PyType_Spec spec = {"quillon._core.Method", sizeof(MethodDescriptor), 0,
                               Py_TPFLAGS_DEFAULT | Py_TPFLAGS_IMMUTABLETYPE | Py_TPFLAGS_METHOD_DESCRIPTOR |
                                   Py_TPFLAGS_HAVE_VECTORCALL | Py_TPFLAGS_DISALLOW_INSTANTIATION,
                               slots};
    static PyTypeObject* const type = makeType(spec);
    return type;
}

Property::Property(PyTypeObject* ownerType, const orca::factory::impl::PropertyImpl& property)
    : owner(ownerType),
      impl(property),
      type(resolveResult(property.getType())),
      setType(property.isWritable() ? resolveInput(property.getSetType()) : ValueType()),
      place(std::string(ownerType->tp_name) + "." + property.getName()),
      documentation(documentationOf(property, type, setType))
{
}

Method::Method(PyTypeObject* ownerType, const std::string& name, const orca::factory::OverloadSet& overloads)
    : owner(ownerType), place(std::string(ownerType->tp_name) + "." + name)
{
    for (const auto* method : overloads.getMethods()) forms.emplace_back(*method);
    documentation = documentationOf(name, forms);
}

py::object makeDescriptor(const Property& property)
{
    PropertyDescriptor* descriptor = nullptr;
    auto result = allocate(propertyType(), descriptor);
    descriptor->property = &property;
    return result;
}

py::object makeDescriptor(const Method& method)
{
    MethodDescriptor* descriptor = nullptr;
    auto result = allocate(methodType(), descriptor);
    descriptor->method = &method;
    descriptor->call = callMethod;
    return result;
}

const Method* asMethod(PyObject* object)
{
    return Py_TYPE(object) == methodType() ? &methodOf(object) : nullptr;
}

py::list describeForms(const std::vector<Form>& forms)
{
    py::list result;
    for (const auto& form : forms) {
        py::list arguments;
        for (std::size_t i = 0; i < form.getInputs().size(); ++i)
            arguments.append(
                py::make_tuple(form.getMethod().getArgumentNames()[i], form.getInputs()[i].name));
        result.append(py::make_tuple(arguments, form.getResultName()));
    }
    return result;
}

}  // namespace quillon::python
