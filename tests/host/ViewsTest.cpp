// Views, the windows that show them, and the doubles of their controls.

#include "tests/host/HostFixture.h"

namespace arvon::host::test {
namespace {

class ViewsOfTheHost : public HostTest {
protected:
    IViews& Views() { return Framework().Views(); }
    std::shared_ptr<IView> AddControl(std::string_view key, std::string_view control = "KvTMU110.ctlOptions",
                                      std::string_view owner = "me") {
        return Views().Add(key, ViewKind::Control, ControlViewDefinition{std::string(control)}, owner);
    }
    std::shared_ptr<IView> AddList(std::string_view key, std::string_view owner = "me") {
        ListViewDefinition definition;
        definition.columnHeaders = {{"name", "Name", 2880}, {"version", "Version", 1440}};
        return Views().Add(key, ViewKind::List, definition, owner);
    }
    std::vector<std::string> OpenWindows() {
        std::vector<std::string> keys;
        for (const model::View& window : Model().Windows())
            keys.push_back(window.key);
        return keys;
    }
};

TEST_F(ViewsOfTheHost, HoldWhatTheyWereGiven) {
    const auto view = AddControl("v");
    view->SetSize(100, 200);
    view->SetMode(3);
    view->SetCaption("Options");
    EXPECT_EQ(view->Key(), "v");
    EXPECT_EQ(view->List(), nullptr);
    ASSERT_EQ(Model().Views().size(), 1u);
    const model::View shown = Model().Views()[0];
    EXPECT_EQ(shown.kind, 5);
    EXPECT_EQ(shown.owner, "me");
    EXPECT_EQ(shown.control, "KvTMU110.ctlOptions");
    EXPECT_EQ(shown.caption, "Options");
    EXPECT_EQ(shown.widthTwips, 100);
    EXPECT_EQ(shown.heightTwips, 200);
    EXPECT_EQ(shown.mode, 3);
    EXPECT_EQ(Views().Item("v"), view);
    EXPECT_EQ(Views().Item("V"), nullptr);
}

TEST_F(ViewsOfTheHost, AreReplacedByTheSameOwnersOfTheSameKindOnly) {
    const auto first = AddControl("v");
    const auto second = AddControl("v", "KvTMU110.ctlToolsUpdate");
    EXPECT_NE(first, second);
    EXPECT_EQ(Views().Item("v"), second);
    EXPECT_EQ(RefusalOf([&] { AddControl("v", "x", "you"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(RefusalOf([&] { AddList("v"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(Views().Item("v"), second);
    EXPECT_EQ(Model().Views().size(), 1u);
}

TEST_F(ViewsOfTheHost, RefuseADefinitionThatDoesNotGoWithTheKind) {
    const Refusal refusal =
        RefusalOf([&] { Views().Add("v", ViewKind::List, ControlViewDefinition{"x"}, "me"); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.description, "the view \"v\" of kind 4 was given a control to host");
    for (const ViewKind kind : {ViewKind::Control, ViewKind::TaskPane, static_cast<ViewKind>(0)})
        EXPECT_EQ(RefusalOf([&] { Views().Add("v", kind, ListViewDefinition{}, "me"); }).number,
                  base::errors::InvalidCall);
    EXPECT_THAT(Model().Views(), IsEmpty());
}

TEST_F(ViewsOfTheHost, AreRemovedWithTheirWindow) {
    const auto view = AddControl("v");
    view->Show();
    Views().Remove("v");
    EXPECT_EQ(Views().Item("v"), nullptr);
    EXPECT_EQ(Framework().Windows().Item("v"), nullptr);
    EXPECT_EQ(RefusalOf([&] { Views().Remove("v"); }).description, "no view \"v\"");
    view->SetCaption("still held");
    EXPECT_EQ(view->Key(), "v");
}

TEST_F(ViewsOfTheHost, StandInAWindowOfTheirKeyOnceShown) {
    const auto first = AddControl("1"), second = AddList("2");
    EXPECT_EQ(Framework().Windows().Item("1"), nullptr);
    second->Show();
    first->Show();
    second->Show(); // is open already
    EXPECT_THAT(OpenWindows(), ElementsAre("2", "1"));
    const auto window = Framework().Windows().Item("1");
    EXPECT_EQ(window->Key(), "1");
    EXPECT_EQ(window->Control(), first->Control());
    EXPECT_EQ(Framework().Windows().Item("2")->Control(), nullptr);
    first->SetCaption("Caption");
    EXPECT_EQ(Model().Windows()[1].caption, "Caption");
}

TEST_F(ViewsOfTheHost, LoseTheirWindowWhenItIsClosed) {
    const auto view = AddControl("v");
    for (const bool byName : {true, false}) {
        view->Show();
        const auto window = Framework().Windows().Item("v");
        if (byName)
            window->Call("closewindow", {});
        else
            window->Close();
        EXPECT_THAT(OpenWindows(), IsEmpty());
        view->Show();
        window->Close(); // has been closed: the other one stays
        window->Call("CloseWindow", {});
        EXPECT_THAT(OpenWindows(), ElementsAre("v"));
        EXPECT_EQ(RefusalOf([&] { window->Call("Open", {}); }).number, base::errors::NoSuchMember);
        Host().CloseWindow("v");
    }
    EXPECT_EQ(RefusalOf([&] { Host().CloseWindow("v"); }).description, "no window \"v\"");
}

TEST_F(ViewsOfTheHost, ShowTheNewViewNotOneThatItReplaced) {
    const auto old = AddControl("v", "KvTMU110.ctlOptions");
    old->Show();
    AddControl("v", "KvTMU110.ctlToolsUpdate");
    EXPECT_THAT(OpenWindows(), IsEmpty());
    Views().Remove("v");
    old->Show(); // a view that is nobody's any more
    AddControl("v", "KvTMU110.ctlToolsUpdate")->Show();
    ASSERT_EQ(Model().Windows().size(), 1u);
    EXPECT_EQ(Model().Windows()[0].control, "KvTMU110.ctlToolsUpdate");
}

TEST_F(ViewsOfTheHost, MakeTheirControlOnceWhenFirstAskedFor) {
    int made = 0;
    Hooks hooks;
    hooks.makeControl = [&](std::string_view control, std::string_view key) -> std::shared_ptr<base::Object> {
        ++made;
        EXPECT_EQ(key, "v");
        return control == "Mine" ? std::make_shared<base::Object>() : nullptr;
    };
    Open(std::move(hooks));
    const auto view = AddControl("v", "Mine");
    EXPECT_EQ(made, 0);
    const auto control = view->Control();
    EXPECT_NE(control, nullptr);
    EXPECT_EQ(view->Control(), control);
    EXPECT_EQ(Host().ControlOf("v"), control);
    EXPECT_EQ(Host().ControlOf("x"), nullptr);
    EXPECT_EQ(made, 1);
    const auto unknown = AddControl("v", "Nobody's");
    EXPECT_EQ(unknown->Control(), nullptr);
    EXPECT_EQ(unknown->Control(), nullptr);
    EXPECT_EQ(made, 2); // that nobody knows it is found out once
    EXPECT_NE(AddControl("v", "KvTMU110.ctlOptions")->Control(), nullptr); // the host's own double
}

TEST_F(ViewsOfTheHost, AskNoHookAnyMoreWhenTheHostIsGone) {
    int asked = 0;
    Hooks hooks;
    hooks.makeControl = [&](auto, auto) -> std::shared_ptr<base::Object> {
        ++asked;
        return nullptr;
    };
    hooks.showMessage = [&](auto&, auto, auto&) { ++asked; };
    Open(std::move(hooks));
    const auto framework = Host().Framework();
    const auto view = AddControl("v");
    Close();
    recorder.Forget();
    view->Control();
    framework->ShowMessage("x", 0, "");
    EXPECT_EQ(asked, 0);
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST_F(ViewsOfTheHost, AskTheHookForMessageBoxes) {
    std::string shown;
    Hooks hooks;
    hooks.showMessage = [&](const std::string& text, std::int32_t style, const std::string& title) {
        shown = text + "/" + std::to_string(style) + "/" + title;
        EXPECT_EQ(recorder.boxes.size(), 1u); // observers hear of it first
    };
    Open(std::move(hooks));
    Framework().ShowMessage("Text", boxStyle::Critical, "");
    EXPECT_EQ(shown, "Text/16/");
}

TEST_F(ViewsOfTheHost, HaveADoubleOfTheToolProperties) {
    const auto control = AddControl("v", "kvtmu110.CTLTOOLPROPERTIES")->Control();
    ASSERT_NE(control, nullptr);
    const auto launch = control->Get("getlaunchbutton").ToObject();
    EXPECT_EQ(control->Call("GetLaunchButton", {}).ToObject(), launch);
    EXPECT_TRUE(launch->Get("Enabled").ToBoolean());
    launch->Set("enabled", false);
    EXPECT_FALSE(launch->Get("ENABLED").ToBoolean());
    control->Get("GetUpdateButton").ToObject()->Set("Enabled", -1);
    ASSERT_EQ(Model().Controls().size(), 1u);
    EXPECT_THAT(Model().Controls()[0].members, ElementsAre(testing::Pair("GetLaunchButton.Enabled", "False"),
                                                           testing::Pair("GetUpdateButton.Enabled", "True")));
    EXPECT_EQ(RefusalOf([&] { control->Get("Other"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { launch->Set("Caption", "x"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { launch->Set("Enabled", "x"); }).number, base::errors::TypeMismatch);
}

TEST_F(ViewsOfTheHost, HaveADoubleOfTheOptions) {
    const auto control = AddControl("v")->Control();
    EXPECT_EQ(control->Get("Options").ToText(), "");
    const base::Value text = "<Options/>";
    control->Call("Initialize", std::span(&text, 1));
    EXPECT_EQ(control->Get("Options").ToText(), "<Options/>");
    EXPECT_EQ(Model().Controls()[0].view, "v");
    EXPECT_THAT(Model().Controls()[0].members, ElementsAre(testing::Pair("Initialize", "<Options/>")));
    EXPECT_EQ(RefusalOf([&] { control->Call("Other", {}); }).number, base::errors::NoSuchMember);
}

TEST_F(ViewsOfTheHost, HaveADoubleOfTheUpdatesAndNoneOfOtherControls) {
    const auto updates = AddControl("v", "KvTMU110.ctlToolsUpdate")->Control();
    ASSERT_NE(updates, nullptr);
    EXPECT_EQ(RefusalOf([&] { updates->Get("x"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(AddControl("w", "Other.ctl")->Control(), nullptr);
    EXPECT_EQ(AddList("l")->Control(), nullptr);
}

class ListOfTheHost : public ViewsOfTheHost {
protected:
    ListOfTheHost() : list(*AddList("l")->List()) {}
    IListView& list;
    std::vector<model::ListRow> Rows() { return Model().List("l"); }
};

TEST_F(ListOfTheHost, HasRowsInTheOrderOfAdding) {
    IListItem& row = list.AddItem("k1", "One");
    row.AddSubItem("version", "1.0");
    row.AddSubItem("name", "One");
    row.SetChecked(true);
    list.AddItem("k2", "Two");
    EXPECT_EQ(row.Key(), "k1");
    EXPECT_EQ(row.Text(), "One");
    EXPECT_TRUE(row.Checked());
    ASSERT_EQ(Rows().size(), 2u);
    EXPECT_EQ(Rows()[0].text, "One");
    EXPECT_TRUE(Rows()[0].checked);
    EXPECT_EQ(Rows()[0].SubItem("version"), "1.0");
    EXPECT_EQ(Rows()[0].SubItem("other"), "");
    EXPECT_EQ(Rows()[1].key, "k2");
    EXPECT_FALSE(Rows()[1].checked);
}

TEST_F(ListOfTheHost, RefusesRepeatedKeysButNotRepeatedTextsOrMissingKeys) {
    IListItem& row = list.AddItem("k", "a");
    EXPECT_EQ(RefusalOf([&] { list.AddItem("k", "b"); }).number, base::errors::DuplicateKey);
    EXPECT_NO_THROW(list.AddItem("other", "a"));
    EXPECT_NO_THROW(list.AddItem("", "a"));
    EXPECT_NO_THROW(list.AddItem("", "a"));
    row.AddSubItem("version", "1");
    EXPECT_EQ(RefusalOf([&] { row.AddSubItem("version", "2"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(Rows().size(), 4u);
    EXPECT_EQ(Rows()[0].SubItem("version"), "1");
}

TEST_F(ListOfTheHost, HasACurrentRowOnlyOnceOneWasChosen) {
    list.AddItem("1", "a");
    list.AddItem("2", "b");
    EXPECT_EQ(list.CurrentItem(), nullptr);
    Host().SelectRow("l", "b");
    ASSERT_NE(list.CurrentItem(), nullptr);
    EXPECT_EQ(list.CurrentItem()->Text(), "b");
    EXPECT_TRUE(Rows()[1].current);
    EXPECT_FALSE(Rows()[0].current);
    list.Clear();
    EXPECT_EQ(list.CurrentItem(), nullptr);
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_NO_THROW(list.AddItem("1", "a"));
}

TEST_F(ListOfTheHost, HasColumns) {
    const auto columns = Model().Columns("l");
    ASSERT_EQ(columns.size(), 2u);
    EXPECT_EQ(columns[0].key, "name");
    EXPECT_EQ(columns[0].caption, "Name");
    EXPECT_EQ(columns[0].widthTwips, 2880);
    EXPECT_THAT(Model().Columns("none"), IsEmpty());
    EXPECT_THAT(Model().List("none"), IsEmpty());
    AddControl("c");
    EXPECT_THAT(Model().List("c"), IsEmpty());
}

class TaskViewsOfTheHost : public HostTest {
protected:
    ITaskViews& TaskViews() { return Framework().TaskViews(); }
};

TEST_F(TaskViewsOfTheHost, HoldWhatTheyWereGiven) {
    const auto pane = TaskViews().NewTaskView();
    pane->SetTitle("Title");
    pane->SetTexts("Second", "Third");
    pane->SetListControl("lvTools");
    pane->SetResourceBase("res://x/");
    pane->AddTask("t1", "One", "1.gif", "1h.gif", "First");
    pane->AddTask("t2", "Two", "2.gif", "2h.gif", "Second");
    pane->SetVisible(true);
    pane->SetShowAll(true);
    TaskViews().Add("tvTools", ViewKind::TaskPane, pane, "me");
    EXPECT_EQ(TaskViews().Item("tvTools"), pane);
    EXPECT_EQ(TaskViews().Item("x"), nullptr);
    ASSERT_EQ(Model().TaskViews().size(), 1u);
    const model::TaskView shown = Model().TaskViews()[0];
    EXPECT_EQ(shown.key, "tvTools");
    EXPECT_EQ(shown.kind, 3);
    EXPECT_EQ(shown.owner, "me");
    EXPECT_EQ(shown.title, "Title");
    EXPECT_THAT(shown.texts, ElementsAre("Second", "Third"));
    EXPECT_EQ(shown.listControl, "lvTools");
    EXPECT_EQ(shown.resourceBase, "res://x/");
    EXPECT_TRUE(shown.visible && shown.showAll);
    ASSERT_EQ(shown.tasks.size(), 2u);
    EXPECT_EQ(shown.tasks[1].key, "t2");
    EXPECT_EQ(shown.tasks[1].highlightedIcon, "2h.gif");
    EXPECT_EQ(shown.tasks[1].description, "Second");
}

TEST_F(TaskViewsOfTheHost, KnowTheStateOfTheirSwitch) {
    const auto pane = TaskViews().NewTaskView();
    EXPECT_EQ(pane->TaskState("tskShowAll"), false);
    pane->SetShowAll(true);
    EXPECT_EQ(pane->TaskState("tskShowAll"), true);
    pane->AddTask("t", "", "", "", "");
    EXPECT_EQ(pane->TaskState("t"), false);
    EXPECT_EQ(pane->TaskState("T"), std::nullopt);
    EXPECT_EQ(pane->TaskState(""), std::nullopt);
}

TEST_F(TaskViewsOfTheHost, RefuseARepeatedTaskAndAPaneThatIsNotTheirs) {
    class Foreign final : public ITaskView {
        void SetTitle(std::string_view) override {}
        void SetTexts(std::string_view, std::string_view) override {}
        void SetListControl(std::string_view) override {}
        void SetResourceBase(std::string_view) override {}
        void AddTask(std::string_view, std::string_view, std::string_view, std::string_view,
                     std::string_view) override {}
        void SetVisible(bool) override {}
        void SetShowAll(bool) override {}
        std::optional<bool> TaskState(std::string_view) const override { return {}; }
    };
    const auto pane = TaskViews().NewTaskView();
    pane->AddTask("t", "", "", "", "");
    EXPECT_EQ(RefusalOf([&] { pane->AddTask("t", "", "", "", ""); }).number, base::errors::DuplicateKey);
    const auto add = [&](const std::shared_ptr<ITaskView>& view, std::string_view owner) {
        TaskViews().Add("p", ViewKind::TaskPane, view, owner);
    };
    EXPECT_EQ(RefusalOf([&] { add(nullptr, "me"); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { add(std::make_shared<Foreign>(), "me"); }).number, base::errors::InvalidCall);
    add(pane, "me");
    EXPECT_EQ(RefusalOf([&] { add(TaskViews().NewTaskView(), "you"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(TaskViews().Item("p"), pane);
    const auto next = TaskViews().NewTaskView();
    add(next, "me");
    EXPECT_EQ(TaskViews().Item("p"), next);
    EXPECT_EQ(Model().TaskViews().size(), 1u);
}

} // namespace
} // namespace arvon::host::test
