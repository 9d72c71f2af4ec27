#include "console/PrintableText.h"

#include "base/Text.h"

#include <algorithm>

namespace arvon::console {

namespace {

constexpr std::string_view Ellipsis = "…";

/// Bytes of the well-formed character at the start of `text`; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
    const std::size_t longest = std::min<std::size_t>(text.size(), 4);
    for (std::size_t length = 1; length <= longest; ++length)
        if (base::IsWellFormedUtf8(text.substr(0, length))) return length;
    return 0;
}

bool IsControl(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    if (character.size() == 1) return first < 0x20 || first == 0x7F;
    // U+0080 to U+009F steer terminals too
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

void AppendEscaped(std::string& result, std::string_view bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    for (const char c : bytes) {
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\t') {
            result += "\\t";
        } else {
            const auto code = static_cast<unsigned char>(c);
            result += {'\\', 'x', digits[code >> 4], digits[code & 15]};
        }
    }
}

} // namespace

std::string Printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || IsControl(character)) {
            AppendEscaped(result, character);
        } else {
            result += character;
        }
        text.remove_prefix(character.size());
    }
    return result;
}

std::string Quoted(std::string_view text, std::size_t limit) {
    return '"' + Shortened(text, limit) + '"';
}

std::string Shortened(std::string_view text, std::size_t limit) {
    // a printable character takes at most four bytes, so what follows cannot matter
    std::string result = Printable(text.substr(0, 4 * (limit + 1)));
    if (Width(result) <= limit) return result;
    result = base::FirstCharacters(result, limit - 1);
    result += Ellipsis;
    return result;
}

std::size_t Width(std::string_view text) {
    return base::ToCodePoints(text).size();
}

} // namespace arvon::console
