#include "python/core/Hearing.h"

#include <utility>

#include "python/core/Unlocked.h"

namespace quillon::python {

namespace py = pybind11;

void write(Writing::Roots roots, const void* document, const std::function<void()>& work)
{
    const Writing writing(std::move(roots), document);
    runUnlocked(work);
}

report::Listener Hearing::getListener()
{
    report::Listener listener;
    listener.warning = [this](const std::string& sentence) { warnings_.push_back(sentence); };
    if (progress_ != Py_None)
        listener.progress = [this](std::size_t done, std::size_t total) {
            runLocked([&] { tell(done, total); });
        };
    return listener;
}

void Hearing::tell(std::size_t done, std::size_t total)
{
    auto* const result =
        PyObject_CallFunction(progress_, "nn", static_cast<Py_ssize_t>(done), static_cast<Py_ssize_t>(total));
    if (result == nullptr) throw py::error_already_set();
    Py_DECREF(result);
}

}  // namespace quillon::python
