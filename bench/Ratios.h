#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/// What a run has measured: of each benchmark the median of its repetitions.
class Medians {
public:
    /// Nanoseconds an iteration, under the benchmark's name and arguments ("ListTools/100"): real time where
    /// the benchmark asks for it, else CPU time. A counter's value under "NAME:COUNTER". Throws
    /// std::out_of_range for what did not run.
    double operator()(const std::string& name) const { return values_.at(name); }
    void Put(const std::string& name, double value) { values_[name] = value; }

private:
    std::map<std::string, double> values_;
};

/// One line of the table at the end.
struct Goal {
    std::string what;
    std::function<double(const Medians&)> found;
    std::optional<double> atMost = {}; // none: reported only
    const char* unit = "x";
};

/// How many times as long `measured` takes as `peer`. `share`: of the measured time, to compare runs of
/// different sizes by the piece.
Goal Ratio(std::string what, std::string measured, std::string peer, std::optional<double> atMost = {},
           double share = 1);
Goal Milliseconds(std::string what, std::string measured, std::optional<double> atMost = {});
Goal Counter(std::string what, std::string nameAndCounter, std::optional<double> atMost, const char* unit);

/// Runs all benchmarks of the program, their repetitions interleaved in random order so that a busy moment of
/// the machine meets them all alike, and prints the table of goals with a line of summary. Google Benchmark's
/// own options come first. Call from main after registering; 0 whether the goals are met or missed, 1 when a
/// benchmark failed.
int RunAndCompare(int argc, char** argv, const std::vector<Goal>& goals);

} // namespace bench
