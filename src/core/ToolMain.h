#pragma once

#include "base/Collection.h"
#include "base/ComponentError.h"
#include "core/contract/Framework.h"
#include "platform/Services.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Contents: one section a source file, in this order, state last.
//
//   core/Creation.cpp            creation and release
//   core/Loading.cpp             into the host and out of it again
//   core/HostInterfaces.cpp      properties of the host's interfaces, subscribers, permissions
//   core/RequestDispatch.cpp     messages in; the table of requests
//   core/Requests.cpp            requests that need no other section
//   core/EventDispatch.cpp       the table of event kinds; ends of programs
//   core/Senders.cpp             messages out
//   core/ErrorReports.cpp        guards, error reports, diagnostics
//   core/ResourceStrings.cpp     texts of the host's string module
//   core/LoadedTools.cpp         tools leaving the host
//   catalogue/ToolCatalogue.cpp  which tools are listed
//   catalogue/ToolList.cpp       rows of "lvTools"
//   catalogue/ShownTools.cpp     which record a row, a node or a button was made for
//   catalogue/ToolOrder.cpp      sorting and the stored order
//   catalogue/MenusAndButtons.cpp  tool items of menu, toolbar and context menu
//   catalogue/MenuEvents.cpp     clicks on menu items and buttons
//   catalogue/TabsAndNodes.cpp   nodes of "tabQRV", node and tab events
//   catalogue/UpdatesComponent.cpp  what is shown of "Qillo110"
//   options/OptionsStore.cpp     options read and written
//   options/OptionsView.cpp      the options dialog
//   options/PrinterList.cpp      printers
//   options/Locale.cpp           language and font
//   options/PricingOptions.cpp   what the profile lets the user see
//   launch/ToolLaunch.cpp        starting a program
//   launch/TaskPane.cpp          the task pane and its tasks
//   launch/ListItemEvents.cpp    rows checked and opened, columns clicked
//   launch/ToolRemoval.cpp       removing a program
//   launch/UpdatesView.cpp       updates

namespace kvtm {

class DateFormat;
class OptionsDocument;
class ToolOptions;

/// A record of the host and the component's ordered view of such records.
using ToolRecord = std::shared_ptr<arvon::IToolRecord>;
using ToolCollection = arvon::IToolManager::SortedTools;

using MessageRef = std::shared_ptr<arvon::IMessage>;
using RequestRef = std::shared_ptr<arvon::IRequest>;
using EventRef = std::shared_ptr<arvon::IEvent>;

/// The tool manager: the one object that the host creates, loads and then talks to by messages only.
///
/// Life cycle:
///   1. Create: fields at their defaults, IsLoaded False.
///   2. The host sets IProfile.ID, IProfile.Tasks and ISecure.Key.
///   3. ITool.Load: listener registered, views, tab, node and menu added; IsLoaded True.
///      A failing host call ends it with that error, and what was added before stays.
///   4. Messages arrive through IMessageListener.ReceiveMessage, one inside another where
///      a send of the component's own makes the host answer with a message.
///   5. ITool.Unload: what was added is taken down, but for the view "ocxToolsUpdate", the
///      tab "tabQRV" and the listener, which stay with the host; IsLoaded False. Load may
///      follow again.
///
/// Everything runs on the host's user-interface thread. Delivery is synchronous: every send is a point where
/// the world may change.
class ToolMain final : public arvon::ITool,
                       public arvon::IMessageListener,
                       public arvon::IProfile,
                       public arvon::ISecure,
                       public arvon::IToolManager,
                       public std::enable_shared_from_this<ToolMain> {
public:
    // core/Creation.cpp
    static std::shared_ptr<ToolMain> Create(arvon::ISupport& support, platform::Services services);
    ~ToolMain() override;

    // host interfaces: the bodies are the private procedures of the same names
    bool IsLoaded() const override { return ITool_IsLoaded(); }
    bool Load(const std::shared_ptr<arvon::IFramework>& framework) override { return ITool_Load(framework); }
    void Unload() override { ITool_Unload(); }
    std::string id() const override { return IMessageListener_id(); }
    std::string ReceiveMessage(const MessageRef& message) override {
        return IMessageListener_ReceiveMessage(message);
    }
    base::Value ID() const override { return m_vProfileID; }
    void SetID(base::Value id) override { m_vProfileID = std::move(id); }
    std::shared_ptr<arvon::IProfileTasks> Tasks() const override { return m_oTasks; }
    void SetTasks(std::shared_ptr<arvon::IProfileTasks> tasks) override { m_oTasks = std::move(tasks); }
    std::shared_ptr<arvon::IFramework> Framework() const override { return nullptr; }
    void SetFramework(const std::shared_ptr<arvon::IFramework>&) override {} // nothing is kept
    base::Value Key() const override { return m_vKey; }
    void SetKey(base::Value key) override { m_vKey = std::move(key); }

    // core/HostInterfaces.cpp
    void AddSubscriber(std::string_view sToolID) override;
    // core/Senders.cpp
    std::string SendRequestMessage(const RequestRef& oRequest, std::string_view sDest) override;
    // core/ErrorReports.cpp
    void AddBenchmark(std::string_view sMethod, double lLengthInCall, std::string_view sTypeName,
                      std::string_view sPars) override;
    // core/ResourceStrings.cpp
    std::string LoadResString(std::int32_t lResID) override;
    // catalogue/ToolOrder.cpp
    ToolCollection Sort(std::string_view strPropertyName, bool bDescend, bool blnCompareNumeric) override;

private:
    friend struct ToolMainProbe; // the tests' way to single procedures

    // core/Creation.cpp
    ToolMain(arvon::ISupport& support, platform::Services services);

    // core/Loading.cpp
    bool ITool_Load(const std::shared_ptr<arvon::IFramework>& framework);
    void ITool_Unload();
    void AddControlView(std::string_view name, std::string_view control);
    void AddToolListView();
    std::shared_ptr<arvon::ITab> AddToolsTab();
    void AddToolsNode(arvon::ITab& tab);
    void AddToolsMenu();

    // core/HostInterfaces.cpp
    bool ITool_IsLoaded() const;
    std::string IMessageListener_id() const;
    bool HasTask(std::string_view sTaskName, std::string_view sSecond) const;

    // core/RequestDispatch.cpp
    std::string IMessageListener_ReceiveMessage(const MessageRef& message);
    std::string HandleRequest(const RequestRef& request);

    // core/Requests.cpp
    void Answer_GetResourceModule(const RequestRef& request, std::string& reply);
    void Answer_GetToolProperties(const RequestRef& request, std::string& reply);
    void Answer_SaveToolProperties(const RequestRef& request, std::string& reply);
    void Answer_CancelToolProperties(const RequestRef& request, std::string& reply);
    void Answer_LaunchTool(const RequestRef& request, std::string& reply);
    void Answer_Initialize(const RequestRef& request, std::string& reply);
    void Answer_UnloadTool(const RequestRef& request, std::string& reply);
    void Answer_UnloadUpdateView(const RequestRef& request, std::string& reply);
    void Answer_InitializeOptions(const RequestRef& request, std::string& reply);
    void Answer_GetOptionData(const RequestRef& request, std::string& reply);
    void Answer_UpdateOptions(const RequestRef& request, std::string& reply);
    void Answer_UnloadOptionsTool(const RequestRef& request, std::string& reply);
    void Answer_EnumPrinters(const RequestRef& request, std::string& reply);
    void Answer_LoadedVantors(const RequestRef& request, std::string& reply);
    void Answer_SelectFixedTab(const RequestRef& request, std::string& reply);
    void Answer_GetResourcePath(const RequestRef& request, std::string& reply);
    void Answer_SetOptionValue(const RequestRef& request, std::string& reply);
    void Answer_GetOptionValue(const RequestRef& request, std::string& reply);
    /// The listed tool whose `Name` equals m_sLastNodeKey; null when there is none. Unreadable records are
    /// skipped.
    ToolRecord ListedToolOfLastNode();

    // core/EventDispatch.cpp
    void HandleEvent(const EventRef& event);
    void HandleProcessEvent(const EventRef& event);
    void ForgetProcess(std::int32_t lPID);

    // core/Senders.cpp
    std::string SendEventMessage(const EventRef& oEvent, std::string_view sDest);
    std::string SendRequestToOwner(const RequestRef& oRequest, std::string_view sDest);
    std::int32_t GetWindowHandle();
    void RefreshZarnMenus();
    /// SendRequestToOwner for a request's XML text, unguarded.
    std::string SendBodyToOwner(base::Value body, std::string_view sDest);
    MessageRef NewEnvelope(arvon::MessageType type, std::string_view sDest, base::Value body);
    RequestRef NewRequest(std::string_view type);
    EventRef NewEvent(std::string_view name, std::int32_t category, std::int32_t level);

    // core/ErrorReports.cpp
    std::string FullProcName(std::string_view sProc) const;
    /// Sends the event "ErrorMessage" to "SnapIn", unless the error's number is 0 or there is no framework to
    /// send it through. Not guarded itself.
    void ReportError(const base::ComponentError& error, std::string_view sProcName);
    /// Reports the exception in flight under the full name of `sProc`.
    void ReportErrorInFlight(std::string_view sProc);
    void DebugTrace(std::string_view sProcName, std::string_view sMessage, bool bFlag);
    /// Runs a procedure's body; a failure is reported once under `sProc`, and the neutral value returned.
    template <class Result, class Body> Result Guarded(std::string_view sProc, Result neutral, Body&& body) {
        try {
            return body();
        } catch (...) {
            ReportErrorInFlight(sProc);
            return neutral;
        }
    }
    template <class Body> void Guarded(std::string_view sProc, Body&& body) {
        try {
            body();
        } catch (...) {
            ReportErrorInFlight(sProc);
        }
    }
    /// Runs steps after which something must be put back whatever happens, even when a report could not be
    /// sent: to be thrown on once that is done. Null when nothing failed.
    template <class Steps> static std::exception_ptr Caught(Steps&& steps) noexcept {
        try {
            steps();
            return nullptr;
        } catch (...) {
            return std::current_exception();
        }
    }
    /// Runs a step whose failure is nobody's concern; false when it failed.
    template <class Step> static bool Skipping(Step&& step) noexcept {
        return !Caught(std::forward<Step>(step));
    }
    /// Runs the steps that finish what was just added to the host. Where one fails, it is taken away again
    /// (or left, where the host refuses that too) and the failure thrown on.
    template <class Steps, class TakeAway> static void FinishOrTakeAway(Steps&& steps, TakeAway&& takeAway) {
        const std::exception_ptr failure = Caught(std::forward<Steps>(steps));
        if (!failure) return;
        Skipping(std::forward<TakeAway>(takeAway));
        std::rethrow_exception(failure);
    }
    /// Throws ObjectNotSet for an empty reference; `missing` is the description.
    template <class Reference>
    void RequireObject(const Reference& reference, std::string_view sProc, const char* missing) const {
        if (!reference) throw base::ComponentError(base::errors::ObjectNotSet, FullProcName(sProc), missing);
    }
    /// An error of the component's own: number 0x80040000 + `number`, source FullProcName(`sProc`).
    base::ComponentError OwnError(std::int32_t number, std::string_view sProc, std::string description) const;

    // core/ResourceStrings.cpp
    std::string TextOfResource(std::int32_t lResID);

    // core/LoadedTools.cpp
    void Request_UnloadTool(const RequestRef& request);
    void RemoveToolFromLoadedToolsCollection(std::string_view sName);
    /// The framework's loaded tool object of that product-data key, letter case ignored; null when there is
    /// none.
    std::shared_ptr<arvon::ILoadedTool> FindLoadedTool(std::string_view sVrex);
    void TellWorkflow(std::string_view sName);

    // catalogue/ToolCatalogue.cpp
    std::int32_t CountToolsInCatalog(bool notify);
    bool LoadToolsCollection();
    /// The catalogue was written anew: records, listed tools and their count follow.
    void TakeNewCatalogue();
    ToolCollection& ListedTools(); // created empty when first needed

    // catalogue/ToolList.cpp
    void LoadTools(std::string_view tabKey, bool useListedTools);
    bool LoadToolIntoListView(const ToolRecord& tool, arvon::IListView& list, const DateFormat& dateFormat);

    // catalogue/ShownTools.cpp
    /// A button that was put into the toolbar, with the record that it was made for (null: a separator).
    struct ShownButton {
        std::string sKey;
        ToolRecord oTool;
    };
    /// The host's record of that VREX (exact), of several the one of that name, else the first; null when
    /// there is none. Without a VREX the name must be equal.
    ToolRecord FindTool(std::string_view sVrex, std::string_view sName);
    /// The same record as the host has it now; null when it is gone.
    ToolRecord FindPresent(const ToolRecord& tool);
    /// The record of the list's current row; null when there is no row or no such record.
    ToolRecord SelectedTool();
    /// The record of the current row where that has this text, else the host's first of that name; may be
    /// null.
    ToolRecord ToolOfRow(std::string_view sText);
    const arvon::IListItem* CurrentRow(); // null when there is none
    ToolRecord ToolOfNode(std::string_view sName);
    bool IsShownButton(std::string_view sKey) const; // exact
    ToolRecord ToolOfButton(std::string_view sKey);  // null when it is no tool's button

    // catalogue/ToolOrder.cpp
    struct ToolOrder {
        std::string key;       // a property of the records
        std::string direction; // read as a boolean: True is descending
    };
    void SortListedTools(std::string_view propertyName, std::string_view direction);
    void SortTools(std::string_view propertyName, std::string_view direction, bool selectTab);
    ToolOrder StoredToolOrder();
    bool SetToolOrder();
    /// Fills the listed tools again, in the stored order; nothing that is shown changes.
    void RelistTools();

    // catalogue/MenusAndButtons.cpp
    /// The listed tools, or the host's whole collection, as they stand now.
    std::vector<ToolRecord> ToolsInOrder(bool useListedTools);
    /// `toolText`: what stands before a tool's name in descriptions and tool tips.
    bool AddMenu(arvon::IMenu& parent, const ToolRecord& tool, std::string_view toolText, bool previous);
    bool AddButton(const ToolRecord& tool, std::string_view toolText, std::size_t position);
    /// Adds a button and finishes it; takes it away again where that fails.
    template <class Finish> void PlaceButton(std::size_t position, const ShownButton& shown,
                                             arvon::ButtonStyle style, Finish&& finish);
    bool BuildToolMenu(arvon::IMenu& parent, bool useListedTools);
    bool BuildToolButtons(bool useListedTools);
    void AddSeparatorButton(std::string_view key); // unless the toolbar has it
    void RemoveOwnButtons();
    void RebuildToolMenus(bool useListedTools);
    bool SetMenus(bool enabled);
    void BuildContextMenu();

    // catalogue/MenuEvents.cpp
    void HandleMenuEvent(const EventRef& event);
    void OpenOptions();
    void ShowToolNode(std::string_view toolName);
    void HandleButtonEvent(const EventRef& event);
    void ShowUpdatesOnToolsNode(arvon::ITab& navigator);

    // catalogue/TabsAndNodes.cpp
    void HandleNodeEvent(const EventRef& event);
    bool HandleTopNodeEvent(arvon::INode& node, const std::string& key, std::int32_t kind);
    bool HandleToolNodeEvent(arvon::INode& node, const std::string& key, std::int32_t kind);
    void ShowToolsMenu();
    void HandleTabEvent(const EventRef& event);
    void BuildToolNodes(std::string_view parentKey, bool useListedTools);
    void RefreshToolsNode(bool selectTab);

    // catalogue/UpdatesComponent.cpp
    void ShowOptions();
    void PrepareUpdatesBanner();
    void LoadUpdatesComponent(); // "Qillo110", unless the host has it loaded

    // options/OptionsStore.cpp
    std::string getOptionData(std::string_view sToolID);
    std::string GetOptionValue(const RequestRef& request);
    std::string SetOptionValue(const RequestRef& request);
    std::string SetOptionDefault(std::string_view sToolID, std::string_view sOptionName,
                                 std::string_view sOptionValue);
    /// Saves the options document, whose text it is, and makes the notice while the disk is waited for.
    void SaveAndTell(const std::shared_ptr<const std::string>& options);
    /// `body`: of the notice, where it was made already.
    void NewOptions(const base::Value& sOptionsXML, base::Value body = {});
    RequestRef NoticeOfOptions(const base::Value& sOptionsXML);
    /// GetOptionValue for the component's own use.
    std::string ReadOption(std::string_view sToolID, std::string_view sOptionName);
    std::string OptionsFile() const;
    /// The data service's answer for the options file; nothing when no reply came.
    std::optional<std::string> AskDataService(const std::string& query);
    void EnterDefaultPrinter(OptionsDocument& document);
    void LoadOptionsDocument();
    /// Writes the options document, whose text it is, to its file; may call `work` while the disk is waited
    /// for.
    void SaveOptionsDocument(const std::string& sOptionsXML, const std::function<void()>& work);
    std::string RequiredText(const RequestRef& request, std::string_view parameter,
                             std::string_view sProc) const;
    base::ComponentError MissingOption(std::string_view sProc, std::string_view sToolID,
                                       std::string_view sOptionName) const;
    base::ComponentError MissingValue(std::string_view sProc, std::string_view sOptionName) const;

    // options/OptionsView.cpp
    bool LoadOptionsForView();
    void ShowOptionsView();
    void CloseOptionsView(); // nothing to do without its window
    void UpdateOptions(const RequestRef& request);
    void SwitchToChosenLanguage();

    // options/PrinterList.cpp
    std::int32_t GetPlatformId();
    base::Collection<std::string> GetPrinters(std::int32_t platformId);
    bool IsDefaultPrinter(std::string_view printerName);
    std::string EnumPrinters();

    // options/Locale.cpp
    void SetNewLang(std::string_view language);
    void GetLocaleProps();

    // options/PricingOptions.cpp
    void SetSecureOptions(OptionsDocument& document);

    // launch/ToolLaunch.cpp
    /// `shown`: the record that is meant; null for the one that the name means.
    std::string LaunchTool(const RequestRef& request, const ToolRecord& shown = nullptr);
    /// LaunchTool with a request that names the tool.
    std::string LaunchToolByName(std::string_view sToolName);
    RequestRef NewLaunchRequest(std::string_view sToolName);
    /// LaunchTool for the record that something on the screen was made for; nothing for one without a name.
    void LaunchShownTool(const ToolRecord& tool);
    /// The record that m_sLastNodeKey names; null, and a message to the user, when there is none.
    ToolRecord FindToolToLaunch();
    void TellAlreadyRunning();
    void LaunchOutside(const ToolRecord& tool);
    std::string LaunchInProcess(const ToolRecord& tool);
    std::string LoadThroughHost(const ToolRecord& tool);
    void SetReportsLogo(std::string_view sBrand);
    std::string LogoFolderOfOwnDrive();
    EventRef NewLoadEvent(const ToolRecord& tool);
    void BringToolsTabForward();
    void SelectToolsNode();

    // launch/TaskPane.cpp
    void CreateTaskViews();
    void HandleTaskEvent(const EventRef& event);
    void Task_LaunchTool(const EventRef& event);
    void Task_RemoveTool(const EventRef& event);
    void Task_EditTool(const EventRef& event);
    void Task_UpdateTool(const EventRef& event);
    void Task_AddTool(const EventRef& event);
    void Task_ShowAll(const EventRef& event);

    // launch/ListItemEvents.cpp
    void HandleListItemEvent(const EventRef& event);
    void OpenRow(std::string_view sText);
    void KeepCheck(std::string_view sText, bool bChecked);

    // launch/ToolRemoval.cpp
    void RemoveTool(std::string_view sVrex, std::string_view sName, std::string_view sUnused,
                    std::string_view sProgramType);
    /// Takes a tool that is gone from the disk out of the catalogue and of everything that shows it.
    void ForgetRemovedTool(std::string_view sVrex, std::string_view sName);
    void ForgetRecord(const ToolRecord& tool);
    void RemoveItemsOfTool(std::string_view sIdentifier);
    void RemoveFromListedTools(std::string_view sName);

    // launch/UpdatesView.cpp
    void OpenUpdateToolsView();
    void RequestUpdates(bool bShowNew);

    // state of core
    const platform::Services m_oServices;
    std::shared_ptr<arvon::IFramework> m_oFramework; // kept by Unload
    std::shared_ptr<arvon::IProfileTasks> m_oTasks;  // may be empty
    base::Value m_vProfileID;                        //
    base::Value m_vKey;                              // the host's; read by nobody else
    std::string m_sName;                             // "KvTM10.ToolMain": source of errors
    base::Collection<std::string> m_colLoadedTools;  // names of in-process programs still loaded
    base::Collection<std::int32_t> m_colProcesses;   // process ids under the program's VREX
    bool m_bLoaded = false;                          //
    std::vector<std::string> m_asSubscribers;        // element 0 is never used
    bool m_bUnloading = false;                       // the host has begun to unload the component
    bool m_bProfileFlag = false;                     // prices are permitted: profile 3 or 5 at Load
    std::string m_sAppPath;                          //
    std::shared_ptr<arvon::IBenchmarkRecorder> m_oBenchmark;
    std::shared_ptr<arvon::IRouter> m_oRouter; // fetched by the first SendRequestToOwner
    std::int32_t m_hResModule = 0;             // the host's string module, 0 until first asked for
    std::string m_sLocaleID;                   // cached
    std::string m_sLastNodeKey;                // the tool whose node was last selected in "tabQRV"
    std::string m_sBrand;                      //

    // state of catalogue
    std::unique_ptr<ToolCollection> m_colListedTools; // null until first needed; see ListedTools()
    std::int32_t m_lKnownToolCount = 0;               // Tool elements at the last count
    std::uint64_t m_lCatalogueCounts = 0;             // how often that was stored
    bool m_bShowAllTools = false;                     //
    std::vector<ShownButton> m_aShownButtons;         // the toolbar's, as they were built last

    // state of options
    std::unique_ptr<OptionsDocument> m_oOptionsDoc; // null until first needed
    std::unique_ptr<ToolOptions> m_oToolOptions;    //
    std::string m_sOptionsXML;                      // what the options view is initialised with
    std::string m_sFontName;                        //
    std::string m_sFontSize;                        //

    // state of launch
    bool m_bBusy = false;       // an in-process load is under way
    std::string m_sCurrentTool; // text of the row whose check changed last
};

} // namespace kvtm
