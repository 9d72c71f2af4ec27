#include "platform/linux/RegistryValueText.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>

namespace platform {

namespace {

constexpr std::uint32_t TypeString = 1;
constexpr std::uint32_t TypeBinary = 3;
constexpr std::uint32_t TypeNumber = 4;
constexpr std::size_t NumberBytes = 4;
constexpr std::size_t RowWidth = 77; // as registry editors break rows of bytes

constexpr std::string_view NumberPrefix = "dword:";
constexpr std::string_view HexPrefix = "hex";

int HexDigit(char character) noexcept {
    if (character >= '0' && character <= '9') return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Up to eight hexadecimal digits; at least one.
std::uint32_t ReadHexNumber(RegistryCursor& cursor) {
    std::uint32_t number = 0;
    int digits = 0;
    for (int digit = 0; (digit = HexDigit(cursor.Next())) >= 0; ++cursor.at, ++digits)
        number = number << 4 | static_cast<std::uint32_t>(digit);
    if (digits < 1 || digits > 8) cursor.Fail("expected one to eight hexadecimal digits");
    return number;
}

/// The rest of "hex:" and "hex(TYPE):": bytes with commas between; "\" at a line's end goes on in the next
/// one.
RegistryValueText ReadBytes(RegistryCursor& cursor) {
    RegistryValueText value{TypeBinary, false, {}};
    if (cursor.Skip('(')) {
        value.type = ReadHexNumber(cursor);
        if (!cursor.Skip(')')) cursor.Fail("expected \")\" behind the type");
    }
    if (!cursor.Skip(':')) cursor.Fail("expected \":\" behind \"hex\"");
    for (bool mayEnd = true;; mayEnd = false) {
        cursor.SkipBlanks();
        while (cursor.Skip('\\')) {
            cursor.FinishLine();
            cursor.SkipBlanks();
            mayEnd = true; // an editor may break the row behind the last comma
        }
        const int high = HexDigit(cursor.Next());
        if (high < 0 && mayEnd) return value;
        if (high < 0) cursor.Fail("expected two hexadecimal digits");
        ++cursor.at;
        const int low = HexDigit(cursor.Next());
        if (low < 0) cursor.Fail("expected two hexadecimal digits");
        ++cursor.at;
        value.data += static_cast<char>(high << 4 | low);
        cursor.SkipBlanks();
        if (!cursor.Skip(',')) return value;
    }
}

std::string HexOf(std::uint32_t number, int digits) {
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4)
        *digit = "0123456789abcdef"[number & 0xF];
    return text;
}

} // namespace

bool RegistryCursor::Skip(char character) noexcept {
    const bool found = !AtEnd() && text[at] == character;
    if (found) ++at;
    return found;
}

void RegistryCursor::SkipBlanks() noexcept {
    while (Next() == ' ' || Next() == '\t')
        ++at;
}

std::string_view RegistryCursor::TakeLine() noexcept {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    std::string_view line = text.substr(at, end - at);
    if (line.ends_with('\r')) line.remove_suffix(1);
    at = std::min(end + 1, text.size());
    return line;
}

void RegistryCursor::FinishLine() {
    SkipBlanks();
    if (!AtEnd() && Next() != ';' && Next() != '\r' && Next() != '\n') Fail("expected the end of the line");
    TakeLine();
}

RegistryMisreading RegistryCursor::Misreading(std::string_view expected) const {
    constexpr std::size_t ShownLength = 40; // characters
    RegistryCursor here = *this;
    const std::string_view found = base::FirstCharacters(here.TakeLine(), ShownLength);
    return {at,
            std::string(expected) + (found.empty() ? ", found nothing" : ", found " + RegistryQuoted(found))};
}

std::string ReadRegistryQuoted(RegistryCursor& cursor) {
    const RegistryCursor start = cursor;
    if (!cursor.Skip('"')) cursor.Fail("expected a quotation mark");
    std::string text;
    while (!cursor.AtEnd()) {
        const char character = cursor.text[cursor.at++];
        if (character == '"') return text;
        const bool escapes = character == '\\' && (cursor.Next() == '\\' || cursor.Next() == '"');
        text += escapes ? cursor.text[cursor.at++] : character;
    }
    start.Fail("expected a closing quotation mark");
}

std::optional<RegistryValueText> ReadRegistryValue(RegistryCursor& cursor) {
    if (cursor.Next() == '"') return RegistryValueText{TypeString, true, ReadRegistryQuoted(cursor)};
    if (cursor.Skip('-')) return std::nullopt;
    const std::string_view rest = cursor.text.substr(cursor.at);
    if (rest.starts_with(NumberPrefix)) {
        cursor.at += NumberPrefix.size();
        const std::uint32_t number = ReadHexNumber(cursor);
        RegistryValueText value{TypeNumber, false, {}};
        for (std::size_t i = 0; i < NumberBytes; ++i)
            value.data += static_cast<char>(number >> (8 * i) & 0xFF);
        return value;
    }
    if (rest.starts_with(HexPrefix)) {
        cursor.at += HexPrefix.size();
        return ReadBytes(cursor);
    }
    cursor.Fail("expected a quoted text, dword:, hex: or -");
}

std::string RegistryQuoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted += '"';
}

std::string WriteRegistryValue(const RegistryValueText& value, std::size_t column, std::string_view lineEnd) {
    if (value.isQuoted) return RegistryQuoted(value.data);
    if (value.type == TypeNumber && value.data.size() == NumberBytes) {
        std::uint32_t number = 0;
        for (std::size_t i = NumberBytes; i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(value.data[i]);
        return std::string(NumberPrefix) + HexOf(number, 8);
    }
    std::string text(HexPrefix);
    if (value.type != TypeBinary) {
        const std::string type = HexOf(value.type, 8);
        text += "(" + type.substr(std::min(type.find_first_not_of('0'), type.size() - 1)) + ")";
    }
    text += ':';
    column += text.size();
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        const bool isLast = i + 1 == value.data.size();
        text += HexOf(static_cast<unsigned char>(value.data[i]), 2);
        if (isLast) break;
        text += ',';
        column += 3;
        if (column < RowWidth) continue;
        text.append("\\").append(lineEnd).append("  ");
        column = 2;
    }
    return text;
}

} // namespace platform
