#include "console/CommandTable.h"

#include "base/Text.h"
#include "console/Words.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <vector>

namespace arvon::console {

namespace {

constexpr Command commands[] = {
    {"load", "", "loads KvTM10 into the host; replies True or False", &Console::Load},
    {"unload", "", "unloads it", &Console::Unload},
    {"task-permission", "NAME SECOND", "adds a task to the user's profile (before load)",
     &Console::TaskPermission},
    {"request", "TYPE [name=value ...]", "sends KvTM10 a request; replies its answer", &Console::Request},
    {"event", "OBJECTTYPE NAME [name=value ...]", "sends KvTM10 an event", &Console::Event},
    {"message", "TYPE BODY", "sends KvTM10 an envelope of any number and body, well-formed or not",
     &Console::Message},
    {"menu", "KEY", "clicks an item of a menu", &Console::Menu},
    {"button", "KEY", "clicks a button of the toolbar", &Console::Button},
    {"task", "KEY", "clicks a task of the task pane", &Console::Task},
    {"node", "KEY [KIND]", "an event of a node of tabQRV (kind 5: selected)", &Console::Node},
    {"tab", "[KIND]", "an event of tabQRV itself (kind 5: selected)", &Console::Tab},
    {"item", "NAME [KIND] [checked=BOOL]",
     "an event of the tool list's row of that text, made the current one (kind 13: opened)", &Console::Item},
    {"column", "KEY ORDER", "clicks a column header of the tool list", &Console::Column},
    {"close", "KEY", "closes a window", &Console::Close},
    {"unload-tool", "NAME", "closes a tool that runs inside the host", &Console::UnloadTool},
    {"edit", "NAME PROPERTY=VALUE ...",
     "what the record editor answers to the next tskEditTool: that record gets these values", &Console::Edit},
    {"listen", "ID [REPLY]", "registers a listener that answers every message by REPLY", &Console::Listen},
    {"unlisten", "ID", "takes a listener away", &Console::Unlisten},
    {"language", "ANSWER", "what the host answers to the next switch of language", &Console::Language},
    {"refuse", "NAME", "the host refuses to load this tool from now on", &Console::Refuse},
    {"fail", "OPERATION [COUNT]", "the host operation fails the next COUNT times (1)", &Console::Fail},
    {"wait", "[SECONDS]", "waits until every started program has ended and KvTM10 was told", &Console::Wait},
    {"show", "WHAT", "prints a part of the host: see below", &Console::Show},
    {"help", "[COMMAND]", "prints this table, or one line of it", &Console::Help},
    {"quit", "", "ends", &Console::Quit},
};

std::vector<std::string> ArgumentsOf(const Command& command) {
    if (command.arguments.empty()) return {};
    return base::Split(command.arguments, ' ');
}

} // namespace

std::size_t Command::LeastWords() const {
    const std::vector<std::string> all = ArgumentsOf(*this);
    return static_cast<std::size_t>(
        std::find_if(all.begin(), all.end(),
                     [](const std::string& a) { return a.front() == '[' || a == "..."; }) -
        all.begin());
}

std::size_t Command::MostWords() const {
    if (arguments.find("...") != std::string_view::npos) return std::numeric_limits<std::size_t>::max();
    return ArgumentsOf(*this).size();
}

std::string Command::Usage() const {
    return std::string(name) + (arguments.empty() ? "" : " ") + std::string(arguments);
}

std::span<const Command> Commands() {
    return commands;
}

const Command& FindCommand(std::string_view name) {
    const auto found = std::find_if(std::begin(commands), std::end(commands),
                                    [&](const Command& command) { return command.name == name; });
    if (found == std::end(commands))
        throw CommandError("unknown command \"" + std::string(name) + "\"; help lists them all");
    return *found;
}

std::string CommandHelp() {
    std::size_t widest = 0;
    for (const Command& command : commands)
        widest = std::max(widest, command.Usage().size());
    std::string text;
    for (const Command& command : commands) {
        std::string usage = command.Usage();
        usage.resize(widest + 2, ' ');
        text += "  " + usage + std::string(command.help) + "\n";
    }
    return text;
}

} // namespace arvon::console
