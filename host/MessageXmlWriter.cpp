#include "base/Utf8.h"
#include "host/MessageXml.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace arvon::host::messageXml {

namespace {

static_assert(std::endian::native == std::endian::little, "a word's first byte is its lowest here");

constexpr std::uint64_t Each(std::uint64_t byte) {
    return byte * 0x0101010101010101;
}

/// The high bit of each byte below a limit up to 0x80, and perhaps of bytes behind the first such.
constexpr std::uint64_t Below(std::uint64_t bytes, std::uint64_t limit) {
    return (bytes - Each(limit)) & ~bytes;
}

/// How many of a word's bytes, from its first, stand for themselves in both texts and attribute values.
std::size_t PlainBytes(std::uint64_t word) {
    const std::uint64_t quoteOrAmpersand = (word & ~Each('"' ^ '&')) ^ Each('"' & '&');
    const std::uint64_t lessOrGreater = (word & ~Each('<' ^ '>')) ^ Each('<' & '>');
    const std::uint64_t special =
        word | Below(word, 0x20) | Below(quoteOrAmpersand, 1) | Below(lessOrGreater, 1);
    return static_cast<std::size_t>(std::countr_zero(special & Each(0x80))) / 8;
}

/// What is written for one byte. Bytes beyond ASCII and control characters need a look at more: length 0.
struct Written {
    char bytes[7] = {};
    unsigned char length = 0;
};
using WrittenBytes = std::array<Written, 256>;

constexpr WrittenBytes writtenInText = [] {
    WrittenBytes all{};
    const auto write = [&](char byte, std::string_view written) {
        Written& entry = all[static_cast<unsigned char>(byte)];
        written.copy(entry.bytes, written.size());
        entry.length = static_cast<unsigned char>(written.size());
    };
    for (char byte = 0x20; byte < 0x7F; ++byte)
        write(byte, {&byte, 1});
    for (const char byte : {'\x7F', '\t', '\n'})
        write(byte, {&byte, 1});
    write('&', "&amp;");
    write('<', "&lt;");
    write('>', "&gt;");
    write('"', "&quot;");
    write('\r', "&#13;");
    return all;
}();

constexpr WrittenBytes writtenInAttribute = [] {
    WrittenBytes all = writtenInText;
    all['\t'] = {"&#9;", 4};
    all['\n'] = {"&#10;", 5};
    return all;
}();

/// Whether XML can hold a character beyond ASCII.
bool IsXmlCharacter(char32_t character) {
    return character != 0xFFFE && character != 0xFFFF;
}

// Whole option files are escaped here, with something to escape every few bytes: a word and the byte behind
// its plain ones at a time, without a decision that depends on them.
void AppendEscaped(std::string& out, std::string_view text, const WrittenBytes& writtenBytes) {
    constexpr std::size_t mostAtOnce = sizeof(std::uint64_t) + sizeof(Written);
    char buffer[4096];
    std::size_t used = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (used > sizeof buffer - mostAtOnce) {
            out.append(buffer, used);
            used = 0;
        }
        if (text.size() - at > sizeof(std::uint64_t)) {
            std::uint64_t word;
            std::memcpy(&word, text.data() + at, sizeof word);
            const std::size_t plain = PlainBytes(word);
            std::memcpy(buffer + used, &word, sizeof word);
            used += plain;
            at += plain;
        }
        const auto byte = static_cast<unsigned char>(text[at]);
        const Written& written = writtenBytes[byte];
        if (written.length > 0) {
            std::memcpy(buffer + used, written.bytes, sizeof written.bytes);
            used += written.length;
            ++at;
            continue;
        }
        const base::Utf8Step step = base::DecodeUtf8(text, at);
        const bool isXml = byte >= 0x80 && step.isWellFormed && IsXmlCharacter(step.character);
        const std::string_view character = isXml ? text.substr(at, step.length) : "\xEF\xBF\xBD";
        used += character.copy(buffer + used, character.size());
        at += step.length;
    }
    out.append(buffer, used);
}

/// Roughly what escapes add to a text: all, in one of the usual kind.
std::size_t EscapedSize(std::string_view text) {
    constexpr std::size_t added = std::string_view("&lt;").size() - 1;
    return text.size() + added * static_cast<std::size_t>(std::count_if(
                                     text.begin(), text.end(), [](char c) { return c == '<' || c == '>'; }));
}

void AppendNumber(std::string& out, std::int32_t number) {
    char digits[12];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    out.append(digits, end);
}

void AppendParameters(std::string& out, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    out += "<Parameters>";
    for (const auto& parameter : parameters) {
        out += "<Parameter Name=\"";
        AppendEscaped(out, parameter->NameText(), writtenInAttribute);
        out += "\" Type=\"";
        AppendNumber(out, parameter->Type());
        out += "\">";
        if (const std::string* text = parameter->Content().TextIfAny()) {
            AppendEscaped(out, *text, writtenInText);
        } else {
            AppendEscaped(out, parameter->Content().ToText(), writtenInText);
        }
        out += "</Parameter>";
    }
    out += "</Parameters>";
}

std::size_t EstimatedSize(std::string_view name, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::size_t size = 128 + name.size();
    for (const auto& parameter : parameters) {
        const std::string* text = parameter->Content().TextIfAny();
        size += 64 + parameter->NameText().size() + (text ? EscapedSize(*text) : 0);
    }
    return size;
}

} // namespace

std::string WriteRequest(std::string_view type, std::int32_t mode,
                         const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::string out;
    out.reserve(EstimatedSize(type, parameters));
    out += "<Request Type=\"";
    AppendEscaped(out, type, writtenInAttribute);
    out += "\" Mode=\"";
    AppendNumber(out, mode);
    out += "\">";
    AppendParameters(out, parameters);
    out += "</Request>";
    return out;
}

std::string WriteEvent(std::int32_t objectType, std::string_view name, std::int32_t category,
                       std::int32_t level, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::string out;
    out.reserve(EstimatedSize(name, parameters));
    out += "<Event ObjectType=\"";
    AppendNumber(out, objectType);
    out += "\" Name=\"";
    AppendEscaped(out, name, writtenInAttribute);
    out += "\" Category=\"";
    AppendNumber(out, category);
    out += "\" Level=\"";
    AppendNumber(out, level);
    out += "\">";
    AppendParameters(out, parameters);
    out += "</Event>";
    return out;
}

} // namespace arvon::host::messageXml
