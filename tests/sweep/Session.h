#pragma once

#include "tests/support/ComponentFixture.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvtm::test {

/// One life of the tool manager: a small installation with a tool of each sort, everybody listening whom it
/// speaks to, and the record of what one act did.
class Session : public ComponentTest {
public:
    /// What a user, a tool or the host does.
    using Act = std::function<void(Session& session)>;
    using Counts = std::map<std::string, std::size_t>;

    Session();
    ~Session() override;

    /// Loads the tool manager and shows its list and nodes.
    void Begin();
    /// Carries an act out and takes down what came of it.
    void Carry(const Act& act);
    void Fail(const std::string& operation, std::size_t call) { host->FailNext(operation, 1, call - 1); }

    // of the last act

    /// How often each operation of the host was called.
    const Counts& CallCounts() const { return counts_; }
    /// The operations that were made to fail.
    const std::vector<std::string>& Failed() const { return failed_; }
    /// One line: who reported what, what was thrown to the host, shown and answered, which tool items are
    /// left as they should not be. What tells the provoked failure is not written out.
    std::string Outcome() const;
    /// How often the provoked failure was reported.
    std::size_t ReportsOfTheFailure() const;

    // what must hold after every act, whatever failed; empty, or what is wrong

    /// When the list of tools is shown and an option is read.
    std::string WrongWhenUsed();
    /// When the tool manager is unloaded and loaded again, and launches a program.
    std::string WrongWhenLoadedAnew();

    // for acts

    bool IsLoaded() const { return tool->IsLoaded(); }
    void Ask(std::string_view type, Parameters parameters = {}) { reply_ = Request(type, parameters); }
    /// The reply is a number of the system's, another one in every process: any above 0 is written as a word.
    void AskForHandle(std::string_view type) {
        Ask(type);
        if (!reply_->empty() && *reply_ != "0") reply_ = "a handle";
    }
    void Node(std::string_view key, std::int32_t kind) { host->NodeEvent("tabQRV", key, kind); }
    void Row(std::string_view text, std::int32_t kind) { host->ListItemEvent("lvTools", text, kind); }
    using ComponentTest::Event;
    using ComponentTest::host;
    using ComponentTest::Load;
    using ComponentTest::Probe;
    using ComponentTest::ProcessEnded;

private:
    void TestBody() override {}
    void OnCall(const arvon::host::CallRecord& call) override;
    void OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) override;
    void OnProblem(const std::string& text) override;

    /// Tool items that can be used under a Vantor, or cannot without one.
    std::string WrongItems() const;
    bool IsProvoked(std::int32_t number, const std::string& description) const;
    /// Number and description of an error; nothing for the provoked failure.
    std::string Told(std::int32_t number, const std::string& description) const;

    Counts counts_;
    std::vector<std::string> failed_;
    std::vector<Report> reports_;
    std::vector<std::string> others_; // boxes, and what was thrown to the host
    std::optional<std::string> reply_;
};

} // namespace kvtm::test
