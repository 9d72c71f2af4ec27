#pragma once

#include <memory>
#include <string_view>

namespace platform {

/// The debugger's output. On Linux: standard error when the environment variable ARVON_DEBUG_OUTPUT is set,
/// else nothing.
class DebugOutput {
public:
    virtual ~DebugOutput() = default;
    static std::unique_ptr<DebugOutput> Create();
    virtual void Write(std::string_view line) noexcept = 0;
};

} // namespace platform
