#include "base/Object.h"

#include "base/ComponentError.h"
#include "base/Value.h"

#include <string>

namespace base {

Object::~Object() = default;

Value Object::Get(std::string_view member) const {
    NoSuchMember(member);
}

void Object::Set(std::string_view member, const Value&) {
    NoSuchMember(member);
}

Value Object::Call(std::string_view member, std::span<const Value>) {
    NoSuchMember(member);
}

void Object::NoSuchMember(std::string_view member) {
    throw ComponentError(errors::NoSuchMember, "Object",
                         "the object has no member \"" + std::string(member) + "\"");
}

} // namespace base
