#include "tests/scenario/ConsoleRun.h"

#include "tests/support/TestProgram.h"

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>
#include <utility>

#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace fs = std::filesystem;

namespace scenario {

/// A program at a terminal of its own, ended with the object.
class AtTerminal {
public:
    explicit AtTerminal(std::vector<std::string> words) {
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        winsize size{24, 80, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ < 0) throw std::runtime_error("no terminal");
        if (process_ > 0) return;
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    ~AtTerminal() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            WaitForEnd(process_);
        }
        close(terminal_);
    }
    AtTerminal(const AtTerminal&) = delete;
    AtTerminal& operator=(const AtTerminal&) = delete;

    pid_t Process() const { return process_; }
    std::string Name() const { return ptsname(terminal_); }

    void Type(std::string_view text) const {
        ASSERT_EQ(write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    /// Whether this text comes to be shown behind what was looked for before; waits for it.
    bool Shows(std::string_view text) {
        const auto patience = std::chrono::steady_clock::now() + Patience;
        for (;;) {
            if (const std::size_t at = shown_.find(text); at != std::string::npos) {
                shown_.erase(0, at + text.size());
                return true;
            }
            pollfd wait{terminal_, POLLIN, 0};
            std::array<char, 4096> block;
            if (std::chrono::steady_clock::now() > patience) return false;
            if (poll(&wait, 1, 100) <= 0) continue;
            const ssize_t count = read(terminal_, block.data(), block.size());
            if (count <= 0) return false; // the program went
            shown_.append(block.data(), static_cast<std::size_t>(count));
        }
    }
    /// What was shown since.
    const std::string& Rest() const { return shown_; }

    /// The program hears of it, by SIGWINCH.
    void Resize(unsigned short columns) const {
        winsize size{30, columns, 0, 0};
        ASSERT_EQ(ioctl(terminal_, TIOCSWINSZ, &size), 0);
    }
    /// Stops the program, and leaves the terminal as a shell does that takes it meanwhile.
    void Stop() const {
        kill(process_, SIGSTOP);
        int status = 0;
        ASSERT_EQ(waitpid(process_, &status, WUNTRACED), process_);
        ASSERT_TRUE(WIFSTOPPED(status));
        termios mode = Mode();
        mode.c_lflag |= ICANON | ECHO;
        ASSERT_EQ(tcsetattr(terminal_, TCSANOW, &mode), 0);
    }
    void GoOn() const { kill(process_, SIGCONT); }
    /// Whether single keys come to be read; waits for it.
    bool IsEdited() const {
        const auto patience = std::chrono::steady_clock::now() + Patience;
        while ((Mode().c_lflag & (ICANON | ECHO)) != 0) {
            if (std::chrono::steady_clock::now() > patience) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }

    /// The exit status; the program is to end by itself.
    int End() { return WaitForEnd(std::exchange(process_, -1)); }

private:
    static constexpr std::chrono::seconds Patience{20};

    termios Mode() const {
        termios mode{};
        tcgetattr(terminal_, &mode);
        return mode;
    }

    int terminal_ = -1;
    pid_t process_ = -1;
    std::string shown_;
};

/// arvon-console where a person types.
class ConsoleAtTerminal : public Scenario {
private:
    TestVariable kind_{"TERM", "xterm"};
    TestVariable noColour_{"NO_COLOR", "1"};
    TestVariable home_{"HOME", folder.Path().c_str()}; // no settings of the editor

protected:
    AtTerminal console{{Console(), "--quiet", "--suite", suite}};

    /// Types a line in two parts, with that between them; the second part goes into the middle of the first.
    void TypeAround(const std::function<void()>& interruption) {
        ASSERT_TRUE(console.Shows("arvon> "));
        console.Type("show lisners");
        ASSERT_TRUE(console.Shows("lisners"));
        for (int step = 0; step < 4; ++step) {
            console.Type("\x02"); // back
            ASSERT_TRUE(console.Shows("\b"));
        }
        interruption();
        ASSERT_TRUE(console.Shows("arvon> show lisners")) << console.Rest();
        ASSERT_TRUE(console.IsEdited());
        console.Type("te\r");
        ASSERT_TRUE(console.Shows("SnapIn")) << console.Rest();
    }
};

TEST_F(ConsoleAtTerminal, GoesOnWithTheLineWhenTheTerminalIsResized) {
    for (const unsigned short columns : {100, 60, 120})
        TypeAround([&] { console.Resize(columns); });
    console.Type("quit\r");
    EXPECT_EQ(console.End(), 0);
}

TEST_F(ConsoleAtTerminal, GoesOnWithTheLineAfterAStop) {
    for (int time = 0; time < 2; ++time) {
        TypeAround([&] {
            console.Stop();
            console.GoOn();
        });
    }
    console.Type("quit\r");
    EXPECT_EQ(console.End(), 0);
}

TEST_F(ConsoleAtTerminal, StaysInAnEmptyLineWhenTheTerminalIsResized) {
    ASSERT_TRUE(console.Shows("arvon> "));
    for (const unsigned short columns : {100, 60}) {
        console.Resize(columns);
        ASSERT_TRUE(console.Shows("arvon> "));
    }
    console.Type("quit\r");
    EXPECT_EQ(console.End(), 0);
}

TEST_F(ConsoleAtTerminal, HandsNothingOfTheTerminalOnBesideTheStandardStreams) {
    ASSERT_TRUE(console.Shows("arvon> "));
    const fs::path process = fs::path("/proc") / std::to_string(console.Process());
    int own = 0;
    for (const auto& entry : fs::directory_iterator(process / "fd")) {
        const std::string descriptor = entry.path().filename();
        if (std::stoi(descriptor) <= STDERR_FILENO || fs::read_symlink(entry) != console.Name()) continue;
        const std::string facts = ReadWholeFile(process / "fdinfo" / descriptor);
        const std::size_t flags = facts.find("flags:");
        ASSERT_NE(flags, std::string::npos) << facts;
        EXPECT_NE(std::stol(facts.substr(flags + 6), nullptr, 8) & O_CLOEXEC, 0) << descriptor;
        ++own;
    }
    EXPECT_GE(own, 3); // for input, for output, and the editor's
    console.Type("quit\r");
    EXPECT_EQ(console.End(), 0);
}

} // namespace scenario
