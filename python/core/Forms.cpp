#include "python/core/Forms.h"

#include <boost/container/small_vector.hpp>

#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Writing.h"

namespace quillon::python {
namespace {

void append(std::string& list, const char* separator, const std::string& item)
{
    list += (list.empty() ? "" : separator) + item;
}

std::string describeTypes(const Call& call)
{
    std::string types;
    for (std::size_t i = 0; i < call.size(); ++i) {
        std::string name;
        if (i >= call.positional) {
            auto* const text = PyTuple_GET_ITEM(call.names, static_cast<Py_ssize_t>(i - call.positional));
            name = pybind11::cast<std::string>(text) + "=";
        }
        append(types, ", ", name + Py_TYPE(call.values[i])->tp_name);
    }
    return "(" + types + ")";
}

[[noreturn]] void refuse(const std::vector<Form>& forms, const Call& call)
{
    std::string allowed;
    for (const auto& form : forms) append(allowed, " or ", form.getArgumentText());
    throw Refused(PyExc_TypeError, "expected " + allowed + ", got " + describeTypes(call) + ".");
}

}  // namespace

std::size_t Call::size() const
{
    return positional + (names != nullptr ? static_cast<std::size_t>(PyTuple_GET_SIZE(names)) : 0);
}

Form::Form(const orca::factory::OrcaMethod& method)
    : method_(method), isReading_(method.getName().starts_with("get"))
{
    for (const auto& input : method.getInputs()) inputs_.push_back(resolveInput(input));
    if (!method.isConstructor()) resultName_ = resolveResult(method.getOutputs().front()).name;
}

PyObject* Form::findValue(const Call& call, std::size_t index) const
{
    if (index < call.positional) return call.values[index];
    const auto& name = method_.getArgumentNames()[index];
    for (std::size_t i = call.positional; i < call.size(); ++i) {
        auto* const given = PyTuple_GET_ITEM(call.names, static_cast<Py_ssize_t>(i - call.positional));
        if (PyUnicode_CompareWithASCIIString(given, name.c_str()) == 0) return call.values[i];
    }
    return nullptr;
}

bool Form::hasInputsOf(const Call& call) const
{
    if (call.size() != inputs_.size()) return false;
    for (std::size_t i = call.positional; i < inputs_.size(); ++i)
        if (findValue(call, i) == nullptr) return false;
    return true;
}

bool Form::accepts(const Call& call) const
{
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        auto* const value = findValue(call, i);
        if (value == nullptr || !fits(value, inputs_[i])) return false;
    }
    return true;
}

orca::HostArray Form::convert(const Call& call, std::size_t index) const
try {
    return toHost(findValue(call, index), inputs_[index]);
} catch (const Refused& refused) {
    throw Refused(refused.type, method_.getArgumentNames()[index] + ": " + refused.what());
}

orca::HostArray Form::invoke(orca::HostObject& self, const Call& call) const
{
    boost::container::small_vector<orca::HostArray, 4> arguments;
    for (std::size_t i = 0; i < inputs_.size(); ++i) arguments.push_back(convert(call, i));
    if (!isReading_) Writing::requireNone(self);
    return method_.invoke(self, orca::Arguments(arguments.data(), arguments.size()));
}

std::string Form::getArgumentText() const
{
    std::string arguments;
    for (std::size_t i = 0; i < inputs_.size(); ++i)
        append(arguments, ", ", method_.getArgumentNames()[i] + ": " + inputs_[i].name);
    return "(" + arguments + ")";
}

const Form& choose(const std::vector<Form>& forms, const Call& call)
{
    const Form* onlyCandidate = nullptr;
    std::size_t candidates = 0;
    for (const auto& form : forms) {
        if (!form.hasInputsOf(call)) continue;
        if (form.accepts(call)) return form;
        onlyCandidate = &form;
        ++candidates;
    }
    // The only form with such arguments says best which of them is wrong.
    if (candidates == 1) return *onlyCandidate;
    refuse(forms, call);
}

}  // namespace quillon::python
