// The message path, the tool list and loading, in the reference host with nobody watching it.

#include "bench/LoadedHost.h"
#include "bench/Ratios.h"
#include "bench/Requests.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using bench::LoadedHost;
using kvtm::test::CatalogueTool;

const std::string loadedVantors = bench::RequestText("LoadedVantors");

std::vector<CatalogueTool> Tools(std::size_t count) {
    std::vector<CatalogueTool> tools;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        tools.push_back({.name = "Tool " + number, .vrex = "V" + number, .identifier = "I" + number});
    }
    return tools;
}

void BareParse(benchmark::State& state) {
    bench::BareParse(state, loadedVantors);
}
BENCHMARK(BareParse);

void WholeRequest(benchmark::State& state) {
    const LoadedHost loaded(Tools(10));
    for (auto _ : state) {
        std::string reply = bench::Send(*loaded.host, loadedVantors);
        benchmark::DoNotOptimize(reply);
    }
}
BENCHMARK(WholeRequest);

/// The listed tools and their rows, host's share included.
void ListTools(benchmark::State& state) {
    const LoadedHost loaded(Tools(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        loaded.Probe().LoadToolsCollection();
        loaded.Probe().LoadTools("nodTools", true);
    }
}
BENCHMARK(ListTools)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMillisecond);

/// The calls of the host that listing the tools takes, in that order, with nothing made of their answers.
void CallsOfListTools(benchmark::State& state) {
    const LoadedHost loaded(Tools(static_cast<std::size_t>(state.range(0))));
    arvon::IFramework& framework = *loaded.host->Framework();
    for (auto _ : state) {
        arvon::IToolRecords& records = framework.Tools();
        for (std::size_t position = 1; position <= records.Count(); ++position) {
            const kvtm::ToolRecord tool = records.Item(position);
            benchmark::DoNotOptimize(tool->Classification());
            benchmark::DoNotOptimize(tool->ShowInList());
            benchmark::DoNotOptimize(tool->Name());
        }
        arvon::IListView& list = *framework.Views().Item("lvTools")->List();
        list.Clear();
        for (std::size_t position = 1; position <= records.Count(); ++position) {
            const kvtm::ToolRecord tool = records.Item(position);
            benchmark::DoNotOptimize(tool->Classification());
            benchmark::DoNotOptimize(tool->ShowInList());
            benchmark::DoNotOptimize(tool->Get("LastUpdated"));
            arvon::IListItem& row = list.AddItem(tool->Get("VREX").ToText(), tool->Get("Name").ToText());
            if (list.CheckBoxes()) row.SetChecked(tool->Get("ShowInList").ToBoolean());
            row.AddSubItem("version", tool->Get("version").ToText());
            row.AddSubItem("lastupdated", "2024-03-01");
            row.AddSubItem("classification", tool->Get("Classification").ToText());
        }
    }
}
BENCHMARK(CallsOfListTools)->Arg(10000)->Unit(benchmark::kMillisecond);

/// From the library's load to Load returned, on the sample suite.
void LoadComponent(benchmark::State& state) {
    for (auto _ : state) {
        arvon::host::ReferenceHost host(SAMPLE_SUITE);
        host.OpenComponent(COMPONENT_LIBRARY);
        host.Load();
        state.PauseTiming();
        host.Unload();
        state.ResumeTiming();
    }
}
BENCHMARK(LoadComponent)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    using namespace bench;
    const auto ownShare = [](const Medians& times) {
        return (times("ListTools/10000") - times("CallsOfListTools/10000")) / 1e6;
    };
    return RunAndCompare(
        argc, argv,
        {Ratio("a whole request : the bare parse of its text", "WholeRequest", "BareParse", 2.0),
         Ratio("time a tool: list of 1,000 : of 100", "ListTools/1000", "ListTools/100", 1.5, 0.1),
         Ratio("time a tool: list of 10,000 : of 100", "ListTools/10000", "ListTools/100", 1.5, 0.01),
         Ratio("time a tool: list of 100,000 : of 100", "ListTools/100000", "ListTools/100", 1.5, 0.001),
         Milliseconds("list of 10,000 tools, with the host's share", "ListTools/10000"),
         {"list of 10,000 tools, the component's own share", ownShare, 20.0, "ms"},
         Milliseconds("library load until Load returned, sample suite", "LoadComponent")});
}
