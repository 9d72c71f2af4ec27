#pragma once

#include "console/Console.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace arvon::console {

/// One command: what is checked, carried out and printed as help.
struct Command {
    std::string_view name;
    std::string_view arguments; // "KEY [KIND]": one word each, [optional], "..." any number more of the last
    std::string_view help;
    void (Console::*run)(Console::Words words);

    /// How many words may follow the name.
    std::size_t LeastWords() const;
    std::size_t MostWords() const;
    /// Name and arguments.
    std::string Usage() const;
};

/// All commands, in the order of help.
std::span<const Command> Commands();
/// Throws CommandError for an unknown name.
const Command& FindCommand(std::string_view name);
/// The table as text, a line a command, for --help.
std::string CommandHelp();

} // namespace arvon::console
