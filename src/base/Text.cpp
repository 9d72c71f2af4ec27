#include "base/Text.h"

#include "base/UpperCaseTable.h"
#include "base/Utf8.h"

#include <algorithm>

namespace base {

namespace {

char UpperAscii(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - ('a' - 'A')) : letter;
}

char32_t UpperCharacter(char32_t character) {
    const auto* range =
        std::lower_bound(std::begin(upperCaseRanges), std::end(upperCaseRanges), character,
                         [](const UpperCaseRange& each, char32_t wanted) { return each.last < wanted; });
    if (range == std::end(upperCaseRanges) || character < range->first) return character;
    if ((character - range->first) % range->step != 0) return character;
    return static_cast<char32_t>(static_cast<std::int32_t>(character) + range->offset);
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::string UpperCase(std::string_view text) {
    std::string upper;
    upper.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view ascii = text.substr(at, AsciiRun(text, at));
        std::transform(ascii.begin(), ascii.end(), std::back_inserter(upper), UpperAscii);
        at += ascii.size();
        if (at == text.size()) break;
        const Utf8Step step = DecodeUtf8(text, at);
        if (step.isWellFormed)
            AppendUtf8(upper, UpperCharacter(step.character));
        else
            upper.append(text, at, step.length);
        at += step.length;
    }
    return upper;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    const std::size_t shared = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < shared; ++i) {
        if (((left[i] | right[i]) & 0x80) != 0)
            return UpperCase(left.substr(i)) == UpperCase(right.substr(i));
        if (UpperAscii(left[i]) != UpperAscii(right[i])) return false;
    }
    return left.size() == right.size();
}

std::string_view TrimBlanks(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find(separator, begin)) != std::string_view::npos; begin = end + 1)
        pieces.emplace_back(text.substr(begin, end - begin));
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
    if (from.empty()) return std::string(text);
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t begin = 0;
    for (std::size_t found; (found = text.find(from, begin)) != std::string_view::npos;
         begin = found + from.size()) {
        replaced.append(text, begin, found - begin);
        replaced += to;
    }
    replaced += text.substr(begin);
    return replaced;
}

bool IsWellFormedUtf8(std::string_view text) noexcept {
    return IllFormedUtf8At(text) == std::string_view::npos;
}

std::u32string ToCodePoints(std::string_view text) {
    std::u32string characters;
    characters.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Step step = DecodeUtf8(text, at);
        characters.push_back(step.character);
        at += step.length;
    }
    return characters;
}

std::string FromCodePoints(std::u32string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char32_t character : text)
        AppendUtf8(bytes, character);
    return bytes;
}

std::string FromUtf16(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        }
        AppendUtf8(bytes, character);
    }
    return bytes;
}

std::u16string ToUtf16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Step step = DecodeUtf8(text, at);
        at += step.length;
        if (step.character < 0x10000) {
            units.push_back(static_cast<char16_t>(step.character));
            continue;
        }
        const char32_t beyond = step.character - 0x10000;
        units.push_back(static_cast<char16_t>(0xD800 + (beyond >> 10)));
        units.push_back(static_cast<char16_t>(0xDC00 + (beyond & 0x3FF)));
    }
    return units;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) noexcept {
    std::size_t at = 0;
    for (; count > 0 && at < text.size(); --count)
        at += DecodeUtf8(text, at).length;
    return text.substr(0, at);
}

} // namespace base
