#include "bench/OtherProcess.h"

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace quillon::bench {
namespace {

long getPeak()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// Gives back what the process no longer needs, so that the peak starts from here.
bool resetPeak()
{
    constexpr int fewestMaps = 65'536;
    mallopt(M_MMAP_MAX, fewestMaps);
    malloc_trim(0);
    std::FILE* reset = std::fopen("/proc/self/clear_refs", "w");
    return reset != nullptr && std::fputs("5", reset) >= 0 && std::fclose(reset) == 0;
}

[[noreturn]] void measureHere(const std::function<void()>& work, int end)
{
    if (!resetPeak()) _exit(1);
    const auto before = getPeak();
    work();
    const double bytes = 1024.0 * static_cast<double>(getPeak() - before);
    _exit(write(end, &bytes, sizeof bytes) == sizeof bytes ? 0 : 1);
}

}  // namespace

double runOtherLibrary(const std::string& script, const std::vector<std::size_t>& numbers)
{
    auto command = "node \"" QUILLON_DOCX_JS "\"/" + script;
    for (const auto number : numbers) command += " " + std::to_string(number);
    std::FILE* output = popen(command.c_str(), "r");
    std::array<char, 32> seconds{};
    const bool isRead = output != nullptr && std::fgets(seconds.data(), seconds.size(), output) != nullptr;
    if (output == nullptr || pclose(output) != 0 || !isRead)
        throw std::runtime_error("The baseline needs Node and its packages; `./run bench` installs both.");
    return std::stod(seconds.data());
}

double measurePeakMemory(const std::function<void()>& work)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    if (fork() == 0) measureHere(work, ends[1]);
    double bytes = 0;
    const bool isRead = read(ends[0], &bytes, sizeof bytes) == sizeof bytes;
    close(ends[0]);
    close(ends[1]);
    wait(nullptr);
    if (!isRead) throw std::runtime_error("The child that measures memory failed.");
    return bytes;
}

}  // namespace quillon::bench
