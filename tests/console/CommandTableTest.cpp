#include "console/CommandTable.h"
#include "console/Words.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

using namespace arvon::console;

TEST(CommandTable, HasEveryCommandOnceWithHelp) {
    std::set<std::string_view> names;
    for (const Command& command : Commands()) {
        EXPECT_TRUE(names.insert(command.name).second) << command.name;
        EXPECT_FALSE(command.help.empty()) << command.name;
        EXPECT_NE(CommandHelp().find(command.Usage()), std::string::npos) << command.name;
    }
}

TEST(CommandTable, HasTheCommandsThatScriptsRelyOn) {
    for (const char* name : {"load",     "unload", "task-permission",
                             "request",  "event",  "message",
                             "menu",     "button", "task",
                             "node",     "tab",    "item",
                             "column",   "listen", "unlisten",
                             "close",    "edit",   "unload-tool",
                             "language", "refuse", "fail",
                             "wait",     "show",   "help",
                             "quit"})
        EXPECT_EQ(FindCommand(name).name, name);
}

TEST(CommandTable, ReadsHowManyWordsMayFollowFromTheArguments) {
    EXPECT_EQ(FindCommand("load").LeastWords(), 0u);
    EXPECT_EQ(FindCommand("load").MostWords(), 0u);
    EXPECT_EQ(FindCommand("item").LeastWords(), 1u);
    EXPECT_EQ(FindCommand("item").MostWords(), 3u);
    EXPECT_EQ(FindCommand("event").LeastWords(), 2u);
    EXPECT_EQ(FindCommand("event").MostWords(), std::numeric_limits<std::size_t>::max());
    EXPECT_EQ(FindCommand("edit").LeastWords(), 2u); // one of those that may be many
    EXPECT_EQ(FindCommand("edit").MostWords(), std::numeric_limits<std::size_t>::max());
}

TEST(CommandTable, FindsNamesExactly) {
    EXPECT_THROW(FindCommand("Load"), CommandError);
    EXPECT_THROW(FindCommand(""), CommandError);
    EXPECT_THROW(FindCommand("lo"), CommandError);
}
