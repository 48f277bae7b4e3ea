#include "python/core/Unlocked.h"

#include <pthread.h>
#include <pybind11/pybind11.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>

namespace quillon::python {
namespace {

/// The threads that work without the lock.
std::atomic<int> workers = 0;
std::atomic<bool> isEnding = false;

/// What the thread gave up with the lock.
thread_local PyThreadState* released = nullptr;

void releaseLock()
{
    // Counted first, so that the end of the interpreter, which needs the lock, waits for the thread.
    ++workers;
    released = PyEval_SaveThread();
}

/// Once the interpreter ends, it ends threads that ask for the lock, by unwinding their stacks.
void takeLock()
try {
    auto* const state = std::exchange(released, nullptr);
    --workers;
    if (isEnding) sleepForever();
    PyEval_RestoreThread(state);
} catch (...) {
    sleepForever();
}

/// What `function` throws. Python code that it calls may be ended with the interpreter.
std::exception_ptr catchAll(const std::function<void()>& function)
{
    try {
        function();
    } catch (...) {
        return catchException();
    }
    return nullptr;
}

void rethrow(const std::exception_ptr& error)
{
    if (error) std::rethrow_exception(error);
}

void awaitWorkers()
{
    isEnding = true;
    while (workers > 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace

void runUnlocked(const std::function<void()>& work)
{
    releaseLock();
    const auto error = catchAll(work);
    takeLock();
    rethrow(error);
}

void runLocked(const std::function<void()>& call)
{
    takeLock();
    const auto error = catchAll(call);
    releaseLock();
    rethrow(error);
}

void awaitWorkAtExit()
{
    Py_AtExit(awaitWorkers);
    // The threads of the parent do not work in the child.
    pthread_atfork(nullptr, nullptr, [] { workers = 0; });
}

std::exception_ptr catchException() noexcept
{
    auto error = std::current_exception();
    if (!error) sleepForever();
    return error;
}

void sleepForever() noexcept
{
    for (;;) pause();
}

}  // namespace quillon::python
