#pragma once

#include "host/Observer.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace arvon::console {

/// Members in the order in which they were put in.
using Json = nlohmann::ordered_json;

using host::CallRecord;
using host::MessageRecord;
using host::ParameterRecord;

/// Writes what happens, one line (or, for a person, a few) each, as it happens: what the host is asked for as
/// its observer, the rest as the console tells it. Every line is flushed, so that a reader at the other end
/// of a pipe sees it at once.
class Writer : public host::IObserver {
public:
    enum class Form { JsonLines, Text, ColouredText };

    /// `calls`: whether the calls on the host are written too.
    static std::unique_ptr<Writer> Create(Form form, bool calls, std::FILE* out);

    /// A line of a script, before it is carried out.
    virtual void OnScriptLine(std::string_view line) = 0;
    virtual void OnCommandReply(std::string_view command, std::string_view text) = 0;
    virtual void OnState(std::string_view what, const Json& value) = 0;
    virtual void OnHelp(std::string_view command, std::string_view arguments, std::string_view text) = 0;
    virtual void OnDone(std::string_view command) = 0;
    virtual void OnError(std::string_view command, std::string_view text) = 0;
};

} // namespace arvon::console
