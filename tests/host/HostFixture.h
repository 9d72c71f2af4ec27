#pragma once

#include "base/ComponentError.h"
#include "host/ReferenceHost.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestInstallation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arvon::host::test {

using kvtm::test::CatalogueTool;
using kvtm::test::TestInstallation;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Keeps what the host tells, each as one line of text.
class Recorder : public IObserver {
public:
    /// Menus.Add("mnuTool", 0, true, null), with " failed" behind it where it was made to.
    std::vector<std::string> calls;
    /// Console>KvTM10 request LaunchTool(ToolName=Layout) mode 1; Console>KvTM10 event 4 lvTools
    /// 13/0(Text=a).
    std::vector<std::string> messages;
    /// `boxes`: text/style/title. `processes`: started or ended, with the exit code, and the command line.
    std::vector<std::string> boxes, processes, problems;
    std::vector<std::int32_t> pointers;
    std::vector<MessageRecord> records, replies;
    std::vector<ModelPart> changes;

    void OnCall(const CallRecord& call) override;
    void OnMessage(const MessageRecord& message) override;
    void OnReply(const MessageRecord& message) override { replies.push_back(message); }
    void OnMessageBox(const std::string& text, std::int32_t style, const std::string& title) override;
    void OnPointer(std::int32_t pointer) override { pointers.push_back(pointer); }
    void OnProcessStarted(const model::Process& process) override;
    void OnProcessEnded(const model::Process& process, const model::ProcessEnd& end) override;
    void OnProblem(const std::string& text) override { problems.push_back(text); }
    void OnChanged(ModelPart part) override { changes.push_back(part); }

    void Forget() { *this = Recorder(); }
};

/// The text of a message as Recorder writes it.
std::string Written(const MessageRecord& message);

/// A listener that does as it is told.
class TestListener final : public IMessageListener {
public:
    using Answer = std::function<std::string(const std::shared_ptr<IMessage>&)>;
    explicit TestListener(std::string id, Answer answer = {})
        : id_(std::move(id)), answer_(std::move(answer)) {}
    std::string id() const override { return id_; }
    std::string ReceiveMessage(const std::shared_ptr<IMessage>& message) override {
        ++count;
        return answer_ ? answer_(message) : std::string();
    }
    int count = 0; // messages received

private:
    std::string id_;
    Answer answer_;
};

/// A host on a small installation of its own, with an observer.
class HostTest : public testing::Test {
protected:
    HostTest() = default;
    ~HostTest() override { Close(); }

    /// Makes the host from the installation as it stands now.
    void Open(Hooks hooks = {});
    void OpenWith(const std::vector<CatalogueTool>& tools, Hooks hooks = {});
    void Close();

    /// Opened when first asked for.
    ReferenceHost& Host();
    IFramework& Framework() { return *Host().Framework(); }
    ReferenceHost::ModelView Model() { return Host().Model(); }

    std::shared_ptr<TestListener> Listen(std::string id, TestListener::Answer answer = {});
    /// An envelope for Router::Send.
    std::shared_ptr<IMessage> NewMessage(std::string_view destination, std::int32_t type = 0,
                                         std::string_view body = {});
    std::string Send(std::string_view destination) {
        return Framework().Router()->Send(NewMessage(destination));
    }

    TestInstallation installation;
    Recorder recorder;

private:
    std::unique_ptr<ReferenceHost> host_;
};

} // namespace arvon::host::test
