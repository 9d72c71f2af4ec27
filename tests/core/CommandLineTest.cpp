#include "core/contract/CommandLine.h"

#include <gtest/gtest.h>

using arvon::CommandLineOf;

TEST(CommandLineOfARecord, IsItsPathAndArgumentsUnquoted) {
    EXPECT_EQ(CommandLineOf("C:\\A B\\x.exe", "/a \"b c\""), "C:\\A B\\x.exe /a \"b c\"");
}

TEST(CommandLineOfARecord, HasNoBlanksAroundTheArguments) {
    EXPECT_EQ(CommandLineOf("C:\\A B\\x.exe", " /a \"b  c\"  "), "C:\\A B\\x.exe /a \"b  c\"");
    EXPECT_EQ(CommandLineOf("x.exe", ""), "x.exe");
    EXPECT_EQ(CommandLineOf("x.exe", "   "), "x.exe");
}

TEST(CommandLineOfARecord, IsEmptyWithoutAPath) {
    EXPECT_EQ(CommandLineOf("", "/a"), "");
}
