// Sorting and showing many tools: the tool manager in the reference host with nobody watching it.

#include "bench/LoadedHost.h"
#include "bench/Ratios.h"

#include <benchmark/benchmark.h>

#ifdef KVTM_BENCH_QT
#include <QStringList>
#endif

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using kvtm::test::CatalogueTool;

/// Names as a catalogue holds them: words and a number, in no order.
std::vector<std::string> ToolNames(std::size_t count) {
    static constexpr std::array words = {"Pipework",  "layout", "Sheet", "Thermal", "load",
                                         "Übersicht", "Room",   "duct",  "Report",  "Survey"};
    std::mt19937 random(17);
    const auto word = [&] { return std::string(words[random() % words.size()]); };
    std::vector<std::string> names;
    for (std::size_t number = 0; number < count; ++number)
        names.push_back(word() + " " + word() + " " + std::to_string(number));
    std::shuffle(names.begin(), names.end(), random);
    return names;
}

std::vector<CatalogueTool> Tools(std::size_t count) {
    std::vector<CatalogueTool> tools;
    for (const std::string& name : ToolNames(count)) {
        const std::string number = std::to_string(tools.size());
        const std::string day = std::to_string(10 + tools.size() % 18);
        tools.push_back({.name = name,
                         .vrex = "V" + number,
                         .identifier = "I" + number,
                         .version = std::to_string(tools.size() % 7) + ".0",
                         .lastUpdated = "2024-03-" + day});
    }
    return tools;
}

/// Every tool has a row, a menu item, a button and a node.
struct ManyTools : bench::LoadedHost {
    explicit ManyTools(std::size_t count) : LoadedHost(Tools(count)) {
        host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
        Probe().LoadToolsCollection(); // in the catalogue's order, which is none
    }
};

std::size_t CountOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Fewer repetitions than elsewhere: setting up so many tools takes long.
void SortSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond)->Repetitions(5);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Repetitions(5);
}

void SortByName(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    for (auto _ : state) {
        auto sorted = tools.tool->Sort("name", false, false);
        benchmark::DoNotOptimize(sorted);
    }
}
BENCHMARK(SortByName)->Apply(SortSizes);

void SortByDate(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    for (auto _ : state) {
        auto sorted = tools.tool->Sort("lastupdated", false, true);
        benchmark::DoNotOptimize(sorted);
    }
}
BENCHMARK(SortByDate)->Apply(SortSizes);

#ifdef KVTM_BENCH_QT
/// The same texts, in memory already.
void QtSortOfTexts(benchmark::State& state) {
    QStringList texts;
    for (const std::string& name : ToolNames(CountOf(state)))
        texts.push_back(QString::fromStdString(name));
    for (auto _ : state) {
        QStringList sorted = texts;
        sorted.sort(Qt::CaseInsensitive);
        benchmark::DoNotOptimize(sorted);
    }
}
BENCHMARK(QtSortOfTexts)->Apply(SortSizes);
#endif

/// The click on the pane's switch, until list, menu and toolbar of the host stand.
void ShowAllClick(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    for (auto _ : state)
        tools.host->ClickTask("tskShowAll");
}
BENCHMARK(ShowAllClick)->Apply(Sizes);

/// The click on a column's header, until the list stands in the new order.
void ColumnClick(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    bool descending = false;
    for (auto _ : state) {
        descending = !descending;
        tools.host->ColumnClick("lvTools", "name", descending ? "1" : "0");
    }
}
BENCHMARK(ColumnClick)->Apply(Sizes);

/// A sort, and after it everything that follows the order: list, menu, toolbar and nodes.
void SortShownEverywhere(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    bool descending = false;
    for (auto _ : state) {
        descending = !descending;
        tools.host->ColumnClick("lvTools", "name", descending ? "1" : "0");
        tools.Probe().RebuildToolMenus(true);
        tools.host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    }
}
BENCHMARK(SortShownEverywhere)->Apply(Sizes);

void EnableAndDisableMenus(benchmark::State& state) {
    const ManyTools tools(CountOf(state));
    for (auto _ : state) {
        tools.Probe().SetMenus(false);
        tools.Probe().SetMenus(true);
    }
}
BENCHMARK(EnableAndDisableMenus)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    using namespace bench;
    const auto lessSort = [](const std::string& count) {
        return [=](const Medians& times) {
            const auto rest = [&](const std::string& size) {
                return times("SortShownEverywhere/" + size) - times("SortByName/" + size);
            };
            return rest(count) / rest("1000") * 1000 / std::stod(count);
        };
    };
    std::vector<Goal> goals = {
        Milliseconds("show all, 10,000 tools", "ShowAllClick/10000", 50),
        Milliseconds("sort shown everywhere, 10,000 tools", "SortShownEverywhere/10000", 50),
        Milliseconds("column click, 10,000 tools", "ColumnClick/10000", 50),
        Ratio("time a tool: show all 10,000 : 1,000", "ShowAllClick/10000", "ShowAllClick/1000", 1.5, 0.1),
        Ratio("time a tool: show all 100,000 : 1,000", "ShowAllClick/100000", "ShowAllClick/1000", 1.5, 0.01),
        {"time a tool but for the sort: shown everywhere 10,000 : 1,000", lessSort("10000"), 1.5},
        {"time a tool but for the sort: shown everywhere 100,000 : 1,000", lessSort("100000"), 1.5},
    };
#ifdef KVTM_BENCH_QT
    for (const std::string count : {"10", "1000", "10000", "100000"}) {
        goals.push_back(Ratio("Sort by name of " + count + " tools : QStringList::sort",
                              "SortByName/" + count, "QtSortOfTexts/" + count, 1.0));
    }
#endif
    return RunAndCompare(argc, argv, goals);
}
