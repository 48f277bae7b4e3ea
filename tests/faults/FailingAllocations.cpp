#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "tests/faults/Faults.h"

extern "C" {
// What the C library has behind malloc and its kin.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace quillon::faults {
namespace {

constexpr long never = -1;

std::atomic<bool> isCounting = false;
std::atomic<long> counter = 0;
std::atomic<long> failing = never;
std::atomic<bool> failsBehind = false;

/// From the start of the program on.
std::atomic<long> allocationCount = 0;
long allocationsBeforeMain = 0;
bool isConfigured = false;

/// The environment is there before main, and before the constructors of this library.
void configureStart()
{
    if (isConfigured || environ == nullptr) return;
    isConfigured = true;
    if (const long start = readNumber("QUILLON_FAIL_START"); start > 0) failAllocation(start, false);
}

bool fails()
{
    configureStart();
    ++allocationCount;
    if (!isCounting) return false;
    const long number = ++counter;
    const bool isFailing = number == failing || (failsBehind && number > failing);
    if (isFailing) errno = ENOMEM;
    return isFailing;
}

int (*realMain)(int, char**, char**) = nullptr;

/// Called instead of main.
int countFromMain(int count, char** arguments, char** environment)
{
    const long from = readNumber("QUILLON_FAIL_FROM");
    startCalls();
    allocationsBeforeMain = allocationCount.load();
    failAllocation(from > 0 ? from : readNumber("QUILLON_FAIL_AT"), from > 0);
    return realMain(count, arguments, environment);
}

/// Writes the counts at the end of the program.
class Counts {
 public:
    ~Counts()
    {
        isCounting = false;
        const char* path = std::getenv("QUILLON_COUNTS");
        if (path == nullptr) return;
        const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dprintf(file, "start %ld\nmalloc %ld\n", allocationsBeforeMain, counter.load());
        printCalls(file);
        close(file);
    }
};
const Counts counts;

}  // namespace

void failAllocation(long at, bool all)
{
    isCounting = false;
    failing = at > 0 ? at : never;
    failsBehind = all && at > 0;
    counter = 0;
    isCounting = true;
}

long countAllocations()
{
    return counter;
}

long readNumber(const char* variable)
{
    const char* text = std::getenv(variable);
    return text == nullptr ? 0 : std::atol(text);
}

}  // namespace quillon::faults

using quillon::faults::fails;

extern "C" {

void* malloc(std::size_t size)
{
    return fails() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    return fails() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size)
{
    return size > 0 && fails() ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    void* const found = fails() ? nullptr : __libc_memalign(alignment, size);
    if (found == nullptr) return ENOMEM;
    *memory = found;
    return 0;
}

int __libc_start_main(int (*main)(int, char**, char**), int count, char** arguments, void (*init)(),
                      void (*end)(), void (*loaderEnd)(), void* stackEnd)
{
    quillon::faults::realMain = main;
    using Start =
        int (*)(int (*)(int, char**, char**), int, char**, void (*)(), void (*)(), void (*)(), void*);
    const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return start(quillon::faults::countFromMain, count, arguments, init, end, loaderEnd, stackEnd);
}
}
