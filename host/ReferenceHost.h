#pragma once

#include "core/contract/EventShapes.h"
#include "core/contract/Framework.h"
#include "host/Model.h"
#include "host/Observer.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class HostFramework;

/// Identifiers of those who send and listen.
namespace listenerId {
inline constexpr std::string_view Component = "KvTM10"; // the tool manager
inline constexpr std::string_view Shell = "SnapIn";     // the host's own listener
inline constexpr std::string_view Console = "Console";
} // namespace listenerId

/// What a screen puts in the place of the host's own behaviour. All optional.
struct Hooks {
    /// Makes the control of a view by its programmatic name ("KvTMU110.ctlOptions"); null: the host's own
    /// double, where it has one.
    std::function<std::shared_ptr<base::Object>(std::string_view control, std::string_view viewKey)>
        makeControl;
    /// Shows a message box and returns when it was answered; without it a box counts as answered at once.
    std::function<void(const std::string& text, std::int32_t style, const std::string& title)> showMessage;
    /// Lets the user edit a record; true when it was changed and is to be saved.
    std::function<bool(IToolRecord& record)> editRecord;
};

/// The reference host "Arvon110": a complete model of the host application with no screen, working on an
/// installation on disk.
///
/// One object a process at a time: it names its installation in the environment (ARVON_INSTALLATION), for
/// itself, for the tools that it loads and for the programs that it starts. Everything runs on the thread
/// that made it. All failures are ComponentErrors.
///
/// Life cycle: construct, Subscribe, OpenComponent (or Attach), Load, work, Unload, destroy. Destroying takes
/// all listeners away and releases all tools before the model goes. Libraries stay in the process.
class ReferenceHost {
public:
    /// Opens an installation: a folder with registry.reg and drive_c, perhaps host.ini. Throws PathNotFound
    /// or FileNotFound when it is none, naming what is missing. Lines of registry.reg and host.ini that
    /// cannot be understood are among the Problems then.
    explicit ReferenceHost(const std::filesystem::path& installation, Hooks hooks = {});
    ~ReferenceHost();
    ReferenceHost(const ReferenceHost&) = delete;
    ReferenceHost& operator=(const ReferenceHost&) = delete;

    std::shared_ptr<IFramework> Framework() const;
    ISupport& Support() const;
    std::filesystem::path Installation() const;

    // observing
    // -----------------------------------------------------------------------------------------------
    /// The observer must live until it is unsubscribed or the host is gone.
    void Subscribe(IObserver& observer);
    void Unsubscribe(IObserver& observer);

    // the component
    // -------------------------------------------------------------------------------------------
    /// Loads the tool manager's library (a system path) and makes its object; throws when that fails.
    void OpenComponent(const std::filesystem::path& library);
    /// Takes an object made elsewhere as the tool manager.
    void Attach(std::shared_ptr<ITool> component);
    std::shared_ptr<ITool> Component() const; // null before OpenComponent
    /// Given to the component with the next Load.
    void SetProfileId(base::Value id);
    void AddProfileTask(std::string_view name, std::string_view secondText);
    void SetKey(base::Value key);
    /// Gives profile, tasks and key to the component and loads it; what its Load throws comes through.
    bool Load();
    void Unload();

    // messages
    // ------------------------------------------------------------------------------------------------
    /// Deliver through the router and return the reply.
    std::string SendRequest(std::string_view type, std::span<const ParameterRecord> parameters,
                            std::string_view source = listenerId::Console,
                            std::string_view destination = listenerId::Component);
    struct EventHead {
        std::int32_t objectType = 0;
        std::string name;
        std::int32_t category = 0;
        std::int32_t level = 0;
    };
    std::string SendEvent(const EventHead& head, std::span<const ParameterRecord> parameters,
                          std::string_view source = listenerId::Console,
                          std::string_view destination = listenerId::Component);
    /// An envelope with any number and any body text, well-formed or not.
    std::string SendMessage(std::int32_t type, std::string_view body,
                            std::string_view source = listenerId::Console,
                            std::string_view destination = listenerId::Component);
    /// Registers a listener that answers every message by `reply`. Under the shell's own identifier the shell
    /// goes on doing its work and answers `reply`.
    void Listen(std::string_view id, std::string_view reply);
    /// Throws InvalidCall when nobody listens under that identifier.
    void Unlisten(std::string_view id);

    // what a user does; each raises the event to the owner of the thing. InvalidCall when there is no such
    // thing or it cannot be used as it stands (hidden, disabled, a separator)
    // ------------------------------------------
    void ClickMenu(std::string_view key); // of a menu or of the context menu
    void ClickButton(std::string_view key);
    /// A task of a pane, or one that the host's own controls offer: "tskShowAll" (turns the pane's switch
    /// first), "tskUpdateTool", "tskAddTool", "tskEditTool".
    void ClickTask(std::string_view key, bool flag = false);
    /// Kind 7, a right click, empties the context menu first: what it holds then is this node's.
    void NodeEvent(std::string_view tabKey, std::string_view nodeKey,
                   std::int32_t kind = eventKind::Selected);
    void TabEvent(std::string_view tabKey, std::int32_t kind = eventKind::Selected);
    /// The row of that text becomes the current one. A change of its check: `checked`, or the other way round
    /// without it.
    void ListItemEvent(std::string_view viewKey, std::string_view rowText,
                       std::int32_t kind = eventKind::Opened, std::optional<bool> checked = {});
    /// A click on a row without opening it: it becomes the current one, no event.
    void SelectRow(std::string_view viewKey, std::string_view rowText);
    void ColumnClick(std::string_view viewKey, std::string_view columnKey, std::string_view order);
    void CloseWindow(std::string_view key);
    /// Unloads an in-process tool that the host loaded, by name, as its own close command would.
    void UnloadTool(std::string_view name);

    // how the host behaves
    // ------------------------------------------------------------------------------------
    /// What the next switch of language answers, once.
    void SetLanguageAnswer(std::string_view answer);
    /// The loader refuses this tool from now on.
    void Refuse(std::string_view toolName);
    /// Of the calls that a tool makes of a host operation, the next `after` pass and the `count` behind them
    /// throw ComponentError 1001, source "Arvon110", description "OPERATION failed". What the host does by
    /// itself, such as delivering the messages above, is no call. Throws InvalidCall for a name that is no
    /// operation (see Operations).
    void FailNext(std::string_view operation, std::size_t count = 1, std::size_t after = 0);
    static std::span<const std::string_view> Operations();
    /// Why the loader last refused a tool; empty when it did not.
    std::string ProblemOf(std::string_view toolName) const;
    /// The texts told to OnProblem so far, oldest first; the newest 1,000.
    std::vector<std::string> Problems() const;
    /// The benchmark texts recorded so far, oldest first; the newest 10,000.
    std::vector<std::string> Benchmarks() const;
    /// What the shell answers to "GetWindowHandle".
    void SetWindowHandle(std::int32_t handle);

    // processes
    // -----------------------------------------------------------------------------------------------
    /// Becomes readable when ProcessEvents has something to do: for an event loop of one's own.
    int PollDescriptor() const;
    /// Waits up to `timeout` for ends of followed processes (none: returns at once), takes in those that
    /// ended and tells their callers. Returns how many. A turn takes in a few dozen, and none that ended
    /// since it began: PollDescriptor stays readable for the rest, so that a listener that has a program
    /// started again at its end does not hold the thread.
    std::size_t ProcessEvents(std::chrono::milliseconds timeout = std::chrono::milliseconds(0));
    /// Until no process is followed any more; false when that took longer than `timeout` (none: however
    /// long).
    bool WaitForProcesses(std::optional<std::chrono::milliseconds> timeout = {});

    // the model as it stands
    // ----------------------------------------------------------------------------------
    class ModelView {
    public:
        std::vector<model::Tool> Tools() const;
        /// Of a list view; empty when there is none of that key.
        std::vector<model::ListRow> List(std::string_view viewKey) const;
        std::vector<model::Column> Columns(std::string_view viewKey) const;
        std::vector<model::Menu> Menus() const;
        std::vector<model::Button> Toolbar() const;
        std::vector<model::MenuItem> ContextMenu() const;
        std::vector<model::Tab> Tabs() const;
        std::vector<model::View> Views() const;
        std::vector<model::View> Windows() const; // in the order of opening
        std::vector<model::TaskView> TaskViews() const;
        std::vector<model::LoadedTool> Loaded() const;
        std::vector<model::Process> Processes() const;
        std::vector<std::string> Listeners() const;
        std::vector<model::Control> Controls() const; // doubles made so far
        model::Banner Banner() const;
        std::string Page() const;           // brought forward last
        std::string CurrentControl() const; // key of the tab in front
        std::string Language() const;
        std::int32_t Pointer() const;

    private:
        friend class ReferenceHost;
        explicit ModelView(const HostFramework& framework) : framework_(&framework) {}
        const HostFramework* framework_;
    };
    ModelView Model() const;

    /// The control object of a view, made when first asked for; null when there is none.
    std::shared_ptr<base::Object> ControlOf(std::string_view viewKey) const;

private:
    std::shared_ptr<HostFramework> framework_;
};

} // namespace arvon::host
