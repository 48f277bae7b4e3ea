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

PyObject* create(PyTypeObject* type, PyObject* arguments, PyObject* keywords)
{
    return constructHandle(type, arguments, keywords);
}

PyTypeObject* makeType()
{
    static PyMemberDef members[] = {
        {"__weaklistoffset__", T_PYSSIZET, offsetof(Handle, weakReferences), READONLY, nullptr}, {}};
    static char documentation[] = "An object of the library.";
    static PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(create)},
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

py::object makeHandle(PyTypeObject* type, std::shared_ptr<orca::HostObject> host)
{
    auto result = py::reinterpret_steal<py::object>(type->tp_alloc(type, 0));
    if (!result) throw py::error_already_set();
    auto* const handle = reinterpret_cast<Handle*>(result.ptr());
    new (&handle->host) std::shared_ptr<orca::HostObject>(std::move(host));
    handles()[handle->host.get()] = result.ptr();
    return result;
}

py::object wrap(const std::shared_ptr<orca::HostObject>& host)
{
    const auto found = handles().find(host.get());
    // A handle that is being destroyed has no references left, and must not get new ones.
    if (found != handles().end() && Py_REFCNT(found->second) > 0)
        return py::reinterpret_borrow<py::object>(found->second);
    return makeHandle(typeOf(*host), host);
}

}  // namespace quillon::python
