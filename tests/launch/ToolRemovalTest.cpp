// Removing a program, with the suite's real removal program.

#include "tests/launch/LaunchFixture.h"

#include <algorithm>

using namespace kvtm;
using namespace kvtm::test;
namespace fs = std::filesystem;

namespace {

class ToolRemoval : public LaunchingTest {
protected:
    /// "Demo" (X1) is installed in a folder of its own; "Stay" is another tool. All are in the list.
    void LoadTools(const char* programType = "QUARRA") {
        installation.Write("X1/Demo.exe", "a program");
        installation.Write("X1/Data/a.txt", "data");
        installation.Write("X1/Install.log", "Demo.exe\r\nData\\a.txt\r\nData\\\r\nInstall.log\r\n");
        LoadSuite({{.name = "Demo", .vrex = "X1", .identifier = "DEM01", .programType = programType},
                   {.name = "Stay", .vrex = "X2", .identifier = "STA02"}});
        host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
        host->NodeEvent("tabQRV", "nodTools");
        ForgetCalls();
    }
    void PutRemovalProgram() const { Put(REMOVAL_PROGRAM, "Enviro/KT4-RemoveProgram.exe"); }
    void RemoveDemo() {
        host->SelectRow("lvTools", "Demo");
        Event(arvon::EventObject::Task, "tskRemoveTool");
    }

    Strings NamesInHost() const {
        Strings names;
        for (const auto& record : host->Model().Tools())
            names.push_back(record.name);
        return names;
    }
    bool HasItem(const std::string& key) const {
        for (const auto& menu : host->Model().Menus())
            for (const auto& item : menu.items)
                if (menu.key == "mnuTool" && item.key == key) return true;
        return false;
    }
    bool HasButton(const std::string& key) const {
        const auto buttons = host->Model().Toolbar();
        return std::any_of(buttons.begin(), buttons.end(), [&](const auto& b) { return b.key == key; });
    }
    void ExpectDemoGone() const {
        EXPECT_EQ(RowTexts(), Strings{"Stay"});
        EXPECT_EQ(NamesInHost(), Strings{"Stay"});
        EXPECT_EQ(ListedNames(), Strings{"Stay"});
        EXPECT_EQ(NodeKeys(), Strings{"Stay"});
        EXPECT_FALSE(HasItem("mnuDEM01"));
        EXPECT_FALSE(HasButton("btnDEM01"));
        EXPECT_EQ(installation.Read("Arvon/Tools.xml").find("Demo"), std::string::npos);
        // and nothing else is
        EXPECT_TRUE(HasItem("mnuSTA02"));
        EXPECT_TRUE(HasButton("btnSTA02"));
    }
    void ExpectDemoStays() const {
        EXPECT_EQ(RowTexts(), (Strings{"Demo", "Stay"}));
        EXPECT_EQ(NamesInHost(), (Strings{"Demo", "Stay"}));
        EXPECT_EQ(ListedNames(), (Strings{"Demo", "Stay"}));
        EXPECT_EQ(NodeKeys(), (Strings{"Demo", "Stay"}));
        EXPECT_TRUE(HasItem("mnuDEM01"));
        EXPECT_TRUE(HasButton("btnDEM01"));
        EXPECT_NE(installation.Read("Arvon/Tools.xml").find("Demo"), std::string::npos);
    }
    void ExpectProgramMissingBox() {
        const Box box = ClaimBox();
        EXPECT_EQ(box.text, "Could not locate 'RemoveProgram' Program");
        EXPECT_EQ(box.style, 16);
        EXPECT_EQ(box.title, "KvTM10");
    }
};

} // namespace

TEST_F(ToolRemoval, TakesTheProgramAndAllThatShowsItAway) {
    LoadTools();
    PutRemovalProgram();
    RemoveDemo();
    EXPECT_FALSE(fs::exists(installation.File("X1")));
    EXPECT_TRUE(fs::exists(installation.File("Enviro/ResultOK.txt")));
    ExpectDemoGone();
}

TEST_F(ToolRemoval, WritesTheInstructionInFourLines) {
    LoadTools();
    PutRemovalProgram();
    installation.Write("Enviro/Remove.ini", std::string(5000, 'x'));
    RemoveDemo();
    EXPECT_EQ(installation.Read("Enviro/Remove.ini"), "[Program]\r\nVREX=X1\r\nName=Demo\r\n"
                                                      "Logfile=C:\\QUARRA\\X1\\Install.log\r\n");
}

TEST_F(ToolRemoval, WritesTheInstructionInTheAnsiCodePage) {
    LoadTools();
    Probe().RemoveTool("X9", "W\xc3\xa4rme \xc5\x81", "QUARRA");
    ExpectProgramMissingBox();
    EXPECT_EQ(installation.Read("Enviro/Remove.ini"), "[Program]\r\nVREX=X9\r\nName=W\xe4rme L\r\n"
                                                      "Logfile=C:\\QUARRA\\X9\\Install.log\r\n");
}

TEST_F(ToolRemoval, IsOnlyForFourTypesOfProgram) {
    LoadTools("Plexa2");
    PutRemovalProgram();
    RemoveDemo();
    const Box box = ClaimBox();
    EXPECT_EQ(box.text, "Only programs whose Program Type is 'ORDIX', 'Vantor', 'Plexa', and 'QUARRA' can be "
                        "removed from here.");
    EXPECT_EQ(box.style, 0);
    EXPECT_EQ(box.title, "KvTM10");
    EXPECT_FALSE(fs::exists(installation.File("Enviro/Remove.ini")));
    ExpectDemoStays();
}

TEST_F(ToolRemoval, TakesATypeInAnyLetterCaseWithBlanks) {
    LoadTools(" plexa ");
    PutRemovalProgram();
    RemoveDemo();
    ExpectDemoGone();
}

TEST_F(ToolRemoval, ChangesNothingWhenTheRemovalProgramFails) {
    LoadTools();
    PutRemovalProgram();
    fs::remove(installation.File("X1/Install.log"));
    RemoveDemo();
    EXPECT_FALSE(fs::exists(installation.File("Enviro/ResultOK.txt")));
    EXPECT_TRUE(fs::exists(installation.File("X1/Demo.exe")));
    ExpectDemoStays();
}

TEST_F(ToolRemoval, DeletesNothingOutsideTheProgramsFolder) {
    LoadTools();
    PutRemovalProgram();
    installation.Write("X2/Keep.exe", "another program");
    installation.Write("X1/Install.log", "Demo.exe\r\n..\\X2\\Keep.exe\r\nC:\\QUARRA\\X2\\Keep.exe\r\n"
                                         "Data\\..\\..\\X2\\Keep.exe\r\n");
    RemoveDemo();
    EXPECT_EQ(installation.Read("X2/Keep.exe"), "another program");
    ExpectDemoStays();
}

TEST_F(ToolRemoval, TellsOfAMissingRemovalProgramAndChangesNothing) {
    LoadTools();
    RemoveDemo();
    ExpectProgramMissingBox();
    EXPECT_TRUE(fs::exists(installation.File("Enviro/Remove.ini")));
    ExpectDemoStays();
}

TEST_F(ToolRemoval, CountsAResultOfAnEarlierRemoval) {
    LoadTools();
    installation.Write("Enviro/ResultOK.txt", "");
    RemoveDemo();
    ExpectProgramMissingBox();
    EXPECT_TRUE(fs::exists(installation.File("X1/Demo.exe")));
    EXPECT_TRUE(fs::exists(installation.File("Enviro/ResultOK.txt"))) << "it is never deleted here";
    ExpectDemoGone();
}

TEST_F(ToolRemoval, CountsAResultOfAnEarlierRemovalWhenTheProgramCannotBeStarted) {
    LoadTools();
    installation.Write("Enviro/KT4-RemoveProgram.exe", "MZ, but not for this system");
    installation.Write("Enviro/ResultOK.txt", "");
    RemoveDemo();
    ExpectDemoGone();
}

TEST_F(ToolRemoval, ReportsAnInstructionThatCannotBeWritten) {
    LoadTools();
    PutRemovalProgram();
    fs::create_directories(installation.File("Enviro/Remove.ini"));
    RemoveDemo();
    EXPECT_EQ(ClaimReport("HandleTaskEvent").number, base::errors::FileAccess);
    EXPECT_TRUE(fs::exists(installation.File("X1/Demo.exe")));
    ExpectDemoStays();
}

TEST_F(ToolRemoval, ReportsAMissingSharedFolder) {
    LoadTools();
    installation.Write("Enviro/ResultOK.txt", "");
    fs::remove_all(installation.File("Enviro"));
    RemoveDemo();
    EXPECT_EQ(ClaimReport("HandleTaskEvent").number, base::errors::PathNotFound);
    ExpectDemoStays();
}

TEST_F(ToolRemoval, RunsTheRemovalProgramByItsPathAlone) {
    LoadTools();
    // a double that tells how it was called
    installation.Write("Enviro/KT4-RemoveProgram.exe",
                       "#!/bin/sh\necho \"$#\" > \"$(dirname \"$0\")/arguments.txt\"\n");
    fs::permissions(installation.File("Enviro/KT4-RemoveProgram.exe"), fs::perms::owner_exec,
                    fs::perm_options::add);
    RemoveDemo();
    EXPECT_EQ(installation.Read("Enviro/arguments.txt"), "0\n");
    ExpectDemoStays();
}

namespace {

/// Makes temporary folders below one whose name has a blank.
class BelowABlank {
    TestFolder folder_;
    std::filesystem::path withBlank_ = folder_ / "the suite";
    bool made_ = std::filesystem::create_directory(withBlank_);
    TestVariable variable_{"TMPDIR", withBlank_.c_str()};
};
class ToolRemovalBelowABlank : private BelowABlank, public ToolRemoval {};

} // namespace

TEST_F(ToolRemovalBelowABlank, FindsTheRemovalProgram) {
    LoadTools();
    ASSERT_NE(installation.Folder().string().find(' '), std::string::npos);
    PutRemovalProgram();
    RemoveDemo();
    ExpectDemoGone();
}

TEST_F(ToolRemoval, WaitsForTheRemovalProgramToEnd) {
    LoadTools();
    installation.Write("Enviro/KT4-RemoveProgram.exe",
                       "#!/bin/sh\nsleep 0.3\n: > \"$(dirname \"$0\")/ResultOK.txt\"\n");
    fs::permissions(installation.File("Enviro/KT4-RemoveProgram.exe"), fs::perms::owner_exec,
                    fs::perm_options::add);
    RemoveDemo();
    ExpectDemoGone();
}

TEST_F(ToolRemoval, BringsTheViewUpToDateInOrder) {
    LoadTools();
    PutRemovalProgram();
    RemoveDemo();
    const char* steps[] = {"Buttons.Remove", "MenuItems.Remove", "Tools.Remove",
                           "Nodes.Remove",   "ListView.Clear",   "Node.Refresh"};
    std::size_t from = 0;
    for (const char* step : steps) {
        const auto found = std::find_if(Calls().begin() + static_cast<std::ptrdiff_t>(from), Calls().end(),
                                        [&](const std::string& call) { return call.starts_with(step); });
        ASSERT_NE(found, Calls().end()) << step << " did not come, or too early";
        from = static_cast<std::size_t>(found - Calls().begin());
    }
    EXPECT_EQ(CallsOf("Buttons.Remove").front(), "Buttons.Remove(\"btnDEM01\")");
    EXPECT_EQ(CallsOf("Node.Select").back(), "Node.Select(\"nodTools\")");
}

TEST_F(ToolRemoval, LeavesTheOtherOfTwoToolsOfOneName) {
    LoadSuite({{.name = "Demo", .vrex = "X2", .identifier = "DEM02", .programType = "QUARRA"},
               {.name = "Demo", .vrex = "X1", .identifier = "DEM01", .programType = "QUARRA"},
               {.name = "Stay"}});
    EXPECT_EQ(ClaimReport("LoadToolsCollection").number, base::errors::DuplicateKey);
    host->NodeEvent("tabQRV", "nodTools");
    installation.Write("Enviro/ResultOK.txt", "");
    Probe().RemoveTool("X1", "Demo", "QUARRA");
    ExpectProgramMissingBox();
    const auto expectOnlyTheOther = [&] {
        EXPECT_EQ(ListedNames(), (Strings{"Demo", "Stay"}));
        ASSERT_EQ(host->Model().Tools().size(), 2u);
        EXPECT_EQ(host->Model().Tools()[0].vrex, "X2");
        EXPECT_TRUE(HasItem("mnuDEM02"));
        EXPECT_TRUE(HasButton("btnDEM02"));
        EXPECT_FALSE(HasButton("btnDEM01"));
    };
    expectOnlyTheOther();
    host->ClickTask("tskShowAll");
    expectOnlyTheOther();
    host->Unload();
    host->Framework()->Tools().Reload();
    ASSERT_TRUE(Load());
    expectOnlyTheOther();
}

TEST_F(ToolRemoval, ShowsAToolThatHadToStandBack) {
    LoadSuite({{.name = "Demo", .vrex = "X1", .identifier = "DEM01", .programType = "QUARRA"},
               {.name = "Demo", .vrex = "X2", .identifier = "DEM02", .programType = "QUARRA"}});
    ClaimReport("LoadToolsCollection");
    host->NodeEvent("tabQRV", "nodTools");
    ASSERT_FALSE(HasButton("btnDEM02"));
    installation.Write("Enviro/ResultOK.txt", "");
    Probe().RemoveTool("X1", "Demo", "QUARRA");
    ExpectProgramMissingBox();
    EXPECT_EQ(ListedNames(), Strings{"Demo"});
    EXPECT_EQ(NodeKeys(), Strings{"Demo"});
    EXPECT_TRUE(HasItem("mnuDEM02"));
    EXPECT_TRUE(HasButton("btnDEM02"));
    EXPECT_FALSE(HasButton("btnDEM01"));
}

TEST_F(ToolRemoval, GoesOnWhereButtonOrMenuItemStay) {
    for (const char* operation : {"Buttons.Item", "Buttons.Remove", "Menus.Item", "MenuItems.Remove"}) {
        LoadTools();
        installation.Write("Enviro/ResultOK.txt", "");
        host->FailNext(operation);
        Probe().RemoveTool("X1", "Demo", "QUARRA");
        ExpectProgramMissingBox();
        EXPECT_EQ(ClaimReport("RemoveTool").description, std::string(operation) + " failed");
        ExpectDemoGone();
        host.reset();
    }
}

TEST_F(ToolRemoval, LeavesTheEntryOfAnotherToolOfThatName) {
    LoadSuite({{.name = "Demo", .vrex = "X9", .identifier = "OLD09", .showInList = "0"},
               {.name = "Demo", .vrex = "X1", .identifier = "DEM01", .programType = "QUARRA"}});
    host->NodeEvent("tabQRV", "nodTools");
    installation.Write("Enviro/ResultOK.txt", "");
    RemoveDemo();
    ExpectProgramMissingBox();
    EXPECT_FALSE(HasItem("mnuDEM01"));
    EXPECT_FALSE(HasButton("btnDEM01"));
    EXPECT_EQ(ListedNames(), Strings{});
    EXPECT_NE(installation.Read("Arvon/Tools.xml").find("X9"), std::string::npos);
}

TEST_F(ToolRemoval, ComparesNamesExactly) {
    LoadTools();
    installation.Write("Enviro/ResultOK.txt", "");
    Probe().RemoveTool("X1", "demo", "QUARRA");
    ExpectProgramMissingBox();
    ExpectDemoStays();
}

TEST_F(ToolRemoval, DoesWithoutButtonAndMenuItem) {
    LoadTools();
    PutRemovalProgram();
    host->Framework()->Buttons().Remove("btnDEM01");
    host->Framework()->Menus().Item("mnuTool")->Items().Remove("mnuDEM01");
    RemoveDemo();
    ExpectDemoGone();
}

TEST_F(ToolRemoval, UpdatesTheViewEvenWhenTheCatalogueCannotBeSaved) {
    LoadTools();
    PutRemovalProgram();
    host->FailNext("Tools.Save");
    RemoveDemo();
    EXPECT_EQ(ClaimReport("RemoveTool").description, "Tools.Save failed");
    EXPECT_EQ(RowTexts(), Strings{"Stay"});
    EXPECT_EQ(NodeKeys(), Strings{"Stay"});
}

TEST_F(ToolRemoval, RemovesOneProgramAfterAnother) {
    LoadTools();
    PutRemovalProgram();
    installation.Write("X2/Stay.exe", "a program");
    installation.Write("X2/Install.log", "Stay.exe\r\nInstall.log\r\n");
    RemoveDemo();
    host->SelectRow("lvTools", "Stay");
    Event(arvon::EventObject::Task, "tskRemoveTool");
    EXPECT_EQ(RowTexts(), Strings{});
    EXPECT_FALSE(fs::exists(installation.File("X2")));
}
