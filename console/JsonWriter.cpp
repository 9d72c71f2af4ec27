#include "console/JsonWriter.h"

namespace arvon::console {

namespace {

Json ToJson(const base::Value& value) {
    switch (value.GetKind()) {
    case base::Value::Kind::Empty:
        return nullptr;
    case base::Value::Kind::Boolean:
        return value.ToBoolean();
    case base::Value::Kind::Integer:
        return value.ToInteger();
    case base::Value::Kind::Double:
        return value.ToDouble();
    case base::Value::Kind::Object:
        return value.ToObject() ? Json("object") : Json(nullptr);
    default:
        return value.ToText();
    }
}

Json ParametersOf(const MessageRecord& message) {
    Json parameters = Json::array();
    for (const ParameterRecord& parameter : message.parameters) {
        parameters.push_back(
            {{"name", parameter.name}, {"type", parameter.type}, {"value", ToJson(parameter.value)}});
    }
    return parameters;
}

const char* NameOf(MessageRecord::Kind kind) {
    switch (kind) {
    case MessageRecord::Kind::Event:
        return "event";
    case MessageRecord::Kind::Request:
        return "request";
    case MessageRecord::Kind::Custom:
        break;
    }
    return "custom";
}

Json LineOf(const MessageRecord& message) {
    Json line = {{"is", "message"},
                 {"kind", NameOf(message.kind)},
                 {"source", message.source},
                 {"destination", message.destination}};
    switch (message.kind) {
    case MessageRecord::Kind::Request:
        line["name"] = message.name;
        line["mode"] = message.mode;
        line["parameters"] = ParametersOf(message);
        line["reply"] = "";
        break;
    case MessageRecord::Kind::Event:
        line["name"] = message.name;
        line["category"] = message.category;
        line["level"] = message.level;
        line["parameters"] = ParametersOf(message);
        break;
    case MessageRecord::Kind::Custom:
        line["type"] = message.type;
        line["body"] = message.body;
        break;
    }
    if (message.malformed) line["malformed"] = message.body;
    if (!message.registered) line["registered"] = false;
    return line;
}

} // namespace

void JsonWriter::OnCall(const CallRecord& call) {
    WriteHeld(); // without the call lines too: they are all that --quiet leaves out
    if (!calls_) return;
    Json arguments = Json::array();
    for (const base::Value& argument : call.arguments)
        arguments.push_back(ToJson(argument));
    Json line = {{"is", "call"}, {"operation", call.operation}, {"arguments", std::move(arguments)}};
    if (call.failed) line["failed"] = true;
    WriteLine(line);
}

void JsonWriter::OnMessage(const MessageRecord& message) {
    WriteHeld();
    if (message.kind == MessageRecord::Kind::Request) {
        held_ = LineOf(message);
    } else {
        WriteLine(LineOf(message));
    }
}

void JsonWriter::OnReply(const MessageRecord& message) {
    if (held_) {
        (*held_)["reply"] = message.reply;
        WriteHeld();
    } else if (message.kind == MessageRecord::Kind::Request && !message.reply.empty() &&
               message.source != "Console") {
        Write({{"is", "messageReply"},
               {"source", message.source},
               {"destination", message.destination},
               {"name", message.name},
               {"reply", message.reply}});
    }
}

void JsonWriter::OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) {
    Write({{"is", "messageBox"}, {"text", text}, {"style", style}, {"title", title}});
}

void JsonWriter::OnPointer(std::int32_t pointer) {
    Write({{"is", "pointer"}, {"value", pointer}});
}

void JsonWriter::OnProcessStarted(const host::model::Process& process) {
    Write(
        {{"is", "process"}, {"change", "started"}, {"id", process.id}, {"commandLine", process.commandLine}});
}

void JsonWriter::OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) {
    Write({{"is", "process"}, {"change", "ended"}, {"id", process.id}, {"exitCode", end.exitCode}});
}

void JsonWriter::OnProblem(const std::string& text) {
    Write({{"is", "problem"}, {"text", text}});
}

void JsonWriter::OnCommandReply(std::string_view command, std::string_view text) {
    Write({{"is", "reply"}, {"command", command}, {"text", text}});
}

void JsonWriter::OnState(std::string_view what, const Json& value) {
    Write({{"is", "state"}, {"of", what}, {"value", value}});
}

void JsonWriter::OnHelp(std::string_view command, std::string_view arguments, std::string_view text) {
    Write({{"is", "help"}, {"command", command}, {"arguments", arguments}, {"text", text}});
}

void JsonWriter::OnDone(std::string_view command) {
    Write({{"is", "done"}, {"command", command}});
}

void JsonWriter::OnError(std::string_view command, std::string_view text) {
    Write({{"is", "error"}, {"command", command}, {"text", text}});
}

void JsonWriter::Write(const Json& line) {
    WriteHeld();
    WriteLine(line);
}

void JsonWriter::WriteHeld() {
    if (!held_) return;
    WriteLine(*held_);
    held_.reset();
}

void JsonWriter::WriteLine(const Json& line) {
    const std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    std::fwrite(text.data(), 1, text.size(), out_);
    std::fflush(out_);
}

} // namespace arvon::console
