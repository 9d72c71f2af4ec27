#include "base/XmlEncoding.h"

#include "base/Text.h"
#include "base/Utf8.h"
#include "base/XmlFault.h"

#include <array>
#include <string_view>

namespace base {

namespace {

/// Characters of the bytes 0x80 to 0x9F in windows-1252; unused bytes are control characters.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

enum class ByteOrder { LittleEndian, BigEndian };

std::string FromUtf16Bytes(std::string_view bytes, ByteOrder order) {
    const auto unitAt = [bytes, order](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        const unsigned unit = order == ByteOrder::BigEndian ? first << 8 | second : second << 8 | first;
        return static_cast<char32_t>(unit);
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        if (at + 1 == bytes.size()) RaiseXmlFaultAt(text, text.size(), "half a UTF-16 unit at the end");
        char32_t character = unitAt(at);
        if (character >= 0xD800 && character <= 0xDFFF) {
            const char32_t low = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
            if (character >= 0xDC00 || low < 0xDC00 || low > 0xDFFF)
                RaiseXmlFaultAt(text, text.size(), "half a UTF-16 surrogate pair");
            character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
            at += 2;
        }
        AppendUtf8(text, character);
    }
    return text;
}

enum class ByteSet { Ascii, Latin1, Windows1252 };

std::string FromBytes(std::string_view bytes, ByteSet set) {
    std::string text;
    text.reserve(bytes.size());
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        if (set == ByteSet::Ascii && byte >= 0x80)
            RaiseXmlFaultAt(text, text.size(), "a byte that US-ASCII does not have");
        const bool isMapped = set == ByteSet::Windows1252 && byte >= 0x80 && byte < 0xA0;
        AppendUtf8(text, isMapped ? windows1252[byte - 0x80u] : byte);
    }
    return text;
}

struct DeclaredEncoding {
    std::string name; // upper case; empty when none is declared
    std::size_t offset = 0;
};

/// What an XML declaration at the start names. A malformed one is left to the parser.
DeclaredEncoding FindDeclaredEncoding(std::string_view bytes) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto skipBlanks = [&](std::size_t at) { return bytes.find_first_not_of(blanks, at); };
    bytes = bytes.substr(0, bytes.find("?>"));
    if (!bytes.starts_with("<?xml")) return {};
    std::size_t at = bytes.find("encoding");
    if (at == std::string_view::npos) return {};
    at = skipBlanks(at + std::string_view("encoding").size());
    if (at == std::string_view::npos || bytes[at] != '=') return {};
    at = skipBlanks(at + 1);
    if (at == std::string_view::npos || (bytes[at] != '"' && bytes[at] != '\'')) return {};
    const std::size_t end = bytes.find(bytes[at], at + 1);
    if (end == std::string_view::npos) return {};
    return {UpperCase(bytes.substr(at + 1, end - at - 1)), at + 1};
}

struct NamedByteSet {
    std::string_view name;
    ByteSet set;
};
constexpr NamedByteSet byteSets[] = {
    {"US-ASCII", ByteSet::Ascii},           {"ASCII", ByteSet::Ascii},
    {"ISO-8859-1", ByteSet::Latin1},        {"LATIN1", ByteSet::Latin1},
    {"WINDOWS-1252", ByteSet::Windows1252}, {"CP1252", ByteSet::Windows1252}};

} // namespace

std::string DecodeXml(std::string bytes) {
    using namespace std::string_view_literals;
    const std::string_view view = bytes;
    if (view.starts_with("\xEF\xBB\xBF"sv)) return bytes;
    if (view.starts_with("\xFF\xFE"sv)) return FromUtf16Bytes(view.substr(2), ByteOrder::LittleEndian);
    if (view.starts_with("\xFE\xFF"sv)) return FromUtf16Bytes(view.substr(2), ByteOrder::BigEndian);
    if (view.starts_with("<\0"sv)) return FromUtf16Bytes(view, ByteOrder::LittleEndian);
    if (view.starts_with("\0<"sv)) return FromUtf16Bytes(view, ByteOrder::BigEndian);

    const DeclaredEncoding declared = FindDeclaredEncoding(view);
    if (declared.name.empty() || declared.name == "UTF-8" || declared.name == "UTF8") return bytes;
    for (const NamedByteSet& each : byteSets) {
        if (declared.name == each.name) return FromBytes(view, each.set);
    }
    constexpr std::size_t shownCharacters = 40;
    RaiseXmlFaultAt(view, declared.offset,
                    "the encoding \"" + std::string(FirstCharacters(declared.name, shownCharacters)) +
                        "\" is not supported here");
}

} // namespace base
