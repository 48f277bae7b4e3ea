#pragma once

#include <benchmark/benchmark.h>

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

void registerWriterBenchmarks();

}  // namespace quillon::bench
