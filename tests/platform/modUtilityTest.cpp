#include "platform/modUtility.h"

#include "platform/Services.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(modUtility, ReadsATextUpToItsNul) {
    Services services;
    services.codePage = CodePage::Create();
    EXPECT_EQ(modUtility::StringFromAnsiPointer(services, "Drucker \xE4\0behind"), "Drucker ä");
    EXPECT_EQ(modUtility::StringFromAnsiPointer(services, ""), "");
    EXPECT_EQ(modUtility::StringFromAnsiPointer(services, nullptr), "");
}

/// Writes down what is asked.
class RecordingProcesses : public Processes {
public:
    std::string& calls;
    Handle answer;
    RecordingProcesses(std::string& log, Handle handle) : calls(log), answer(handle) {}
    Handle Start(std::string_view commandLine) override {
        calls += "start " + std::string(commandLine) + ";";
        return answer;
    }
    void Wait(Handle handle) override { calls += "wait " + std::to_string(handle) + ";"; }
    void Close(Handle handle) override { calls += "close " + std::to_string(handle) + ";"; }
};

TEST(modUtility, StartsWaitsAndCloses) {
    std::string calls;
    Services services;
    services.processes = std::make_unique<RecordingProcesses>(calls, 42);
    modUtility::RunAndWait(services, "C:\\a b\\x.exe");
    EXPECT_EQ(calls, "start C:\\a b\\x.exe;wait 42;close 42;");
}

} // namespace
