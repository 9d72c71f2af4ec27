#pragma once

#include "platform/linux/RegistryText.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A registry value as the operations hand it out: strings in ANSI bytes, with a NUL where one is stored.
struct RegistryValue {
    std::uint32_t type = 0;
    std::string data;
};

/// A registry file in the text form that registry editors export (version 5.00, or the older REGEDIT4). It is
/// read from top to bottom, as an import would: a later value takes the place of an earlier one, "-" deletes.
/// A statement that cannot be understood is passed over: it is one of the problems, and so are the values
/// below a key that is none, which belong to no key. When a value is written its own statement is written
/// anew, a comment behind it goes; all else stays as it is, what was passed over too.
///
/// A string stored without its NUL (or with more than one, or with control characters) has no quoted form: it
/// stands as `hex(1):` with the bytes of its UTF-16 units (in a REGEDIT4 file, of its ANSI bytes).
class RegistryFile {
public:
    static constexpr std::size_t MaximumBytes = std::size_t{16} << 20;
    static constexpr std::size_t MaximumLine = std::size_t{1} << 20;

    /// More statements that cannot be understood make a file none of this form.
    static constexpr std::size_t MaximumProblems = 1000;

    /// Throws ComponentError with file and line for bytes that are no text or do not begin with a header, and
    /// beyond the bounds above. A file without any statement is an empty registry. `file` is used for errors
    /// and problems only; `codePage` must outlive the object.
    RegistryFile(std::string_view bytes, const CodePage& codePage, std::string file);

    /// What was passed over: a text each, which names file and line, what was expected and found.
    const std::vector<std::string>& Problems() const noexcept { return problems_; }

    /// Full key paths ("HKEY_LOCAL_MACHINE\SOFTWARE\..."), names and paths without regard to letter case.
    bool HasKey(std::string_view key) const;
    /// The empty name is the key's default value.
    std::optional<RegistryValue> Find(std::string_view key, std::string_view name) const;
    /// The file's bytes with this value set. The key must exist, the name have no control characters. Throws
    /// ComponentError where a text that is never closed would take the new line in.
    std::string WithValue(std::string_view key, std::string_view name, const RegistryValue& value) const;

private:
    struct Range {
        std::size_t begin = 0, end = 0; // offsets in the text: whole lines, line end included
        std::size_t value = 0;          // where the text behind "=" begins
    };
    struct Key {
        std::optional<std::size_t> insertAt; // behind the last line of its section, when it has one
        std::map<std::string, Range, std::less<>> values;
    };
    class Reader;

    std::string LineFor(std::string_view name, const RegistryValue& value) const;
    std::string TextWithValue(std::string_view key, std::string_view name, const RegistryValue& value) const;

    const CodePage& codePage_;
    std::string file_;
    RegistryText source_;
    bool isVersion5_ = true;
    std::string lineEnd_ = "\r\n";
    std::map<std::string, Key, std::less<>> keys_; // by full path in upper case
    std::vector<std::string> problems_;
};

} // namespace platform
