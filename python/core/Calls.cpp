#include "python/core/Calls.h"

#include <algorithm>

#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Handle.h"
#include "python/core/Members.h"
#include "python/core/Writing.h"

namespace quillon::python {
namespace {

bool takesOneNumber(const Form& form)
{
    return form.getInputs().size() == 1 && form.getInputs().front().kind == ValueType::Kind::Number;
}

const Form& findForm(const Method& method)
{
    const auto found = std::find_if(method.forms.begin(), method.forms.end(), takesOneNumber);
    if (found == method.forms.end()) throw Refused(PyExc_TypeError, "the method does not take one number.");
    return *found;
}

void callAll(orca::HostObject& self, const Form& form, PyObject* values)
{
    const auto numbers = toNumbers(values);
    Writing::requireNone(self);
    for (const double number : numbers) {
        const orca::HostArray argument(number);
        form.getMethod().invoke(self, orca::Arguments(&argument, 1));
    }
}

}  // namespace

void callForEach(const py::object& object, const std::string& method, const py::object& values,
                 const std::string& place)
{
    const auto member = py::type::of(object).attr(method.c_str());
    const auto* const found = asMethod(member.ptr());
    if (found == nullptr || !isHandle(object.ptr()))
        throw py::type_error(method + ": expected a method of the library.");
    try {
        callAll(*hostOf(object.ptr()), findForm(*found), values.ptr());
    } catch (...) {
        raise(place);
        throw py::error_already_set();
    }
}

}  // namespace quillon::python
