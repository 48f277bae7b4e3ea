#pragma once

#include <pybind11/pybind11.h>

#include <functional>
#include <string>
#include <vector>

#include "python/core/Writing.h"
#include "report/options/Listener.h"

namespace quillon::python {

/// Runs `work`, which writes `roots` for `document`, with the interpreter's lock released and changes
/// refused.
void write(Writing::Roots roots, const void* document, const std::function<void()>& work);

/// Hears what is said of a chart while it is written.
class Hearing {
 public:
    /// Progress: called with the number of charts done and of all; None for nobody.
    explicit Hearing(PyObject* progress = Py_None) : progress_(progress) {}

    report::Listener getListener();
    std::vector<std::string> takeWarnings() { return std::move(warnings_); }

 private:
    void tell(std::size_t done, std::size_t total);

    PyObject* progress_;
    std::vector<std::string> warnings_;
};

}  // namespace quillon::python
