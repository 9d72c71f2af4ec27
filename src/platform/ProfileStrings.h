#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

class Printers;

/// The profile string store (ANSI bytes). On Linux it knows section "windows", entry "device": "name,cups,"
/// for the default printer that Printers knows.
class ProfileStrings {
public:
    virtual ~ProfileStrings() = default;
    static std::unique_ptr<ProfileStrings> Create(Printers& printers);
    /// At most `capacity` - 1 bytes; `fallback` when there is no such entry.
    virtual std::string GetString(std::string_view section, std::string_view entry, std::string_view fallback,
                                  std::size_t capacity) = 0;
};

} // namespace platform
