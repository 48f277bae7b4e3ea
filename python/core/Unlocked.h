#pragma once

#include <exception>
#include <functional>

/// Work without the interpreter's lock, on threads that the interpreter may leave behind when it ends.
namespace quillon::python {

/// Runs `work` while other threads may hold the lock. What it throws goes on when the lock is held again.
/// Requires: the lock is held.
void runUnlocked(const std::function<void()>& work);

/// Runs `call`, which uses Python, with the lock. When the interpreter ends meanwhile, the thread stops
/// inside `call`, which therefore holds no Python object of its own. Requires: runs inside runUnlocked().
void runLocked(const std::function<void()>& call);

/// Makes the interpreter's end wait for the work that threads do without its lock: what comes after it
/// destroys what they use. Requires: the lock is held.
void awaitWorkAtExit();

/// The exception that is being handled. The end of a thread, which unwinds its stack as an exception does and
/// is none, goes no further: the thread sleeps.
std::exception_ptr catchException() noexcept;

/// Stops a thread that the interpreter has left behind. Unwinding it would run code that needs the
/// interpreter.
[[noreturn]] void sleepForever() noexcept;

}  // namespace quillon::python
