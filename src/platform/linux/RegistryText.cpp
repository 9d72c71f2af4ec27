#include "platform/linux/RegistryText.h"

#include "base/ComponentError.h"
#include "base/Text.h"

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view Utf16Mark = "\xFF\xFE";
constexpr std::string_view Utf16SwappedMark = "\xFE\xFF";

} // namespace

std::u16string UnitsOf(std::string_view bytes) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                         static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
    return units;
}

std::string BytesOf(std::u16string_view units) {
    std::string bytes;
    bytes.reserve(units.size() * 2);
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

namespace {

std::string TextOfUtf16(std::string_view bytes, std::string_view file) {
    const std::u16string units = UnitsOf(bytes);
    std::string text = base::FromUtf16(units);
    const std::u16string back = base::ToUtf16(text);
    const auto difference = std::mismatch(units.begin(), units.end(), back.begin(), back.end()).first;
    if (difference != units.end() || bytes.size() % 2 != 0) {
        const auto line = 1 + std::count(units.begin(), difference, u'\n');
        RegistryFileBroken(file, static_cast<std::size_t>(line), "expected UTF-16, found half a character");
    }
    return text;
}

} // namespace

std::string RegistryProblem(std::string_view file, std::size_t line, std::string_view problem) {
    std::string text = "registry file \"";
    return text.append(file).append("\", line ").append(std::to_string(line)).append(": ").append(problem);
}

void RegistryFileBroken(std::string_view file, std::size_t line, std::string_view problem) {
    throw base::ComponentError(base::errors::FileAccess, "KvTM10.Registry",
                               RegistryProblem(file, line, problem));
}

RegistryText RegistryText::FromBytes(std::string_view bytes, const CodePage& codePage,
                                     std::string_view file) {
    if (bytes.starts_with(Utf16SwappedMark))
        RegistryFileBroken(file, 1, "expected UTF-8 or little-endian UTF-16, found big-endian UTF-16");
    if (bytes.starts_with(Utf16Mark))
        return {RegistryEncoding::Utf16WithMark, TextOfUtf16(bytes.substr(Utf16Mark.size()), file)};

    const bool hasMark = bytes.starts_with(Utf8Mark);
    if (hasMark) bytes.remove_prefix(Utf8Mark.size());
    if (base::IsWellFormedUtf8(bytes))
        return {hasMark ? RegistryEncoding::Utf8WithMark : RegistryEncoding::Utf8, std::string(bytes)};
    if (!hasMark && bytes.starts_with(RegistryHeader4))
        return {RegistryEncoding::Ansi, codePage.FromAnsi(bytes)};

    std::size_t line = 1;
    std::string_view rest = bytes;
    for (;; ++line) { // the line's own bytes tell: a line end is never part of a longer character
        const std::size_t end = rest.find('\n');
        if (!base::IsWellFormedUtf8(rest.substr(0, end)) || end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    RegistryFileBroken(file, line, "expected UTF-8, found other bytes");
}

std::string RegistryText::ToBytes(const CodePage& codePage) const {
    switch (encoding) {
    case RegistryEncoding::Utf8:
        return text;
    case RegistryEncoding::Utf8WithMark:
        return std::string(Utf8Mark) + text;
    case RegistryEncoding::Utf16WithMark:
        return std::string(Utf16Mark) + BytesOf(base::ToUtf16(text));
    case RegistryEncoding::Ansi:
        return codePage.ToAnsi(text);
    }
    return text;
}

} // namespace platform
