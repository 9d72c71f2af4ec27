#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class FilePaths;

/// Predefined roots.
inline constexpr std::uint32_t HkeyLocalMachine = 0x80000002;
inline constexpr std::uint32_t HkeyCurrentUser = 0x80000001;

/// Result codes of the registry operations.
namespace registryResult {
inline constexpr std::int32_t Success = 0;
inline constexpr std::int32_t NotFound = 2;
inline constexpr std::int32_t AccessDenied = 5;
inline constexpr std::int32_t InvalidHandle = 6;
inline constexpr std::int32_t InvalidParameter = 87;
inline constexpr std::int32_t MoreData = 234;
} // namespace registryResult

inline constexpr std::uint32_t KeyQueryValue = 1;
inline constexpr std::uint32_t KeySetValue = 2;
inline constexpr std::uint32_t RegSz = 1;

using RegistryKey = std::uintptr_t;

/// The four registry operations used, with the system's result codes. Texts are ANSI bytes (see CodePage).
/// Throws ComponentError only where the system behind it is a file that is no registry file at all or cannot
/// be written.
class Registry {
public:
    virtual ~Registry() = default;
    /// On Linux: the file registry.reg of the installation, read whole when a key is opened and written
    /// whole, in one step, when a value is set. No such file: no key is found.
    static std::unique_ptr<Registry> Create(const FilePaths& paths);

    virtual std::int32_t OpenKey(std::uint32_t hive, std::string_view subKey, std::uint32_t access,
                                 RegistryKey& key) = 0;
    /// `size` is the buffer's size in bytes going in and the value's size (with its NUL) coming out; MoreData
    /// when it does not fit.
    virtual std::int32_t QueryValue(RegistryKey key, std::string_view name, std::uint32_t& type,
                                    std::span<char> buffer, std::uint32_t& size) = 0;
    virtual std::int32_t SetValue(RegistryKey key, std::string_view name, std::uint32_t type,
                                  std::span<const char> data) = 0;
    virtual std::int32_t CloseKey(RegistryKey key) = 0;

    /// What cannot be understood in the file behind the registry and is passed over: a text for a person
    /// each, with file and line. None where the system's own registry stands behind it. Throws as the others
    /// do.
    virtual std::vector<std::string> Problems() { return {}; }
};

} // namespace platform
