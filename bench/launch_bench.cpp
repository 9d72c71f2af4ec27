// Programs of their own: from the request to the running child, and from the child's end to the notice of it.

#include "bench/LoadedHost.h"
#include "bench/Memory.h"
#include "bench/Ratios.h"
#include "bench/Requests.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <iterator>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
Clock::time_point childRunsSince;

} // namespace

/// Stands before the system's function of that name in the whole program: notes when it returns, which it
/// does when the child has left this program for its own.
extern "C" int posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                           const posix_spawnattr_t* attributes, char* const arguments[],
                           char* const environment[]) {
    static const auto spawn = reinterpret_cast<decltype(&posix_spawn)>(::dlsym(RTLD_NEXT, "posix_spawn"));
    const int error = spawn(child, path, actions, attributes, arguments, environment);
    childRunsSince = Clock::now();
    return error;
}

namespace {

namespace fs = std::filesystem;

constexpr const char* sleeper = "/bin/sleep";
constexpr const char* endingAtOnce = "/bin/true";
constexpr std::chrono::seconds patience{20};

double Seconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

/// Whether the child has left this program for its own.
bool IsRunning(pid_t child, const char* program) {
    std::error_code ignored;
    return fs::read_symlink("/proc/" + std::to_string(child) + "/exe", ignored) == fs::canonical(program);
}

/// Notes when it is told something.
class Launcher final : public arvon::IMessageListener {
public:
    std::string id() const override { return "Zarn11"; }
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>& message) override {
        toldAt = Clock::now();
        lastBody = message->Body().ToText();
        return {};
    }
    Clock::time_point toldAt;
    std::string lastBody;
};

/// One outside program in the catalogue, and a launcher that hears of it.
struct Launching : bench::LoadedHost {
    Launching(const char* program, const char* arguments)
        : LoadedHost({{.name = "P", .vrex = vrex, .path = program, .commandLine = arguments}}) {
        host->Framework()->RegisterListener(launcher, launcher->id());
    }
    void Launch() const { bench::Send(*host, request); }
    pid_t Child() const {
        const std::int32_t* id = Probe().Processes().Find(vrex);
        return id ? *id : 0;
    }

    static constexpr const char* vrex = "Tobr43";
    const std::string request = bench::RequestText("LaunchTool", {{"ToolName", "P"}});
    const std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>();
};

void LaunchByRequest(benchmark::State& state) {
    const Launching launching(sleeper, "60");
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        launching.Launch();
        state.SetIterationTime(Seconds(start, childRunsSince));
        const pid_t child = launching.Child();
        if (child < 1 || !IsRunning(child, sleeper)) return state.SkipWithError("no child is running");
        ::kill(child, SIGKILL);
        if (!launching.host->WaitForProcesses(patience)) return state.SkipWithError("the end was not told");
    }
}
BENCHMARK(LaunchByRequest)->UseManualTime()->Unit(benchmark::kMicrosecond);

void SpawnAlone(benchmark::State& state) {
    const Launching others(sleeper, "60"); // so that both start from a process of the same size
    std::string program = sleeper, argument = "60";
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    for (auto _ : state) {
        pid_t child = 0;
        const Clock::time_point start = Clock::now();
        const int error = ::posix_spawn(&child, sleeper, nullptr, nullptr, arguments, environ);
        state.SetIterationTime(Seconds(start, childRunsSince));
        if (error != 0 || !IsRunning(child, sleeper)) return state.SkipWithError("no child is running");
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }
}
BENCHMARK(SpawnAlone)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// From the signal that ends the child, which the system still has to carry out.
void EndToNotice(benchmark::State& state) {
    const Launching launching(sleeper, "60");
    for (auto _ : state) {
        launching.Launch();
        const Clock::time_point end = Clock::now();
        ::kill(launching.Child(), SIGKILL);
        launching.host->ProcessEvents(patience);
        const bool isTold = launching.launcher->lastBody.find("\"Tool_UnLoad\"") != std::string::npos;
        if (!isTold) return state.SkipWithError("no \"Tool_UnLoad\" came");
        state.SetIterationTime(Seconds(end, launching.launcher->toldAt));
    }
}
BENCHMARK(EndToNotice)->UseManualTime()->Unit(benchmark::kMillisecond);

std::size_t OpenDescriptors() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

/// Children that ended and were not taken away, or still run.
std::size_t TakeChildrenLeft() {
    std::size_t count = 0;
    while (::waitpid(-1, nullptr, WNOHANG) >= 0)
        ++count;
    return count;
}

/// What is left behind by launches one after another.
void TenThousandLaunches(benchmark::State& state) {
    constexpr int first = 200, launches = 10000;
    const Launching launching(endingAtOnce, "");
    const auto launch = [&](int times) {
        for (int i = 0; i < times; ++i) {
            launching.Launch();
            if (!launching.host->WaitForProcesses(patience)) std::abort();
        }
    };
    launch(first); // what is made once
    for (auto _ : state) {
        const auto descriptors = static_cast<double>(OpenDescriptors());
        const auto bytes = static_cast<double>(bench::HeapBytes());
        launch(launches);
        state.counters["descriptors"] = static_cast<double>(OpenDescriptors()) - descriptors;
        state.counters["children"] = static_cast<double>(TakeChildrenLeft());
        state.counters["bytes_a_launch"] = (static_cast<double>(bench::HeapBytes()) - bytes) / launches;
    }
}
BENCHMARK(TenThousandLaunches)->Iterations(1)->Repetitions(1)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    using namespace bench;
    return RunAndCompare(
        argc, argv,
        {Ratio("launch request to running child : posix_spawn alone", "LaunchByRequest", "SpawnAlone", 1.3),
         Milliseconds("end of the child to \"Tool_UnLoad\" received", "EndToNotice", 5),
         Counter("10,000 launches: descriptors more than before", "TenThousandLaunches:descriptors", 0, ""),
         Counter("10,000 launches: children left behind", "TenThousandLaunches:children", 0, ""),
         Counter("10,000 launches: memory growth a launch", "TenThousandLaunches:bytes_a_launch", 1, "B")});
}
