#pragma once

#include "base/ComponentError.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// The system's words for an errno value, its first letter lower case.
std::string ReasonOf(int error);

/// An error that names action, file and reason: `cannot read "/x/y": permission denied`.
base::ComponentError FileError(std::int32_t number, std::string_view action,
                               const std::filesystem::path& file, std::string_view reason);
/// The same for an errno value: FileNotFound when the file alone is missing, PathNotFound when a folder on
/// the way is, else FileAccess.
base::ComponentError FileError(std::string_view action, const std::filesystem::path& file, int error);

} // namespace platform
