#include "desktop/trace/ConsoleScript.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/XmlDocument.h"
#include "core/contract/EventShapes.h"
#include "core/contract/Messages.h"
#include "host/ReferenceHost.h"

#include <algorithm>
#include <array>

namespace desktop {

using arvon::EventObject;
using arvon::host::MessageRecord;
using arvon::host::ParameterRecord;

namespace {

constexpr std::string_view navigator = "tabQRV";
constexpr std::string_view toolList = "lvTools";
constexpr std::string_view showAllTask = "tskShowAll";

/// A kind of row event that the component lets pass: it only makes the row the current one.
constexpr std::int32_t onlySelects = arvon::eventKind::Selected;

constexpr auto textType = static_cast<std::int32_t>(arvon::ParameterType::Text);

/// A command of its words; nothing where a word cannot be written.
std::optional<std::string> Line(std::initializer_list<std::string> words) {
    std::string line;
    for (const std::string& word : words) {
        const auto written = ConsoleWord(word);
        if (!written) return {};
        if (!line.empty()) line += ' ';
        line += *written;
    }
    return line;
}

std::string TextOf(const base::Value& value) {
    try {
        return value.ToText();
    } catch (const base::ComponentError&) {
        return {};
    }
}

std::string Parameter(const MessageRecord& message, std::string_view name) {
    const auto found = std::ranges::find(message.parameters, name, &ParameterRecord::name);
    return found == message.parameters.end() ? std::string() : TextOf(found->value);
}

bool IsTrue(const std::string& text) {
    return base::EqualIgnoringCase(text, "True") || text == "-1" || text == "1";
}

/// What the host's things raise when a user clicks them.
std::optional<std::string> ClickLine(const MessageRecord& message) {
    const std::string kind = std::to_string(message.category);
    switch (static_cast<EventObject>(message.objectType)) {
    case EventObject::Menu:
        return Line({"menu", message.name});
    case EventObject::Button:
        return Line({"button", message.name});
    case EventObject::Task:
        if (IsTrue(Parameter(message, arvon::eventParameter::Flag)) && message.name != showAllTask) return {};
        return Line({"task", message.name});
    case EventObject::Node:
        if (message.name != navigator) return {};
        return Line({"node", Parameter(message, arvon::eventParameter::Key), kind});
    case EventObject::Tab:
        if (message.name != navigator) return {};
        return Line({"tab", kind});
    case EventObject::ListItem:
        if (message.name != toolList) return {};
        if (message.category == arvon::eventKind::ColumnClicked)
            return Line({"column", Parameter(message, arvon::eventParameter::Key),
                         Parameter(message, arvon::eventParameter::Order)});
        if (message.category == arvon::eventKind::CheckChanged) {
            const bool checked = IsTrue(Parameter(message, arvon::eventParameter::Checked));
            return Line({"item", Parameter(message, arvon::eventParameter::Text), kind,
                         checked ? "checked=True" : "checked=False"});
        }
        return Line({"item", Parameter(message, arvon::eventParameter::Text), kind});
    default:
        return {};
    }
}

/// "request" and "event" send texts only, with every number 0.
bool IsPlain(const MessageRecord& message) {
    return message.mode == 0 && message.category == 0 && message.level == 0 &&
           std::ranges::all_of(message.parameters, [](const ParameterRecord& parameter) {
               return parameter.type == textType && !parameter.name.empty() &&
                      parameter.name.find('=') == std::string::npos;
           });
}

std::optional<std::string> PlainLine(std::string line, const MessageRecord& message) {
    const auto append = [&](const std::string& text) {
        const auto word = ConsoleWord(text);
        if (word) line += ' ' + *word;
        return word.has_value();
    };
    if (!append(message.name)) return {};
    for (const ParameterRecord& parameter : message.parameters)
        if (!append(parameter.name + '=' + TextOf(parameter.value))) return {};
    return line;
}

/// The message's XML on one line: line breaks stand as character references.
std::string BodyOf(const MessageRecord& message) {
    const bool isRequest = message.kind == MessageRecord::Kind::Request;
    base::XmlDocument document;
    base::XmlNode root = document.CreateRoot(isRequest ? "Request" : "Event");
    if (isRequest) {
        root.SetAttribute("Type", message.name);
        root.SetAttribute("Mode", std::to_string(message.mode));
    } else {
        root.SetAttribute("ObjectType", std::to_string(message.objectType));
        root.SetAttribute("Name", message.name);
        root.SetAttribute("Category", std::to_string(message.category));
        root.SetAttribute("Level", std::to_string(message.level));
    }
    base::XmlNode parameters = root.AppendElement("Parameters");
    for (const ParameterRecord& parameter : message.parameters) {
        base::XmlNode element = parameters.AppendElement("Parameter");
        element.SetAttribute("Name", parameter.name);
        element.SetAttribute("Type", std::to_string(parameter.type));
        element.SetText(TextOf(parameter.value));
    }
    return base::Replace(root.Xml(), "\n", "&#10;");
}

std::optional<std::string> MessageLine(const MessageRecord& message) {
    const bool asSent = message.kind == MessageRecord::Kind::Custom || message.malformed;
    return Line({"message", std::to_string(message.type), asSent ? message.body : BodyOf(message)});
}

} // namespace

std::optional<std::string> ConsoleWord(std::string_view text) {
    const auto isControl = [](char c) { return (c >= 0 && c < 0x20 && c != '\t') || c == 0x7F; };
    if (std::ranges::any_of(text, isControl) || !base::IsWellFormedUtf8(text)) return {};
    const auto isPlain = [](char c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        return letter || c < 0 || std::string_view("_-+=.,:/@%").find(c) != std::string_view::npos;
    };
    if (!text.empty() && std::ranges::all_of(text, isPlain)) return std::string(text);
    if (text.find('\'') == std::string_view::npos) return '\'' + std::string(text) + '\'';
    std::string word = "\"";
    for (const char c : text) {
        if (std::string_view("\"\\$`").find(c) != std::string_view::npos) word += '\\';
        word += c;
    }
    return word + '"';
}

std::optional<std::string> ConsoleLine(const MessageRecord& message) {
    if (message.destination != arvon::host::listenerId::Component) return {};
    const bool readable = message.kind != MessageRecord::Kind::Custom && !message.malformed;
    if (readable && message.kind == MessageRecord::Kind::Event) {
        if (message.source == arvon::host::listenerId::Shell)
            if (auto line = ClickLine(message)) return line;
        if (IsPlain(message))
            if (auto line = PlainLine("event " + std::to_string(message.objectType), message)) return line;
    }
    if (readable && message.kind == MessageRecord::Kind::Request && IsPlain(message))
        if (auto line = PlainLine("request", message)) return line;
    return MessageLine(message);
}

void ConsoleScript::Add(const TraceNode& node) {
    const MessageRecord& message = node.message;
    if (!node.byUser) {
        const bool endOfProgram = message.kind == MessageRecord::Kind::Event && !message.malformed &&
                                  message.source == arvon::host::listenerId::Shell &&
                                  message.objectType == static_cast<int>(EventObject::Process);
        if (endOfProgram && !waits_) text_ += "wait\n";
        waits_ = waits_ || endOfProgram;
        return;
    }
    waits_ = false;
    const bool isAboutRow = !node.currentRow.empty() && message.name != showAllTask;
    if (isAboutRow) {
        const auto select = Line({"item", node.currentRow, std::to_string(onlySelects)});
        text_ += select.value_or("# cannot be repeated here: the row that was current") + '\n';
    }
    if (const auto line = ConsoleLine(message)) {
        text_ += *line + '\n';
    } else {
        const auto what = Line({message.name, "to", message.destination});
        text_ += "# cannot be repeated here: " + what.value_or("a message") + '\n';
    }
}

} // namespace desktop
