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

/// One bit for each of eight bytes that does not stand for itself in both texts and attribute values.
std::uint64_t SpecialBytes(const char* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    const auto hasByte = [low = word & Each(0x7F)](unsigned a, unsigned b) { // two that differ in one bit
        return ~((((low & ~Each(a ^ b)) ^ Each(a & b)) + Each(0x7F)));
    };
    const std::uint64_t isControl = ~((word & Each(0x7F)) + Each(0x80 - 0x20));
    const std::uint64_t special = word | isControl | hasByte('"', '&') | hasByte('<', '>');
    constexpr std::uint64_t gather = 0x0102040810204080; // the first bit of each byte into the last byte
    return ((special & Each(0x80)) >> 7) * gather >> 56;
}

/// The same for 64 bytes.
std::uint64_t SpecialBytesOfBlock(const char* bytes) {
    std::uint64_t special = 0;
    for (unsigned word = 0; word < 8; ++word)
        special |= SpecialBytes(bytes + 8 * word) << (8 * word);
    return special;
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

/// Writes the character at an offset and moves on behind it.
char* WriteCharacter(char* to, std::string_view text, std::size_t& at, const WrittenBytes& writtenBytes) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const Written& written = writtenBytes[byte];
    if (written.length > 0) {
        std::memcpy(to, written.bytes, sizeof written.bytes);
        ++at;
        return to + written.length;
    }
    const base::Utf8Step step = base::DecodeUtf8(text, at);
    const bool isXml = byte >= 0x80 && step.isWellFormed && IsXmlCharacter(step.character);
    const std::string_view character = isXml ? text.substr(at, step.length) : "\xEF\xBF\xBD";
    at += step.length;
    return to + character.copy(to, character.size());
}

// Whole option files are escaped here, with something to escape every few bytes: a block of text at a time,
// through a buffer. Pieces are copied with some of what follows them, for that is quicker than to look how
// long they are.
void AppendEscaped(std::string& out, std::string_view text, const WrittenBytes& writtenBytes) {
    constexpr std::size_t block = 64, piece = 16;
    constexpr std::size_t longestBlock = block * sizeof(Written) + block;
    char buffer[4096];
    char* to = buffer;
    for (std::size_t at = 0; at < text.size();) {
        if (to > buffer + sizeof buffer - longestBlock) {
            out.append(buffer, to);
            to = buffer;
        }
        if (text.size() - at < 2 * block) {
            to = WriteCharacter(to, text, at, writtenBytes);
            continue;
        }
        const std::size_t begin = at, end = at + block;
        for (std::uint64_t special = SpecialBytesOfBlock(text.data() + begin); special != 0;
             special &= special - 1) {
            const std::size_t next = begin + static_cast<std::size_t>(std::countr_zero(special));
            if (next < at) continue; // inside a character
            std::memcpy(to, text.data() + at, piece);
            if (next - at > piece) std::memcpy(to + piece, text.data() + at + piece, block - piece);
            to += next - at;
            at = next;
            to = WriteCharacter(to, text, at, writtenBytes);
        }
        if (at >= end) continue;
        std::memcpy(to, text.data() + at, block);
        to += end - at;
        at = end;
    }
    out.append(buffer, to);
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
        size += 64 + parameter->NameText().size();
        if (text) size += text->size() + text->size() / 2; // the half for what escapes add
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
