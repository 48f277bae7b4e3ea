#include "python/core/Handle.h"

#include <structmember.h>

#include <new>
#include <unordered_map>

#include "python/core/Classes.h"
#include "python/core/Errors.h"

namespace quillon::python {
namespace {

/// The handle of each host object that has one, weakly. The interpreter's lock guards it; never destroyed,
/// because handles may outlive every static object.
std::unordered_map<const orca::HostObject*, PyObject*>& handles()
{
    static auto& map = *new std::unordered_map<const orca::HostObject*, PyObject*>;
    return map;
}

void forget(const orca::HostObject* host, PyObject* handle)
{
    const auto found = handles().find(host);
    if (found != handles().end() && found->second == handle) handles().erase(found);
}

void destroy(PyObject* self)
{
    auto* const handle = reinterpret_cast<Handle*>(self);
    auto* const type = Py_TYPE(self);
    // First of all, so that no callback below is given the dying handle.
    forget(handle->host.get(), self);
    if (handle->weakReferences != nullptr) PyObject_ClearWeakRefs(self);
    handle->host.~shared_ptr();
    type->tp_free(self);
    Py_DECREF(type);
}

/// Takes no notice of the arguments, which are for `__init__`: that of a class in Python may take others.
PyObject* create(PyTypeObject* type, PyObject* /*arguments*/, PyObject* /*keywords*/)
{
    auto* const self = type->tp_alloc(type, 0);
    if (self != nullptr) new (&reinterpret_cast<Handle*>(self)->host) std::shared_ptr<orca::HostObject>;
    return self;
}

PyTypeObject* makeType()
{
    static PyMemberDef members[] = {
        {"__weaklistoffset__", T_PYSSIZET, offsetof(Handle, weakReferences), READONLY, nullptr}, {}};
    static char documentation[] = "An object of the library.";
    static PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(create)},
                                  {Py_tp_init, reinterpret_cast<void*>(initializeHandle)},
                                  {Py_tp_dealloc, reinterpret_cast<void*>(destroy)},
                                  {Py_tp_members, members},
                                  {Py_tp_doc, documentation},
                                  {0, nullptr}};
    static PyType_Spec spec = {"quillon._core.Handle", sizeof(Handle), 0,
                               Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_IMMUTABLETYPE, slots};
    auto* const type = PyType_FromSpec(&spec);
    if (type == nullptr) throw py::error_already_set();
    return reinterpret_cast<PyTypeObject*>(type);
}

}  // namespace

PyTypeObject* handleType()
{
    static PyTypeObject* const type = makeType();
    return type;
}

const std::shared_ptr<orca::HostObject>& hostOf(PyObject* handle)
{
    const auto& host = reinterpret_cast<Handle*>(handle)->host;
    if (host) return host;
    throw Refused(PyExc_TypeError,
                  "the object is not initialised; the __init__ of a subclass must call super().__init__().");
}

void bind(PyObject* handle, std::shared_ptr<orca::HostObject> host)
{
    auto& own = reinterpret_cast<Handle*>(handle)->host;
    if (own) throw Refused(PyExc_TypeError, "the object is initialised already.");
    handles()[host.get()] = handle;
    own = std::move(host);
}

py::object wrap(const std::shared_ptr<orca::HostObject>& host)
{
    const auto found = handles().find(host.get());
    // A handle that is being destroyed has no references left, and must not get new ones.
    if (found != handles().end() && Py_REFCNT(found->second) > 0)
        return py::reinterpret_borrow<py::object>(found->second);
    auto* const type = typeOf(*host);
    auto result = py::reinterpret_steal<py::object>(create(type, nullptr, nullptr));
    if (!result) throw py::error_already_set();
    bind(result.ptr(), host);
    return result;
}

}  // namespace quillon::python
