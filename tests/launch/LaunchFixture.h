#pragma once

#include "base/Text.h"
#include "core/Names.h"
#include "tests/support/ComponentFixture.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kvtm::test {

/// The tool manager with a launcher that listens, and the suite's real programs to put into the installation.
class LaunchingTest : public ComponentTest {
protected:
    using Strings = std::vector<std::string>;

    /// LoadWith, and a listener "Zarn11".
    void LoadSuite(const std::vector<CatalogueTool>& tools) {
        LoadWith(tools);
        host->Listen("Zarn11", "");
        ForgetCalls();
    }

    /// The same, with the list of tools in front, where the user chooses from it.
    void LoadSuiteInFront(const std::vector<CatalogueTool>& tools) {
        LoadSuite(tools);
        host->NodeEvent("tabQRV", "nodTools");
        ForgetCalls();
    }

    /// Copies a built program or library to a place under C:\QUARRA; returns its path in the installation.
    std::string Put(const std::filesystem::path& built, std::string_view place) const {
        const std::filesystem::path file = installation.File(place);
        std::filesystem::create_directories(file.parent_path());
        std::filesystem::copy_file(built, file, std::filesystem::copy_options::overwrite_existing);
        return "C:\\QUARRA\\" + base::Replace(place, "/", "\\");
    }

    /// The suite's updates component, put in its place.
    CatalogueTool UpdatesComponent() const {
        return {.name = "Program Updates",
                .vrex = "Qillo110",
                .identifier = "Qillo110",
                .classification = "Core Tool",
                .path = Put(UPDATES_LIBRARY, "Arvon/Bin/Qillo110.dll")};
    }

    /// An outside program that works until it is asked to end.
    CatalogueTool LongRunning(const char* name, const char* vrex) const {
        return {.name = name, .vrex = vrex, .path = "/bin/sleep", .commandLine = "60"};
    }

    /// The tools below the node "Tools", in the order shown.
    Strings NodeKeys() const {
        Strings keys;
        const auto tabs = host->Model().Tabs();
        for (const auto& node : tabs.front().nodes.front().nodes)
            keys.push_back(node.key);
        return keys;
    }

    std::string Launch(std::string_view name) { return Request(request::LaunchTool, {{"ToolName", name}}); }

    /// Ends a program that this test started, and waits until the host has noticed.
    void End(std::int32_t id, int signal = SIGTERM) {
        ASSERT_GT(id, 1);
        ASSERT_EQ(kill(id, signal), 0);
        while (host->ProcessEvents(std::chrono::seconds(20)) == 0)
            ASSERT_FALSE(host->Model().Processes().empty());
    }

    /// Until a program that was just started has written this to its log.
    void WaitForText(std::string_view place, std::string_view text) const {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!std::filesystem::exists(installation.File(place)) ||
               installation.Read(place).find(text) == std::string::npos) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << place << " never told " << text;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    std::int32_t ProcessOf(std::string_view vrex) const {
        const std::int32_t* id = Probe().Processes().Find(vrex);
        return id ? *id : 0;
    }

    Strings CommandLines() const {
        Strings lines;
        for (const auto& process : host->Model().Processes())
            lines.push_back(process.commandLine);
        return lines;
    }

    Strings LoadedVantors() const { return Probe().LoadedTools().Snapshot(); }

    /// The menu items of tools that can be clicked.
    Strings EnabledToolItems() const {
        Strings keys;
        for (const auto& menu : host->Model().Menus())
            for (const auto& item : menu.items)
                if (menu.key == "mnuTool" && item.enabled && item.key != "mnuToolOptions")
                    keys.push_back(item.key);
        return keys;
    }

private:
    WithoutDisplay withoutDisplay_;
};

} // namespace kvtm::test
