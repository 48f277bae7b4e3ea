#include "python/core/Errors.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>

#include "orca/Error.h"
#include "python/core/Unlocked.h"

namespace quillon::python {
namespace {

struct Row {
    orca::ErrorId id;
    PyObject* const* type;
};

/// The errors of the host system that are not type errors.
const Row rows[] = {
    {orca::ErrorId::BadShape, &PyExc_ValueError},
    {orca::ErrorId::IndexOutOfRange, &PyExc_IndexError},
    {orca::ErrorId::ReadOnly, &PyExc_AttributeError},
    {orca::ErrorId::UnknownMember, &PyExc_ValueError},
    {orca::ErrorId::UnknownMethod, &PyExc_AttributeError},
    {orca::ErrorId::UnknownProperty, &PyExc_AttributeError},
};

PyObject* typeOf(orca::ErrorId id)
{
    const auto* const found =
        std::find_if(std::begin(rows), std::end(rows), [id](const Row& row) { return row.id == id; });
    return found != std::end(rows) ? *found->type : PyExc_TypeError;
}

/// The library tells a bad position by these words alone.
PyObject* typeOf(std::string_view sentence)
{
    return sentence.ends_with("index out of range.") ? PyExc_IndexError : PyExc_ValueError;
}

/// What Python code can do about an error that the library tells by these words.
std::string adviceOn(std::string_view sentence)
{
    constexpr std::string_view unfilled = "New series size 0 differs";
    if (!sentence.starts_with(unfilled)) return {};
    return ". Fill the series before appending it, or use add_series(name, values).";
}

void raise(PyObject* type, const std::string& place, const std::string& sentence)
{
    PyErr_SetString(type, (place + ": " + sentence).c_str());
}

}  // namespace

void raise(const std::string& place) noexcept
try {
    throw;
} catch (pybind11::error_already_set& error) {
    error.restore();
} catch (const Refused& refused) {
    raise(refused.type, place, refused.what());
} catch (const orca::Error& error) {
    PyErr_SetString(typeOf(error.getId()), error.what());
} catch (const std::bad_alloc&) {
    PyErr_NoMemory();
} catch (const std::out_of_range& error) {
    raise(PyExc_IndexError, place, std::string("the position is out of range: ") + error.what());
} catch (const std::runtime_error& error) {
    PyErr_SetString(typeOf(error.what()), (error.what() + adviceOn(error.what())).c_str());
} catch (const std::exception& error) {
    raise(PyExc_RuntimeError, place, error.what());
} catch (...) {
    catchException();
    raise(PyExc_RuntimeError, place, "the library failed without saying why.");
}

}  // namespace quillon::python
