#include "python/core/Options.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "python/core/Conversion.h"
#include "python/core/Errors.h"
#include "python/core/Text.h"
#include "report/options/Enumerations.h"
#include "report/options/NearName.h"
#include "report/options/Options.h"

namespace quillon::python {
namespace {

namespace py = pybind11;
using report::OptionForm;
using report::OptionValue;

bool readFlag(py::handle value, const std::string& name)
{
    if (!PyBool_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected bool, got " + nameType(value) + ".");
    return value.ptr() == Py_True;
}

double readNumber(py::handle value, const std::string& name)
try {
    static const ValueType type{ValueType::Kind::Number, 0, nullptr, nullptr, "float"};
    return *toHost(value.ptr(), type).getNumber();
} catch (const Refused& refused) {
    throw Refused(refused.type, name + ": " + refused.what());
}

/// A list of texts; one text is a list as on the command line.
OptionValue readTexts(const report::Option& option, py::handle value, const std::string& name)
{
    if (PyUnicode_Check(value.ptr())) return report::readOptionText(option, readText(value, name), name);
    if (!PyList_Check(value.ptr()) && !PyTuple_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected a list of str, got " + nameType(value) + ".");
    std::vector<std::string> texts;
    for (const auto& item : value) texts.push_back(readText(item, name));
    return texts;
}

OptionValue readPairs(py::handle value, const std::string& name)
{
    if (!PyDict_Check(value.ptr()))
        throw Refused(PyExc_TypeError, name + ": expected a dict, got " + nameType(value) + ".");
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& [key, item] : py::reinterpret_borrow<py::dict>(value))
        pairs.emplace_back(readText(key, name), readText(item, name));
    return pairs;
}

OptionValue readValue(const report::Option& option, py::handle value, const std::string& name)
{
    switch (option.form) {
        case OptionForm::Flag:
            return readFlag(value, name);
        case OptionForm::Number:
        case OptionForm::Integer:
            return readNumber(value, name);
        case OptionForm::Choices:
        case OptionForm::Texts:
            return readTexts(option, value, name);
        case OptionForm::TextPairs:
            return readPairs(value, name);
        case OptionForm::Text:
        case OptionForm::Choice:
            break;
    }
    return readText(value, name);
}

/// The end of a sentence, with the option that was probably meant.
std::string suggestOption(const std::string& name)
{
    std::vector<std::string> names;
    names.reserve(report::getOptions().size());
    for (const auto& option : report::getOptions()) {
        names.emplace_back(option.name);
        std::replace(names.back().begin(), names.back().end(), '-', '_');
    }
    return report::suggestName(name, names);
}

const report::Option& findOption(std::string name)
{
    auto hostName = name;
    std::replace(hostName.begin(), hostName.end(), '_', '-');
    const auto* const option = report::findOption(hostName);
    if (option == nullptr || name.find('-') != std::string::npos)
        throw Refused(PyExc_TypeError, "there is no option \"" + name + "\"" + suggestOption(name));
    return *option;
}

void setOption(report::ChartOptions& options, const std::string& name, py::handle value)
{
    if (name == "workbook") {
        options.workbook = readFlag(value, name);
        return;
    }
    const auto& option = findOption(name);
    report::setOption(options, option, readValue(option, value, name), name);
}

const char* nameForm(OptionForm form)
{
    switch (form) {
        case OptionForm::Flag:
            return "flag";
        case OptionForm::Number:
            return "number";
        case OptionForm::Integer:
            return "integer";
        case OptionForm::Text:
            return "text";
        case OptionForm::Choice:
            return "choice";
        case OptionForm::Choices:
            return "choices";
        case OptionForm::Texts:
            return "texts";
        case OptionForm::TextPairs:
            return "pairs";
    }
    return "";
}

py::list describeOptions()
{
    py::list rows;
    for (const auto& option : report::getOptions()) {
        py::list choices;
        for (const auto* choice : option.choices) choices.append(choice);
        rows.append(py::make_tuple(option.name, nameForm(option.form), choices));
    }
    return rows;
}

}  // namespace

void defineOptions(py::module_& core)
{
    core.def(
        "chart_types",
        [] {
            py::list names;
            for (const auto& row : report::kindRows) names.append(row.name);
            return names;
        },
        "The names of the types of charts.");
    core.def("options", describeOptions, "The options of a chart: a list of (name, form, choices).");
}

report::ChartOptions readOptions(const py::dict& options)
{
    report::ChartOptions result;
    for (const auto& [name, value] : options)
        if (!value.is_none()) setOption(result, readText(name, "option"), value);
    return result;
}

}  // namespace quillon::python
