/// Measures the parts of an alarm's handling, each on its own. The options are those of the benchmark library.

#include <benchmark/benchmark.h>

#include <cstdio>

#include "Parts.hpp"

namespace {

int run(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    ZorvBench::Stage stage;
    ZorvBench::registerTextParts();
    ZorvBench::registerNodeParts(stage);
    ZorvBench::registerFlatParts(stage);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zorv-bench-parts: %s\n", e.what());
        return 1;
    }
}
