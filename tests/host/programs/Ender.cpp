// Ends as it is told by its arguments, one after the other: "wait FILE" until there is such a file, "write
// FILE" writes the installation's folder to it, "signal N" ends by that signal, "exit N" ends with that code.
// Does not outlive a test that was broken off.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <unistd.h>

int main(int argc, char** argv) {
    const pid_t parent = ::getppid();
    for (int index = 1; index + 1 < argc; index += 2) {
        const std::string verb = argv[index];
        const char* object = argv[index + 1];
        if (verb == "wait") {
            while (!std::filesystem::exists(object) && ::getppid() == parent)
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
        } else if (verb == "write") {
            const char* installation = std::getenv("ARVON_INSTALLATION");
            const std::string part = std::string(object) + ".part";
            std::ofstream(part) << (installation ? installation : "(none)");
            std::filesystem::rename(part, object);
        } else if (verb == "signal") {
            std::raise(std::atoi(object));
        } else if (verb == "exit") {
            std::_Exit(std::atoi(object));
        }
    }
    return 0;
}
