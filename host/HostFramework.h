#pragma once

#include "core/contract/Framework.h"
#include "host/Benchmarks.h"
#include "host/Controls.h"
#include "host/DataService.h"
#include "host/EventSource.h"
#include "host/Listeners.h"
#include "host/Loader.h"
#include "host/Menus.h"
#include "host/ProcessFollower.h"
#include "host/Profile.h"
#include "host/ReferenceHost.h"
#include "host/Resources.h"
#include "host/Router.h"
#include "host/Settings.h"
#include "host/Tabs.h"
#include "host/TaskViews.h"
#include "host/ToolRecords.h"
#include "host/Toolbar.h"
#include "host/Trace.h"
#include "host/Views.h"
#include "platform/CodePage.h"
#include "platform/FilePaths.h"
#include "platform/Files.h"
#include "platform/Processes.h"
#include "platform/StringModules.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace arvon::host {

/// The framework object that tools are given, with all parts of the host behind it.
class HostFramework final : public IFramework, public std::enable_shared_from_this<HostFramework> {
public:
    HostFramework(std::filesystem::path installation, Hooks hooks);
    ~HostFramework() override;

    void RegisterListener(const std::shared_ptr<IMessageListener>& listener, std::string_view id) override;
    std::shared_ptr<IRouter> Router() override;
    std::shared_ptr<IMessage> NewMessage() override;
    std::shared_ptr<IRequest> NewRequest() override;
    std::shared_ptr<IEvent> NewEvent() override;
    std::shared_ptr<IMessaging> Messaging() override;

    std::string AppPath() override;
    std::string ImageFolder() override;
    std::string ComponentFolder() override;
    std::string InstallPath() override;

    IViews& Views() override;
    ITaskViews& TaskViews() override;
    ITabs& Tabs() override;
    IMenus& Menus() override;
    IMenuItems& ContextMenu() override;
    IButtons& Buttons() override;
    IWindows& Windows() override;
    std::string CurrentControl() override;
    void BringPageForward(std::string_view page) override;
    void Update() override;
    void RefreshViews(std::int32_t which) override;
    void SetBanner(std::string_view caption, std::string_view picture, std::int32_t pictureFlag) override;
    void SetMousePointer(std::int32_t pointer) override;
    void ShowMessage(std::string_view text, std::int32_t style, std::string_view title) override;

    IToolRecords& Tools() override;
    ILoadedTools& LoadedTools() override;
    IToolLoader& Loader() override;
    std::int32_t StartProcess(std::string_view commandLine, std::string_view caller,
                              const std::shared_ptr<IToolRecord>& record) override;

    Value GetResource(std::string_view category, std::string_view key) override;
    std::shared_ptr<ISettings> GetSettings(std::string_view group) override;
    std::string SwitchLanguage(std::string_view language) override;

    /// Unloads and releases all tools and takes listeners, observers and hooks away: whoever still holds the
    /// framework then is alone with it.
    void Close();

private:
    friend class ReferenceHost; // the host's front: drives the parts below
    friend class ReferenceHost::ModelView;

    void AddOwnItems();
    void TellRegistryProblems();
    bool LoadTool(ITool& tool);

    // in the order in which they need each other
    Hooks hooks_;
    std::filesystem::path installation_;
    Trace trace_;
    Support support_;
    Profile profile_;
    std::shared_ptr<ITool> component_;

    std::unique_ptr<platform::FilePaths> paths_;
    std::unique_ptr<platform::Files> files_;
    std::unique_ptr<platform::CodePage> codePage_;
    std::unique_ptr<platform::StringModules> stringModules_;
    std::unique_ptr<platform::Processes> processes_;

    Settings settings_;
    Resources resources_;
    std::shared_ptr<host::Router> router_;
    EventSource events_;
    std::shared_ptr<host::Messaging> messaging_;

    host::Windows windows_;
    Controls controls_;
    host::Views views_;
    host::TaskViews taskViews_;
    host::Tabs tabs_;
    host::Menus menus_;
    host::ContextMenu contextMenu_;
    host::Buttons buttons_;
    ToolRecords records_;
    host::LoadedTools loadedTools_;
    host::Loader loader_;
    std::shared_ptr<Shell> shell_;
    ProcessFollower follower_;

    std::string page_;
    model::Banner banner_;
    std::int32_t pointer_ = pointer::Default;
};

} // namespace arvon::host
