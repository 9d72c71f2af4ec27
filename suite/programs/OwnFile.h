#pragma once

#include <filesystem>

namespace suite {

/// The running program's file, with links resolved. Throws std::filesystem::filesystem_error.
inline std::filesystem::path OwnFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

} // namespace suite
