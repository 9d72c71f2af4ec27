#include "base/Utf8.h"

#include <cstdint>
#include <cstring>

namespace base {

namespace {

/// What a lead byte promises: the bytes that follow it and the range of the first of them, which is where
/// overlong forms, surrogates and values beyond U+10FFFF show.
struct Lead {
    std::size_t following = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    unsigned char bits = 0;
};

Lead LeadOf(unsigned char byte) {
    const auto bits = [byte](unsigned mask) { return static_cast<unsigned char>(byte & mask); };
    if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF, bits(0x1F)};
    if (byte == 0xE0) return {2, 0xA0, 0xBF, bits(0x0F)};
    if (byte == 0xED) return {2, 0x80, 0x9F, bits(0x0F)};
    if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF, bits(0x0F)};
    if (byte == 0xF0) return {3, 0x90, 0xBF, bits(0x07)};
    if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF, bits(0x07)};
    if (byte == 0xF4) return {3, 0x80, 0x8F, bits(0x07)};
    return {};
}

} // namespace

Utf8Step DecodeUtf8(std::string_view text, std::size_t offset) noexcept {
    const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byteAt(offset) < 0x80) return {byteAt(offset), 1, true};
    const Lead lead = LeadOf(byteAt(offset));
    if (lead.following == 0) return {};
    char32_t character = lead.bits;
    for (std::size_t i = 1; i <= lead.following; ++i) {
        const unsigned char low = i == 1 ? lead.low : 0x80;
        const unsigned char high = i == 1 ? lead.high : 0xBF;
        if (offset + i >= text.size() || byteAt(offset + i) < low || byteAt(offset + i) > high)
            return {replacementCharacter, i, false};
        character = (character << 6) | (byteAt(offset + i) & 0x3Fu);
    }
    return {character, lead.following + 1, true};
}

void AppendUtf8(std::string& text, char32_t character) {
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
        character = replacementCharacter;
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | (character >> 6));
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | (character >> 12));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | (character >> 18));
        append(0x80 | ((character >> 12) & 0x3F));
        append(0x80 | ((character >> 6) & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

std::size_t IllFormedUtf8At(std::string_view text) noexcept {
    for (std::size_t at = AsciiRun(text, 0); at < text.size(); at += AsciiRun(text, at)) {
        const Utf8Step step = DecodeUtf8(text, at);
        if (!step.isWellFormed) return at;
        at += step.length;
    }
    return std::string_view::npos;
}

std::size_t AsciiRun(std::string_view text, std::size_t offset) noexcept {
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::size_t at = offset;
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & highBits) != 0) break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at - offset;
}

} // namespace base
