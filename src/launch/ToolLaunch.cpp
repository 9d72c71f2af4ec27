#include "core/Names.h"
#include "core/Parameters.h"
#include "core/ToolMain.h"
#include "core/contract/CommandLine.h"
#include "launch/OutsidePrograms.h"
#include "launch/ReportLogo.h"
#include "platform/modRegistry.h"

#include <exception>

namespace kvtm {

namespace boxStyle = arvon::boxStyle;
namespace modRegistry = platform::modRegistry;

namespace {

constexpr const char* launched = "False"; // the reply to every launch but a refused one
constexpr const char* refused = "-1";

/// Set for as long as the object lives, however the scope is left.
class HeldFlag {
public:
    explicit HeldFlag(bool& flag) : flag_(flag) { flag_ = true; }
    ~HeldFlag() { flag_ = false; }
    HeldFlag(const HeldFlag&) = delete;
    HeldFlag& operator=(const HeldFlag&) = delete;

private:
    bool& flag_;
};

} // namespace

std::string ToolMain::LaunchTool(const RequestRef& request, const ToolRecord& shown) {
    return Guarded("LaunchTool", std::string(launched), [&] {
        const std::string sToolName = request ? TextParameter(*request, parameter::ToolName) : std::string();
        if (!sToolName.empty()) m_sLastNodeKey = sToolName;

        if (!m_colLoadedTools.IsEmpty()) {
            m_oFramework->ShowMessage(LoadResString(37) +
                                          "\r\n\tUnload the current Vantor before starting a new one.",
                                      boxStyle::Plain, Title);
            BringToolsTabForward();
            return std::string(launched);
        }
        const ToolRecord tool = shown ? shown : FindToolToLaunch();
        if (!tool) return std::string(launched);
        const std::string sVrex = tool->Get(property::Vrex).ToText();
        if (m_bBusy || FindLoadedTool(sVrex)) {
            TellAlreadyRunning();
            return std::string(launched);
        }
        if (IsOutsideProgram(sVrex)) {
            LaunchOutside(tool);
            return std::string(launched);
        }
        return LaunchInProcess(tool);
    });
}

std::string ToolMain::LaunchToolByName(std::string_view sToolName) {
    return LaunchTool(NewLaunchRequest(sToolName));
}

// Without a name the request would mean the tool of the last node.
void ToolMain::LaunchShownTool(const ToolRecord& tool) {
    const std::string sName = tool->Name();
    if (!sName.empty()) LaunchTool(NewLaunchRequest(sName), tool);
}

RequestRef ToolMain::NewLaunchRequest(std::string_view sToolName) {
    RequestRef request = NewRequest(request::LaunchTool);
    AddText(request->Parameters(), parameter::ToolName, sToolName);
    return request;
}

// A tool's node has the tool's name as its key: the name finds the record of a tool without a node too.
ToolRecord ToolMain::FindToolToLaunch() {
    const bool noToolSelected = m_sLastNodeKey.empty() || m_sLastNodeKey == view::ToolsNode;
    if (noToolSelected) SelectToolsNode(); // the host may answer with a node event that tells another key

    ToolRecord tool = ToolOfNode(m_sLastNodeKey);
    if (!tool) {
        const char* advice = noToolSelected
                                 ? "Please try running the program directly from the Start Menu to "
                                   "help diagnose the problem."
                                 : "Please reinstall the program";
        m_oFramework->ShowMessage(LoadResString(38) + "\r\n" + advice, boxStyle::Critical, LoadResString(46));
    }
    return tool;
}

void ToolMain::TellAlreadyRunning() {
    m_oFramework->ShowMessage(LoadResString(41), boxStyle::Information, LoadResString(48));
}

void ToolMain::LaunchOutside(const ToolRecord& tool) {
    const std::string sVrex = tool->Get(property::Vrex).ToText();
    if (m_colProcesses.Find(sVrex)) {
        TellAlreadyRunning();
        return;
    }
    const std::string commandLine =
        arvon::CommandLineOf(tool->Get(property::Path).ToText(), tool->Get(property::CommandLine).ToText());
    if (commandLine.empty()) return;
    const std::int32_t lPID = m_oFramework->StartProcess(commandLine, Self, tool);
    if (lPID < 1) return;
    m_colProcesses.Add(lPID, sVrex);

    const EventRef load = NewLoadEvent(tool);
    AddInteger(load->Parameters(), parameter::ProcessID, lPID);
    SendEventMessage(load, listener::Launcher);
}

std::string ToolMain::LaunchInProcess(const ToolRecord& tool) {
    const HeldFlag busy(m_bBusy);
    SetMenus(false);
    std::string reply;
    const std::exception_ptr unreported = Caught(
        [&] { reply = Guarded("LaunchTool", std::string(launched), [&] { return LoadThroughHost(tool); }); });
    if (m_colLoadedTools.IsEmpty()) SetMenus(true); // no Vantor came of it
    if (unreported) std::rethrow_exception(unreported);
    return reply;
}

std::string ToolMain::LoadThroughHost(const ToolRecord& tool) {
    // A nested delivery may select another node meanwhile: what is recorded is what was loaded.
    const std::string sName = m_sLastNodeKey;
    // of several records with the name the loader would take the first
    const std::string sVrex = tool->Get(property::Vrex).ToText();
    const bool isFirst = sVrex.empty() || m_oFramework->Tools().Item(sName) == tool;
    if (!m_oFramework->Loader().Load(isFirst ? sName : sVrex, shared_from_this())) {
        m_oFramework->ShowMessage(LoadResString(40) + "\r\n\t" + LoadResString(47) +
                                      tool->Get(property::Name).ToText(),
                                  boxStyle::Plain, Title);
        return refused;
    }
    if (tool->Get(property::Kind).ToInteger() != arvon::VantorKind) return launched;

    m_colLoadedTools.Add(sName); // first of all: whatever fails below, the Vantor is there
    Skipping([&] { SetReportsLogo(tool->Get(property::Brand).ToText()); });
    BringToolsTabForward();
    const EventRef load = NewLoadEvent(tool);
    SendEventMessage(load, listener::Launcher);
    SendEventMessage(load, listener::Shell);
    return launched;
}

void ToolMain::SetReportsLogo(std::string_view sBrand) {
    constexpr std::string_view missing = "none";
    const std::string_view logoFile = LogoFileOfBrand(sBrand);
    if (logoFile.empty()) return;

    std::string binPath(missing);
    Skipping([&] {
        binPath = modRegistry::getRegistryStringValue(m_oServices, platform::HkeyLocalMachine,
                                                      modRegistry::FrameworkKey, "BinPath", missing);
    });
    const std::string folder = binPath != missing ? LogoFolderOfBinPath(binPath) : LogoFolderOfOwnDrive();
    modRegistry::setRegistryStringValue(m_oServices, platform::HkeyLocalMachine, modRegistry::UiValueKey,
                                        "ReportsLogoFile", folder + std::string(logoFile));
}

std::string ToolMain::LogoFolderOfOwnDrive() {
    const std::string ownFolder =
        m_oServices.filePaths->FromSystem(m_oServices.systemInfo->ModuleFile().parent_path());
    if (const auto folder = LogoFolderOnDriveOf(ownFolder)) return *folder;
    // A library outside the installation has no drive letter: the host's own place has one.
    if (const auto folder = LogoFolderOnDriveOf(m_oFramework->ComponentFolder())) return *folder;
    throw OwnError(1, "LaunchTool", "neither the component nor the host lies on a drive");
}

EventRef ToolMain::NewLoadEvent(const ToolRecord& tool) {
    EventRef load = NewEvent(event::ToolLoad, 1, 9);
    AddText(load->Parameters(), parameter::ToolName, tool->Get(property::Name).ToText());
    AddText(load->Parameters(), parameter::Vrex, tool->Get(property::Vrex).ToText());
    return load;
}

void ToolMain::BringToolsTabForward() {
    const std::shared_ptr<arvon::ITab> tab = m_oFramework->Tabs().Item(view::Navigator);
    if (tab) tab->BringForward();
}

void ToolMain::SelectToolsNode() {
    const std::shared_ptr<arvon::ITab> tab = m_oFramework->Tabs().Item(view::Navigator);
    const std::shared_ptr<arvon::INode> node = tab ? tab->FindNode(view::ToolsNode) : nullptr;
    if (node) node->Select();
}

} // namespace kvtm
