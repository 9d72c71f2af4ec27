// The message path, the tool list and loading, in the reference host with nobody watching it.

#include "bench/Ratios.h"
#include "core/ToolMain.h"
#include "host/ReferenceHost.h"
#include "tests/support/TestInstallation.h"
#include "tests/support/ToolMainProbe.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <memory>
#include <string>

namespace {

using kvtm::test::CatalogueTool;
using kvtm::test::TestInstallation;

const std::string loadedVantors = "<Request Type=\"LoadedVantors\" Mode=\"0\"><Parameters/></Request>";

/// The tool manager loaded in a host of its own.
struct LoadedComponent {
    explicit LoadedComponent(std::size_t toolCount) {
        std::vector<CatalogueTool> tools;
        for (std::size_t i = 0; i < toolCount; ++i) {
            const std::string number = std::to_string(i);
            tools.push_back({.name = "Tool " + number, .vrex = "V" + number, .identifier = "I" + number});
        }
        installation.WriteTools(tools);
        host = std::make_unique<arvon::host::ReferenceHost>(installation.Folder());
        tool = kvtm::ToolMain::Create(host->Support(), platform::Services::Create());
        host->Attach(tool);
        host->Load();
    }

    TestInstallation installation;
    std::unique_ptr<arvon::host::ReferenceHost> host;
    std::shared_ptr<kvtm::ToolMain> tool;
};

void BareParse(benchmark::State& state) {
    for (auto _ : state) {
        xmlDoc* document = xmlReadMemory(loadedVantors.data(), static_cast<int>(loadedVantors.size()),
                                         nullptr, nullptr, XML_PARSE_NONET);
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}
BENCHMARK(BareParse);

void WholeRequest(benchmark::State& state) {
    const LoadedComponent loaded(10);
    for (auto _ : state) {
        std::string reply = loaded.host->SendMessage(2, loadedVantors);
        benchmark::DoNotOptimize(reply);
    }
}
BENCHMARK(WholeRequest);

/// The listed tools and their rows, host's share included: time a tool.
void ListTools(benchmark::State& state) {
    const LoadedComponent loaded(static_cast<std::size_t>(state.range(0)));
    const kvtm::ToolMainProbe probe{*loaded.tool};
    for (auto _ : state) {
        probe.LoadToolsCollection();
        probe.LoadTools("nodTools", true);
    }
    state.counters["per_tool"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(ListTools)->RangeMultiplier(10)->Range(100, 100000)->Unit(benchmark::kMillisecond);

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
    return bench::RunAndCompare(
        argc, argv,
        {{"a whole request / the bare parse of its text", "WholeRequest", "BareParse", 2.0},
         {"1,000 listed tools / 100", "ListTools/1000", "ListTools/100", 15},
         {"10,000 listed tools / 1,000", "ListTools/10000", "ListTools/1000", 15},
         {"100,000 listed tools / 10,000", "ListTools/100000", "ListTools/10000", 15}});
}
