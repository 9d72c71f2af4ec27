#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace base {

/// Error numbers of the desktop-automation world that callers can tell apart. 32-bit, as on the wire.
namespace errors {
inline constexpr std::int32_t InvalidCall = 5;    // an argument that the operation cannot work with
inline constexpr std::int32_t Overflow = 6;       // a number outside the 32-bit (or date) range
inline constexpr std::int32_t OutOfRange = 9;     // a position outside a collection or table
inline constexpr std::int32_t TypeMismatch = 13;  // a value that cannot be converted
inline constexpr std::int32_t FileNotFound = 53;  //
inline constexpr std::int32_t FileAccess = 75;    // a path that cannot be opened as asked
inline constexpr std::int32_t PathNotFound = 76;  // a folder on the way is missing
inline constexpr std::int32_t ObjectNotSet = 91;  // an empty reference where an object is needed
inline constexpr std::int32_t NoSuchMember = 438; // a member name that the object does not have
inline constexpr std::int32_t DuplicateKey = 457; // a key that the collection already holds
inline constexpr std::int32_t ObjectErrorBase =
    -2147221504; // 0x80040000: the component's own errors count from here
} // namespace errors

/// The one exception type that crosses between component and host: an error with number, source and
/// description. Marked visible so that a catch in another shared library recognises it.
class __attribute__((visibility("default"))) ComponentError : public std::exception {
public:
    /// `number`: 32-bit error number (0 means "no error" to those who report); `source`: who raised it;
    /// `description`: UTF-8, for a person.
    ComponentError(std::int32_t number, std::string source, std::string description);
    ~ComponentError() override;

    std::int32_t Number() const noexcept { return number_; }
    const std::string& Source() const noexcept { return source_; }
    const std::string& Description() const noexcept { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
};

} // namespace base
