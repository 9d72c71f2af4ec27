#pragma once

#include "base/ComponentError.h"
#include "core/contract/Framework.h"

#include <cstdlib>
#include <memory>
#include <string>

/// A tool that does no more than its interfaces ask: it registers as a listener while it loads, and answers
/// simple questions about itself. The environment variable TEST_TOOLS_ALIVE counts the objects of all tools.
class TestTool : public arvon::ITool,
                 public arvon::IMessageListener,
                 public arvon::IProfile,
                 public arvon::ISecure,
                 public std::enable_shared_from_this<TestTool> {
public:
    explicit TestTool(std::string id) : id_(std::move(id)) { CountAlive(1); }
    ~TestTool() override { CountAlive(-1); }

    bool IsLoaded() const override { return loaded_; }
    bool Load(const std::shared_ptr<arvon::IFramework>& framework) override {
        framework_ = framework;
        framework->RegisterListener(shared_from_this(), id_);
        return loaded_ = OnLoad();
    }
    void Unload() override {
        loaded_ = false;
        OnUnload();
    }

    std::string id() const override { return id_; }
    /// "profile": id, number of tasks and key. "unload me": has the shell unload this tool.
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>& message) override {
        const std::string question = message->Body().ToText();
        if (question == "profile") {
            return profileId_.ToText() + "/" + std::to_string(tasks_ ? tasks_->Count() : 0) + "/" +
                   key_.ToText();
        }
        if (question == "unload me") {
            AskToUnload();
            return loaded_ ? "still loaded" : "unloaded, and still here";
        }
        return "hello from " + id_;
    }

    base::Value ID() const override { return profileId_; }
    void SetID(base::Value id) override { profileId_ = std::move(id); }
    std::shared_ptr<arvon::IProfileTasks> Tasks() const override { return tasks_; }
    void SetTasks(std::shared_ptr<arvon::IProfileTasks> tasks) override { tasks_ = std::move(tasks); }
    std::shared_ptr<arvon::IFramework> Framework() const override { return nullptr; }
    void SetFramework(const std::shared_ptr<arvon::IFramework>&) override {}
    base::Value Key() const override { return key_; }
    void SetKey(base::Value key) override { key_ = std::move(key); }

protected:
    virtual bool OnLoad() { return true; }
    virtual void OnUnload() {}
    arvon::IFramework& Host() { return *framework_; }

private:
    void AskToUnload() {
        const auto event = framework_->NewEvent();
        event->SetName("Tool_Unload");
        event->Parameters().Add(arvon::ParameterType::Text, "vrex", id_, true);
        const auto message = framework_->NewMessage();
        message->SetType(static_cast<std::int32_t>(arvon::MessageType::Event));
        message->SetSource(id_);
        message->SetDestination("SnapIn");
        message->SetBody(event->Xml());
        framework_->Router()->Send(message);
    }

    static void CountAlive(int change) {
        constexpr const char* variable = "TEST_TOOLS_ALIVE";
        const char* alive = std::getenv(variable);
        setenv(variable, std::to_string((alive ? std::atoi(alive) : 0) + change).c_str(), 1);
    }

    std::string id_;
    std::shared_ptr<arvon::IFramework> framework_;
    bool loaded_ = false;
    base::Value profileId_, key_;
    std::shared_ptr<arvon::IProfileTasks> tasks_;
};

/// The entry point of a library whose tool is of that class.
#define EXPORT_TEST_TOOL(Tool)                                                                               \
    extern "C" __attribute__((visibility("default"))) void ArvonCreateTool(arvon::ISupport*,                 \
                                                                           std::shared_ptr<arvon::ITool>*);  \
    void ArvonCreateTool(arvon::ISupport*, std::shared_ptr<arvon::ITool>* tool) {                            \
        *tool = std::make_shared<Tool>();                                                                    \
    }
