#pragma once

#include "base/Value.h"

#include <string>

namespace kvtm::test {

/// A value as tests write it down: text in quotes, null for none and for no object.
inline std::string WrittenValue(const base::Value& value) {
    switch (value.GetKind()) {
    case base::Value::Kind::Empty:
        return "null";
    case base::Value::Kind::Boolean:
        return value.ToBoolean() ? "true" : "false";
    case base::Value::Kind::Text:
        return "\"" + value.ToText() + "\"";
    case base::Value::Kind::Object:
        return value.ToObject() ? "object" : "null";
    default:
        return value.ToText();
    }
}

} // namespace kvtm::test
