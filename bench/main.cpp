#include <benchmark/benchmark.h>
#include <malloc.h>

#include "bench/Benchmarks.h"

int main(int argc, char** argv)
{
    // Freed memory stays with the process, so that the kernel's zeroing of fresh pages is not measured.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);

    quillon::bench::registerWriterBenchmarks();
    quillon::bench::registerHostBenchmarks();
    quillon::bench::registerReportBenchmarks();
    quillon::bench::registerFillBenchmarks();
    quillon::bench::registerTypeBenchmarks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    quillon::bench::TableReporter table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
