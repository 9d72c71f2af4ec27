#include "console/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

using namespace arvon::console;

namespace {

CommandLine Read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "arvon-console");
    return ReadCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

} // namespace

TEST(CommandLine, ChoosesNothingByItself) {
    const CommandLine line = Read({});
    EXPECT_FALSE(line.suite || line.profile || line.script || line.json || line.quiet || line.help);
}

TEST(CommandLine, TakesOptionsAndAScript) {
    const CommandLine line = Read({"--suite", "here", "--profile=3", "--json", "--quiet", "tour.arvon"});
    EXPECT_EQ(line.suite, "here");
    EXPECT_EQ(line.profile, "3");
    EXPECT_EQ(line.script, "tour.arvon");
    EXPECT_TRUE(line.json);
    EXPECT_TRUE(line.quiet);
}

TEST(CommandLine, TakesAnEmptyProfileAsGiven) {
    EXPECT_EQ(Read({"--profile", ""}).profile, "");
}

TEST(CommandLine, RefusesWhatItDoesNotKnowInOneLine) {
    for (const std::vector<const char*>& arguments :
         {std::vector<const char*>{"--colour"}, {"--suite"}, {"one", "two"}, {"--json=maybe"}}) {
        try {
            Read(arguments);
            ADD_FAILURE() << arguments.front() << " was taken";
        } catch (const BadCommandLine& error) {
            EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos) << error.what();
        }
    }
}

TEST(CommandLine, ExplainsItselfWithOptionsAndCommands) {
    const CommandLine line = Read({"--help"});
    ASSERT_TRUE(line.help);
    for (const char* part : {"--suite", "--profile", "--json", "--quiet", "SCRIPT", "task-permission",
                             "messageReply", "Exit status"})
        EXPECT_NE(line.help->find(part), std::string::npos) << part;
}
