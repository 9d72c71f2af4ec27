#include "suite/programs/outside/OutsideProgram.h"

#include "suite/programs/OwnFile.h"
#include "suite/programs/outside/OutsideDisplay.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <csignal>
#include <ctime>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace suite {
namespace {

constexpr double LongestSeconds = 24 * 60 * 60;
constexpr double SecondsWithoutWindow = 2;

struct CommandLine {
    std::optional<double> seconds;
    int exitCode = 0;
    std::vector<std::string> documents;
};

template <class Number>
std::optional<Number> ReadNumber(std::string_view text, Number smallest, Number largest) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    // written so that a NaN is refused too
    if (error != std::errc() || end != text.data() + text.size() ||
        !(number >= smallest && number <= largest)) {
        return {};
    }
    return number;
}

/// Nothing, with a line on standard error, for a command line that makes no sense.
std::optional<CommandLine> ReadCommandLine(int argc, char** argv) {
    CommandLine result;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        const std::string_view value = i + 1 < argc ? argv[i + 1] : "";
        if (word == "--seconds") {
            const auto seconds = ReadNumber<double>(value, 0, LongestSeconds);
            if (!seconds) {
                std::cerr << argv[0] << ": --seconds needs a number from 0 to " << LongestSeconds
                          << ", found \"" << value << "\"\n";
                return {};
            }
            result.seconds = seconds;
            ++i;
        } else if (word == "--exit-code") {
            const auto exitCode = ReadNumber<int>(value, 0, 255);
            if (!exitCode) {
                std::cerr << argv[0] << ": --exit-code needs a number from 0 to 255, found \"" << value
                          << "\"\n";
                return {};
            }
            result.exitCode = *exitCode;
            ++i;
        } else if (word.starts_with("--")) {
            std::cerr << argv[0] << ": unknown option \"" << word << "\"\n";
            return {};
        } else {
            result.documents.emplace_back(word);
        }
    }
    return result;
}

class Log {
public:
    explicit Log(const std::filesystem::path& path) : file_(path, std::ios::app) {
        if (!file_) std::cerr << "the log " << path << " cannot be written\n";
    }
    /// One line, flushed at once: whoever reads the log sees it while the program still works.
    void Write(const std::string& line) { file_ << line + '\n' << std::flush; }

private:
    std::ofstream file_;
};

sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

timespec ToTimespec(double seconds) {
    double wholeSeconds = 0;
    const double fraction = std::modf(seconds, &wholeSeconds);
    return {static_cast<time_t>(wholeSeconds), static_cast<long>(fraction * 1e9)};
}

/// True when the time passed, false when the program was asked to end before.
bool Work(double seconds, const sigset_t& endSignals) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        const std::chrono::duration<double> left = end - Clock::now();
        if (left.count() <= 0) return true;
        const timespec wait = ToTimespec(left.count());
        if (sigtimedwait(&endSignals, nullptr, &wait) > 0) return false;
    }
}

std::string Told(const OutsideWork& work) {
    std::ostringstream text;
    text << work.title << ", process " << getpid() << ", ";
    if (work.seconds)
        text << *work.seconds << " seconds";
    else
        text << "until it is closed";
    for (const std::string& document : work.documents)
        text << ", document \"" << document << '"';
    return text.str();
}

} // namespace

int RunOutsideProgram(std::string_view title, int argc, char** argv) {
    const sigset_t endSignals = EndSignals();
    sigprocmask(SIG_BLOCK, &endSignals, nullptr);

    const std::optional<CommandLine> commandLine = ReadCommandLine(argc, argv);
    if (!commandLine) return 2;

    const std::unique_ptr<OutsideDisplay> display = OutsideDisplay::Open(argv);
    OutsideWork work{std::string(title), commandLine->documents, commandLine->seconds,
                     OwnFile().replace_extension(".log")};
    if (!display && !work.seconds) work.seconds = SecondsWithoutWindow;

    Log log(work.log);
    log.Write("started " + Told(work));
    const bool isDone = display ? display->Show(work, endSignals) : Work(*work.seconds, endSignals);
    log.Write("ended " + work.title + (isDone ? "" : " on request") + ", exit code " +
              std::to_string(commandLine->exitCode));
    return commandLine->exitCode;
}

} // namespace suite
