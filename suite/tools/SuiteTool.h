#pragma once

#include "base/ComponentError.h"
#include "core/contract/Framework.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace suite {

/// What the suite's in-process tools share: life cycle, message intake, questions to other tools and the
/// report of errors. A tool registers as the listener of its identifier while it loads, and answers as long
/// as it is loaded: a host keeps the registration of an unloaded tool, whose answer to everything is then
/// empty text.
///
/// A tool derives, overrides what it answers, and exports itself with SUITE_EXPORT_TOOL. Everything runs on
/// the host's user-interface thread; a question to another tool may bring messages to this one before it
/// returns.
class SuiteTool : public arvon::ITool,
                  public arvon::IMessageListener,
                  public arvon::IProfile,
                  public arvon::ISecure,
                  public std::enable_shared_from_this<SuiteTool> {
public:
    explicit SuiteTool(std::string listenerId) : listenerId_(std::move(listenerId)) {}

    bool IsLoaded() const override { return loaded_; }
    bool Load(const std::shared_ptr<arvon::IFramework>& framework) override;
    void Unload() override;

    std::string id() const override { return listenerId_; }
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>& message) override;

    base::Value ID() const override { return profileId_; }
    void SetID(base::Value id) override { profileId_ = std::move(id); }
    std::shared_ptr<arvon::IProfileTasks> Tasks() const override { return tasks_; }
    void SetTasks(std::shared_ptr<arvon::IProfileTasks> tasks) override { tasks_ = std::move(tasks); }

    /// The framework is given by Load; what is set here is not kept.
    std::shared_ptr<arvon::IFramework> Framework() const override { return nullptr; }
    void SetFramework(const std::shared_ptr<arvon::IFramework>&) override {}
    base::Value Key() const override { return key_; }
    void SetKey(base::Value key) override { key_ = std::move(key); }

protected:
    /// Called while loading, when the tool can be asked already. A ComponentError makes the loading fail.
    virtual void OnLoad() {}
    /// The answer to a request; empty for one that the tool does not know.
    virtual std::string OnRequest(arvon::IRequest& /*request*/) { return {}; }
    virtual void OnEvent(arvon::IEvent& /*event*/) {}

    /// The host, as long as the tool is loading or loaded.
    arvon::IFramework& Host() const { return *framework_; }

    using TextParameters = std::initializer_list<std::pair<std::string_view, std::string_view>>;
    /// Asks another listener; empty text when nobody listens under that identifier.
    std::string Ask(std::string_view listener, std::string_view request, TextParameters parameters) const;
    /// An option of a tool, from the tool manager; the fallback when it has no such option, or is not there.
    /// The tool is told of changes by the request "NewOptions" from then on.
    std::string Option(std::string_view toolId, std::string_view name, std::string_view fallback);
    /// Tells the host shell of an error, as the event "ErrorMessage".
    void Report(const base::ComponentError& error, std::string_view procedure) const noexcept;

    /// A parameter as text; empty when it is missing.
    static std::string Text(arvon::IParameters& parameters, std::string_view name);
    /// A parameter as a number. Throws InvalidCall naming it when it is missing, TypeMismatch when it is no
    /// number.
    static double Number(arvon::IParameters& parameters, std::string_view name);

private:
    std::string Deliver(std::string_view listener, arvon::MessageType type, const std::string& body) const;

    std::string listenerId_;
    std::shared_ptr<arvon::IFramework> framework_;
    bool loaded_ = false;
    base::Value profileId_, key_;
    std::shared_ptr<arvon::IProfileTasks> tasks_;
};

/// The value of an option in an options document's text, as "NewOptions" brings it; nothing when it is not
/// there.
std::optional<std::string> OptionIn(std::string_view optionsXml, std::string_view toolId,
                                    std::string_view name);

template <class Tool> void CreateTool(std::shared_ptr<arvon::ITool>* tool) noexcept {
    try {
        *tool = std::make_shared<Tool>();
    } catch (...) {
        tool->reset();
    }
}

} // namespace suite

/// The entry point of a tool's library: one such line in one source file.
#define SUITE_EXPORT_TOOL(Tool)                                                                              \
    extern "C" __attribute__((visibility("default"))) void ArvonCreateTool(                                  \
        arvon::ISupport* support, std::shared_ptr<arvon::ITool>* tool);                                      \
    void ArvonCreateTool(arvon::ISupport*, std::shared_ptr<arvon::ITool>* tool) {                            \
        suite::CreateTool<Tool>(tool);                                                                       \
    }
