#include "suite/programs/outside/OutsideDisplay.h"
#include "suite/programs/outside/ProgramWindow.h"

#include <QApplication>
#include <QSocketNotifier>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <sys/signalfd.h>
#include <unistd.h>

namespace suite {
namespace {

constexpr std::array DisplayVariables{"WAYLAND_DISPLAY", "DISPLAY"};

char** commandLineOfProgram = nullptr; // for a message handler, which can reach nothing else

bool NamesDisplay() {
    for (const char* variable : DisplayVariables)
        if (const char* display = std::getenv(variable); display && *display) return true;
    return false;
}

/// Takes what Qt says while it connects. It ends the process where it cannot, for whatever reason; what asks
/// it for a connection has no way to know before.
void StartAgainWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg) return;
    std::fputs("the display cannot be used:", stderr);
    for (const char* variable : DisplayVariables) {
        if (const char* display = std::getenv(variable); display && *display)
            std::fprintf(stderr, " %s \"%s\"", variable, display);
        unsetenv(variable);
    }
    std::fputs("; working without a window\n", stderr);
    execv("/proc/self/exe", commandLineOfProgram);
}

/// A file that can be read when one of the signals is there.
class SignalFile {
public:
    explicit SignalFile(const sigset_t& endSignals) : file_(signalfd(-1, &endSignals, SFD_CLOEXEC)) {
        if (file_ < 0) throw std::runtime_error("cannot wait for signals");
    }
    SignalFile(const SignalFile&) = delete;
    SignalFile& operator=(const SignalFile&) = delete;
    ~SignalFile() { close(file_); }
    int Descriptor() const { return file_; }

private:
    int file_;
};

class QtDisplay final : public OutsideDisplay {
public:
    explicit QtDisplay(char** commandLine) : words_{commandLine[0], nullptr} {
        commandLineOfProgram = commandLine;
        const QtMessageHandler usual = qInstallMessageHandler(StartAgainWithoutDisplay);
        application_ = std::make_unique<QApplication>(count_, words_.data());
        qInstallMessageHandler(usual);
    }

    bool Show(const OutsideWork& work, const sigset_t& endSignals) override {
        ProgramWindow window(work);
        bool isAskedToEnd = false;
        const SignalFile signalFile(endSignals);
        const QSocketNotifier notifier(signalFile.Descriptor(), QSocketNotifier::Read);
        QObject::connect(&notifier, &QSocketNotifier::activated, &window, [&] {
            isAskedToEnd = true;
            window.close();
        });
        window.show();
        window.activateWindow();
        QApplication::exec();
        return !isAskedToEnd;
    }

private:
    int count_ = 1; // the program's name alone: the other words are not Qt's
    std::array<char*, 2> words_;
    std::unique_ptr<QApplication> application_;
};

} // namespace

std::unique_ptr<OutsideDisplay> OutsideDisplay::Open(char** commandLine) {
    if (!NamesDisplay()) return nullptr;
    return std::make_unique<QtDisplay>(commandLine);
}

} // namespace suite
