#include "tests/host/HostFixture.h"

namespace arvon::host::test {
namespace {

std::vector<std::string> Keys(const std::vector<model::Menu>& menus) {
    std::vector<std::string> keys;
    for (const model::Menu& menu : menus)
        keys.push_back(menu.key);
    return keys;
}

/// "key(below, below)" of every item.
std::string Tree(const std::vector<model::MenuItem>& items) {
    std::string text;
    for (const model::MenuItem& item : items) {
        text += (text.empty() ? "" : " ") + item.key;
        if (!item.items.empty()) text += "(" + Tree(item.items) + ")";
    }
    return text;
}

class MenusOfTheHost : public HostTest {
protected:
    IMenus& Menus() { return Framework().Menus(); }
    std::shared_ptr<IMenu> Add(std::string_view key, std::optional<std::string_view> before = {},
                               std::optional<std::string_view> after = {}) {
        return Menus().Add(key, "Caption", "Text", "me", before, after, 0, 0, true);
    }
    std::string Entries(std::string_view menu) {
        for (const model::Menu& each : Model().Menus())
            if (each.key == menu) return Tree(each.items);
        return "no such menu";
    }
};

TEST_F(MenusOfTheHost, StandBeforeOrAfterTheirNeighbour) {
    Add("a");
    Add("b", "a");
    Add("c", {}, "b");
    Add("d", "unknown");
    Add("e", "unknown", "b");
    Add("f", "b", "d"); // the one before counts first
    EXPECT_THAT(Keys(Model().Menus()), ElementsAre("mnuHost", "f", "b", "e", "c", "a", "d"));
}

TEST_F(MenusOfTheHost, HoldWhatTheyWereGiven) {
    const auto menu = Add("a");
    EXPECT_EQ(menu->Key(), "a");
    EXPECT_EQ(Menus().Item("a"), menu);
    EXPECT_EQ(Menus().Item("A"), nullptr);
    const model::Menu shown = Model().Menus().back();
    EXPECT_EQ(shown.caption, "Caption");
    EXPECT_EQ(shown.description, "Text");
    EXPECT_EQ(shown.owner, "me");
    EXPECT_TRUE(shown.visible);
    menu->SetVisible(false);
    EXPECT_FALSE(Model().Menus().back().visible);
}

TEST_F(MenusOfTheHost, AreUniqueByKeyAndRemovedByIt) {
    Add("a");
    EXPECT_EQ(RefusalOf([&] { Menus().Add("a", "", "", "you", {}, {}, 0, 0, true); }).number,
              base::errors::DuplicateKey);
    Menus().Remove("a");
    EXPECT_EQ(Menus().Item("a"), nullptr);
    const Refusal refusal = RefusalOf([&] { Menus().Remove("a"); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.description, "no menu \"a\"");
}

TEST_F(MenusOfTheHost, AreReplacedByTheirOwnerWhereTheyStand) {
    Add("a");
    const auto old = Add("b");
    Add("c");
    const auto entry = old->Items().Add("1", "", "", "me");
    entry->Items().Add("2", "", "", "me");
    old->SetVisible(false);
    const auto menu = Add("b", "a"); // where it stands, whatever neighbour is named
    EXPECT_NE(menu, old);
    EXPECT_EQ(Menus().Item("b"), menu);
    EXPECT_THAT(Keys(Model().Menus()), ElementsAre("mnuHost", "a", "b", "c"));
    EXPECT_EQ(Entries("b"), "");
    EXPECT_TRUE(Model().Menus()[2].visible);
    EXPECT_EQ(Menus().FindItem("1"), nullptr);
    EXPECT_EQ(Menus().FindItem("2"), nullptr);
    old->Items().Add("3", "", "", "me"); // whoever holds the old one can go on with it, to no effect
    EXPECT_EQ(Menus().FindItem("3"), nullptr);
    menu->Items().Add("1", "anew", "", "me");
    EXPECT_EQ(Menus().FindItem("1")->Caption(), "anew");
}

TEST_F(MenusOfTheHost, HoldEntriesInOrder) {
    IMenuItems& items = Add("a")->Items();
    const auto first = items.Add("1", "First", "The first", "me");
    items.AddSeparator("s", "me");
    items.Add("2", "Second", "", "you");
    EXPECT_EQ(items.Count(), 3u);
    EXPECT_EQ(items.Item(std::size_t{1}), first);
    EXPECT_EQ(items.Item("1"), first);
    EXPECT_EQ(items.Item("x"), nullptr);
    for (const std::size_t outside : {0u, 4u})
        EXPECT_EQ(RefusalOf([&] { items.Item(outside); }).number, base::errors::OutOfRange);
    EXPECT_EQ(first->Caption(), "First");
    EXPECT_EQ(first->Owner(), "me");
    const auto shown = Model().Menus().back().items;
    EXPECT_EQ(Tree(shown), "1 s 2");
    EXPECT_TRUE(shown[0].enabled && shown[0].visible && !shown[0].separator);
    EXPECT_TRUE(shown[1].separator);
    EXPECT_EQ(shown[0].description, "The first");
    first->SetEnabled(false);
    first->SetVisible(false);
    EXPECT_FALSE(Model().Menus().back().items[0].enabled);
    EXPECT_FALSE(Model().Menus().back().items[0].visible);
}

TEST_F(MenusOfTheHost, RefuseAnEntryOfARepeatedKeyInOneLevelOnly) {
    IMenuItems& items = Add("a")->Items();
    const auto entry = items.Add("1", "", "", "me");
    EXPECT_EQ(RefusalOf([&] { items.Add("1", "", "", "me"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(RefusalOf([&] { items.AddSeparator("1", "me"); }).number, base::errors::DuplicateKey);
    EXPECT_NO_THROW(entry->Items().Add("1", "", "", "me"));
    EXPECT_NO_THROW(Add("b")->Items().Add("1", "", "", "me"));
    EXPECT_EQ(Entries("a"), "1(1)");
}

TEST_F(MenusOfTheHost, FindAnEntryOfAnyMenuAtAnyDepth) {
    const auto top = Add("a")->Items().Add("1", "", "", "me");
    const auto deep = top->Items().Add("2", "", "", "me")->Items().Add("3", "", "", "me");
    EXPECT_EQ(Menus().FindItem("3"), deep);
    EXPECT_EQ(Menus().FindItem("1"), top);
    EXPECT_EQ(Menus().FindItem("a"), nullptr); // a menu is no entry
    EXPECT_NE(Menus().FindItem("mnuInstallTools"), nullptr);
    EXPECT_EQ(Menus().FindItem(""), nullptr);
}

TEST_F(MenusOfTheHost, DoNotFindAnEntryThatWasTakenOut) {
    IMenuItems& items = Add("a")->Items();
    const auto top = items.Add("1", "", "", "me");
    const auto below = top->Items().Add("2", "", "", "me");
    items.Remove("1");
    EXPECT_EQ(Menus().FindItem("1"), nullptr);
    EXPECT_EQ(Menus().FindItem("2"), nullptr);
    EXPECT_EQ(RefusalOf([&] { items.Remove("1"); }).description, "no menu item \"1\"");
    top->Items().Add("3", "", "", "me"); // whoever holds it can go on with it, to no effect
    below->SetEnabled(false);
    EXPECT_EQ(Menus().FindItem("3"), nullptr);
    EXPECT_EQ(top->Items().Count(), 2u);
    items.Add("1", "anew", "", "me");
    EXPECT_EQ(Menus().FindItem("1")->Caption(), "anew");
}

TEST_F(MenusOfTheHost, DoNotFindEntriesOfAMenuThatWasRemovedOrCleared) {
    const auto menu = Add("a");
    menu->Items().Add("1", "", "", "me")->Items().Add("2", "", "", "me");
    menu->Items().Clear();
    EXPECT_EQ(Menus().FindItem("1"), nullptr);
    EXPECT_EQ(Menus().FindItem("2"), nullptr);
    menu->Items().Add("3", "", "", "me");
    Menus().Remove("a");
    EXPECT_EQ(Menus().FindItem("3"), nullptr);
    EXPECT_EQ(menu->Items().Count(), 0u);
    menu->Items().Add("4", "", "", "me");
    EXPECT_EQ(Menus().FindItem("4"), nullptr);
}

TEST_F(MenusOfTheHost, FindTheOtherEntryOfAKeyWhenTheFirstWent) {
    IMenuItems& a = Add("a")->Items();
    IMenuItems& b = Add("b")->Items();
    const auto inA = a.Add("1", "", "", "me"), inB = b.Add("1", "", "", "me");
    EXPECT_EQ(Menus().FindItem("1"), inA);
    a.Remove("1");
    EXPECT_EQ(Menus().FindItem("1"), inB);
}

TEST_F(MenusOfTheHost, HoldTheHostsOwnEntries) {
    EXPECT_EQ(Entries("mnuHost"), "mnuInstallTools mnuUpdateTools mnuUpdateSettings mnuToolsSortName "
                                  "mnuToolsSortVersion mnuToolsSortUPDATED mnuToolsSortType");
    const std::vector<model::Menu> menus = Model().Menus();
    for (const model::MenuItem& item : menus[0].items)
        EXPECT_EQ(item.owner, "SnapIn");
}

TEST_F(MenusOfTheHost, AreApartFromTheContextMenu) {
    IMenuItems& context = Framework().ContextMenu();
    EXPECT_EQ(context.Count(), 0u);
    const auto entry = context.Add("1", "One", "First", "me");
    context.AddSeparator("s", "me");
    entry->Items().Add("2", "", "", "me");
    EXPECT_EQ(Tree(Model().ContextMenu()), "1(2) s");
    EXPECT_EQ(Menus().FindItem("1"), nullptr);
    EXPECT_EQ(RefusalOf([&] { context.Add("1", "", "", "me"); }).number, base::errors::DuplicateKey);
    context.Remove("s");
    EXPECT_EQ(context.Item("s"), nullptr);
    context.Clear();
    EXPECT_THAT(Model().ContextMenu(), IsEmpty());
    EXPECT_EQ(RefusalOf([&] { context.Remove("1"); }).number, base::errors::InvalidCall);
}

TEST_F(MenusOfTheHost, MayGoWhileItsPartsAreHeld) {
    std::shared_ptr<IMenuItem> item, below, entry;
    {
        const auto framework = Host().Framework();
        item = Add("a")->Items().Add("1", "", "", "me");
        below = item->Items().Add("2", "", "", "me");
        entry = framework->ContextMenu().Add("3", "", "", "me");
        entry->Items().Add("4", "", "", "me");
    }
    Close();
    below.reset();
    item.reset();
    entry.reset();
}

class ToolbarOfTheHost : public HostTest {
protected:
    IButtons& Buttons() { return Framework().Buttons(); }
    std::vector<std::string> Keys() {
        std::vector<std::string> keys;
        for (const model::Button& button : Model().Toolbar())
            keys.push_back(button.key);
        return keys;
    }
};

TEST_F(ToolbarOfTheHost, TakesButtonsAtTheirPosition) {
    EXPECT_THAT(Keys(), ElementsAre("btnUpdateTools"));
    Buttons().Add(1, "a", ButtonStyle::Push);
    Buttons().Add(3, "b", ButtonStyle::Push);
    Buttons().Add(99, "c", ButtonStyle::Separator);
    Buttons().Add(2, "d", ButtonStyle::Push);
    EXPECT_THAT(Keys(), ElementsAre("a", "d", "btnUpdateTools", "b", "c"));
    EXPECT_EQ(Buttons().PositionOf("b"), 4u);
    EXPECT_EQ(Buttons().PositionOf("x"), 0u);
    EXPECT_EQ(Buttons().Item("b"), Buttons().Item(4));
    EXPECT_EQ(Buttons().Count(), 5u);
}

TEST_F(ToolbarOfTheHost, RefusesARepeatedKeyAndPositionZero) {
    Buttons().Add(1, "a", ButtonStyle::Push);
    EXPECT_EQ(RefusalOf([&] { Buttons().Add(1, "a", ButtonStyle::Push); }).number,
              base::errors::DuplicateKey);
    EXPECT_EQ(RefusalOf([&] { Buttons().Add(0, "b", ButtonStyle::Push); }).number, base::errors::OutOfRange);
    EXPECT_EQ(RefusalOf([&] { Buttons().Item(0); }).number, base::errors::OutOfRange);
    EXPECT_EQ(RefusalOf([&] { Buttons().Remove("x"); }).description, "no button \"x\"");
    EXPECT_THAT(Keys(), ElementsAre("a", "btnUpdateTools"));
}

TEST_F(ToolbarOfTheHost, MakesButtonsHiddenAndOwnedByNobody) {
    const auto button = Buttons().Add(1, "a", ButtonStyle::Push);
    EXPECT_EQ(button->Owner(), "");
    EXPECT_FALSE(Model().Toolbar()[0].visible);
    button->SetOwner("me");
    button->SetVisible(true);
    button->SetToolTip("tip");
    button->SetPicture("pic");
    const model::Button shown = Model().Toolbar()[0];
    EXPECT_TRUE(shown.visible && !shown.separator);
    EXPECT_EQ(shown.owner, "me");
    EXPECT_EQ(shown.toolTip, "tip");
    EXPECT_EQ(shown.picture, "pic");
    EXPECT_EQ(button->Key(), "a");
    Buttons().Remove("a");
    EXPECT_EQ(Buttons().Item("a"), nullptr);
    button->SetVisible(false); // to no effect
    EXPECT_THAT(Keys(), ElementsAre("btnUpdateTools"));
}

} // namespace
} // namespace arvon::host::test
