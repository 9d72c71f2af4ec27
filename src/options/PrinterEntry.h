#pragma once

#include <string>
#include <string_view>

/// Entries of the printer list: the printer's name, and behind the default printer's a mark.
namespace kvtm::printerEntry {

inline constexpr std::string_view DefaultMark = ";-1";

inline bool IsDefault(std::string_view entry) noexcept {
    return entry.find(DefaultMark) != std::string_view::npos;
}

/// The part before the mark; the whole entry without one.
inline std::string_view NameOf(std::string_view entry) noexcept {
    return entry.substr(0, entry.find(DefaultMark));
}

} // namespace kvtm::printerEntry
