#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <functional>
#include <string>

namespace quillon::bench {

/// Runs `ours` and `baseline` in turns, so that their ratio holds on a noisy machine, and leaves the best
/// time of each, in seconds, in the counters "ours" and "baseline". Each is called with no argument and
/// returns its own seconds.
void compare(benchmark::State& state, const std::function<double()>& ours,
             const std::function<double()>& baseline);

/// Prints one row a case: our time, the baseline's, their ratio, and what else the case counted.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
};

/// The seconds that `work` takes.
template <typename Work>
double seconds(const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The seconds of the processor that `work` takes, whatever else runs on the machine.
template <typename Work>
double processorSeconds(const Work& work)
{
    const auto start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// The value of a point of the charts that are measured: one decimal, of either sign.
inline double makeValue(std::size_t series, std::size_t point)
{
    return std::round(1000 * std::sin(0.1 * static_cast<double>(point + series))) / 10;
}

void registerWriterBenchmarks();
void registerHostBenchmarks();
void registerReportBenchmarks();
void registerTypeBenchmarks();
void registerFillBenchmarks();

}  // namespace quillon::bench
