#include "tests/catalogue/PresentationTest.h"

#include "core/contract/EventShapes.h"

namespace kvtm::test {

class MenusAndButtons : public PresentationTest {
protected:
    /// A button of another owner at the end of the toolbar.
    void AddForeignButton(std::string_view key) {
        arvon::IButtons& buttons = host->Framework()->Buttons();
        const auto button = buttons.Add(buttons.Count() + 1, key, arvon::ButtonStyle::Push);
        button->SetOwner("Other");
        button->SetVisible(true);
    }
};

TEST_F(MenusAndButtons, ShowEachToolInListedOrder) {
    LoadWith({{.name = "Pipes", .identifier = "PIP10"}, {.name = "Layout", .identifier = "LAY20"}});
    EXPECT_EQ(MenuKeys(), (Texts{"mnuLAY20", "mnuPIP10", "mnuToolsSep1", "mnuToolOptions"}));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnLAY20", "btnPIP10", "KvTM10_Sep2"}));

    const auto item = ToolMenuItems().at(0);
    EXPECT_EQ(item.caption, "&Layout");
    EXPECT_EQ(item.description, "text 16&Layout");
    EXPECT_EQ(item.owner, "KvTM10");
    EXPECT_TRUE(item.enabled);
    EXPECT_FALSE(item.separator);

    const auto button = Button("btnLAY20");
    EXPECT_EQ(button.owner, "KvTM10");
    EXPECT_TRUE(button.visible);
    EXPECT_FALSE(button.separator);
    EXPECT_EQ(button.picture, "LAY");
    EXPECT_EQ(button.toolTip, "text 16 Layout");
}

TEST_F(MenusAndButtons, EncloseTheToolsInSeparators) {
    LoadWith({{.name = "Layout", .identifier = "LAY"}});
    const auto separator = ToolMenuItems().at(1);
    EXPECT_EQ(separator.key, "mnuToolsSep1");
    EXPECT_TRUE(separator.separator);
    EXPECT_EQ(separator.owner, "KvTM10");
    const auto options = ToolMenuItems().at(2);
    EXPECT_EQ(options.caption, "text 61");
    EXPECT_EQ(options.description, "text 62");
    EXPECT_EQ(options.owner, "KvTM10");
    for (const char* key : {"KvTM10_Sep1", "KvTM10_Sep2"}) {
        EXPECT_TRUE(Button(key).separator);
        EXPECT_TRUE(Button(key).visible);
        EXPECT_EQ(Button(key).owner, "KvTM10");
    }
}

TEST_F(MenusAndButtons, KeepOptionsAndToolbarSeparatorsWithoutAnyTool) {
    LoadWith({});
    EXPECT_EQ(MenuKeys(), Texts{"mnuToolOptions"});
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, LeaveOutToolsWithoutAnIdentifier) {
    LoadWith({{.name = "A", .identifier = ""}, {.name = "B", .identifier = "BBB"}, {.name = "C"}});
    EXPECT_EQ(MenuKeys(), (Texts{"mnuBBB", "mnuToolsSep1", "mnuToolOptions"}));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnBBB", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, SeparateTheOptionsFromToolsThatHaveNoItem) {
    LoadWith({{.name = "A", .identifier = ""}});
    EXPECT_EQ(MenuKeys(), (Texts{"mnuToolsSep1", "mnuToolOptions"}));
}

TEST_F(MenusAndButtons, LeaveOutHiddenToolsOfTheWholeCollection) {
    LoadWith({{.name = "B", .identifier = "BBB"},
              {.name = "Hidden", .identifier = "HID", .showInList = "0"},
              {.name = "A", .identifier = "AAA"}});
    Probe().RebuildToolMenus(false);
    EXPECT_EQ(MenuKeys(), (Texts{"mnuBBB", "mnuAAA", "mnuToolsSep1", "mnuToolOptions"}));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnBBB", "btnAAA", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, ShowEveryVisibleToolOfTheWholeCollection) {
    LoadWith({{.name = "Frame", .identifier = "FRA", .classification = "Manager"},
              {.name = "A", .identifier = "AAA"}});
    EXPECT_EQ(MenuKeys().at(0), "mnuAAA");
    Probe().RebuildToolMenus(false);
    EXPECT_EQ(MenuKeys(), (Texts{"mnuFRA", "mnuAAA", "mnuToolsSep1", "mnuToolOptions"}));
}

TEST_F(MenusAndButtons, FollowTheOrderAtTheNextRebuildOnly) {
    LoadWith({{.name = "A", .identifier = "AAA"}, {.name = "B", .identifier = "BBB"}});
    Probe().SortTools("name", "1", true);
    EXPECT_EQ(MenuKeys().at(0), "mnuAAA");
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(MenuKeys(), (Texts{"mnuBBB", "mnuAAA", "mnuToolsSep1", "mnuToolOptions"}));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnBBB", "btnAAA", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, AreTheSameAfterAnyNumberOfRebuilds) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    const Texts menuKeys = MenuKeys(), buttonKeys = ButtonKeys();
    Probe().RebuildToolMenus(true);
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(MenuKeys(), menuKeys);
    EXPECT_EQ(ButtonKeys(), buttonKeys);
}

TEST_F(MenusAndButtons, LeaveTheButtonsOfOthersWhereTheyStand) {
    installation.WriteTools({{.name = "A", .identifier = "AAA"}, {.name = "B", .identifier = "BBB"}});
    CreateHost();
    AddForeignButton("btnFirst");
    CreateTool();
    ASSERT_TRUE(Load());
    AddForeignButton("btnLast");
    const Texts own = {"KvTM10_Sep1", "btnAAA", "btnBBB", "KvTM10_Sep2"};
    EXPECT_EQ(ButtonKeys(), (Texts{"btnFirst", own[0], own[1], own[2], own[3], "btnLast"}));
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ButtonKeys(), (Texts{"btnFirst", "btnLast", own[0], own[1], own[2], own[3]}));
    EXPECT_EQ(Button("btnFirst").owner, "Other");
}

TEST_F(MenusAndButtons, HaveOnePairOfSeparatorsHoweverOftenTheyAreBuilt) {
    LoadWith({{.name = "A", .identifier = ""}});
    EXPECT_TRUE(Probe().BuildToolButtons(true));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, PlaceTheFirstToolRightBehindASeparatorThatIsThere) {
    LoadWith({});
    installation.WriteTools({{.name = "A", .identifier = "AAA"}, {.name = "B", .identifier = "BBB"}});
    host->Framework()->Tools().Reload();
    EXPECT_TRUE(Probe().BuildToolButtons(false));
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnAAA", "btnBBB", "KvTM10_Sep2"}));
}

TEST_F(MenusAndButtons, RememberTheOthersWhenOneCannotBeFinished) {
    LoadWith({{.name = "A", .identifier = "RUN"},
              {.name = "B"},
              {.name = "C", .identifier = "CCC"},
              {.name = "Z", .vrex = "Z1", .identifier = "RUN"}});
    ClaimReports();                            // the second of that identifier
    host->FailNext("Button.SetPicture", 1, 1); // C's
    Probe().RebuildToolMenus(true);
    ClaimReports();
    Probe().SortTools("name", "1", true); // Z is the first of its identifier now
    host->Refuse("A");
    Event(arvon::EventObject::Button, "btnRUN");
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"A\", \"KvTM10\")"});
    ClaimBox();
}

TEST_F(MenusAndButtons, ReportTheSecondToolOfAnIdentifierAndShowTheRest) {
    LoadWith({{.name = "A", .identifier = "SAME"},
              {.name = "B", .identifier = "SAME"},
              {.name = "C", .identifier = "CCC"}});
    EXPECT_EQ(ClaimReport("AddMenu").number, base::errors::DuplicateKey);
    EXPECT_EQ(ClaimReport("AddButton").number, base::errors::DuplicateKey);
    EXPECT_EQ(MenuKeys(), (Texts{"mnuSAME", "mnuCCC", "mnuToolsSep1", "mnuToolOptions"}));
    EXPECT_EQ(ToolMenuItems().at(0).caption, "&A");
    EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnSAME", "btnCCC", "KvTM10_Sep2"}));
    EXPECT_EQ(Button("btnSAME").toolTip, "text 16 A");
}

TEST_F(MenusAndButtons, KeepNamesAsTheyAre) {
    LoadWith({{.name = "R&D \xC3\x9C"
                       "bersicht",
               .identifier = "\xC3\x84\xC3\xB6\xC3\xBC"
                             "9"}});
    EXPECT_EQ(ToolMenuItems().at(0).key, "mnu\xC3\x84\xC3\xB6\xC3\xBC"
                                         "9");
    EXPECT_EQ(ToolMenuItems().at(0).caption, "&R&D \xC3\x9C"
                                             "bersicht");
    const auto button = Button("btn\xC3\x84\xC3\xB6\xC3\xBC"
                               "9");
    EXPECT_EQ(button.picture, "\xC3\x84\xC3\xB6\xC3\xBC"); // three characters, not bytes
    EXPECT_EQ(button.toolTip, "text 16 R&D \xC3\x9C"
                              "bersicht");
}

TEST_F(MenusAndButtons, GiveAShortIdentifierWholeAsPicture) {
    LoadWith({{.name = "A", .identifier = "X"}});
    EXPECT_EQ(Button("btnX").picture, "X");
}

TEST_F(MenusAndButtons, TakeAwayAButtonThatCannotBeFinished) {
    LoadWith({{.name = "A", .identifier = "AAA"}, {.name = "B", .identifier = "BBB"}});
    const Texts whole = ButtonKeys();
    constexpr std::size_t firstTool = 1; // behind the separator
    for (const char* operation :
         {"Button.SetVisible", "Button.SetPicture", "Button.SetOwner", "Button.SetToolTip"}) {
        const bool hasSeparator = operation != std::string_view("Button.SetPicture") &&
                                  operation != std::string_view("Button.SetToolTip");
        host->FailNext(operation, 1, hasSeparator ? firstTool : 0);
        Probe().RebuildToolMenus(true);
        EXPECT_EQ(ClaimReport("AddButton").description, std::string(operation) + " failed");
        EXPECT_EQ(ButtonKeys(), (Texts{"KvTM10_Sep1", "btnBBB", "KvTM10_Sep2"})) << operation;
        Probe().RebuildToolMenus(true);
        EXPECT_EQ(ButtonKeys(), whole) << "and nothing is left of it: " << operation;
    }
}

TEST_F(MenusAndButtons, TakeAwayASeparatorThatCannotBeFinished) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    const Texts whole = ButtonKeys();
    for (const char* operation : {"Button.SetOwner", "Button.SetVisible"}) {
        host->FailNext(operation);
        Probe().RebuildToolMenus(true);
        EXPECT_EQ(ClaimReport("RebuildToolMenus").description, std::string(operation) + " failed");
        EXPECT_EQ(ButtonKeys(), Texts{}) << operation;
        Probe().RebuildToolMenus(true);
        EXPECT_EQ(ButtonKeys(), whole) << operation;
    }
}

TEST_F(MenusAndButtons, FindAnUnfinishedButtonThatCouldNotBeTakenAway) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    const Texts whole = ButtonKeys();
    host->FailNext("Button.SetPicture");
    host->FailNext("Buttons.Remove", 1, whole.size()); // behind those that the rebuild removes
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ClaimReport("AddButton").description, "Button.SetPicture failed");
    EXPECT_EQ(Button("btnAAA").owner, "");
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ButtonKeys(), whole);
    EXPECT_EQ(Button("btnAAA").owner, "KvTM10");
}

TEST_F(MenusAndButtons, LeaveNoHalfOfAContextMenu) {
    LoadWith({{.name = "A"}});
    Probe().BuildToolNodes("nodTools", true);
    for (const char* operation : {"MenuItem.SetVisible", "MenuItem.SetEnabled", "MenuItems.Add"}) {
        host->FailNext(operation);
        Event(arvon::EventObject::Node, "tabQRV", {{"key", "A"}}, 7);
        EXPECT_EQ(ClaimReport("HandleNodeEvent").description, std::string(operation) + " failed");
        EXPECT_TRUE(host->Model().ContextMenu().empty()) << operation;
    }
}

TEST_F(MenusAndButtons, ReportASeparatorThatTheMenuRefuses) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    host->FailNext("MenuItems.AddSeparator");
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ClaimReport("BuildToolMenu").number, 1001);
    EXPECT_EQ(MenuKeys(), Texts{"mnuAAA"});
    EXPECT_EQ(ButtonKeys().size(), 3u); // the toolbar is built all the same
}

TEST_F(MenusAndButtons, ReportARebuildThatTheHostRefuses) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    const Texts buttonKeys = ButtonKeys();
    host->FailNext("MenuItems.Clear");
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ClaimReport("RebuildToolMenus").number, 1001);
    EXPECT_EQ(ButtonKeys(), buttonKeys);
}

TEST_F(MenusAndButtons, ReportARebuildWithoutTheMenu) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    host->Framework()->Menus().Remove("mnuTool");
    Probe().RebuildToolMenus(true);
    EXPECT_EQ(ClaimReport("RebuildToolMenus").number, base::errors::ObjectNotSet);
}

TEST_F(MenusAndButtons, AreDisabledAndEnabledButForTheOptions) {
    LoadWith({{.name = "A", .identifier = "AAA"}, {.name = "B", .identifier = "BBB"}});
    EXPECT_TRUE(Probe().SetMenus(false));
    for (const auto& item : ToolMenuItems())
        EXPECT_EQ(item.enabled, item.key == "mnuToolOptions") << item.key;
    EXPECT_TRUE(Probe().SetMenus(true));
    for (const auto& item : ToolMenuItems())
        EXPECT_TRUE(item.enabled) << item.key;
}

TEST_F(MenusAndButtons, AreSetWithoutAskingForHiddenTools) {
    LoadWith({{.name = "A", .identifier = "AAA"},
              {.name = "Hidden", .identifier = "HID", .showInList = "0"},
              {.name = "Nameless", .identifier = ""}});
    Probe().SetMenus(false);
    EXPECT_EQ(CallsOf("MenuItems.Item"),
              (Texts{"MenuItems.Item(\"mnuAAA\")", "MenuItems.Item(\"mnuToolsSep1\")"}));
}

TEST_F(MenusAndButtons, AreNotSetWithoutTheMenu) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    host->Framework()->Menus().Remove("mnuTool");
    ForgetCalls();
    EXPECT_FALSE(Probe().SetMenus(false));
    EXPECT_TRUE(CallsOf("MenuItems.Item").empty());
}

TEST_F(MenusAndButtons, ReportAMenuThatCannotBeSet) {
    LoadWith({{.name = "A", .identifier = "AAA"}});
    host->FailNext("MenuItem.SetEnabled");
    Probe().SetMenus(false);
    EXPECT_EQ(ClaimReport("SetMenus").number, 1001);
}

TEST_F(MenusAndButtons, OfferLaunchingInTheContextMenu) {
    LoadWith({});
    Probe().BuildContextMenu();
    const auto items = host->Model().ContextMenu();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].key, "mnuToolContextTask");
    EXPECT_EQ(items[0].caption, "text 8");
    EXPECT_EQ(items[0].description, "text 9");
    EXPECT_EQ(items[0].owner, "KvTM10");
    EXPECT_TRUE(items[0].visible);
    EXPECT_TRUE(items[0].enabled);
    ASSERT_EQ(items[0].items.size(), 1u);
    EXPECT_EQ(items[0].items[0].key, "mnuLaunch");
    EXPECT_EQ(items[0].items[0].caption, "text 10");
    EXPECT_EQ(items[0].items[0].description, "text 11");
    EXPECT_EQ(items[0].items[0].owner, "KvTM10");
    EXPECT_TRUE(items[0].items[0].visible);
    EXPECT_TRUE(items[0].items[0].enabled);
}

TEST_F(MenusAndButtons, ReplaceOnlyTheirOwnItemsOfTheContextMenu) {
    LoadWith({});
    host->Framework()->ContextMenu().Add("mnuOther", "Other", "", "Other");
    Probe().BuildContextMenu();
    Probe().BuildContextMenu();
    EXPECT_EQ(KeysOf(host->Model().ContextMenu()), (Texts{"mnuOther", "mnuToolContextTask"}));
}

} // namespace kvtm::test
