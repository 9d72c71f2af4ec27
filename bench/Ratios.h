#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace bench {

/// One line of the table at the end: how many times as long `measured` takes as `peer`, and what is aimed at.
struct Ratio {
    std::string what;
    std::string measured; // names of benchmarks of this run, as Google Benchmark prints them
    std::string peer;
    double aim = 0; // at most; 0: nothing is aimed at
};

/// Runs all benchmarks of the program and prints the ratios of their medians (or only times, where they were
/// not repeated). Times are CPU times unless a benchmark measures real time. Call from main after
/// registering; 0 when all ran, 1 when one named here is missing.
int RunAndCompare(int argc, char** argv, const std::vector<Ratio>& ratios);

} // namespace bench
