#include "platform/DebugOutput.h"

#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* debugVariable = "ARVON_DEBUG_OUTPUT";

TEST(DebugOutput, WritesLinesToStandardErrorWhenAskedTo) {
    const TestVariable setting(debugVariable, "1");
    const auto output = platform::DebugOutput::Create();
    testing::internal::CaptureStderr();
    output->Write("one");
    output->Write("");
    output->Write("two");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\n\ntwo\n");
}

TEST(DebugOutput, WritesNothingOtherwise) {
    const TestVariable setting(debugVariable, nullptr);
    testing::internal::CaptureStderr();
    platform::DebugOutput::Create()->Write("one");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
