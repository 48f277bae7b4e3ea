#include <benchmark/benchmark.h>

namespace quillon::bench {
void registerWriterBenchmarks();
}

int main(int argc, char** argv)
{
    quillon::bench::registerWriterBenchmarks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
