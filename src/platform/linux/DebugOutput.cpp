#include "platform/DebugOutput.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

namespace platform {

namespace {

class StandardErrorOutput final : public DebugOutput {
public:
    void Write(std::string_view line) noexcept override {
        try {
            const std::string text = std::string(line) + '\n';
            std::string_view rest = text; // one write for most lines: they do not mix with other threads'
            while (!rest.empty()) {
                const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
                if (written <= 0) return;
                rest.remove_prefix(static_cast<std::size_t>(written));
            }
        } catch (...) {
        }
    }
};

class NoOutput final : public DebugOutput {
public:
    void Write(std::string_view) noexcept override {}
};

} // namespace

std::unique_ptr<DebugOutput> DebugOutput::Create() {
    if (std::getenv("ARVON_DEBUG_OUTPUT") != nullptr) return std::make_unique<StandardErrorOutput>();
    return std::make_unique<NoOutput>();
}

} // namespace platform
