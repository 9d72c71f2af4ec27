// What a user does: which event it raises, to whom, with which parameters; and what a user cannot do.

#include "tests/host/HostFixture.h"

namespace arvon::host::test {
namespace {

using testing::Contains;

class UserActions : public HostTest {
protected:
    UserActions() {
        for (const auto* owner : {"me", "you", "KvTM10"})
            Listen(owner);
    }
    /// The messages that an act brings about, which are events.
    template <class Act> std::vector<std::string> EventsOf(Act act) {
        recorder.Forget();
        act();
        return recorder.messages;
    }
    /// The description of an act that is refused, which raises no event.
    template <class Act> std::string WhyNot(Act act) {
        recorder.Forget();
        const Refusal refusal = RefusalOf(act);
        EXPECT_EQ(refusal.number, base::errors::InvalidCall);
        EXPECT_EQ(refusal.source, "Arvon110");
        EXPECT_THAT(recorder.messages, IsEmpty());
        return refusal.description;
    }
    std::shared_ptr<IMenu> AddMenu() {
        return Framework().Menus().Add("menu", "", "", "me", {}, {}, 0, 0, true);
    }
    std::shared_ptr<ITab> AddTab() {
        const auto tab = Framework().Tabs().Add(1, "tab", "me", nullptr, true);
        tab->SetVisible(true);
        tab->SetEnabled(true);
        return tab;
    }
    IListView& AddList() {
        ListViewDefinition definition;
        definition.columnHeaders = {{"name", "Name", 2880}};
        return *Framework().Views().Add("list", ViewKind::List, definition, "me")->List();
    }
};

TEST_F(UserActions, ClickAMenuItem) {
    AddMenu()->Items().Add("item", "Item", "", "you")->Items().Add("deep", "Deep", "", "me");
    EXPECT_THAT(EventsOf([&] { Host().ClickMenu("item"); }), ElementsAre("SnapIn>you event 1 item 0/0()"));
    EXPECT_THAT(EventsOf([&] { Host().ClickMenu("deep"); }), ElementsAre("SnapIn>me event 1 deep 0/0()"));
}

TEST_F(UserActions, ClickAnItemOfTheContextMenu) {
    Framework().ContextMenu().Add("item", "Item", "", "you");
    EXPECT_THAT(EventsOf([&] { Host().ClickMenu("item"); }), ElementsAre("SnapIn>you event 1 item 0/0()"));
}

TEST_F(UserActions, FindTheContextMenuOfTheNodeThatTheyClickAlone) {
    const auto tab = AddTab();
    for (const auto* node : {"filling", "leaving"})
        tab->Nodes().Add(node, "filler", 0, "", nullptr, false, 0);
    std::size_t before = 0;
    Listen("filler", [&](const std::shared_ptr<IMessage>& message) {
        IMenuItems& items = Framework().ContextMenu();
        before = items.Count();
        if (message->Body().ToText().find("filling") == std::string::npos) return std::string();
        items.Add("item", "", "", "me")->Items().Add("below", "", "", "me");
        items.Add("theirs", "", "", "you");
        return std::string();
    });

    Host().NodeEvent("tab", "filling", eventKind::ContextMenu);
    EXPECT_EQ(Model().ContextMenu().size(), 2u);
    Host().ClickMenu("below");
    Host().NodeEvent("tab", "filling", eventKind::ContextMenu); // the items of the click before are gone
    EXPECT_EQ(before, 0u);
    EXPECT_EQ(Model().ContextMenu().size(), 2u);

    recorder.Forget();
    Host().NodeEvent("tab", "leaving", eventKind::ContextMenu);
    EXPECT_THAT(Model().ContextMenu(), IsEmpty());
    EXPECT_THAT(recorder.changes, Contains(ModelPart::ContextMenu));
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("below"); }), "no menu item \"below\"");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("theirs"); }), "no menu item \"theirs\"");
}

TEST_F(UserActions, LeaveTheContextMenuAloneByOtherKindsOfEvents) {
    AddTab()->Nodes().Add("node", "me", 0, "", nullptr, false, 0);
    Framework().ContextMenu().Add("item", "", "", "me");
    for (const std::int32_t kind : {eventKind::Selected, eventKind::Opened, eventKind::Expanded, 99})
        Host().NodeEvent("tab", "node", kind);
    EXPECT_EQ(Model().ContextMenu().size(), 1u);
    // what cannot be clicked shows no menu, and empties none
    EXPECT_EQ(WhyNot([&] { Host().NodeEvent("tab", "none", eventKind::ContextMenu); }), "no node \"none\"");
    EXPECT_EQ(Model().ContextMenu().size(), 1u);
}

TEST_F(UserActions, ReachTheToolManagerThroughTheHostsOwnItems) {
    EXPECT_THAT(EventsOf([&] { Host().ClickMenu("mnuUpdateTools"); }),
                ElementsAre("SnapIn>KvTM10 event 1 mnuUpdateTools 0/0()"));
    EXPECT_THAT(EventsOf([&] { Host().ClickButton("btnUpdateTools"); }),
                ElementsAre("SnapIn>KvTM10 event 2 btnUpdateTools 0/0()"));
}

TEST_F(UserActions, DoNotReachMenuItemsThatCannotBeUsed) {
    const auto menu = AddMenu();
    const auto item = menu->Items().Add("item", "", "", "me");
    item->Items().Add("deep", "", "", "me");
    menu->Items().AddSeparator("line", "me");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("none"); }), "no menu item \"none\"");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("menu"); }), "no menu item \"menu\"");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("line"); }), "menu item \"line\" is a separator");
    item->SetEnabled(false);
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("item"); }), "menu item \"item\" is disabled");
    item->SetVisible(false);
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("item"); }), "menu item \"item\" is hidden");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("deep"); }), "menu item \"deep\" is hidden");
    item->SetVisible(true);
    EXPECT_EQ(EventsOf([&] { Host().ClickMenu("deep"); }).size(), 1u);
    menu->SetVisible(false);
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("deep"); }), "menu item \"deep\" is hidden");
}

TEST_F(UserActions, DoNotReachHiddenItemsOfTheContextMenu) {
    const auto item = Framework().ContextMenu().Add("item", "", "", "me");
    const auto below = item->Items().Add("below", "", "", "me");
    item->SetVisible(false);
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("item"); }), "menu item \"item\" is hidden");
    EXPECT_EQ(WhyNot([&] { Host().ClickMenu("below"); }), "menu item \"below\" is hidden");
}

TEST_F(UserActions, ClickAButton) {
    const auto button = Framework().Buttons().Add(1, "button", ButtonStyle::Push);
    Framework().Buttons().Add(1, "line", ButtonStyle::Separator)->SetVisible(true);
    EXPECT_EQ(WhyNot([&] { Host().ClickButton("button"); }), "button \"button\" is hidden");
    button->SetVisible(true);
    button->SetOwner("you");
    EXPECT_THAT(EventsOf([&] { Host().ClickButton("button"); }),
                ElementsAre("SnapIn>you event 2 button 0/0()"));
    EXPECT_EQ(WhyNot([&] { Host().ClickButton("line"); }), "button \"line\" is a separator");
    EXPECT_EQ(WhyNot([&] { Host().ClickButton("none"); }), "no button \"none\"");
    button->SetOwner("");
    EXPECT_THAT(EventsOf([&] { Host().ClickButton("button"); }), ElementsAre("SnapIn> event 2 button 0/0()"));
}

TEST_F(UserActions, ClickATaskOfAPane) {
    const auto pane = Framework().TaskViews().NewTaskView();
    pane->AddTask("tskRemove", "", "", "", "");
    pane->SetVisible(true);
    Framework().TaskViews().Add("pane", ViewKind::TaskPane, pane, "you");
    EXPECT_THAT(EventsOf([&] { Host().ClickTask("tskRemove"); }),
                ElementsAre("SnapIn>you event 5 tskRemove 0/0(Flag=False)"));
    EXPECT_THAT(EventsOf([&] { Host().ClickTask("tskRemove", true); }),
                ElementsAre("SnapIn>you event 5 tskRemove 0/0(Flag=True)"));
    EXPECT_EQ(WhyNot([&] { Host().ClickTask("none"); }), "no task \"none\"");
    EXPECT_EQ(WhyNot([&] { Host().ClickTask(""); }), "no task \"\"");
}

TEST_F(UserActions, DoNotReachTasksOfAHiddenPane) {
    const auto hidden = Framework().TaskViews().NewTaskView();
    hidden->AddTask("tskRemove", "", "", "", "");
    Framework().TaskViews().Add("pane", ViewKind::TaskPane, hidden, "you");
    EXPECT_EQ(WhyNot([&] { Host().ClickTask("tskRemove"); }), "task \"tskRemove\" is hidden");
    EXPECT_EQ(WhyNot([&] { Host().ClickTask("tskShowAll"); }), "task \"tskShowAll\" is hidden");
    EXPECT_EQ(hidden->TaskState("tskShowAll"), false);
    const auto shown = Framework().TaskViews().NewTaskView();
    shown->AddTask("tskRemove", "", "", "", "");
    shown->SetVisible(true);
    Framework().TaskViews().Add("other", ViewKind::TaskPane, shown, "me");
    EXPECT_THAT(EventsOf([&] { Host().ClickTask("tskRemove"); }),
                ElementsAre("SnapIn>me event 5 tskRemove 0/0(Flag=False)"));
    hidden->SetVisible(true);
    EXPECT_EQ(EventsOf([&] { Host().ClickTask("tskShowAll"); }).size(), 1u);
}

TEST_F(UserActions, TurnThePanesSwitch) {
    EXPECT_EQ(WhyNot([&] { Host().ClickTask("tskShowAll"); }), "no task \"tskShowAll\"");
    const auto pane = Framework().TaskViews().NewTaskView();
    pane->SetVisible(true);
    Framework().TaskViews().Add("pane", ViewKind::TaskPane, pane, "you");
    EXPECT_THAT(EventsOf([&] { Host().ClickTask("tskShowAll"); }),
                ElementsAre("SnapIn>you event 5 tskShowAll 0/0(Flag=True)"));
    EXPECT_EQ(pane->TaskState("tskShowAll"), true);
    EXPECT_THAT(EventsOf([&] { Host().ClickTask("tskShowAll"); }),
                ElementsAre("SnapIn>you event 5 tskShowAll 0/0(Flag=False)"));
}

TEST_F(UserActions, ReachTheToolManagerThroughTasksOfTheHostsControls) {
    for (const std::string task : {"tskUpdateTool", "tskAddTool", "tskEditTool"})
        EXPECT_THAT(EventsOf([&] { Host().ClickTask(task); }),
                    ElementsAre("SnapIn>KvTM10 event 5 " + task + " 0/0(Flag=False)"));
}

TEST_F(UserActions, SelectAndOpenNodes) {
    const auto node = AddTab()->Nodes().Add("node", "you", 3, "", nullptr, true, 0);
    const auto below = node->Nodes().Add("below", "me", 3, "", nullptr, true, 0);
    for (int time = 1; time <= 2; ++time) // a user's click is told each time
        EXPECT_THAT(EventsOf([&] { Host().NodeEvent("tab", "node"); }),
                    ElementsAre("SnapIn>you event 3 tab 5/0(key=node)"));
    EXPECT_EQ(Model().Tabs()[0].selected, "node");
    EXPECT_TRUE(node->IsLoaded());
    for (const std::int32_t kind : {eventKind::ContextMenu, eventKind::Opened, eventKind::Expanded, 99})
        EXPECT_THAT(EventsOf([&] { Host().NodeEvent("tab", "below", kind); }),
                    ElementsAre("SnapIn>me event 3 tab " + std::to_string(kind) + "/0(key=below)"));
    EXPECT_EQ(Model().Tabs()[0].selected, "node");
    EXPECT_FALSE(below->IsLoaded());
}

TEST_F(UserActions, BringATabForward) {
    Framework().Tabs().Add(1, "other", "me", nullptr, true);
    AddTab()->Nodes().Add("node", "you", 3, "", nullptr, true, 0);
    EXPECT_EQ(Model().CurrentControl(), "other");
    EXPECT_THAT(EventsOf([&] { Host().TabEvent("tab", 1); }),
                ElementsAre("SnapIn>me event 12 tab 1/0(selectedItem=)"));
    EXPECT_EQ(Model().CurrentControl(), "other");
    Host().NodeEvent("tab", "node");
    EXPECT_THAT(EventsOf([&] { Host().TabEvent("tab"); }),
                ElementsAre("SnapIn>me event 12 tab 5/0(selectedItem=node)"));
    EXPECT_EQ(Model().CurrentControl(), "tab");
}

TEST_F(UserActions, DoNotReachTabsThatCannotBeUsed) {
    const auto tab = AddTab();
    tab->Nodes().Add("node", "me", 3, "", nullptr, true, 0);
    EXPECT_EQ(WhyNot([&] { Host().TabEvent("none"); }), "no tab \"none\"");
    EXPECT_EQ(WhyNot([&] { Host().NodeEvent("none", "node"); }), "no tab \"none\"");
    EXPECT_EQ(WhyNot([&] { Host().NodeEvent("tab", "none"); }), "no node \"none\"");
    tab->SetEnabled(false);
    EXPECT_EQ(WhyNot([&] { Host().TabEvent("tab"); }), "tab \"tab\" is disabled");
    EXPECT_EQ(WhyNot([&] { Host().NodeEvent("tab", "node"); }), "tab \"tab\" is disabled");
    tab->SetVisible(false);
    EXPECT_EQ(WhyNot([&] { Host().TabEvent("tab"); }), "tab \"tab\" is hidden");
}

TEST_F(UserActions, OpenARow) {
    IListView& list = AddList();
    list.AddItem("1", "One");
    list.AddItem("2", "Two").SetChecked(true);
    EXPECT_THAT(
        EventsOf([&] { Host().ListItemEvent("list", "Two"); }),
        ElementsAre(
            "SnapIn>me event 4 list 13/0(objectType=IListItem, secondType=, Text=Two, Checked=True)"));
    EXPECT_EQ(list.CurrentItem()->Text(), "Two");
    EXPECT_THAT(
        EventsOf([&] { Host().ListItemEvent("list", "One", 99, true); }),
        ElementsAre(
            "SnapIn>me event 4 list 99/0(objectType=IListItem, secondType=, Text=One, Checked=True)"));
    EXPECT_EQ(list.CurrentItem()->Text(), "One");
    EXPECT_FALSE(list.CurrentItem()->Checked()); // only a change of the check changes it
}

TEST_F(UserActions, ChangeTheCheckOfARow) {
    IListView& list = AddList();
    list.AddItem("1", "One");
    const auto check = [&](std::optional<bool> checked) {
        return EventsOf([&] { Host().ListItemEvent("list", "One", eventKind::CheckChanged, checked); });
    };
    const auto event = [](const std::string& checked) {
        return "SnapIn>me event 4 list 1/0(objectType=IListItem, secondType=, Text=One, Checked=" + checked +
               ")";
    };
    EXPECT_THAT(check({}), ElementsAre(event("True")));
    EXPECT_TRUE(Model().List("list")[0].checked);
    EXPECT_THAT(check({}), ElementsAre(event("False")));
    EXPECT_FALSE(Model().List("list")[0].checked);
    EXPECT_THAT(check(true), ElementsAre(event("True")));
    EXPECT_THAT(check(true), ElementsAre(event("True")));
    EXPECT_TRUE(Model().List("list")[0].checked);
}

TEST_F(UserActions, ChooseARowWithoutAnEvent) {
    IListView& list = AddList();
    list.AddItem("1", "One");
    EXPECT_THAT(EventsOf([&] { Host().SelectRow("list", "One"); }), IsEmpty());
    EXPECT_EQ(list.CurrentItem()->Key(), "1");
}

TEST_F(UserActions, AllowTheOwnerToEmptyTheList) {
    IListView& list = AddList();
    list.AddItem("1", "One");
    Listen("me", [&](const auto&) {
        list.Clear();
        Framework().Views().Remove("list");
        return "";
    });
    Host().ListItemEvent("list", "One", eventKind::CheckChanged);
    EXPECT_THAT(Model().Views(), IsEmpty());
}

TEST_F(UserActions, ClickAColumn) {
    AddList();
    EXPECT_THAT(
        EventsOf([&] { Host().ColumnClick("list", "name", "1"); }),
        ElementsAre(
            "SnapIn>me event 4 list 8/0(objectType=IColumnHeader, secondType=IColumnHeader, key=name, "
            "order=1)"));
    EXPECT_EQ(WhyNot([&] { Host().ColumnClick("list", "none", "1"); }), "no column \"none\"");
}

TEST_F(UserActions, DoNotReachRowsThatAreNotThere) {
    AddList().AddItem("1", "One");
    Framework().Views().Add("control", ViewKind::Control, ControlViewDefinition{"x"}, "me");
    for (const auto* view : {"none", "control", ""}) {
        const std::string expected = "no list view \"" + std::string(view) + "\"";
        EXPECT_EQ(WhyNot([&] { Host().ListItemEvent(view, "One"); }), expected);
        EXPECT_EQ(WhyNot([&] { Host().SelectRow(view, "One"); }), expected);
        EXPECT_EQ(WhyNot([&] { Host().ColumnClick(view, "name", "1"); }), expected);
    }
    EXPECT_EQ(WhyNot([&] { Host().ListItemEvent("list", "one"); }), "no row \"one\"");
    EXPECT_EQ(WhyNot([&] { Host().SelectRow("list", "1"); }), "no row \"1\"");
}

} // namespace
} // namespace arvon::host::test
