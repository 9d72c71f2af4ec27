#include "bench/Ratios.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

using Run = benchmark::BenchmarkReporter::Run;

/// "100 tools/10" for a benchmark of that name with that argument, however often and long it ran.
std::string NameOf(const Run& run) {
    const benchmark::BenchmarkName& name = run.run_name;
    return name.args.empty() ? name.function_name : name.function_name + "/" + name.args;
}

/// Prints the medians only, and keeps them.
class Keeper final : public benchmark::ConsoleReporter {
public:
    Keeper() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const bool isOnlyRun = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
            hasFailed_ = hasFailed_ || run.error_occurred;
            if (!run.error_occurred && !isMedian && !isOnlyRun) continue;
            ConsoleReporter::ReportRuns({run});
            if (!run.error_occurred) Keep(run);
        }
    }

    const Medians& Found() const { return medians_; }
    bool HasFailed() const { return hasFailed_; }

private:
    void Keep(const Run& run) {
        const std::string name = NameOf(run);
        const bool isReal = !run.run_name.time_type.empty();
        const double time = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        medians_.Put(name, time / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e9);
        for (const auto& [counter, value] : run.counters)
            medians_.Put(name + ":" + counter, value);
    }

    Medians medians_;
    bool hasFailed_ = false;
};

/// The program's own choices, which its user's options override.
std::vector<char*> WithDefaults(int argc, char** argv) {
    static char interleaved[] = "--benchmark_enable_random_interleaving=true";
    static char repeated[] = "--benchmark_repetitions=9";
    static char length[] = "--benchmark_min_time=0.05";
    std::vector<char*> all = {argv[0], interleaved, repeated, length};
    all.insert(all.end(), argv + 1, argv + argc);
    return all;
}

void PrintGoals(const std::vector<Goal>& goals, const Medians& found) {
    int aims = 0, missed = 0, notRun = 0;
    std::printf("\n%-66s %12s %12s\n", "goal", "found", "at most");
    for (const Goal& goal : goals) {
        double value = 0;
        try {
            value = goal.found(found);
        } catch (const std::out_of_range&) {
            std::printf("%-66s %12s\n", goal.what.c_str(), "not run");
            ++notRun;
            continue;
        }
        std::printf("%-66s %9.2f %-2s", goal.what.c_str(), value, goal.unit);
        if (goal.atMost) {
            const bool isMissed = value > *goal.atMost;
            std::printf(" %9.2f %-2s  %s", *goal.atMost, goal.unit, isMissed ? "missed" : "met");
            ++aims;
            missed += isMissed ? 1 : 0;
        }
        std::printf("\n");
    }
    std::printf("summary: %d of %d goals met, %d missed, %d lines not run\n", aims - missed, aims, missed,
                notRun);
}

} // namespace

Goal Ratio(std::string what, std::string measured, std::string peer, std::optional<double> atMost,
           double share) {
    const auto found = [measured = std::move(measured), peer = std::move(peer), share](const Medians& times) {
        return times(measured) / times(peer) * share;
    };
    return {std::move(what), found, atMost, "x"};
}

Goal Milliseconds(std::string what, std::string measured, std::optional<double> atMost) {
    const auto found = [measured = std::move(measured)](const Medians& times) {
        return times(measured) / 1e6;
    };
    return {std::move(what), found, atMost, "ms"};
}

Goal Counter(std::string what, std::string nameAndCounter, std::optional<double> atMost, const char* unit) {
    const auto found = [name = std::move(nameAndCounter)](const Medians& values) { return values(name); };
    return {std::move(what), found, atMost, unit};
}

int RunAndCompare(int argc, char** argv, const std::vector<Goal>& goals) {
    std::vector<char*> arguments = WithDefaults(argc, argv);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
    Keeper keeper;
    benchmark::RunSpecifiedBenchmarks(&keeper);
    benchmark::Shutdown();
    PrintGoals(goals, keeper.Found());
    return keeper.HasFailed() ? 1 : 0;
}

} // namespace bench
