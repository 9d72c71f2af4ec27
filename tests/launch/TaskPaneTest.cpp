#include "tests/launch/LaunchFixture.h"

using namespace kvtm;
using namespace kvtm::test;

namespace {

class TaskPane : public LaunchingTest {
protected:
    void Task(std::string_view key, Parameters parameters = {}) {
        Event(arvon::EventObject::Task, key, parameters);
    }
};

} // namespace

TEST_F(TaskPane, IsRegisteredOnceWithItsThreeTasks) {
    LoadSuite({});
    const auto panes = host->Model().TaskViews();
    ASSERT_EQ(panes.size(), 1u);
    const auto& pane = panes[0];
    EXPECT_EQ(pane.key, "tvTools");
    EXPECT_EQ(pane.kind, 3);
    EXPECT_EQ(pane.owner, "KvTM10");
    EXPECT_EQ(pane.title, "text 17");
    EXPECT_EQ(pane.texts, (Strings{"text 18", "text 19"}));
    EXPECT_EQ(pane.listControl, "lvTools");
    EXPECT_TRUE(pane.visible);
    const std::string name = Probe().Name();
    EXPECT_EQ(pane.resourceBase, "res://" + host->Framework()->ComponentFolder() + "\\" +
                                     name.substr(0, name.rfind('.')) + ".dll/GIF/");

    const std::string images = host->Framework()->ImageFolder() + "\\";
    const char* expected[][4] = {
        {"tskLaunchTool", "Launch Program", "WIZARD.GIF", "Launch the currently selected Program"},
        {"tskRemoveTool", "Remove Program", "Delete.gif", "Remove the currently selected Program"},
        {"tskEditTool", "text 20", "EDIT.GIF", "text 21"},
    };
    ASSERT_EQ(pane.tasks.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(pane.tasks[i].key, expected[i][0]);
        EXPECT_EQ(pane.tasks[i].caption, expected[i][1]);
        EXPECT_EQ(pane.tasks[i].icon, images + expected[i][2]);
        EXPECT_EQ(pane.tasks[i].highlightedIcon, images + expected[i][2]);
        EXPECT_EQ(pane.tasks[i].description, expected[i][3]);
    }
}

TEST_F(TaskPane, IsFilledBeforeItIsShownAndRegistered) {
    installation.WriteTools({});
    CreateHost();
    CreateTool();
    ASSERT_TRUE(Load());
    Strings order;
    for (const std::string& call : Calls())
        if (call.starts_with("TaskView")) order.push_back(call.substr(0, call.find('(')));
    order.resize(10);
    EXPECT_EQ(order,
              (Strings{"TaskViews.NewTaskView", "TaskView.SetTitle", "TaskView.SetTexts",
                       "TaskView.SetListControl", "TaskView.SetResourceBase", "TaskView.AddTask",
                       "TaskView.AddTask", "TaskView.AddTask", "TaskView.SetVisible", "TaskViews.Add"}));
}

TEST_F(TaskPane, LaunchesTheSelectedProgram) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43"), LongRunning("Plot", "Tobr44")});
    host->SelectRow("lvTools", "Plot");
    Task("tskLaunchTool");
    EXPECT_EQ(ProcessOf("Tobr43"), 0);
    EXPECT_EQ(Probe().LastNodeKey(), "Plot");
    End(ProcessOf("Tobr44"));
}

TEST_F(TaskPane, DoesNothingWithoutASelectedProgram) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    for (const char* key : {"tskLaunchTool", "tskRemoveTool", "tskEditTool"})
        Task(key);
    EXPECT_TRUE(CallsOf("StartProcess").empty());
    EXPECT_TRUE(CallsOf("Tools.Edit").empty());
    EXPECT_TRUE(CallsOf("Node.Select").empty());
    EXPECT_FALSE(std::filesystem::exists(installation.File("Enviro/Remove.ini")));
}

TEST_F(TaskPane, ComparesKeysExactly) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    host->SelectRow("lvTools", "Layout");
    for (const char* key : {"tskaddtool", "TSKADDTOOL", "tskAddTool ", "tskLaunchtool", "", "tskUnknown"})
        Task(key);
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(CallsOf("StartProcess").empty());
    EXPECT_TRUE(CallsOf("Loader.Load").empty());
}

TEST_F(TaskPane, HandsTheSelectedProgramToTheHostsEditor) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    host->SelectRow("lvTools", "Layout");
    Task("tskEditTool");
    EXPECT_EQ(CallsOf("Tools.Edit"), Strings{"Tools.Edit(\"Layout\", \"HandleTaskEvent\")"});
    EXPECT_EQ(CallsOf("Tab.BringForward"), Strings{"Tab.BringForward(\"tabQRV\")"});
    EXPECT_EQ(CallsOf("Node.Select"), Strings{"Node.Select(\"nodTools\")"});
}

TEST_F(TaskPane, ShowsAnEditedProgramAsItIsNow) {
    CatalogueTool layout = LongRunning("Layout", "Tobr43");
    layout.identifier = "LAY01";
    arvon::host::Hooks hooks;
    hooks.editRecord = [](arvon::IToolRecord& record) {
        record.Set("Name", "Drawings");
        return true;
    };
    LoadWith({layout, LongRunning("Plot", "Tobr44")}, std::move(hooks));
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "nodTools");
    host->SelectRow("lvTools", "Layout");
    Task("tskEditTool");
    EXPECT_EQ(RowTexts(), (Strings{"Drawings", "Plot"}));
    EXPECT_EQ(NodeKeys(), (Strings{"Drawings", "Plot"}));
    EXPECT_EQ(host->Framework()->Menus().FindItem("mnuLAY01")->Caption(), "&Drawings");
    host->SelectRow("lvTools", "Drawings");
    Task("tskLaunchTool");
    End(ProcessOf("Tobr43"));
}

TEST_F(TaskPane, FollowsAnEditThatHidesOrShowsAProgram) {
    CatalogueTool layout = LongRunning("Layout", "Tobr43");
    layout.identifier = "LAY01";
    CatalogueTool plot = LongRunning("Plot", "Tobr44");
    plot.identifier = "PLO01";
    arvon::host::Hooks hooks;
    hooks.editRecord = [](arvon::IToolRecord& record) {
        record.Set("ShowInList", base::Value(!record.ShowInList()));
        return true;
    };
    LoadWith({plot, layout}, std::move(hooks));
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "nodTools");
    host->SelectRow("lvTools", "Layout");
    Task("tskEditTool");
    EXPECT_EQ(ListedNames(), Strings{"Plot"});
    EXPECT_EQ(RowTexts(), Strings{"Plot"});
    EXPECT_EQ(NodeKeys(), Strings{"Plot"});
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuPLO01", "mnuToolsSep1"}));

    host->ClickTask("tskShowAll");
    host->SelectRow("lvTools", "Layout");
    Task("tskEditTool");
    EXPECT_EQ(ListedNames(), (Strings{"Layout", "Plot"})) << "in the stored order";
    EXPECT_EQ(NodeKeys(), (Strings{"Layout", "Plot"}));
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuPLO01", "mnuLAY01", "mnuToolsSep1"})) << "all, as they stand";
}

TEST_F(TaskPane, ListsWhatAnUnsavedEditChanged) {
    arvon::host::Hooks hooks;
    hooks.editRecord = [&](arvon::IToolRecord& record) {
        record.Set("ShowInList", base::Value(false));
        std::filesystem::remove(installation.File("Arvon/Tools.xml"));
        return true;
    };
    LoadWith({{.name = "A"}, {.name = "B"}}, std::move(hooks));
    host->NodeEvent("tabQRV", "nodTools");
    host->SelectRow("lvTools", "A");
    Task("tskEditTool");
    ClaimReport("HandleTaskEvent");
    EXPECT_EQ(ListedNames(), Strings{"B"});
}

TEST_F(TaskPane, ReportsAnEditorThatFails) {
    LoadSuiteInFront({LongRunning("Layout", "Tobr43")});
    host->SelectRow("lvTools", "Layout");
    host->FailNext("Tools.Edit");
    Task("tskEditTool");
    EXPECT_EQ(ClaimReport("HandleTaskEvent").description, "Tools.Edit failed");
    EXPECT_TRUE(CallsOf("Node.Select").empty());
}

TEST_F(TaskPane, AsksForNewProgramsAndForUpdates) {
    LoadSuiteInFront({UpdatesComponent()});
    Task("tskAddTool");
    Task("tskUpdateTool", {{"Flag", "True"}});
    Task("tskUpdateTool", {{"Flag", "False"}});
    Task("tskUpdateTool");
    EXPECT_EQ(Sent(), (Strings{"Qillo110:ShowUpdates{request 0}(ShowNew:2=\"True\")",
                               "Qillo110:ShowUpdates{request 0}(ShowNew:2=\"True\")",
                               "Qillo110:ShowUpdates{request 0}(ShowNew:2=\"False\")",
                               "Qillo110:ShowUpdates{request 0}(ShowNew:2=\"False\")"}));
}

TEST_F(TaskPane, ReportsAFlagThatIsNone) {
    LoadSuiteInFront({});
    Task("tskUpdateTool", {{"Flag", "perhaps"}});
    EXPECT_EQ(ClaimReport("HandleTaskEvent").number, base::errors::TypeMismatch);
    EXPECT_TRUE(Sent().empty());
}

TEST_F(TaskPane, ShowsAllProgramsAndTheListedOnesAgain) {
    CatalogueTool hidden = LongRunning("Hidden", "Tobr44");
    hidden.showInList = "0";
    CatalogueTool core = LongRunning("Core", "Zarn11");
    core.classification = "Core Tool";
    LoadSuiteInFront({LongRunning("Layout", "Tobr43"), hidden, core});
    ASSERT_EQ(RowTexts(), Strings{"Layout"});

    host->ClickTask("tskShowAll");
    EXPECT_TRUE(Probe().ShowAllTools());
    EXPECT_EQ(RowTexts(), (Strings{"Layout", "Hidden"}));
    EXPECT_TRUE(host->Model().TaskViews()[0].showAll);

    host->ClickTask("tskShowAll");
    EXPECT_FALSE(Probe().ShowAllTools());
    EXPECT_EQ(RowTexts(), Strings{"Layout"});
}

TEST_F(TaskPane, RebuildsTheMenusWithAllPrograms) {
    CatalogueTool layout = LongRunning("Layout", "Tobr43");
    layout.identifier = "LAY43";
    LoadSuiteInFront({layout});
    CatalogueTool plot = LongRunning("Plot", "Tobr44");
    plot.identifier = "PLQ44";
    installation.WriteTools({layout, plot});
    host->Framework()->Tools().Reload();
    ASSERT_EQ(EnabledToolItems(), (Strings{"mnuLAY43", "mnuToolsSep1"}));
    host->ClickTask("tskShowAll");
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuLAY43", "mnuPLQ44", "mnuToolsSep1"}));
}

TEST_F(TaskPane, KeepsTheNewItemsDisabledWhileAVantorIsLoaded) {
    LoadSuiteInFront({{.name = "Beam",
                       .vrex = "Vn21",
                       .identifier = "BMF21",
                       .kind = "3",
                       .path = Put(BEAM_LIBRARY, "Vn21/Vn21.dll")}});
    Launch("Beam");
    host->ClickTask("tskShowAll");
    EXPECT_EQ(EnabledToolItems(), Strings{});
}

TEST_F(TaskPane, KeepsTheNewItemsDisabledWhileAProgramIsBeingLoaded) {
    LoadSuiteInFront({{.name = "Units",
                       .vrex = "Qx07",
                       .identifier = "UNI07",
                       .path = Put(UNITS_LIBRARY, "Qx07/Qx07.dll")}});
    /// A user who does not wait for the load.
    struct Impatient : arvon::host::IObserver {
        explicit Impatient(arvon::host::ReferenceHost& of) : host_(of) { host_.Subscribe(*this); }
        ~Impatient() override { host_.Unsubscribe(*this); }
        void OnCall(const arvon::host::CallRecord& call) override {
            if (call.operation != "Loader.Load") return;
            host_.ClickTask("tskShowAll");
            const auto menus = host_.Model().Menus();
            for (const auto& menu : menus)
                for (const auto& item : menu.items)
                    if (item.key == "mnuUNI07") enabled.push_back(item.enabled);
        }
        arvon::host::ReferenceHost& host_;
        std::vector<bool> enabled;
    } user(*host);
    Launch("Units");
    EXPECT_EQ(user.enabled, std::vector<bool>{false});
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuUNI07", "mnuToolsSep1"})) << "no Vantor came of it";
}

TEST_F(TaskPane, ReportsAPaneThatIsGone) {
    LoadSuiteInFront({});
    host->FailNext("TaskViews.Item");
    Task("tskShowAll");
    EXPECT_EQ(ClaimReport("HandleTaskEvent").description, "TaskViews.Item failed");
    EXPECT_FALSE(Probe().ShowAllTools());
}
