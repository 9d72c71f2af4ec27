// Whoever hears of something, or is asked for something, may change the host before it goes on.

#include "tests/host/HostFixture.h"

#include <optional>

namespace arvon::host::test {
namespace {

using testing::SizeIs;

/// Does something at the first change of a part, or at the first problem.
class Meddler final : public IObserver {
public:
    Meddler(ReferenceHost& host, std::optional<ModelPart> part, std::function<void()> act)
        : host_(host), part_(part), act_(std::move(act)) {
        host_.Subscribe(*this);
    }
    ~Meddler() override { host_.Unsubscribe(*this); }
    Meddler(const Meddler&) = delete;
    Meddler& operator=(const Meddler&) = delete;

    void OnChanged(ModelPart part) override {
        if (part == part_) Act();
    }
    void OnProblem(const std::string&) override {
        if (!part_) Act();
    }

private:
    void Act() {
        if (const auto act = std::exchange(act_, {})) act();
    }

    ReferenceHost& host_;
    const std::optional<ModelPart> part_;
    std::function<void()> act_;
};

class NestedChanges : public HostTest {
protected:
    NestedChanges() { Listen("me"); }
    IListView& AddList() {
        ListViewDefinition definition;
        definition.columnHeaders = {{"name", "Name", 2880}};
        return *Framework().Views().Add("list", ViewKind::List, definition, "me")->List();
    }
    void AddPane() {
        const auto pane = Framework().TaskViews().NewTaskView();
        pane->SetVisible(true);
        Framework().TaskViews().Add("pane", ViewKind::TaskPane, pane, "me");
    }
    std::vector<std::string> ToolNames() {
        std::vector<std::string> names;
        for (const model::Tool& tool : Model().Tools())
            names.push_back(tool.name);
        return names;
    }
};

TEST_F(NestedChanges, MayTakeAwayANodeThatIsBeingAdded) {
    const auto tab = Framework().Tabs().Add(1, "tab", "me", nullptr, true);
    const Meddler meddler(Host(), ModelPart::Tabs, [&] { tab->Nodes().Remove("node"); });
    const auto node = tab->Nodes().Add("node", "me", 0, "Caption", nullptr, true, 0);
    EXPECT_EQ(node->Key(), "node");
    EXPECT_EQ(tab->Nodes().Count(), 0u);
}

TEST_F(NestedChanges, MayTakeAwayAMenuThatIsBeingAdded) {
    const Meddler meddler(Host(), ModelPart::Menus, [&] { Framework().Menus().Remove("menu"); });
    const auto menu = Framework().Menus().Add("menu", "", "", "me", {}, {}, 0, 0, true);
    EXPECT_EQ(menu->Key(), "menu");
    EXPECT_EQ(Framework().Menus().Item("menu"), nullptr);
}

TEST_F(NestedChanges, MayTakeAwayAMenuEntryThatIsBeingAdded) {
    IMenuItems& items = Framework().ContextMenu();
    {
        const Meddler meddler(Host(), ModelPart::ContextMenu, [&] { items.Clear(); });
        EXPECT_EQ(items.Add("entry", "Caption", "", "me")->Caption(), "Caption");
    }
    const Meddler meddler(Host(), ModelPart::ContextMenu, [&] { items.Clear(); });
    EXPECT_EQ(items.AddSeparator("line", "me")->Key(), "line");
    EXPECT_EQ(items.Count(), 0u);
}

TEST_F(NestedChanges, MayEmptyTheListWhoseRowIsClicked) {
    IListView& list = AddList();
    list.AddItem("1", "one");
    recorder.Forget();
    const Meddler meddler(Host(), ModelPart::List, [&] { list.Clear(); });
    EXPECT_EQ(RefusalOf([&] { Host().ListItemEvent("list", "one"); }).description, "no row \"one\"");
    EXPECT_THAT(recorder.messages, IsEmpty());
}

TEST_F(NestedChanges, MayFillTheListAnewWhoseRowIsClicked) {
    IListView& list = AddList();
    list.AddItem("1", "one");
    recorder.Forget();
    const Meddler meddler(Host(), ModelPart::List, [&] {
        list.Clear();
        list.AddItem("2", "one").SetChecked(true);
    });
    Host().ListItemEvent("list", "one", eventKind::CheckChanged);
    EXPECT_FALSE(Model().List("list")[0].checked); // turned from what it is by now
    EXPECT_THAT(recorder.messages, SizeIs(1));
}

TEST_F(NestedChanges, MayReplaceThePaneWhoseSwitchIsTurned) {
    AddPane();
    recorder.Forget();
    const Meddler meddler(Host(), ModelPart::TaskViews, [&] { AddPane(); });
    Host().ClickTask("tskShowAll");
    EXPECT_THAT(recorder.messages, ElementsAre("SnapIn>me event 5 tskShowAll 0/0(Flag=True)"));
    EXPECT_FALSE(Model().TaskViews()[0].showAll);
}

TEST_F(NestedChanges, MayReadTheCatalogueWhileItIsRead) {
    OpenWith({{.name = "One"}, {.name = "Two"}});
    installation.WriteTools({{.name = "One", .kind = "no number"}, {.name = "Two"}, {.name = "Three"}});
    const Meddler meddler(Host(), {}, [&] { Framework().Tools().Reload(); });
    Framework().Tools().Reload();
    EXPECT_THAT(ToolNames(), ElementsAre("One", "Two", "Three"));
    EXPECT_NE(Framework().Tools().Item("Three"), nullptr);
}

TEST_F(NestedChanges, MayReadTheCatalogueWhileItIsSaved) {
    OpenWith({{.name = "One"}, {.name = "Two"}, {.name = "Three"}});
    for (const char* name : {"One", "Three"})
        Framework().Tools().Item(name)->Set("Brand", "Halcrest");
    installation.WriteTools({{.name = "Three"}, {.name = "Four"}});
    const Meddler meddler(Host(), {}, [&] { Framework().Tools().Reload(); });
    recorder.Forget();
    Framework().Tools().Save();
    EXPECT_THAT(recorder.problems, ElementsAre(HasSubstr("holds the tool \"One\" no more")));
    EXPECT_THAT(ToolNames(), ElementsAre("Three", "Four"));
    EXPECT_THAT(installation.Read("Arvon/Tools.xml"), HasSubstr("Halcrest"));
}

/// Long enough to lie on the heap of its own.
const std::string longText(100, 'k');

TEST_F(NestedChanges, MayCloseTheHostWhileAMessageBoxIsOpen) {
    std::string seen;
    Hooks hooks;
    hooks.showMessage = [this, &seen, own = longText](const auto&, std::int32_t, const auto&) {
        Close();
        seen = own;
    };
    Open(std::move(hooks));
    const std::shared_ptr<IFramework> framework = Host().Framework();
    framework->ShowMessage("text", 0, "");
    EXPECT_EQ(seen, longText);
}

TEST_F(NestedChanges, MayCloseTheHostWhileARecordIsEdited) {
    std::string seen;
    Hooks hooks;
    auto record = std::make_shared<std::shared_ptr<IToolRecord>>();
    hooks.editRecord = [this, &seen, own = longText, record](IToolRecord& edited) {
        record->reset(); // the one who asked lets go of it
        Close();
        edited.Set("Brand", "Halcrest");
        seen = own;
        return true;
    };
    OpenWith({{.name = "One"}}, std::move(hooks));
    const std::shared_ptr<IFramework> framework = Host().Framework();
    *record = framework->Tools().Item("One");
    framework->Tools().Edit(*record, "caller");
    EXPECT_EQ(seen, longText);
    EXPECT_THAT(installation.Read("Arvon/Tools.xml"), HasSubstr("Halcrest"));
}

TEST_F(NestedChanges, MayCloseTheHostWhileAControlIsMade) {
    std::string seen;
    Hooks hooks;
    hooks.makeControl = [this, &seen, own = longText](std::string_view, std::string_view) {
        Close();
        seen = own;
        return std::shared_ptr<base::Object>();
    };
    Open(std::move(hooks));
    const std::shared_ptr<IFramework> framework = Host().Framework();
    const auto view =
        framework->Views().Add("view", ViewKind::Control, ControlViewDefinition{"KvTMU110.ctlOptions"}, "me");
    EXPECT_NE(view->Control(), nullptr); // the host's own
    EXPECT_EQ(seen, longText);
}

} // namespace
} // namespace arvon::host::test
