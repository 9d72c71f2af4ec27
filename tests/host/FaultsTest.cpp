// Every operation of the host can be made to fail: proved by calling each through the contract.

#include "tests/host/HostFixture.h"

#include <algorithm>
#include <array>
#include <set>

namespace arvon::host::test {
namespace {

/// One of everything that a tool can hold.
struct Surface {
    IFramework& framework;
    std::shared_ptr<IRouter> router = framework.Router();
    std::shared_ptr<IMessaging> messaging = framework.Messaging();
    std::shared_ptr<IServiceRequest> data = messaging->CreateRequest("Data Service", "getXMLData", "test");
    std::shared_ptr<ISettings> settings = framework.GetSettings("Framework");
    std::shared_ptr<IToolRecord> record = framework.Tools().Item(1);
    std::shared_ptr<ILoadedTool> loaded = nullptr;
    std::shared_ptr<IMenu> menu = framework.Menus().Add("menu", "Menu", "", "test", {}, {}, 0, 0, true);
    std::shared_ptr<IMenuItem> item = menu->Items().Add("item", "Item", "", "test");
    std::shared_ptr<IMenuItem> entry = framework.ContextMenu().Add("entry", "Entry", "", "test");
    std::shared_ptr<IButton> button = framework.Buttons().Add(1, "button", ButtonStyle::Push);
    std::shared_ptr<ITab> tab = framework.Tabs().Add(1, "tab", "test", nullptr, true);
    std::shared_ptr<INode> node = tab->Nodes().Add("node", "test", 3, "Node", nullptr, true, 0);
    std::shared_ptr<IView> view = framework.Views().Add("control", ViewKind::Control,
                                                        ControlViewDefinition{"KvTMU110.ctlOptions"}, "test");
    std::shared_ptr<IView> buttonsView = framework.Views().Add(
        "buttons", ViewKind::Control, ControlViewDefinition{"KvTMU110.ctlToolProperties"}, "test");
    std::shared_ptr<IView> listView =
        framework.Views().Add("list", ViewKind::List, ListViewDefinition{}, "test");
    IListView* list = listView->List();
    IListItem* row = &list->AddItem("row", "Row");
    std::shared_ptr<base::Object> control = view->Control();
    std::shared_ptr<base::Object> launchButton = buttonsView->Control()->Get("GetLaunchButton").ToObject();
    std::shared_ptr<IWindow> window = (view->Show(), framework.Windows().Item("control"));
    std::shared_ptr<ITaskView> pane = framework.TaskViews().NewTaskView();
};

/// Calls one operation, in a way that works unless it is made to fail.
struct Invoker {
    std::string_view operation;
    void (*call)(Surface& s);
};

void Listener(Surface& s) {
    s.framework.RegisterListener(std::make_shared<TestListener>("other"), "other");
}

// clang-format off
constexpr auto invokers = std::to_array<Invoker>({
    {"AppPath", [](Surface& s) { s.framework.AppPath(); }},
    {"BringPageForward", [](Surface& s) { s.framework.BringPageForward("page"); }},
    {"Button.Key", [](Surface& s) { s.button->Key(); }},
    {"Button.Owner", [](Surface& s) { s.button->Owner(); }},
    {"Button.SetOwner", [](Surface& s) { s.button->SetOwner("o"); }},
    {"Button.SetPicture", [](Surface& s) { s.button->SetPicture("p"); }},
    {"Button.SetToolTip", [](Surface& s) { s.button->SetToolTip("t"); }},
    {"Button.SetVisible", [](Surface& s) { s.button->SetVisible(true); }},
    {"Buttons", [](Surface& s) { s.framework.Buttons(); }},
    {"Buttons.Add", [](Surface& s) { s.framework.Buttons().Add(1, "new", ButtonStyle::Push); }},
    {"Buttons.Count", [](Surface& s) { s.framework.Buttons().Count(); }},
    {"Buttons.Item", [](Surface& s) { s.framework.Buttons().Item("button"); }},
    {"Buttons.Item", [](Surface& s) { s.framework.Buttons().Item(std::size_t{1}); }},
    {"Buttons.PositionOf", [](Surface& s) { s.framework.Buttons().PositionOf("button"); }},
    {"Buttons.Remove", [](Surface& s) { s.framework.Buttons().Remove("button"); }},
    {"ComponentFolder", [](Surface& s) { s.framework.ComponentFolder(); }},
    {"ContextMenu", [](Surface& s) { s.framework.ContextMenu(); }},
    {"ContextMenu.Add", [](Surface& s) { s.framework.ContextMenu().Add("new", "", "", "test"); }},
    {"ContextMenu.AddSeparator", [](Surface& s) { s.framework.ContextMenu().AddSeparator("new", "test"); }},
    {"ContextMenu.Clear", [](Surface& s) { s.framework.ContextMenu().Clear(); }},
    {"ContextMenu.Count", [](Surface& s) { s.framework.ContextMenu().Count(); }},
    {"ContextMenu.Item", [](Surface& s) { s.framework.ContextMenu().Item("entry"); }},
    {"ContextMenu.Item", [](Surface& s) { s.framework.ContextMenu().Item(std::size_t{1}); }},
    {"ContextMenu.Remove", [](Surface& s) { s.framework.ContextMenu().Remove("entry"); }},
    {"Control.Call", [](Surface& s) { s.control->Call("Initialize", {}); }},
    {"Control.Get", [](Surface& s) { s.control->Get("Options"); }},
    {"Control.Get", [](Surface& s) { s.launchButton->Get("Enabled"); }},
    {"Control.Set", [](Surface& s) { s.launchButton->Set("Enabled", false); }},
    {"CurrentControl", [](Surface& s) { s.framework.CurrentControl(); }},
    {"DataService.AddParameter", [](Surface& s) { s.data->AddParameter("query", ""); }},
    {"DataService.Data", [](Surface& s) { s.data->Data(); }},
    {"DataService.Send", [](Surface& s) { s.data->Send(); }},
    {"GetResource", [](Surface& s) { s.framework.GetResource("Tools", "1"); }},
    {"GetSettings", [](Surface& s) { s.framework.GetSettings("Framework"); }},
    {"ImageFolder", [](Surface& s) { s.framework.ImageFolder(); }},
    {"InstallPath", [](Surface& s) { s.framework.InstallPath(); }},
    {"ListItem.AddSubItem", [](Surface& s) { s.row->AddSubItem("column", "text"); }},
    {"ListItem.Checked", [](Surface& s) { s.row->Checked(); }},
    {"ListItem.Key", [](Surface& s) { s.row->Key(); }},
    {"ListItem.SetChecked", [](Surface& s) { s.row->SetChecked(true); }},
    {"ListItem.Text", [](Surface& s) { s.row->Text(); }},
    {"ListView.AddItem", [](Surface& s) { s.list->AddItem("new", "New"); }},
    {"ListView.CheckBoxes", [](Surface& s) { s.list->CheckBoxes(); }},
    {"ListView.Clear", [](Surface& s) { s.list->Clear(); }},
    {"ListView.CurrentItem", [](Surface& s) { s.list->CurrentItem(); }},
    {"LoadedTool.Name", [](Surface& s) { s.loaded->Name(); }},
    {"LoadedTool.ProductDataKey", [](Surface& s) { s.loaded->ProductDataKey(); }},
    {"LoadedTools", [](Surface& s) { s.framework.LoadedTools(); }},
    {"LoadedTools.Count", [](Surface& s) { s.framework.LoadedTools().Count(); }},
    {"LoadedTools.Item", [](Surface& s) { s.framework.LoadedTools().Item(1); }},
    {"Loader", [](Surface& s) { s.framework.Loader(); }},
    {"Loader.IsLoaded", [](Surface& s) { s.framework.Loader().IsLoaded("x"); }},
    {"Loader.Load", [](Surface& s) { s.framework.Loader().Load("x", nullptr); }},
    {"Menu.Items", [](Surface& s) { s.menu->Items(); }},
    {"Menu.Key", [](Surface& s) { s.menu->Key(); }},
    {"Menu.SetVisible", [](Surface& s) { s.menu->SetVisible(true); }},
    {"MenuItem.Caption", [](Surface& s) { s.item->Caption(); }},
    {"MenuItem.Caption", [](Surface& s) { s.entry->Caption(); }},
    {"MenuItem.Items", [](Surface& s) { s.item->Items(); }},
    {"MenuItem.Key", [](Surface& s) { s.item->Key(); }},
    {"MenuItem.Owner", [](Surface& s) { s.item->Owner(); }},
    {"MenuItem.SetEnabled", [](Surface& s) { s.item->SetEnabled(true); }},
    {"MenuItem.SetVisible", [](Surface& s) { s.item->SetVisible(true); }},
    {"MenuItems.Add", [](Surface& s) { s.menu->Items().Add("new", "", "", "test"); }},
    {"MenuItems.Add", [](Surface& s) { s.entry->Items().Add("below", "", "", "test"); }},
    {"MenuItems.AddSeparator", [](Surface& s) { s.menu->Items().AddSeparator("new", "test"); }},
    {"MenuItems.Clear", [](Surface& s) { s.menu->Items().Clear(); }},
    {"MenuItems.Count", [](Surface& s) { s.menu->Items().Count(); }},
    {"MenuItems.Item", [](Surface& s) { s.menu->Items().Item("item"); }},
    {"MenuItems.Item", [](Surface& s) { s.menu->Items().Item(std::size_t{1}); }},
    {"MenuItems.Remove", [](Surface& s) { s.menu->Items().Remove("item"); }},
    {"Menus", [](Surface& s) { s.framework.Menus(); }},
    {"Menus.Add", [](Surface& s) { s.framework.Menus().Add("new", "", "", "test", {}, {}, 0, 0, true); }},
    {"Menus.FindItem", [](Surface& s) { s.framework.Menus().FindItem("item"); }},
    {"Menus.Item", [](Surface& s) { s.framework.Menus().Item("menu"); }},
    {"Menus.Remove", [](Surface& s) { s.framework.Menus().Remove("menu"); }},
    {"Messaging", [](Surface& s) { s.framework.Messaging(); }},
    {"Messaging.CreateRequest", [](Surface& s) { s.messaging->CreateRequest("Data Service", "getXMLData", "test"); }},
    {"NewEvent", [](Surface& s) { s.framework.NewEvent(); }},
    {"NewMessage", [](Surface& s) { s.framework.NewMessage(); }},
    {"NewRequest", [](Surface& s) { s.framework.NewRequest(); }},
    {"Node.IsLoaded", [](Surface& s) { s.node->IsLoaded(); }},
    {"Node.Key", [](Surface& s) { s.node->Key(); }},
    {"Node.Level", [](Surface& s) { s.node->Level(); }},
    {"Node.Nodes", [](Surface& s) { s.node->Nodes(); }},
    {"Node.Owner", [](Surface& s) { s.node->Owner(); }},
    {"Node.Refresh", [](Surface& s) { s.node->Refresh(); }},
    {"Node.Release", [](Surface& s) { s.node->Release(); }},
    {"Node.Select", [](Surface& s) { s.node->Select(); }},
    {"Node.SetImage", [](Surface& s) { s.node->SetImage(1); }},
    {"Node.SetTaskViewKey", [](Surface& s) { s.node->SetTaskViewKey("pane"); }},
    {"Node.SetViewKey", [](Surface& s) { s.node->SetViewKey("list"); }},
    {"Nodes.Add", [](Surface& s) { s.tab->Nodes().Add("new", "test", 3, "", nullptr, true, 0); }},
    {"Nodes.Add", [](Surface& s) { s.node->Nodes().Add("below", "test", 3, "", nullptr, true, 0); }},
    {"Nodes.Count", [](Surface& s) { s.tab->Nodes().Count(); }},
    {"Nodes.Item", [](Surface& s) { s.tab->Nodes().Item("node"); }},
    {"Nodes.Item", [](Surface& s) { s.tab->Nodes().Item(std::size_t{1}); }},
    {"Nodes.Remove", [](Surface& s) { s.tab->Nodes().Remove("node"); }},
    {"Record.Classification", [](Surface& s) { s.record->Classification(); }},
    {"Record.Get", [](Surface& s) { s.record->Get("Name"); }},
    {"Record.Name", [](Surface& s) { s.record->Name(); }},
    {"Record.Set", [](Surface& s) { s.record->Set("version", "2"); }},
    {"Record.ShowInList", [](Surface& s) { s.record->ShowInList(); }},
    {"RefreshViews", [](Surface& s) { s.framework.RefreshViews(0); }},
    {"RegisterListener", [](Surface& s) { Listener(s); }},
    {"Router", [](Surface& s) { s.framework.Router(); }},
    {"Router.IsRegistered", [](Surface& s) { s.router->IsRegistered("SnapIn"); }},
    {"Router.Send", [](Surface& s) { s.router->Send(s.framework.NewMessage()); }},
    {"SetBanner", [](Surface& s) { s.framework.SetBanner("", "", 0); }},
    {"SetMousePointer", [](Surface& s) { s.framework.SetMousePointer(pointer::Default); }},
    {"Settings.GetItem", [](Surface& s) { s.settings->GetItem("LocaleID"); }},
    {"ShowMessage", [](Surface& s) { s.framework.ShowMessage("text", boxStyle::Plain, ""); }},
    {"StartProcess", [](Surface& s) { s.framework.StartProcess("C:\\none.exe", "test", nullptr); }},
    {"SwitchLanguage", [](Surface& s) { s.framework.SwitchLanguage("1033"); }},
    {"Tab.BringForward", [](Surface& s) { s.tab->BringForward(); }},
    {"Tab.FindNode", [](Surface& s) { s.tab->FindNode("node"); }},
    {"Tab.Key", [](Surface& s) { s.tab->Key(); }},
    {"Tab.Nodes", [](Surface& s) { s.tab->Nodes(); }},
    {"Tab.Refresh", [](Surface& s) { s.tab->Refresh(); }},
    {"Tab.SetCaption", [](Surface& s) { s.tab->SetCaption("c"); }},
    {"Tab.SetEnabled", [](Surface& s) { s.tab->SetEnabled(true); }},
    {"Tab.SetVisible", [](Surface& s) { s.tab->SetVisible(true); }},
    {"Tab.Update", [](Surface& s) { s.tab->Update(); }},
    {"Tabs", [](Surface& s) { s.framework.Tabs(); }},
    {"Tabs.Add", [](Surface& s) { s.framework.Tabs().Add(1, "new", "test", nullptr, true); }},
    {"Tabs.Count", [](Surface& s) { s.framework.Tabs().Count(); }},
    {"Tabs.Item", [](Surface& s) { s.framework.Tabs().Item("tab"); }},
    {"TaskView.AddTask", [](Surface& s) { s.pane->AddTask("task", "", "", "", ""); }},
    {"TaskView.SetListControl", [](Surface& s) { s.pane->SetListControl("list"); }},
    {"TaskView.SetResourceBase", [](Surface& s) { s.pane->SetResourceBase("res://"); }},
    {"TaskView.SetShowAll", [](Surface& s) { s.pane->SetShowAll(true); }},
    {"TaskView.SetTexts", [](Surface& s) { s.pane->SetTexts("2", "3"); }},
    {"TaskView.SetTitle", [](Surface& s) { s.pane->SetTitle("t"); }},
    {"TaskView.SetVisible", [](Surface& s) { s.pane->SetVisible(true); }},
    {"TaskView.TaskState", [](Surface& s) { s.pane->TaskState("task"); }},
    {"TaskViews", [](Surface& s) { s.framework.TaskViews(); }},
    {"TaskViews.Add", [](Surface& s) { s.framework.TaskViews().Add("pane", ViewKind::TaskPane, s.pane, "test"); }},
    {"TaskViews.Item", [](Surface& s) { s.framework.TaskViews().Item("pane"); }},
    {"TaskViews.NewTaskView", [](Surface& s) { s.framework.TaskViews().NewTaskView(); }},
    {"Tools", [](Surface& s) { s.framework.Tools(); }},
    {"Tools.Count", [](Surface& s) { s.framework.Tools().Count(); }},
    {"Tools.Edit", [](Surface& s) { s.framework.Tools().Edit(s.record, "test"); }},
    {"Tools.Item", [](Surface& s) { s.framework.Tools().Item("Layout"); }},
    {"Tools.Item", [](Surface& s) { s.framework.Tools().Item(std::size_t{1}); }},
    {"Tools.Reload", [](Surface& s) { s.framework.Tools().Reload(); }},
    {"Tools.Remove", [](Surface& s) { s.framework.Tools().Remove(s.framework.Tools().Item("Layout")); }},
    {"Tools.Save", [](Surface& s) { s.framework.Tools().Save(); }},
    {"Update", [](Surface& s) { s.framework.Update(); }},
    {"View.Control", [](Surface& s) { s.view->Control(); }},
    {"View.Key", [](Surface& s) { s.view->Key(); }},
    {"View.List", [](Surface& s) { s.view->List(); }},
    {"View.SetCaption", [](Surface& s) { s.view->SetCaption("c"); }},
    {"View.SetMode", [](Surface& s) { s.view->SetMode(1); }},
    {"View.SetSize", [](Surface& s) { s.view->SetSize(1, 2); }},
    {"View.Show", [](Surface& s) { s.view->Show(); }},
    {"Views", [](Surface& s) { s.framework.Views(); }},
    {"Views.Add", [](Surface& s) { s.framework.Views().Add("new", ViewKind::List, ListViewDefinition{}, "test"); }},
    {"Views.Item", [](Surface& s) { s.framework.Views().Item("list"); }},
    {"Views.Remove", [](Surface& s) { s.framework.Views().Remove("list"); }},
    {"Window.Close", [](Surface& s) { s.window->Close(); }},
    {"Window.CloseWindow", [](Surface& s) { s.window->Call("CloseWindow", {}); }},
    {"Window.Control", [](Surface& s) { s.window->Control(); }},
    {"Window.Key", [](Surface& s) { s.window->Key(); }},
    {"Windows", [](Surface& s) { s.framework.Windows(); }},
    {"Windows.Item", [](Surface& s) { s.framework.Windows().Item("control"); }},
});
// clang-format on

class Faults : public HostTest {
protected:
    Faults() {
        OpenAnew();
        std::filesystem::copy_file(GOOD_TOOL, installation.File("Tool.so"));
    }
    void OpenAnew() { OpenWith({{.name = "Layout"}, {.name = "Tool", .path = "C:\\QUARRA\\Tool.so"}}); }
    Surface NewSurface() {
        OpenAnew();
        Surface surface{Framework()};
        EXPECT_TRUE(Framework().Loader().Load("Tool", nullptr)) << Host().ProblemOf("Tool");
        surface.loaded = Framework().LoadedTools().Item(1);
        return surface;
    }
};

TEST_F(Faults, CanBeProvokedInEveryOperationThatIsListed) {
    std::set<std::string_view> called;
    for (const Invoker& invoker : invokers)
        called.insert(invoker.operation);
    EXPECT_THAT(std::vector<std::string_view>(called.begin(), called.end()),
                testing::ElementsAreArray(ReferenceHost::Operations()));
}

TEST_F(Faults, FailTheCallAndChangeNothing) {
    for (const Invoker& invoker : invokers) {
        SCOPED_TRACE(invoker.operation);
        Surface surface = NewSurface();
        recorder.Forget();
        Host().FailNext(invoker.operation);
        const Refusal refusal = RefusalOf([&] { invoker.call(surface); });
        EXPECT_EQ(refusal.number, 1001);
        EXPECT_EQ(refusal.source, "Arvon110");
        EXPECT_EQ(refusal.description, std::string(invoker.operation) + " failed");
        EXPECT_THAT(recorder.changes, IsEmpty());
        EXPECT_NO_THROW(invoker.call(surface)) << "the next call works again";
    }
}

TEST_F(Faults, CountOnCallsThatAreToldToWhoWantsReads) {
    class Operations final : public IObserver {
    public:
        std::vector<std::string> told;
        void OnCall(const CallRecord& call) override { told.push_back(call.operation); }
        bool WantsReads() const override { return true; }
    };
    for (const Invoker& invoker : invokers) {
        Surface surface = NewSurface();
        Operations operations;
        Host().Subscribe(operations);
        invoker.call(surface);
        Host().Unsubscribe(operations);
        EXPECT_THAT(operations.told, testing::Contains(invoker.operation));
    }
}

TEST_F(Faults, FailWithoutAnObserverToo) {
    for (const Invoker& invoker : invokers) {
        SCOPED_TRACE(invoker.operation);
        Surface surface = NewSurface();
        Host().Unsubscribe(recorder);
        Host().FailNext(invoker.operation);
        EXPECT_EQ(RefusalOf([&] { invoker.call(surface); }).number, 1001);
        EXPECT_NO_THROW(invoker.call(surface));
    }
}

TEST_F(Faults, LastForTheNumberOfCallsThatWasAsked) {
    Host().FailNext("Update", 3);
    for (int call = 1; call <= 3; ++call)
        EXPECT_EQ(RefusalOf([&] { Framework().Update(); }).number, 1001);
    EXPECT_NO_THROW(Framework().Update());
}

TEST_F(Faults, BeginBehindTheCallsThatAreToPass) {
    Host().FailNext("Update", 2, 1);
    EXPECT_NO_THROW(Framework().Update());
    for (int call = 1; call <= 2; ++call)
        EXPECT_EQ(RefusalOf([&] { Framework().Update(); }).number, 1001);
    EXPECT_NO_THROW(Framework().Update());
    EXPECT_THAT(recorder.calls, ElementsAre("Update()", "Update() failed", "Update() failed", "Update()"));
}

TEST_F(Faults, AreCountedAnewWhenAskedAgain) {
    Host().FailNext("Update", 5);
    Host().FailNext("Update", 1);
    EXPECT_THROW(Framework().Update(), base::ComponentError);
    EXPECT_NO_THROW(Framework().Update());
    Host().FailNext("Update", 5);
    Host().FailNext("Update", 0);
    EXPECT_NO_THROW(Framework().Update());
}

TEST_F(Faults, OfOneOperationLeaveTheOthersAlone) {
    Host().FailNext("Menus.Item");
    EXPECT_NO_THROW(Framework().Menus().FindItem("x"));
    EXPECT_NO_THROW(Framework().Buttons().Item("x"));
    EXPECT_THROW(Framework().Menus().Item("x"), base::ComponentError);
}

TEST_F(Faults, OfAnUnknownOperationAreRefused) {
    for (const auto* name : {"", "update", "Menus.", "Menus.Item ", "Nothing"}) {
        const Refusal refusal = RefusalOf([&] { Host().FailNext(name); });
        EXPECT_EQ(refusal.number, base::errors::InvalidCall);
        EXPECT_EQ(refusal.description, "no host operation \"" + std::string(name) + "\"");
    }
}

TEST_F(Faults, HitWhatIsNestedInADelivery) {
    Listen("a", [&](const auto&) {
        const Refusal refusal = RefusalOf([&] { Framework().Update(); });
        return refusal.description;
    });
    Host().FailNext("Update");
    EXPECT_EQ(Send("a"), "Update failed");
}

} // namespace
} // namespace arvon::host::test
