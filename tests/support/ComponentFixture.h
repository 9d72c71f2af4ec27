#pragma once

#include "core/ToolMain.h"
#include "host/ReferenceHost.h"
#include "tests/support/TestInstallation.h"
#include "tests/support/ToolMainProbe.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvtm::test {

/// The tool manager in the reference host, in one process, on a small installation of its own. Everything
/// that passes between the two is recorded. A test claims the error reports and message boxes that it
/// expects; one that nobody claimed fails the test.
class ComponentTest : public testing::Test, protected arvon::host::IObserver {
protected:
    struct Box {
        std::string text;
        std::int32_t style = 0;
        std::string title;
    };
    struct Report {
        std::string description, source, procedure;
        std::int32_t number = 0;
    };
    using Parameters = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    ComponentTest() = default;
    ~ComponentTest() override;
    void TearDown() override;

    /// Puts the tools in the catalogue, makes host and tool manager, and loads it.
    void LoadWith(const std::vector<CatalogueTool>& tools, arvon::host::Hooks hooks = {});
    /// The steps of LoadWith: with `services`, before the tool manager is loaded.
    void CreateHost(arvon::host::Hooks hooks = {});
    void CreateTool(platform::Services services);
    void CreateTool() { CreateTool(platform::Services::Create()); }
    bool Load() { return host->Load(); }

    std::string Request(std::string_view type, Parameters parameters = {});
    void Event(arvon::EventObject raisedBy, std::string_view name, Parameters parameters = {},
               std::int32_t category = 0);
    /// The end of a program, as the host tells it.
    void ProcessEnded(std::string_view application, std::int32_t id);

    /// Calls on the host since the last ForgetCalls, as texts: Menus.Add("mnuTool", 0, true, null).
    const std::vector<std::string>& Calls() const { return calls_; }
    /// Operations since then that only read, as texts: Record.Name("Layout").
    const std::vector<std::string>& Reads() const { return reads_; }
    /// The calls and reads of one operation: of calls first where it is both.
    std::vector<std::string> CallsOf(std::string_view operation) const;
    /// Messages that the component sent since then, error reports left out, whole and in order of delivery:
    /// `Destination:Name`, category and level of an event or mode of a request, and the parameters with their
    /// type codes. Zarn11:Tool_UnLoad{event 2/9}(vrex:2="Tobr43", ProcessID:3=12),
    /// SnapIn:SelectTab{request 1}(key:2="FixedTab").
    const std::vector<std::string>& Sent() const { return sent_; }
    void ForgetCalls();

    /// The texts of the rows that the user sees in the list of tools.
    std::vector<std::string> RowTexts() const;
    /// The names of the tools that the component lists, in its order.
    std::vector<std::string> ListedNames() const;

    /// The oldest error report not yet claimed, which must have come from `procedure` (without the object's
    /// name).
    Report ClaimReport(std::string_view procedure);
    /// All error reports not yet claimed, oldest first.
    std::vector<Report> ClaimReports() { return std::exchange(reports_, {}); }
    /// The oldest message box not yet claimed; a failure when there is none.
    Box ClaimBox();

    TestInstallation installation;
    std::unique_ptr<arvon::host::ReferenceHost> host;
    std::shared_ptr<ToolMain> tool;
    ToolMainProbe Probe() const { return ToolMainProbe{*tool}; }

private:
    void OnCall(const arvon::host::CallRecord& call) override;
    void OnMessage(const arvon::host::MessageRecord& message) override;
    void ReportSent(const arvon::host::MessageRecord& message);
    void OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) override;
    bool WantsReads() const override { return true; }

    std::vector<std::string> calls_, reads_, sent_;
    std::vector<Report> reports_;
    std::vector<Box> boxes_;
};

} // namespace kvtm::test
