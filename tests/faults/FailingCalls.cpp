#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/faults/Faults.h"

namespace quillon::faults {
namespace {

struct Call {
    const char* name;
    long count = 0;
    long failing = 0;
    int error = 0;
};

std::array calls = {Call{"open"},     Call{"openat"}, Call{"read"},    Call{"write"},    Call{"writev"},
                    Call{"fsync"},    Call{"linkat"}, Call{"fchown"},  Call{"fchmod"},   Call{"close"},
                    Call{"renameat"}, Call{"access"}, Call{"fstatat"}, Call{"faccessat"}};

bool isStarted = false;
long pause = 0;

Call& find(const char* name)
{
    return *std::find_if(calls.begin(), calls.end(),
                         [name](const Call& call) { return std::strcmp(call.name, name) == 0; });
}

/// "write:2:28", several with commas between them.
void readFailures(const char* text)
{
    std::array<char, 20> name{};
    long number = 0;
    int error = 0;
    int length = 0;
    while (text != nullptr &&
           std::sscanf(text, "%19[a-z]:%ld:%d%n", name.data(), &number, &error, &length) == 3) {
        find(name.data()).failing = number;
        find(name.data()).error = error;
        text += length;
        if (*text == ',') ++text;
    }
}

/// Whether this call fails; counts it.
bool fails(const char* name)
{
    if (!isStarted) return false;
    auto& call = find(name);
    if (++call.count != call.failing) return false;
    errno = call.error;
    return true;
}

void wait()
{
    if (pause > 0) usleep(static_cast<useconds_t>(1000 * pause));
}

/// The function of the C library.
template <typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isOurs(int file)
{
    return file > STDERR_FILENO;
}

}  // namespace

void startCalls()
{
    readFailures(std::getenv("QUILLON_FAIL_CALL"));
    pause = readNumber("QUILLON_SLOW_CALLS");
    isStarted = true;
}

void printCalls(int file)
{
    isStarted = false;
    for (const auto& call : calls) dprintf(file, "%s %ld\n", call.name, call.count);
}

}  // namespace quillon::faults

using quillon::faults::fails;
using quillon::faults::isOurs;
using quillon::faults::next;
using quillon::faults::wait;

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    static const auto call = next<int(const char*, int, ...)>("open");
    return fails("open") ? -1 : call(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    static const auto call = next<int(int, const char*, int, ...)>("openat");
    return fails("openat") ? -1 : call(folder, path, flags, mode);
}

ssize_t read(int file, void* bytes, size_t size)
{
    static const auto call = next<ssize_t(int, void*, size_t)>("read");
    if (!isOurs(file)) return call(file, bytes, size);
    // So a failure finds the file half read.
    return fails("read") ? -1 : call(file, bytes, std::min<size_t>(size, 16));
}

ssize_t write(int file, const void* bytes, size_t size)
{
    static const auto call = next<ssize_t(int, const void*, size_t)>("write");
    if (!isOurs(file)) return call(file, bytes, size);
    wait();
    if (fails("write")) return -1;
    // So a kill, or a failure, finds the file half written.
    return call(file, bytes, std::min<size_t>(size, 4096));
}

ssize_t writev(int file, const iovec* blocks, int count)
{
    static const auto call = next<ssize_t(int, const iovec*, int)>("writev");
    return isOurs(file) && fails("writev") ? -1 : call(file, blocks, count);
}

int fsync(int file)
{
    static const auto call = next<int(int)>("fsync");
    wait();
    return fails("fsync") ? -1 : call(file);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags)
{
    static const auto call = next<int(int, const char*, int, const char*, int)>("linkat");
    wait();
    const int result = fails("linkat") ? -1 : call(fromFolder, from, toFolder, to, flags);
    wait();
    return result;
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to)
{
    static const auto call = next<int(int, const char*, int, const char*)>("renameat");
    wait();
    const int result = fails("renameat") ? -1 : call(fromFolder, from, toFolder, to);
    wait();
    return result;
}

int fchown(int file, uid_t owner, gid_t group)
{
    static const auto call = next<int(int, uid_t, gid_t)>("fchown");
    return fails("fchown") ? -1 : call(file, owner, group);
}

int fchmod(int file, mode_t mode)
{
    static const auto call = next<int(int, mode_t)>("fchmod");
    return fails("fchmod") ? -1 : call(file, mode);
}

/// The file is closed all the same, as the system does it.
int close(int file)
{
    static const auto call = next<int(int)>("close");
    const int result = call(file);
    return fails("close") ? -1 : result;
}

int access(const char* path, int mode)
{
    static const auto call = next<int(const char*, int)>("access");
    return fails("access") ? -1 : call(path, mode);
}

int fstatat(int folder, const char* path, struct stat* status, int flags)
{
    static const auto call = next<int(int, const char*, struct stat*, int)>("fstatat");
    return fails("fstatat") ? -1 : call(folder, path, status, flags);
}

int faccessat(int folder, const char* path, int mode, int flags)
{
    static const auto call = next<int(int, const char*, int, int)>("faccessat");
    return fails("faccessat") ? -1 : call(folder, path, mode, flags);
}
}
