#include "python/core/NumberBuffer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "python/core/Errors.h"

namespace quillon::python {
namespace {

namespace py = pybind11;

using Reader = double (*)(const char* bytes, bool isSwapped);

template <typename T>
double readInteger(const char* bytes, bool isSwapped)
{
    std::array<char, sizeof(T)> copy;
    std::copy_n(bytes, sizeof(T), copy.begin());
    if (isSwapped) std::reverse(copy.begin(), copy.end());
    return static_cast<double>(std::bit_cast<T>(copy));
}

template <double (*Unpack)(const char*, int)>
double readFloat(const char* bytes, bool isSwapped)
{
    return Unpack(bytes, (PY_LITTLE_ENDIAN != 0) != isSwapped);
}

struct Format {
    std::string_view codes;
    py::ssize_t size;
    Reader read;
};

/// The codes of a format tell whether its numbers have a sign or a fraction; their size depends on the
/// platform.
constexpr Format formats[] = {
    {"efd", 8, readFloat<PyFloat_Unpack8>},     {"efd", 4, readFloat<PyFloat_Unpack4>},
    {"efd", 2, readFloat<PyFloat_Unpack2>},     {"bhilqn", 1, readInteger<std::int8_t>},
    {"bhilqn", 2, readInteger<std::int16_t>},   {"bhilqn", 4, readInteger<std::int32_t>},
    {"bhilqn", 8, readInteger<std::int64_t>},   {"?BHILQN", 1, readInteger<std::uint8_t>},
    {"?BHILQN", 2, readInteger<std::uint16_t>}, {"?BHILQN", 4, readInteger<std::uint32_t>},
    {"?BHILQN", 8, readInteger<std::uint64_t>},
};

const Format* findFormat(std::string_view code, py::ssize_t size)
{
    if (code.size() != 1) return nullptr;
    const auto* const found = std::find_if(std::begin(formats), std::end(formats), [&](const Format& format) {
        return format.size == size && format.codes.find(code) != std::string_view::npos;
    });
    return found != std::end(formats) ? found : nullptr;
}

/// None for an object without a buffer, and for one that refuses it, as arrays of dates do.
std::optional<py::buffer_info> request(PyObject* object)
try {
    if (PyObject_CheckBuffer(object) == 0 || PyBytes_Check(object) || PyByteArray_Check(object))
        return std::nullopt;
    return py::reinterpret_borrow<py::buffer>(object).request();
} catch (const py::error_already_set&) {
    return std::nullopt;
}

}  // namespace

std::optional<std::vector<double>> readNumberBuffer(PyObject* object)
{
    const auto buffer = request(object);
    if (!buffer || buffer->ndim == 0) return std::nullopt;
    if (buffer->ndim > 1)
        throw Refused(PyExc_TypeError,
                      "expected one dimension, got an array of " + std::to_string(buffer->ndim) + ".");
    std::string_view code = buffer->format;
    const auto order = code.find_first_of("@=<>!") == 0 ? code.front() : '@';
    if (code.find_first_of("@=<>!") == 0) code.remove_prefix(1);
    const bool isBig = order == '>' || order == '!' || (order != '<' && PY_BIG_ENDIAN != 0);
    const auto* const format = findFormat(code, buffer->itemsize);
    if (format == nullptr) return std::nullopt;
    std::vector<double> numbers(static_cast<std::size_t>(buffer->shape[0]));
    const auto* bytes = static_cast<const char*>(buffer->ptr);
    for (auto& number : numbers) {
        number = format->read(bytes, isBig != (PY_BIG_ENDIAN != 0));
        bytes += buffer->strides[0];
    }
    return numbers;
}

}  // namespace quillon::python
