#include "tests/sweep/Session.h"

#include "base/Text.h"
#include "core/Names.h"

#include <algorithm>
#include <filesystem>

namespace kvtm::test {

namespace {

using Texts = std::vector<std::string>;

std::string Joined(const Texts& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

/// On one line, cut where it gets long.
std::string Shortened(std::string text) {
    constexpr std::size_t longest = 60;
    text = base::Replace(base::Replace(base::Replace(text, "\r", ""), "\n", " / "), "\t", "");
    return text.size() <= longest ? text : text.substr(0, longest) + "...";
}

} // namespace

Session::Session() {
    installation.WriteTools(
        {{.name = "Layout", .vrex = "Tobr43", .identifier = "LAY43", .path = "/bin/true"},
         {.name = "Grid", .vrex = "Jx355", .identifier = "GRD55", .path = "/bin/true"},
         {.name = "Beam",
          .vrex = "Vn21",
          .identifier = "BMF21",
          .kind = "3",
          .brand = "Halcrest",
          .path = GOOD_TOOL},
         {.name = "Units", .vrex = "Qx07", .identifier = "UNI07", .path = GOOD_TOOL},
         {.name = "Hidden", .vrex = "Tobr99", .identifier = "HID99", .showInList = "0", .path = "/bin/true"},
         {.name = "Program Updates",
          .vrex = "Qillo110",
          .identifier = "Qillo110",
          .classification = "Core Tool",
          .path = GOOD_TOOL}});
    installation.Write("Arvon/OPTIONS.XML",
                       "<Options><ToolOptions><Tool ID=\"SOV02\">"
                       "<Option><Name>cmbToolSortKey</Name><Value>name</Value></Option>"
                       "<Option><Name>optToolSortOrder</Name><Value>0</Value></Option></Tool>"
                       "<Tool ID=\"A\"><Option><Name>n</Name><Value>1</Value></Option></Tool>"
                       "</ToolOptions></Options>");
    installation.Write("Enviro/ResultOK.txt", "");
    std::filesystem::create_symlink("/bin/true", installation.File("Enviro/KT4-RemoveProgram.exe"));
    CreateHost();
    CreateTool();
    for (const std::string_view id : {listener::Launcher, listener::Workflow, listener::Updates})
        host->Listen(id, "");
    host->Listen("Subscriber", "");
    tool->AddSubscriber("Subscriber");
    for (const char* task : {"Can Update", "Can Launch"})
        host->AddProfileTask(task, "Layout");
}

Session::~Session() {
    host->WaitForProcesses();
}

void Session::Begin() {
    Load();
    Node("nodTools", arvon::eventKind::Expanded);
    Node("nodTools", arvon::eventKind::Selected);
}

void Session::Carry(const Act& act) {
    counts_.clear();
    failed_.clear();
    others_.clear();
    reply_.reset();
    ClaimReports();
    try {
        act(*this);
    } catch (const base::ComponentError& error) {
        others_.push_back("thrown" + Told(error.Number(), error.Description()));
    }
    reports_ = ClaimReports();
}

std::string Session::Outcome() const {
    Texts parts;
    for (const Report& report : reports_) {
        parts.push_back(report.procedure.substr(Probe().Name().size() + 1) + " reports" +
                        Told(report.number, report.description));
    }
    parts.insert(parts.end(), others_.begin(), others_.end());
    if (reply_) parts.push_back("reply \"" + Shortened(*reply_) + "\"");
    if (const std::string wrong = WrongItems(); !wrong.empty()) parts.push_back(wrong);
    return parts.empty() ? "silent" : Joined(parts);
}

bool Session::IsProvoked(std::int32_t number, const std::string& description) const {
    return number == 1001 && !failed_.empty() && description == failed_.front() + " failed";
}

std::size_t Session::ReportsOfTheFailure() const {
    return static_cast<std::size_t>(
        std::count_if(reports_.begin(), reports_.end(), [this](const Report& report) {
            return IsProvoked(report.number, report.description);
        }));
}

std::string Session::Told(std::int32_t number, const std::string& description) const {
    if (IsProvoked(number, description)) return {};
    return " " + std::to_string(number) + " \"" + Shortened(description) + "\"";
}

std::string Session::WrongItems() const {
    const bool enabled = Probe().LoadedTools().IsEmpty();
    Texts wrong;
    for (const auto& menu : host->Model().Menus())
        for (const auto& item : menu.items)
            if (menu.key == menu::Tools && item.key != menu::ToolOptions && item.enabled != enabled)
                wrong.push_back(item.key);
    if (wrong.empty()) return {};
    return (enabled ? "DISABLED " : "ENABLED ") + Joined(wrong);
}

std::string Session::WrongWhenUsed() {
    Carry([](Session& session) {
        session.Node("nodTools", arvon::eventKind::Expanded);
        session.Node("nodTools", arvon::eventKind::Selected);
        session.Ask("GetOptionValue", {{"ToolID", "A"}, {"OptionName", "n"}});
    });
    if (!reports_.empty()) return Outcome();
    if (reply_ != "1" && reply_ != "2") return "the option reads " + reply_.value_or("nothing");
    return {};
}

std::string Session::WrongWhenLoadedAnew() {
    Carry([](Session& session) {
        session.host->WaitForProcesses();
        if (!session.Probe().LoadedTools().IsEmpty()) session.Ask("UnloadTool", {{"vrex", "Vn21"}});
        session.host->Unload(); // also what a load that failed has left behind
    });
    const bool hadTab = !host->Model().Tabs().empty();
    if (hadTab && !reports_.empty()) return Outcome();
    Carry([](Session& session) {
        session.Begin();
        session.Ask("LaunchTool", {{"ToolName", "Grid"}});
        session.host->WaitForProcesses();
    });
    if (const std::string outcome = Outcome(); outcome != "reply \"False\"") return outcome;
    if (counts_["StartProcess"] != 1) return "no program was started";
    Texts meant;
    for (const auto& record : host->Model().Tools())
        if (record.showInList && record.classification != "Core Tool") meant.push_back(record.name);
    Texts listed = ListedNames(), rows = RowTexts();
    for (Texts* names : {&meant, &listed, &rows})
        std::sort(names->begin(), names->end());
    if (listed != meant) return "listed are " + Joined(listed);
    if (!Probe().ShowAllTools() && rows != meant) return "shown are " + Joined(rows);
    return {};
}

void Session::OnCall(const arvon::host::CallRecord& call) {
    ++counts_[call.operation];
    if (call.failed) failed_.push_back(call.operation);
}

void Session::OnMessageBox(const std::string& text, std::int32_t, const std::string&) {
    others_.push_back("box \"" + Shortened(text) + "\"");
}

void Session::OnProblem(const std::string& text) {
    others_.push_back("problem: " + text);
}

} // namespace kvtm::test
