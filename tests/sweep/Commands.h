#pragma once

#include "tests/sweep/Session.h"

#include <span>

namespace kvtm::test {

/// One thing that can be asked of the tool manager, and what goes before it.
struct Command {
    const char* name;
    Session::Act prepare;
    Session::Act act;
};

/// Every request, event, menu item, button, node, list and tab event, column and task, load and unload; those
/// that do different things at different times more than once.
std::span<const Command> Commands();

} // namespace kvtm::test
