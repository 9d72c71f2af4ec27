#include "bench/Ratios.h"

#include <cstdio>
#include <map>
#include <optional>

namespace bench {

namespace {

/// Prints as usual and keeps the times.
class Keeper final : public benchmark::ConsoleReporter {
public:
    Keeper() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const std::string name = run.run_name.str();
            const bool realTime = name.find("/real_time") != std::string::npos ||
                                  name.find("/manual_time") != std::string::npos;
            const double nanoseconds = (realTime ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime()) /
                                       benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e9;
            if (median || (run.run_type == Run::RT_Iteration && run.repetitions <= 1))
                times_[name] = nanoseconds;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    std::optional<double> TimeOf(const std::string& name) const {
        const auto found = times_.find(name);
        return found == times_.end() ? std::nullopt : std::optional<double>(found->second);
    }

private:
    std::map<std::string, double> times_;
};

} // namespace

int RunAndCompare(int argc, char** argv, const std::vector<Ratio>& ratios) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    Keeper keeper;
    benchmark::RunSpecifiedBenchmarks(&keeper);
    benchmark::Shutdown();

    int missing = 0;
    std::printf("\n%-66s %8s %8s\n", "ratio of times", "found", "aim");
    for (const Ratio& ratio : ratios) {
        const std::optional<double> measured = keeper.TimeOf(ratio.measured);
        const std::optional<double> peer = keeper.TimeOf(ratio.peer);
        if (!measured || !peer) {
            std::printf("%-66s %8s\n", ratio.what.c_str(), "not run");
            missing = 1;
            continue;
        }
        std::printf("%-66s %8.2f", ratio.what.c_str(), *measured / *peer);
        if (ratio.aim > 0) {
            std::printf(" %8.2f%s", ratio.aim, *measured > ratio.aim * *peer ? "  missed" : "");
        }
        std::printf("\n");
    }
    return missing;
}

} // namespace bench
