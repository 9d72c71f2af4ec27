#pragma once

#include "platform/CodePage.h"

#include <string>
#include <string_view>

namespace platform {

/// How the characters of a registry file are stored.
enum class RegistryEncoding { Utf8, Utf8WithMark, Utf16WithMark, Ansi };

/// The characters of a registry file as UTF-8, and how they are stored. An old-format file ("REGEDIT4") that
/// is no UTF-8 is ANSI. Throws ComponentError for bytes that are no text; `file` names it there.
struct RegistryText {
    RegistryEncoding encoding = RegistryEncoding::Utf8;
    std::string text;

    static RegistryText FromBytes(std::string_view bytes, const CodePage& codePage, std::string_view file);
    std::string ToBytes(const CodePage& codePage) const;
};

/// What is told of a registry file: its name, the line from 1, what was expected and found.
std::string RegistryProblem(std::string_view file, std::size_t line, std::string_view problem);
/// The same as the error of a file that cannot be understood as a whole.
[[noreturn]] void RegistryFileBroken(std::string_view file, std::size_t line, std::string_view problem);

/// Little-endian bytes to UTF-16 units (half a unit at the end is dropped) and back.
std::u16string UnitsOf(std::string_view bytes);
std::string BytesOf(std::u16string_view units);

inline constexpr std::string_view RegistryHeader5 = "Windows Registry Editor Version 5.00";
inline constexpr std::string_view RegistryHeader4 = "REGEDIT4";

} // namespace platform
