#pragma once

#include "core/contract/Menus.h"
#include "core/contract/Messages.h"
#include "core/contract/Tabs.h"
#include "core/contract/Tool.h"
#include "core/contract/Tools.h"
#include "core/contract/Views.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace arvon {

/// A group of the host's settings.
class ISettings {
public:
    virtual ~ISettings() = default;
    /// The value of an item; empty when the group has no such item.
    virtual Value GetItem(std::string_view name) = 0;
};

/// A request to a service of the host (the messaging object's request).
class IServiceRequest {
public:
    virtual ~IServiceRequest() = default;
    virtual void AddParameter(std::string_view name, std::string_view value) = 0;
    /// True when a reply came; its data is then in Data().
    virtual bool Send() = 0;
    virtual std::string Data() const = 0;
};

/// The host's messaging object: services that are no listeners.
class IMessaging {
public:
    virtual ~IMessaging() = default;
    /// `service`: "Data Service"; `name`: "getXMLData" with the parameters "vrex", "path" and "query" (an
    /// XPath, empty for the whole document); its data is the XML text of the selected nodes. Null when no
    /// request can be made.
    virtual std::shared_ptr<IServiceRequest> CreateRequest(std::string_view service, std::string_view name,
                                                           std::string_view sender) = 0;
};

/// Icons of message boxes.
namespace boxStyle {
inline constexpr std::int32_t Plain = 0;
inline constexpr std::int32_t Critical = 16;
inline constexpr std::int32_t Information = 64;
} // namespace boxStyle

/// Mouse pointers.
namespace pointer {
inline constexpr std::int32_t Default = 0;
inline constexpr std::int32_t Hourglass = 11;
} // namespace pointer

/// The host application framework, handed to ITool::Load. References returned live as long as the framework.
/// Every call runs on the user-interface thread and may throw ComponentError; calls marked re-entrant may
/// deliver messages to the caller before they return.
class IFramework {
public:
    virtual ~IFramework() = default;

    // messages
    virtual void RegisterListener(const std::shared_ptr<IMessageListener>& listener, std::string_view id) = 0;
    virtual std::shared_ptr<IRouter> Router() = 0;
    virtual std::shared_ptr<IMessage> NewMessage() = 0;
    virtual std::shared_ptr<IRequest> NewRequest() = 0;
    virtual std::shared_ptr<IEvent> NewEvent() = 0;
    virtual std::shared_ptr<IMessaging> Messaging() = 0; // null when the host has none

    // places; all in the installation's own form ("C:\QUARRA\Arvon"), without a trailing backslash
    virtual std::string AppPath() = 0;         // the host application's base folder
    virtual std::string ImageFolder() = 0;     // pictures of tasks
    virtual std::string ComponentFolder() = 0; // where the tools' libraries lie
    virtual std::string InstallPath() = 0;     // a path on the drive that the suite is installed on

    // what is drawn
    virtual IViews& Views() = 0;
    virtual ITaskViews& TaskViews() = 0;
    virtual ITabs& Tabs() = 0;
    virtual IMenus& Menus() = 0;
    /// Of the node that was clicked last: the host empties it before it raises the event of a right click.
    virtual IMenuItems& ContextMenu() = 0;
    virtual IButtons& Buttons() = 0;
    virtual IWindows& Windows() = 0;
    virtual std::string CurrentControl() = 0; // name of the navigator that is in front; may be empty
    virtual void BringPageForward(std::string_view page) = 0; // the page of an owner, e.g. "KvTM10"
    virtual void Update() = 0;                                // takes over what changed in the views
    virtual void RefreshViews(std::int32_t which) = 0;        // 0: all
    virtual void SetBanner(std::string_view caption, std::string_view picture, std::int32_t pictureFlag) = 0;
    virtual void SetMousePointer(std::int32_t pointer) = 0;
    /// An empty title stands for the host's default title. Re-entrant while the user reads.
    virtual void ShowMessage(std::string_view text, std::int32_t style, std::string_view title) = 0;

    // tools and programs
    virtual IToolRecords& Tools() = 0; // Edit is re-entrant
    virtual ILoadedTools& LoadedTools() = 0;
    virtual IToolLoader& Loader() = 0; // re-entrant
    /// Starts a command line as a process of its own that the host follows: its end is told to `caller` as
    /// the event "ShellProcessComplete". Returns the process id; below 1 when it could not be started.
    /// `record`: whose program it is, for the host's own books; null for a program of no record.
    virtual std::int32_t StartProcess(std::string_view commandLine, std::string_view caller,
                                      const std::shared_ptr<IToolRecord>& record) = 0;

    // resources, settings, language
    /// ("Tools", ""): the handle of the string resource module, 0 when there is none; ("Tools", number as
    /// text): that string. Empty for anything unknown.
    virtual Value GetResource(std::string_view category, std::string_view key) = 0;
    /// Null when there is no such group.
    virtual std::shared_ptr<ISettings> GetSettings(std::string_view group) = 0;
    /// Switches the user interface to a language; the answer is empty when it was not switched.
    virtual std::string SwitchLanguage(std::string_view language) = 0;
};

} // namespace arvon
