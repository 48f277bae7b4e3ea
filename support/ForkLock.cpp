#include "support/ForkLock.h"

#include <pthread.h>

#include <mutex>

namespace quillon {
namespace {

std::mutex& getMutex()
{
    static std::mutex mutex;
    static const int registered =
        pthread_atfork([] { mutex.lock(); }, [] { mutex.unlock(); }, [] { mutex.unlock(); });
    static_cast<void>(registered);
    return mutex;
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
