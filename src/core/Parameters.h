#pragma once

#include "core/contract/Messages.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvtm {

/// The value of a parameter of a request or event; empty when there is none of that name.
template <class Message> base::Value ParameterValue(Message& message, std::string_view name) {
    const std::shared_ptr<arvon::IParameter> parameter = message.Parameters().Item(name);
    return parameter ? parameter->GetValue() : base::Value();
}

/// The same as text; empty text when there is none.
template <class Message> std::string TextParameter(Message& message, std::string_view name) {
    return ParameterValue(message, name).ToText();
}

inline void AddText(arvon::IParameters& parameters, std::string_view name, std::string_view value) {
    parameters.Add(arvon::ParameterType::Text, name, base::Value(value), true);
}

inline void AddInteger(arvon::IParameters& parameters, std::string_view name, std::int32_t value) {
    parameters.Add(arvon::ParameterType::Integer, name, base::Value(value), true);
}

} // namespace kvtm
