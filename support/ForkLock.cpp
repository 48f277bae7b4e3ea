#include "support/ForkLock.h"

#include <pthread.h>

#include <mutex>

namespace quillon {
namespace {

std::mutex& getMutex()
{
    static std::mutex forking;
    static const int registered =
        pthread_atfork([] { forking.lock(); }, [] { forking.unlock(); }, [] { forking.unlock(); });
    static_cast<void>(registered);
    return forking;
}

}  // namespace

ForkLock::ForkLock()
{
    getMutex().lock();
}

ForkLock::~ForkLock()
{
    getMutex().unlock();
}

}  // namespace quillon
