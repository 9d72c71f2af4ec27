#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// The ANSI code page at the border to files, registry and operating-system records: 1252 unless the
/// environment variable ARVON_CODE_PAGE names another.
class CodePage {
public:
    virtual ~CodePage() = default;
    /// Throws InvalidCall for a setting that names no code page.
    static std::unique_ptr<CodePage> Create();

    /// Bytes to UTF-8; a byte without meaning becomes U+FFFD.
    virtual std::string FromAnsi(std::string_view bytes) const = 0;
    /// UTF-8 to bytes; a character outside the code page becomes "?", and in 1252 its best fit where there is
    /// one ("Lódz" for "Łódź"), "??" beyond U+FFFF. Every page has a best fit table of its own; no other one
    /// is kept here.
    virtual std::string ToAnsi(std::string_view text) const = 0;
};

} // namespace platform
