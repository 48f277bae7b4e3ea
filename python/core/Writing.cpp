#include "python/core/Writing.h"

#include <pthread.h>

#include <algorithm>
#include <utility>

#include "python/core/ChartObjects.h"
#include "python/core/Errors.h"

namespace quillon::python {
namespace {

/// What is being written now. The interpreter's lock guards it.
std::vector<Writing*>& writings()
{
    static auto& list = []() -> auto&
    {
        // The threads of the parent do not write in the child.
        pthread_atfork(nullptr, nullptr, [] { writings().clear(); });
        return *new std::vector<Writing*>;
    }
    ();
    return list;
}

}  // namespace

Writing::Writing(Roots roots, const void* document) : roots_(std::move(roots)), document_(document)
{
    writings().push_back(this);
}

Writing::~Writing()
{
    std::erase(writings(), this);
}

bool Writing::isAny()
{
    return !writings().empty();
}

void Writing::requireNone(const void* document)
{
    for (const auto* const writing : writings())
        if (writing->document_ == document)
            throw Refused(PyExc_RuntimeError, "the document is being written.");
}

void Writing::requireNone(const orca::HostObject& host)
{
    for (auto* const writing : writings())
        if (writing->holds(host.getObject()))
            throw Refused(PyExc_RuntimeError, "the chart is being written; change it when that is done.");
}

bool Writing::holds(const void* object)
{
    if (objects_.empty())
        for (const auto& root : roots_) collectObjects(*root, objects_);
    return objects_.contains(object);
}

}  // namespace quillon::python
