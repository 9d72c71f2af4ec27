#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

struct Services;

/// String values in the registry, and the UI value file that stands in for one registry key.
namespace modRegistry {

/// Reads and writes to this path go to the UI value file (exact, whole text).
inline constexpr std::string_view UiValueKey = "SOFTWARE\\Veltrane\\UI\\";
/// Under HKEY_LOCAL_MACHINE: where "BinPath" and "Brand" stand.
inline constexpr std::string_view FrameworkKey = "SOFTWARE\\Veltrane\\Arvon11\\";

/// The value; the default when it is missing or has 255 bytes or more (never for the UI value key, whose
/// missing values are empty). Throws when the key cannot be opened.
std::string getRegistryStringValue(const Services& services, std::uint32_t hive, std::string_view subKey,
                                   std::string_view valueName, std::string_view defaultValue);
/// True when written. For the UI value key always false, even when the file was written. Throws when the key
/// cannot be opened or the value not written.
bool setRegistryStringValue(const Services& services, std::uint32_t hive, std::string_view subKey,
                            std::string_view valueName, std::string_view value);
/// The text behind the first "=" of the first line of UIKeys.txt that begins with `key` and holds a "="; else
/// empty. Throws number 0 without a "BinPath", FileNotFound without the file.
std::string getUIValue(const Services& services, std::string_view key);
/// Gives every line that getUIValue would match the new value; adds none. Always false. Throws as getUIValue
/// does, and OutOfRange for a file of more than 101 lines, which stays untouched.
bool setUIValue(const Services& services, std::string_view key, std::string_view value);

} // namespace modRegistry
} // namespace platform
