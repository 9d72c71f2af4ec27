#include "host/HostFramework.h"

#include "base/ComponentError.h"
#include "host/Messages.h"
#include "platform/Registry.h"

#include <array>
#include <utility>

namespace arvon::host {

namespace {

/// Entries of the host's own menu; the tool manager answers them.
struct OwnMenuItem {
    std::string_view key, caption, description;
};
constexpr std::string_view ownMenu = "mnuHost";
constexpr std::array ownMenuItems{
    OwnMenuItem{"mnuInstallTools", "&Install Programs...", "Show programs that can be installed"},
    OwnMenuItem{"mnuUpdateTools", "&Update Programs...", "Show updates of the installed programs"},
    OwnMenuItem{"mnuUpdateSettings", "Update &Settings...", "Show the settings of the updates"},
    OwnMenuItem{"mnuToolsSortName", "Sort by &Name", "Sort the programs by name"},
    OwnMenuItem{"mnuToolsSortVersion", "Sort by &Version", "Sort the programs by version"},
    OwnMenuItem{"mnuToolsSortUPDATED", "Sort by &Date", "Sort the programs by the date of their last update"},
    OwnMenuItem{"mnuToolsSortType", "Sort by &Type", "Sort the programs by classification"},
};
constexpr std::string_view ownButton = "btnUpdateTools";

} // namespace

HostFramework::HostFramework(std::filesystem::path installation, Hooks hooks)
    : hooks_(std::move(hooks)), installation_(std::move(installation)),
      paths_(platform::FilePaths::CreateFor(installation_)), files_(platform::Files::Create()),
      codePage_(platform::CodePage::Create()), stringModules_(platform::StringModules::Create()),
      processes_(platform::Processes::Create(*paths_)),
      settings_(trace_, *files_, installation_ / "host.ini"),
      resources_(trace_, settings_, *paths_, *stringModules_, *codePage_),
      router_(std::make_shared<host::Router>(trace_)), events_(*router_),
      messaging_(std::make_shared<host::Messaging>(trace_, *paths_)), windows_(trace_),
      controls_(trace_, hooks_.makeControl), views_(trace_, controls_, windows_, settings_.CheckBoxes()),
      taskViews_(trace_), tabs_(trace_, events_), menus_(trace_), contextMenu_(trace_), buttons_(trace_),
      records_(trace_, *files_, paths_->ToSystem(settings_.AppPath() + "\\Tools.xml"), hooks_.editRecord),
      loadedTools_(trace_), loader_({trace_, *router_, records_, loadedTools_, settings_, *paths_, support_,
                                     [this](ITool& tool) { return LoadTool(tool); }}),
      shell_(std::make_shared<Shell>(loader_, loadedTools_)),
      follower_(trace_, *processes_,
                [this](const std::string& caller, const std::string& commandLine, std::int32_t processId) {
                    events_.Process(caller, commandLine, processId);
                }) {
    router_->Register(listenerId::Shell, shell_);
    AddOwnItems();
    TellRegistryProblems();
}

HostFramework::~HostFramework() {
    router_->Clear();
}

void HostFramework::AddOwnItems() {
    const auto menu =
        menus_.Add(ownMenu, "&Programs", "The programs of the suite", listenerId::Shell, {}, {}, 0, 0, true);
    for (const OwnMenuItem& item : ownMenuItems)
        menu->Items().Add(item.key, item.caption, item.description, listenerId::Shell);
    const auto button = buttons_.Add(1, ownButton, ButtonStyle::Push);
    button->SetOwner(listenerId::Shell);
    button->SetToolTip("Show updates of the installed programs");
    button->SetPicture("upd");
    button->SetVisible(true);
}

void HostFramework::TellRegistryProblems() {
    try {
        for (const std::string& problem : platform::Registry::Create(*paths_)->Problems())
            trace_.Problem(problem);
    } catch (const base::ComponentError&) { // no registry file at all: whoever reads it is told, every time
    }
}

bool HostFramework::LoadTool(ITool& tool) {
    profile_.GiveTo(tool);
    return tool.Load(shared_from_this());
}

void HostFramework::Close() {
    loader_.UnloadAll();
    router_->Clear();
    component_.reset();
    hooks_ = {};
    trace_.UnsubscribeAll();
}

// messages
// ------------------------------------------------------------------------------------------------------

void HostFramework::RegisterListener(const std::shared_ptr<IMessageListener>& listener, std::string_view id) {
    trace_.Call("RegisterListener", id);
    router_->Register(id, listener);
}

std::shared_ptr<IRouter> HostFramework::Router() {
    trace_.Read("Router");
    return router_;
}

std::shared_ptr<IMessage> HostFramework::NewMessage() {
    trace_.Call("NewMessage");
    return std::make_shared<Message>();
}

std::shared_ptr<IRequest> HostFramework::NewRequest() {
    trace_.Call("NewRequest");
    return std::make_shared<Request>();
}

std::shared_ptr<IEvent> HostFramework::NewEvent() {
    trace_.Call("NewEvent");
    return std::make_shared<Event>();
}

std::shared_ptr<IMessaging> HostFramework::Messaging() {
    trace_.Read("Messaging");
    return messaging_;
}

// places
// --------------------------------------------------------------------------------------------------------

std::string HostFramework::AppPath() {
    trace_.Call("AppPath");
    return settings_.AppPath();
}

std::string HostFramework::ImageFolder() {
    trace_.Call("ImageFolder");
    return settings_.ImageFolder();
}

std::string HostFramework::ComponentFolder() {
    trace_.Call("ComponentFolder");
    return settings_.ComponentFolder();
}

std::string HostFramework::InstallPath() {
    trace_.Call("InstallPath");
    return settings_.InstallPath();
}

// what is drawn
// -------------------------------------------------------------------------------------------------

IViews& HostFramework::Views() {
    trace_.Read("Views");
    return views_;
}

ITaskViews& HostFramework::TaskViews() {
    trace_.Read("TaskViews");
    return taskViews_;
}

ITabs& HostFramework::Tabs() {
    trace_.Read("Tabs");
    return tabs_;
}

IMenus& HostFramework::Menus() {
    trace_.Read("Menus");
    return menus_;
}

IMenuItems& HostFramework::ContextMenu() {
    trace_.Read("ContextMenu");
    return contextMenu_.Items();
}

IButtons& HostFramework::Buttons() {
    trace_.Read("Buttons");
    return buttons_;
}

IWindows& HostFramework::Windows() {
    trace_.Read("Windows");
    return windows_;
}

std::string HostFramework::CurrentControl() {
    trace_.Call("CurrentControl");
    return tabs_.InFront();
}

void HostFramework::BringPageForward(std::string_view page) {
    trace_.Call("BringPageForward", page);
    page_ = page;
    trace_.Changed(ModelPart::Page);
}

void HostFramework::Update() {
    trace_.Call("Update");
    trace_.Changed(ModelPart::Views);
}

void HostFramework::RefreshViews(std::int32_t which) {
    trace_.Call("RefreshViews", which);
    trace_.Changed(ModelPart::Views);
}

void HostFramework::SetBanner(std::string_view caption, std::string_view picture, std::int32_t pictureFlag) {
    trace_.Call("SetBanner", caption, picture, pictureFlag);
    banner_ = {std::string(caption), std::string(picture), pictureFlag};
    trace_.Changed(ModelPart::Page);
}

void HostFramework::SetMousePointer(std::int32_t pointer) {
    trace_.Call("SetMousePointer", pointer);
    pointer_ = pointer;
    trace_.Pointer(pointer);
}

void HostFramework::ShowMessage(std::string_view text, std::int32_t style, std::string_view title) {
    trace_.Call("ShowMessage", text, style, title);
    const std::string shownText(text);
    const std::string shownTitle(title);
    trace_.MessageBox(shownText, style, shownTitle);
    const auto show = hooks_.showMessage; // the host may be closed while the user reads
    if (show) show(shownText, style, shownTitle);
}

// tools and programs
// --------------------------------------------------------------------------------------------

IToolRecords& HostFramework::Tools() {
    trace_.Read("Tools");
    return records_;
}

ILoadedTools& HostFramework::LoadedTools() {
    trace_.Read("LoadedTools");
    return loadedTools_;
}

IToolLoader& HostFramework::Loader() {
    trace_.Read("Loader");
    return loader_;
}

std::int32_t HostFramework::StartProcess(std::string_view commandLine, std::string_view caller,
                                         const std::shared_ptr<IToolRecord>& record) {
    trace_.Call("StartProcess", commandLine, caller);
    model::Process process{0, std::string(commandLine), std::string(caller), {}, {}};
    if (const auto* own = dynamic_cast<const ToolRecord*>(record.get())) {
        process.name = own->Text(ToolField::Name);
        process.vrex = own->Text(ToolField::Vrex);
    }
    return follower_.Start(std::move(process));
}

// resources, settings, language
// ---------------------------------------------------------------------------------

Value HostFramework::GetResource(std::string_view category, std::string_view key) {
    trace_.Call("GetResource", category, key);
    return resources_.Get(category, key);
}

std::shared_ptr<ISettings> HostFramework::GetSettings(std::string_view group) {
    trace_.Call("GetSettings", group);
    return settings_.Group(group);
}

std::string HostFramework::SwitchLanguage(std::string_view language) {
    trace_.Call("SwitchLanguage", language);
    return resources_.SwitchLanguage(std::string(language));
}

} // namespace arvon::host
