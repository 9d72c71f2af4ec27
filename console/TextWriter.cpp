#include "console/TextWriter.h"

#include "base/Text.h"
#include "console/PrintableText.h"
#include "console/Table.h"

namespace arvon::console {

namespace {

constexpr std::size_t LongestValue = 100;
constexpr std::size_t LongestLine = 200;
constexpr std::size_t KindWidth = 8;

std::string ToText(const base::Value& value) {
    switch (value.GetKind()) {
    case base::Value::Kind::Empty:
        return "-";
    case base::Value::Kind::Text:
        return Quoted(value.ToText(), LongestValue);
    case base::Value::Kind::Object:
        return value.ToObject() ? "(object)" : "-";
    default:
        return value.ToText();
    }
}

std::string ParametersOf(const MessageRecord& message) {
    std::string text;
    for (const ParameterRecord& parameter : message.parameters)
        text += "  " + Printable(parameter.name) + "=" + ToText(parameter.value);
    return text;
}

} // namespace

void TextWriter::OnCall(const CallRecord& call) {
    if (!calls_) return;
    std::string facts = call.operation;
    for (const base::Value& argument : call.arguments)
        facts += (&argument == call.arguments.data() ? "  " : ", ") + ToText(argument);
    if (call.failed) facts += Coloured("  fails", Colour::Red);
    Write("call", Colour::Dim, facts);
}

void TextWriter::OnMessage(const MessageRecord& message) {
    std::string facts = Printable(message.source) + " → " + Printable(message.destination) + "  ";
    if (message.malformed || message.kind == MessageRecord::Kind::Custom) {
        facts += message.malformed ? "malformed" : "type " + std::to_string(message.type);
        facts += "  " + Quoted(message.body, LongestValue);
    } else {
        facts += Coloured(Printable(message.name), Colour::Bold) + ParametersOf(message);
    }
    if (!message.registered) facts += "  (nobody listens)";
    switch (message.kind) {
    case MessageRecord::Kind::Event:
        Write("event", message.name == "ErrorMessage" ? Colour::Red : Colour::Blue, facts);
        break;
    case MessageRecord::Kind::Request:
        Write("request", Colour::Cyan, facts);
        break;
    case MessageRecord::Kind::Custom:
        Write("custom", Colour::Cyan, facts);
        break;
    }
    ++depth_;
}

void TextWriter::OnReply(const MessageRecord& message) {
    if (!message.reply.empty() && depth_ > 1)
        Write("answer", Colour::Cyan, Quoted(message.reply, LongestValue));
    --depth_;
}

void TextWriter::OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) {
    std::string facts = Quoted(text, LongestValue);
    if (style == 16) facts += "  (critical)";
    if (style == 64) facts += "  (information)";
    if (!title.empty()) facts += "  title " + Quoted(title, LongestValue);
    Write("box", Colour::Yellow, facts);
}

void TextWriter::OnPointer(std::int32_t pointer) {
    Write("pointer", Colour::Dim, std::to_string(pointer));
}

void TextWriter::OnProcessStarted(const host::model::Process& process) {
    Write("process", Colour::Green,
          std::to_string(process.id) + " started: " + Printable(process.commandLine));
}

void TextWriter::OnProcessEnded(const host::model::Process& process, const host::model::ProcessEnd& end) {
    Write("process", Colour::Green,
          std::to_string(process.id) + " ended with " + std::to_string(end.exitCode));
}

void TextWriter::OnProblem(const std::string& text) {
    Write("problem", Colour::Yellow, Printable(text));
}

/// Comments and empty lines as they stand, so that a script can tell its story; commands after a ">".
void TextWriter::OnScriptLine(std::string_view line) {
    const std::string_view text = base::TrimBlanks(line);
    const bool isCommand = !text.empty() && text.front() != '#';
    const std::string shown = (isCommand ? "> " : "") + Shortened(text, LongestLine);
    std::fputs((Coloured(shown, isCommand ? Colour::Bold : Colour::Yellow) + '\n').c_str(), out_);
    std::fflush(out_);
}

void TextWriter::OnCommandReply(std::string_view, std::string_view text) {
    Write("reply", Colour::Green, Printable(text));
}

void TextWriter::OnState(std::string_view, const Json& value) {
    bool heading = !value.empty() && value.front().is_object();
    for (const std::string& line : TableOf(value)) {
        std::fputs((Coloured(line, heading ? Colour::Bold : Colour::None) + '\n').c_str(), out_);
        heading = false;
    }
    std::fflush(out_);
}

void TextWriter::OnHelp(std::string_view command, std::string_view arguments, std::string_view text) {
    std::string usage = std::string(command) + ' ' + std::string(arguments);
    usage.resize(std::max<std::size_t>(usage.size(), 34), ' ');
    std::fputs((Coloured(usage, Colour::Bold) + "  " + std::string(text) + '\n').c_str(), out_);
    std::fflush(out_);
}

void TextWriter::OnDone(std::string_view command) {
    Write("done", Colour::Green, Printable(command));
}

void TextWriter::OnError(std::string_view command, std::string_view text) {
    Write("error", Colour::Red, (command.empty() ? "" : Printable(command) + ": ") + Printable(text));
}

void TextWriter::Write(std::string_view kind, Colour colour, const std::string& facts) {
    std::string word(kind);
    word.resize(std::max(word.size(), KindWidth), ' ');
    const std::string line = std::string(2 * depth_, ' ') + Coloured(word, colour) + facts + '\n';
    std::fwrite(line.data(), 1, line.size(), out_);
    std::fflush(out_);
}

std::string TextWriter::Coloured(std::string_view text, Colour colour) const {
    static constexpr const char* codes[] = {"", "1", "2", "31", "32", "33", "34", "36"};
    if (!colour_ || colour == Colour::None || text.empty()) return std::string(text);
    return std::string("\033[") + codes[static_cast<int>(colour)] + "m" + std::string(text) + "\033[0m";
}

} // namespace arvon::console
