#include "console/PrintableText.h"

#include "base/Text.h"

#include <utf8proc.h>

#include <algorithm>

namespace arvon::console {

namespace {

constexpr std::string_view Ellipsis = "…";
/// Far more than a column's character and its marks take: what is longer is no text to be read.
constexpr std::size_t BytesAColumn = 32;

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

/// Moves the first character of `rest`, made printable, behind `result`.
void AppendNext(std::string& result, std::string_view& rest) {
    const std::size_t length = CharacterLength(rest);
    const std::string_view character = rest.substr(0, std::max<std::size_t>(length, 1));
    if (length == 0 || IsControl(character)) {
        AppendEscaped(result, character);
    } else {
        result += character;
    }
    rest.remove_prefix(character.size());
}

} // namespace

std::string Printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty())
        AppendNext(result, text);
    return result;
}

std::string Quoted(std::string_view text, std::size_t limit) {
    return '"' + Shortened(text, limit) + '"';
}

std::string Shortened(std::string_view text, std::size_t limit) {
    const std::size_t mostBytes = BytesAColumn * limit;
    std::string result;
    std::size_t width = 0, fits = 0; // bytes that leave a column for the ellipsis
    while (!text.empty()) {
        const std::size_t before = result.size();
        AppendNext(result, text);
        width += Width(std::string_view(result).substr(before));
        if (width > limit || result.size() > mostBytes) {
            result.resize(fits);
            result += Ellipsis;
            break;
        }
        if (width < limit) fits = result.size();
    }
    return result;
}

std::size_t Width(std::string_view text) {
    std::size_t width = 0;
    for (const char32_t code : base::ToCodePoints(text))
        width += static_cast<std::size_t>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(code)));
    return width;
}

} // namespace arvon::console
