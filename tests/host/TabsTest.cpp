// Tabs, their trees of nodes, and what selecting brings about.

#include "tests/host/HostFixture.h"

#include <random>

namespace arvon::host::test {
namespace {

std::string Tree(const std::vector<model::Node>& nodes) {
    std::string text;
    for (const model::Node& node : nodes) {
        text += (text.empty() ? "" : " ") + node.key;
        if (!node.nodes.empty()) text += "(" + Tree(node.nodes) + ")";
    }
    return text;
}

class TabsOfTheHost : public HostTest {
protected:
    std::shared_ptr<ITab> AddTab(std::string_view key, std::int32_t index = 1,
                                 std::string_view owner = "me") {
        return Framework().Tabs().Add(index, key, owner, nullptr, true);
    }
    static std::shared_ptr<INode> AddNode(INodes& nodes, std::string_view key,
                                          std::string_view owner = "me") {
        return nodes.Add(key, owner, 3, "Caption", nullptr, true, 0);
    }
    model::Tab Shown(std::string_view key) {
        for (model::Tab& tab : Model().Tabs())
            if (tab.key == key) return tab;
        ADD_FAILURE() << "no tab " << key;
        return {};
    }
    std::vector<std::string> Keys() {
        std::vector<std::string> keys;
        for (const model::Tab& tab : Model().Tabs())
            keys.push_back(tab.key);
        return keys;
    }
};

TEST_F(TabsOfTheHost, StandAtTheirPosition) {
    AddTab("a", 1);
    AddTab("b", 1);
    AddTab("c", 99);
    AddTab("d", 2);
    EXPECT_THAT(Keys(), ElementsAre("b", "d", "a", "c"));
    EXPECT_EQ(Framework().Tabs().Count(), 4u);
    EXPECT_EQ(RefusalOf([&] { AddTab("e", 0); }).number, base::errors::OutOfRange);
    EXPECT_EQ(RefusalOf([&] { AddTab("e", -1); }).number, base::errors::OutOfRange);
}

TEST_F(TabsOfTheHost, AreTakenUpAgainByTheirOwner) {
    const auto tab = AddTab("a");
    AddNode(tab->Nodes(), "n");
    tab->SetCaption("Caption");
    EXPECT_EQ(AddTab("a", 7), tab);
    EXPECT_EQ(Tree(Shown("a").nodes), "n");
    EXPECT_EQ(RefusalOf([&] { AddTab("a", 1, "you"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(Framework().Tabs().Item("a"), tab);
    EXPECT_EQ(Framework().Tabs().Item("A"), nullptr);
}

TEST_F(TabsOfTheHost, AreHiddenAndDisabledUntilTold) {
    const auto tab = AddTab("a");
    EXPECT_FALSE(Shown("a").visible || Shown("a").enabled);
    tab->SetVisible(true);
    tab->SetEnabled(true);
    tab->SetCaption("Caption");
    EXPECT_TRUE(Shown("a").visible && Shown("a").enabled);
    EXPECT_EQ(Shown("a").caption, "Caption");
    EXPECT_EQ(tab->Key(), "a");
}

TEST_F(TabsOfTheHost, AreInFrontFromTheFirstOn) {
    EXPECT_EQ(Framework().CurrentControl(), "");
    AddTab("a");
    const auto b = AddTab("b");
    EXPECT_EQ(Framework().CurrentControl(), "a");
    b->BringForward();
    EXPECT_EQ(Framework().CurrentControl(), "b");
    EXPECT_EQ(Model().CurrentControl(), "b");
}

TEST_F(TabsOfTheHost, HoldNodesAtLevelsOneAndThree) {
    const auto tab = AddTab("a");
    const auto top = AddNode(tab->Nodes(), "top");
    const auto below = AddNode(top->Nodes(), "below");
    const auto deep = AddNode(below->Nodes(), "deep");
    EXPECT_EQ(top->Level(), 1);
    EXPECT_EQ(below->Level(), 3);
    EXPECT_EQ(deep->Level(), 3);
    EXPECT_EQ(Tree(Shown("a").nodes), "top(below(deep))");
    top->SetImage(4);
    top->SetViewKey("lvTools");
    top->SetTaskViewKey("tvTools");
    const model::Node shown = Shown("a").nodes[0];
    EXPECT_EQ(shown.caption, "Caption");
    EXPECT_EQ(shown.owner, "me");
    EXPECT_EQ(shown.image, 4);
    EXPECT_EQ(shown.view, "lvTools");
    EXPECT_EQ(shown.taskView, "tvTools");
    EXPECT_EQ(tab->Nodes().Count(), 1u);
    EXPECT_EQ(tab->Nodes().Item("top"), top);
    EXPECT_EQ(tab->Nodes().Item(std::size_t{1}), top);
    for (const std::size_t outside : {std::size_t{0}, tab->Nodes().Count() + 1})
        EXPECT_EQ(RefusalOf([&] { tab->Nodes().Item(outside); }).number, base::errors::OutOfRange);
    EXPECT_EQ(top->Owner(), "me");
    EXPECT_EQ(tab->Nodes().Item("below"), nullptr);
    EXPECT_EQ(tab->FindNode("deep"), deep);
    EXPECT_EQ(tab->FindNode("none"), nullptr);
}

TEST_F(TabsOfTheHost, RefuseANodeOfAnotherOwnersKeyInOneLevelOnly) {
    const auto tab = AddTab("a");
    const auto node = AddNode(tab->Nodes(), "n");
    EXPECT_EQ(RefusalOf([&] { AddNode(tab->Nodes(), "n", "you"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(tab->Nodes().Item("n"), node);
    EXPECT_NO_THROW(AddNode(node->Nodes(), "n", "you"));
    EXPECT_EQ(RefusalOf([&] { tab->Nodes().Remove("x"); }).description, "no node \"x\"");
}

TEST_F(TabsOfTheHost, ReplaceANodeOfTheSameKeyAndOwnerWhereItStands) {
    Listen("me");
    const auto tab = AddTab("a");
    AddNode(tab->Nodes(), "first");
    const auto old = AddNode(tab->Nodes(), "n");
    AddNode(tab->Nodes(), "last");
    AddNode(old->Nodes(), "below");
    old->SetImage(4);
    tab->FindNode("below")->Select();
    EXPECT_EQ(Shown("a").selected, "below");

    const auto node = AddNode(tab->Nodes(), "n");
    EXPECT_NE(node, old);
    EXPECT_EQ(tab->FindNode("n"), node);
    EXPECT_EQ(Tree(Shown("a").nodes), "first n last");
    EXPECT_EQ(Shown("a").nodes[1].image, 0);
    EXPECT_EQ(Shown("a").selected, "");
    EXPECT_EQ(tab->FindNode("below"), nullptr);
    EXPECT_FALSE(node->IsLoaded());
    recorder.Forget();
    old->Select(); // it stands nowhere any more
    EXPECT_THAT(recorder.messages, IsEmpty());
    AddNode(node->Nodes(), "below")->Select();
    EXPECT_EQ(Shown("a").selected, "below");
}

TEST_F(TabsOfTheHost, FindTheFirstNodeInTreeOrder) {
    const auto tab = AddTab("a");
    const auto second = AddNode(tab->Nodes(), "1"), first = AddNode(tab->Nodes(), "2");
    const auto later = AddNode(first->Nodes(), "n"), earlier = AddNode(second->Nodes(), "n");
    EXPECT_EQ(tab->FindNode("n"), earlier); // added later, stands first
    const auto top = AddNode(tab->Nodes(), "n");
    EXPECT_EQ(tab->FindNode("n"), earlier);
    tab->Nodes().Remove("1");
    EXPECT_EQ(tab->FindNode("n"), later);
    tab->Nodes().Remove("2");
    EXPECT_EQ(tab->FindNode("n"), top);
}

/// Against a search through the tree itself.
TEST_F(TabsOfTheHost, FindNodesWhateverWasAddedAndRemoved) {
    std::mt19937 random(1);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const auto tab = AddTab("a");
    struct Place {
        std::shared_ptr<INode> node; // null: the tab's own level
        INodes& Nodes(ITab& owner) const { return node ? node->Nodes() : owner.Nodes(); }
    };
    const std::function<std::shared_ptr<INode>(INodes&, const std::vector<model::Node>&, const std::string&)>
        search = [&](INodes& nodes, const std::vector<model::Node>& shown,
                     const std::string& key) -> std::shared_ptr<INode> {
        for (const model::Node& each : shown) {
            const auto node = nodes.Item(each.key);
            if (each.key == key) return node;
            if (auto found = search(node->Nodes(), each.nodes, key)) return found;
        }
        return nullptr;
    };
    std::vector<Place> places{{}};
    for (int step = 0; step < 1500; ++step) {
        const Place place = places[below(places.size())];
        const std::string key = "n" + std::to_string(below(12));
        INodes& nodes = place.Nodes(*tab);
        if (nodes.Item(key)) {
            nodes.Remove(key);
        } else {
            places.push_back({AddNode(nodes, key)}); // also below nodes that were taken out
        }
        if (places.size() > 40) places.erase(places.begin() + 1 + static_cast<std::ptrdiff_t>(below(39)));
        const std::string wanted = "n" + std::to_string(below(12));
        ASSERT_EQ(tab->FindNode(wanted), search(tab->Nodes(), Shown("a").nodes, wanted)) << "step " << step;
    }
}

class SelectionInATab : public TabsOfTheHost {
protected:
    SelectionInATab() {
        tab = AddTab("a");
        one = AddNode(tab->Nodes(), "1");
        two = AddNode(tab->Nodes(), "2");
        Listen("me");
        recorder.Forget();
    }
    static std::string SelectedEvent(const std::string& key) {
        return "SnapIn>me event 3 a 5/0(key=" + key + ")";
    }
    std::shared_ptr<ITab> tab;
    std::shared_ptr<INode> one, two;
};

TEST_F(SelectionInATab, AsksTheOwnerOnceForEachNodeInTurn) {
    EXPECT_FALSE(one->IsLoaded());
    one->Select();
    EXPECT_EQ(Shown("a").selected, "1");
    EXPECT_TRUE(one->IsLoaded());
    EXPECT_FALSE(two->IsLoaded());
    one->Select(); // is selected, and its owner knows
    two->Select();
    one->Select();
    EXPECT_THAT(recorder.messages, ElementsAre(SelectedEvent("1"), SelectedEvent("2"), SelectedEvent("1")));
}

TEST_F(SelectionInATab, IsTakenAwayByRelease) {
    one->Select();
    two->Release(); // is not selected
    EXPECT_EQ(Shown("a").selected, "1");
    one->Release();
    EXPECT_EQ(Shown("a").selected, "");
    recorder.Forget();
    one->Select(); // the last that its owner heard was of this very node
    EXPECT_EQ(Shown("a").selected, "1");
    EXPECT_THAT(recorder.messages, IsEmpty());
}

TEST_F(SelectionInATab, IsLeftAsItIsByRefresh) {
    two->Select();
    recorder.Forget();
    one->Refresh();
    one->Refresh();
    EXPECT_THAT(recorder.messages, ElementsAre(SelectedEvent("1"), SelectedEvent("1")));
    EXPECT_TRUE(one->IsLoaded());
    EXPECT_EQ(Shown("a").selected, "2");
}

TEST_F(SelectionInATab, EndsWithTheNodeThatIsTakenOut) {
    const auto below = AddNode(one->Nodes(), "below");
    below->Select();
    EXPECT_EQ(Shown("a").selected, "below");
    tab->Nodes().Remove("1");
    EXPECT_EQ(Shown("a").selected, "");
    recorder.Forget();
    below->Select(); // stands in no tree any more
    one->Select();
    one->Refresh();
    EXPECT_EQ(Shown("a").selected, "");
    EXPECT_THAT(recorder.messages, IsEmpty());
}

TEST_F(SelectionInATab, AllowsTheOwnerToTakeTheNodeOut) {
    Listen("me", [&](const auto&) {
        tab->Nodes().Remove("1");
        one.reset();
        return "";
    });
    one->Select();
    EXPECT_EQ(Tree(Shown("a").nodes), "2");
    EXPECT_EQ(Shown("a").selected, "");
}

TEST_F(SelectionInATab, AllowsTheOwnerToSelectAnotherNode) {
    Listen("me", [&](const auto&) {
        two->Select();
        return "";
    });
    one->Select();
    EXPECT_EQ(Shown("a").selected, "2");
    EXPECT_THAT(recorder.messages, ElementsAre(SelectedEvent("1"), SelectedEvent("2")));
}

TEST_F(SelectionInATab, OutlivesItsParts) {
    one->Select();
    const auto framework = Host().Framework();
    Close();
    one->Release();
    tab.reset();
    one.reset();
}

} // namespace
} // namespace arvon::host::test
