#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "orca/HostObject.h"
#include "orca/Method.h"
#include "python/core/ValueType.h"

/// Calls of methods and constructors with the arguments of Python.
namespace quillon::python {

/// The arguments of a call, as the interpreter passes them.
struct Call {
    PyObject* const* values;
    /// How many of the values are given by position; the others follow.
    std::size_t positional;
    /// A tuple of the names of the others, or null.
    PyObject* names;

    std::size_t size() const;
};

/// One form of a method or constructor.
class Form {
 public:
    explicit Form(const orca::factory::OrcaMethod& method);

    const orca::factory::OrcaMethod& getMethod() const { return method_; }
    const std::vector<ValueType>& getInputs() const { return inputs_; }
    /// Empty for a constructor.
    const std::string& getResultName() const { return resultName_; }

    /// Whether the call gives exactly the inputs of this form, of whatever types.
    bool hasInputsOf(const Call& call) const;
    /// Whether they are also of its types. Requires: hasInputsOf(call).
    bool accepts(const Call& call) const;
    /// Requires: hasInputsOf(call). Throws: Refused for an argument that is not of its type, and for a change
    /// to a chart that is being written; what the library throws.
    orca::HostArray invoke(orca::HostObject& self, const Call& call) const;

    /// "(x: float, y: float)"
    std::string getArgumentText() const;

 private:
    /// Null when the call does not give that input.
    PyObject* findValue(const Call& call, std::size_t index) const;
    orca::HostArray convert(const Call& call, std::size_t index) const;

    const orca::factory::OrcaMethod& method_;
    /// Whether the method leaves its object as it is, which its name tells.
    bool isReading_;
    std::vector<ValueType> inputs_;
    std::string resultName_;
};

/// The form that takes the arguments: the first one that suits them. Throws: Refused when none does.
const Form& choose(const std::vector<Form>& forms, const Call& call);

}  // namespace quillon::python
