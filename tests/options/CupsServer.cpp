#include "tests/options/CupsServer.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kvtm::test {

namespace fs = std::filesystem;

namespace {

constexpr const char* program = "/usr/sbin/cupsd";

bool Answers(const fs::path& socketPath) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socketPath.c_str(), sizeof address.sun_path - 1);
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers =
        ::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(connection);
    return answers;
}

} // namespace

CupsServer::CupsServer(std::vector<std::string> queues, std::string defaultQueue) {
    if (!fs::exists(program)) {
        throw std::runtime_error(std::string(program) +
                                 " is missing: install the Debian package cups-daemon (cmake/setup.sh test)");
    }
    try {
        WriteConfiguration(queues, defaultQueue);
        Start();
        WaitUntilItAnswers();
    } catch (...) {
        Stop();
        throw;
    }
    environment_.emplace_back("CUPS_SERVER", Socket().c_str());
    environment_.emplace_back("HOME", folder_.Path().c_str()); // no choice of the user's own
    environment_.emplace_back("PRINTER", nullptr);
    environment_.emplace_back("LPDEST", nullptr);
}

CupsServer::~CupsServer() {
    environment_.clear();
    Stop();
}

void CupsServer::WriteConfiguration(const std::vector<std::string>& queues,
                                    const std::string& defaultQueue) const {
    for (const char* place : {"etc", "cache", "state", "spool", "tmp", "doc"})
        fs::create_directory(folder_ / place);
    const std::string at = folder_.Path();
    folder_.Write("etc/cupsd.conf", "Listen " + Socket().string() +
                                        "\nLogLevel warn\nBrowsing No\nBrowseLocalProtocols none\n"
                                        "DefaultAuthType None\nWebInterface No\nMaxLogSize 0\n"
                                        "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n");
    folder_.Write("etc/cups-files.conf", "ServerRoot " + at + "/etc\nServerBin /usr/lib/cups\nCacheDir " +
                                             at + "/cache\nStateDir " + at + "/state\nRequestRoot " + at +
                                             "/spool\nTempDir " + at + "/tmp\nDocumentRoot " + at +
                                             "/doc\nAccessLog " + at + "/access\nErrorLog " + at +
                                             "/error\nPageLog " + at + "/page\n");
    std::string printers;
    for (const std::string& queue : queues) {
        const std::string element = queue == defaultQueue ? "DefaultPrinter" : "Printer";
        printers += "<" + element + " " + queue +
                    ">\nDeviceURI file:///dev/null\nState Idle\nAccepting Yes\n" + "Shared No\n</" + element +
                    ">\n";
    }
    folder_.Write("etc/printers.conf", printers);
}

void CupsServer::Start() {
    const std::string configuration = folder_ / "etc/cupsd.conf", files = folder_ / "etc/cups-files.conf";
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("cannot start a process");
    if (process_ > 0) return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() == parent) {
        ::execl(program, program, "-f", "-c", configuration.c_str(), "-s", files.c_str(), nullptr);
    }
    ::_exit(127);
}

void CupsServer::WaitUntilItAnswers() {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!Answers(Socket())) {
        if (::waitpid(process_, nullptr, WNOHANG) == process_) {
            process_ = 0;
            throw std::runtime_error("the CUPS server ended at once: " + Log());
        }
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("the CUPS server does not answer: " + Log());
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void CupsServer::Stop() {
    if (process_ == 0) return;
    ::kill(process_, SIGKILL); // it has nothing to put in order
    ::waitpid(process_, nullptr, 0);
    process_ = 0;
}

void CupsServer::Hang() {
    ::kill(process_, SIGSTOP);
}

void CupsServer::Resume() {
    ::kill(process_, SIGCONT);
}

std::string CupsServer::Log() const {
    return fs::exists(folder_ / "error") ? folder_.Read("error") : "it has written no log";
}

} // namespace kvtm::test
