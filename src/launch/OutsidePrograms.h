#pragma once

#include <string_view>

namespace kvtm {

/// Whether a program of this vrex runs as a process of its own; all others run in the host. Exact.
inline bool IsOutsideProgram(std::string_view vrex) noexcept {
    return vrex.starts_with("Tobr") || vrex.starts_with("Jx3");
}

} // namespace kvtm
