#pragma once

#include <span>
#include <string_view>

namespace base {

class Value;

/// An object whose members are found by name at run time. Names are matched without regard to letter case.
/// Every operation throws ComponentError: NoSuchMember for an unknown name, else whatever the object itself
/// raises. An object overrides what it offers; the defaults refuse every name.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    virtual Value Get(std::string_view member) const;
    virtual void Set(std::string_view member, const Value& value);
    virtual Value Call(std::string_view member, std::span<const Value> arguments);

protected:
    /// Raises NoSuchMember for `member`; the last line of every override.
    [[noreturn]] static void NoSuchMember(std::string_view member);
};

} // namespace base
