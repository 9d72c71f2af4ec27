#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// String resources of modules that somebody else opened, by handle.
///
/// On Linux a module is a resource-only library in the Windows format and its handle is a file descriptor
/// open on it, so that host and component, which share nothing but the process, mean the same by a number.
/// The file is untrusted. Where it holds a string in several languages, the user's counts, by the locale of
/// the environment (LC_ALL, LC_MESSAGES, LANG), else the neutral one, else the first.
class StringModules {
public:
    virtual ~StringModules() = default;
    static std::unique_ptr<StringModules> Create();
    /// The string of that number (its low 16 bits count) as ANSI bytes, at most `capacity` - 1 of them; empty
    /// when there is none. Never throws for a damaged module: it then has no strings.
    virtual std::string LoadString(std::int32_t module, std::uint32_t number, std::size_t capacity) = 0;
};

} // namespace platform
