#include "platform/SystemInfo.h"

#include <charconv>
#include <cstdint>
#include <dlfcn.h>
#include <fstream>
#include <string>
#include <string_view>

namespace platform {

namespace {

/// The file of a line of the kernel's memory map ("from-to perms offset device inode   file") when the
/// address lies in it, else empty.
std::string FileOfMapping(std::string_view line, std::uintptr_t address) {
    std::uintptr_t from = 0, to = 0;
    const auto first = std::from_chars(line.data(), line.data() + line.size(), from, 16);
    if (first.ec != std::errc() || first.ptr == line.data() + line.size()) return "";
    const auto second = std::from_chars(first.ptr + 1, line.data() + line.size(), to, 16);
    if (second.ec != std::errc() || address < from || address >= to) return "";
    const auto slash = line.find('/');
    return slash == std::string_view::npos ? "" : std::string(line.substr(slash));
}

/// The kernel's word first: the loader's own is relative, or the caller's argv[0], depending on how the
/// program was started.
std::filesystem::path FileContaining(const void* address) {
    std::ifstream map("/proc/self/maps");
    for (std::string line; std::getline(map, line);) {
        std::string file = FileOfMapping(line, reinterpret_cast<std::uintptr_t>(address));
        if (file.empty()) continue;
        constexpr std::string_view Deleted = " (deleted)"; // replaced while running
        if (file.ends_with(Deleted)) file.resize(file.size() - Deleted.size());
        return file;
    }
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return {};
    std::error_code ignored;
    return std::filesystem::absolute(info.dli_fname, ignored);
}

class LinuxSystemInfo final : public SystemInfo {
public:
    std::int32_t PlatformId() override { return 2; }
    std::filesystem::path ModuleFile() override {
        static const char here = 0;
        return FileContaining(&here);
    }
};

} // namespace

std::unique_ptr<SystemInfo> SystemInfo::Create() {
    return std::make_unique<LinuxSystemInfo>();
}

} // namespace platform
