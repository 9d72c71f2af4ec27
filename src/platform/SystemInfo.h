#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

namespace platform {

class SystemInfo {
public:
    virtual ~SystemInfo() = default;
    static std::unique_ptr<SystemInfo> Create();
    /// The platform identifier of the OS version record: 2 for the NT family, and on Linux.
    virtual std::int32_t PlatformId() = 0;
    /// The file of the running library (the component itself).
    virtual std::filesystem::path ModuleFile() = 0;
};

} // namespace platform
