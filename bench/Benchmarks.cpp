#include "bench/Benchmarks.h"

#include <algorithm>
#include <cstdio>

namespace quillon::bench {

void compare(benchmark::State& state, const std::function<double()>& ours,
             const std::function<double()>& baseline)
{
    double bestOurs = ours();
    double bestBaseline = baseline();
    for ([[maybe_unused]] auto iteration : state) {
        const double oursTime = ours();
        bestOurs = std::min(bestOurs, oursTime);
        bestBaseline = std::min(bestBaseline, baseline());
        state.SetIterationTime(oursTime);
    }
    state.counters["ours"] = bestOurs;
    state.counters["baseline"] = bestBaseline;
}

bool TableReporter::ReportContext(const Context& /*context*/)
{
    std::printf("%-34s %12s %12s %7s  %s\n", "case", "ours us", "baseline us", "ratio", "more");
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const auto& run : runs) {
        if (run.error_occurred) {
            std::printf("%-34s %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
            continue;
        }
        const auto get = [&run](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? 0.0 : found->second.value;
        };
        std::printf("%-34s %12.1f %12.1f %7.3f ", run.run_name.function_name.c_str(), get("ours") * 1e6,
                    get("baseline") * 1e6, get("ours") / get("baseline"));
        for (const auto& [name, counter] : run.counters)
            if (name != "ours" && name != "baseline") std::printf(" %s %.4g", name.c_str(), counter.value);
        std::printf("\n");
        static_cast<void>(std::fflush(stdout));
    }
}

}  // namespace quillon::bench
