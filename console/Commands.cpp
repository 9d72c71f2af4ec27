#include "console/CommandTable.h"
#include "console/Console.h"
#include "console/RecordEdits.h"
#include "console/Snapshot.h"
#include "console/Words.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <sstream>

namespace arvon::console {

namespace {

constexpr std::string_view Navigator = "tabQRV";
constexpr std::string_view ToolList = "lvTools";

std::vector<NamedValue> ReadNamedValues(Console::Words words) {
    std::vector<NamedValue> values;
    for (const std::string& word : words) {
        std::optional<NamedValue> pair = ReadNamedValue(word);
        if (!pair) throw CommandError("expected name=value, found \"" + word + "\"");
        values.push_back(std::move(*pair));
    }
    return values;
}

std::vector<ParameterRecord> ReadParameters(Console::Words words) {
    std::vector<ParameterRecord> parameters;
    for (NamedValue& pair : ReadNamedValues(words)) {
        parameters.push_back({std::move(pair.name), static_cast<std::int32_t>(ParameterType::Text),
                              base::Value(std::move(pair.value))});
    }
    return parameters;
}

std::int32_t KindAt(Console::Words words, std::size_t index, std::int32_t otherwise) {
    return index < words.size() ? ReadNumber("KIND", words[index]) : otherwise;
}

/// Whole milliseconds of a text such as "2.5"; at most a day.
std::chrono::milliseconds ReadSeconds(const std::string& word) {
    std::istringstream text(word);
    text.imbue(std::locale::classic());
    double seconds = 0;
    if (!(text >> seconds) || !text.eof() || !(seconds >= 0))
        throw CommandError("SECONDS: expected a number from 0, found \"" + word + "\"");
    constexpr double day = 86400;
    return std::chrono::milliseconds(std::llround(std::min(seconds, day) * 1000));
}

} // namespace

void Console::Load(Words) {
    if (!host_.Component()) host_.OpenComponent(library_);
    if (host_.Component()->IsLoaded()) throw CommandError("KvTM10 is loaded already");
    Reply(host_.Load() ? "True" : "False");
}

void Console::Unload(Words) {
    // loaded or not: a load that failed may have left something to take away
    if (!host_.Component()) throw CommandError("KvTM10 is not loaded");
    host_.Unload();
}

void Console::TaskPermission(Words words) {
    host_.AddProfileTask(words[0], words[1]);
}

void Console::Request(Words words) {
    const std::vector<ParameterRecord> parameters = ReadParameters(words.subspan(1));
    RequireComponent();
    Reply(host_.SendRequest(words[0], parameters));
}

void Console::Event(Words words) {
    host::ReferenceHost::EventHead head;
    head.objectType = ReadNumber("OBJECTTYPE", words[0]);
    head.name = words[1];
    const std::vector<ParameterRecord> parameters = ReadParameters(words.subspan(2));
    RequireComponent();
    Reply(host_.SendEvent(head, parameters));
}

void Console::Message(Words words) {
    const std::int32_t type = ReadNumber("TYPE", words[0]);
    RequireComponent();
    Reply(host_.SendMessage(type, words[1]));
}

void Console::Menu(Words words) {
    host_.ClickMenu(words[0]);
}

void Console::Button(Words words) {
    host_.ClickButton(words[0]);
}

void Console::Task(Words words) {
    RequireComponent(); // tasks of the host's own controls are there without it
    host_.ClickTask(words[0]);
}

void Console::Node(Words words) {
    host_.NodeEvent(Navigator, words[0], KindAt(words, 1, eventKind::Selected));
}

void Console::Tab(Words words) {
    host_.TabEvent(Navigator, KindAt(words, 0, eventKind::Selected));
}

void Console::Item(Words words) {
    std::optional<std::int32_t> kind;
    std::optional<bool> checked;
    const auto refuseRepeated = [this](bool given) {
        if (given) throw CommandError("expected: " + FindCommand(command_).Usage());
    };
    for (const std::string& word : words.subspan(1)) {
        if (const std::optional<NamedValue> pair = ReadNamedValue(word); pair && pair->name == "checked") {
            refuseRepeated(checked.has_value());
            checked = ReadBoolean("checked", pair->value);
        } else {
            refuseRepeated(kind.has_value());
            kind = ReadNumber("KIND", word);
        }
    }
    host_.ListItemEvent(ToolList, words[0], kind.value_or(eventKind::Opened), checked);
}

void Console::Column(Words words) {
    host_.ColumnClick(ToolList, words[0], words[1]);
}

void Console::Close(Words words) {
    host_.CloseWindow(words[0]);
}

void Console::UnloadTool(Words words) {
    host_.UnloadTool(words[0]);
}

void Console::Edit(Words words) {
    edits_.Plan(words[0], ReadNamedValues(words.subspan(1)));
}

void Console::Listen(Words words) {
    host_.Listen(words[0], words.size() > 1 ? std::string_view(words[1]) : std::string_view());
}

void Console::Unlisten(Words words) {
    host_.Unlisten(words[0]);
}

void Console::Language(Words words) {
    host_.SetLanguageAnswer(words[0]);
}

void Console::Refuse(Words words) {
    host_.Refuse(words[0]);
}

void Console::Fail(Words words) {
    const std::int32_t count = words.size() > 1 ? ReadNumber("COUNT", words[1]) : 1;
    if (count < 1) throw CommandError("COUNT: expected 1 or more, found \"" + words[1] + "\"");
    host_.FailNext(words[0], static_cast<std::size_t>(count));
}

void Console::Wait(Words words) {
    if (words.empty()) {
        host_.WaitForProcesses();
    } else if (!host_.WaitForProcesses(ReadSeconds(words[0]))) {
        throw CommandError("after " + words[0] +
                           " s still running: " + std::to_string(host_.Model().Processes().size()));
    }
}

void Console::Show(Words words) {
    writer_.OnState(words[0], SnapshotOf(host_.Model(), runs_, words[0]));
}

void Console::Help(Words words) {
    if (words.empty()) {
        for (const Command& command : Commands())
            writer_.OnHelp(command.name, command.arguments, command.help);
        return;
    }
    const Command& command = FindCommand(words[0]);
    std::string text(command.help);
    if (command.name == "show") text = "prints a part of the host: " + SnapshotNames();
    writer_.OnHelp(command.name, command.arguments, text);
}

void Console::Quit(Words) {
    quit_ = true;
}

void Console::RequireComponent() const {
    const std::vector<std::string> listeners = host_.Model().Listeners();
    if (std::find(listeners.begin(), listeners.end(), host::listenerId::Component) == listeners.end())
        throw CommandError("KvTM10 is not loaded");
}

void Console::Reply(std::string_view text) {
    writer_.OnCommandReply(command_, text);
}

} // namespace arvon::console
