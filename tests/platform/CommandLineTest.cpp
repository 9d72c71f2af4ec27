#include "platform/CommandLine.h"

#include <gtest/gtest.h>

using platform::ProgramReadings;
using platform::SplitArguments;
using platform::WithProgramExtension;

namespace {

/// "program|arguments" of each reading.
std::vector<std::string> Readings(std::string_view commandLine) {
    std::vector<std::string> texts;
    for (const auto& reading : ProgramReadings(commandLine))
        texts.push_back(std::string(reading.program) + "|" + std::string(reading.arguments));
    return texts;
}

using Texts = std::vector<std::string>;

TEST(CommandLine, ReadsAnUnquotedProgramShortestFirst) {
    EXPECT_EQ(Readings("C:\\Program Files\\My App\\x.exe /a"),
              (Texts{"C:\\Program|Files\\My App\\x.exe /a", "C:\\Program Files\\My|App\\x.exe /a",
                     "C:\\Program Files\\My App\\x.exe|/a", "C:\\Program Files\\My App\\x.exe /a|"}));
}

TEST(CommandLine, ReadsAQuotedProgramOneWay) {
    EXPECT_EQ(Readings("\"C:\\Program Files\\x.exe\" /a b"), (Texts{"C:\\Program Files\\x.exe|/a b"}));
    EXPECT_EQ(Readings("\"C:\\a b\"c"), (Texts{"C:\\a b|c"}));
    EXPECT_EQ(Readings("\"C:\\never closed /a"), (Texts{"C:\\never closed /a|"}));
    EXPECT_EQ(Readings("\"\" x"), (Texts{"|x"}));
    EXPECT_EQ(Readings("\""), (Texts{"|"}));
}

TEST(CommandLine, PassesOverBlanksAroundThePieces) {
    EXPECT_EQ(Readings("  a \t b  "), (Texts{"a|b  ", "a \t b|"}));
    EXPECT_EQ(Readings(""), Texts{});
    EXPECT_EQ(Readings(" \t "), Texts{});
}

TEST(CommandLine, EndsAtANul) {
    EXPECT_EQ(Readings(std::string_view("a\0b c", 5)), (Texts{"a|"}));
}

TEST(CommandLine, AppendsTheExtensionOnlyWhereThereIsNone) {
    EXPECT_EQ(WithProgramExtension("C:\\dir.d\\tool"), "C:\\dir.d\\tool.exe");
    EXPECT_EQ(WithProgramExtension("/opt/dir.d/tool"), "/opt/dir.d/tool.exe");
    EXPECT_EQ(WithProgramExtension("C:\\tool.com"), "C:\\tool.com");
    EXPECT_EQ(WithProgramExtension("C:\\tool."), "C:\\tool.");
    EXPECT_EQ(WithProgramExtension("tool"), "tool.exe");
    EXPECT_EQ(WithProgramExtension("C:tool"), "C:tool.exe");
    EXPECT_EQ(WithProgramExtension("C:\\dir\\"), "C:\\dir\\");
    EXPECT_EQ(WithProgramExtension(""), "");
}

TEST(CommandLine, SplitsArgumentsAtBlanks) {
    EXPECT_EQ(SplitArguments(" a\tb  c "), (Texts{"a", "b", "c"}));
    EXPECT_EQ(SplitArguments(""), Texts{});
    EXPECT_EQ(SplitArguments("  "), Texts{});
}

TEST(CommandLine, KeepsBlanksBetweenQuotes) {
    EXPECT_EQ(SplitArguments("\"a b\" c\"d e\"f"), (Texts{"a b", "cd ef"}));
    EXPECT_EQ(SplitArguments("\"\" x \"\""), (Texts{"", "x", ""}));
    EXPECT_EQ(SplitArguments("\"open end "), (Texts{"open end "}));
}

TEST(CommandLine, CountsBackslashesBeforeAQuote) {
    EXPECT_EQ(SplitArguments(R"(a\b \\c C:\x\ )"), (Texts{R"(a\b)", R"(\\c)", R"(C:\x\)"}));
    EXPECT_EQ(SplitArguments(R"(\"a\")"), (Texts{"\"a\""}));
    EXPECT_EQ(SplitArguments(R"("a\\" b)"), (Texts{R"(a\)", "b"}));
    EXPECT_EQ(SplitArguments(R"(a\\\"b)"), (Texts{R"(a\"b)"}));
    EXPECT_EQ(SplitArguments(R"(a\\\\"b c" d)"), (Texts{R"(a\\b c)", "d"}));
    EXPECT_EQ(SplitArguments(R"(tail\)"), (Texts{R"(tail\)"}));
}

TEST(CommandLine, TakesTwoQuotesInsideQuotesForOne) {
    EXPECT_EQ(SplitArguments(R"("a""b" c)"), (Texts{"a\"b", "c"}));
    EXPECT_EQ(SplitArguments(R"("""" x)"), (Texts{"\"", "x"}));
    EXPECT_EQ(SplitArguments(R"(""a b)"), (Texts{"a", "b"}));
}

} // namespace
