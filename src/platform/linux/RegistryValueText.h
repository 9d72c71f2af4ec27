#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

/// A statement of a registry file that cannot be understood: what was expected and found, and where.
class RegistryMisreading : public std::runtime_error {
public:
    RegistryMisreading(std::size_t at, const std::string& problem) : runtime_error(problem), at_(at) {}
    std::size_t At() const noexcept { return at_; }

private:
    std::size_t at_;
};

/// A place in the text of a registry file.
struct RegistryCursor {
    std::string_view text;
    std::size_t at = 0;

    bool AtEnd() const noexcept { return at >= text.size(); }
    /// NUL at the end, which no statement begins with.
    char Next() const noexcept { return AtEnd() ? '\0' : text[at]; }
    bool Skip(char character) noexcept;
    void SkipBlanks() noexcept;
    /// The rest of the line, without its end; then past the end.
    std::string_view TakeLine() noexcept;
    /// Refuses anything but blanks and a comment up to the line's end; then past the end.
    void FinishLine();
    /// The misreading of the place where the cursor stands: what was expected, and what stands there.
    RegistryMisreading Misreading(std::string_view expected) const;
    [[noreturn]] void Fail(std::string_view expected) const { throw Misreading(expected); }
};

/// A value as it is written: quoted text, or a type with bytes.
struct RegistryValueText {
    std::uint32_t type = 0;
    bool isQuoted = false; // a string (type 1) with one NUL, which is not written
    std::string data;      // UTF-8 when quoted, else bytes as they stand
};

/// `"text"`, with \\ and \" inside; a backslash before anything else stands for itself. It may span lines.
std::string ReadRegistryQuoted(RegistryCursor& cursor);
/// What stands behind "=", its line end not included; nothing for "-", which deletes the value.
std::optional<RegistryValueText> ReadRegistryValue(RegistryCursor& cursor);

std::string RegistryQuoted(std::string_view text);
/// The written form; `column` is where it begins, `lineEnd` what breaks long rows of bytes.
std::string WriteRegistryValue(const RegistryValueText& value, std::size_t column, std::string_view lineEnd);

} // namespace platform
