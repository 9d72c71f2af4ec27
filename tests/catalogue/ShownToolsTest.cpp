#include "tests/catalogue/PresentationTest.h"

#include "core/contract/EventShapes.h"

namespace kvtm::test {

using arvon::EventObject;
namespace eventKind = arvon::eventKind;

/// Outside programs that tell apart which record was launched: by their arguments.
class ShownTools : public PresentationTest {
protected:
    static CatalogueTool Program(const char* name, const char* vrex, const char* identifier,
                                 const char* argument) {
        return {.name = name,
                .vrex = vrex,
                .identifier = identifier,
                .path = "/bin/true",
                .commandLine = argument};
    }
    /// The arguments of the programs started since the last ForgetCalls.
    Texts Started() const {
        Texts arguments;
        for (const std::string& call : CallsOf("StartProcess")) {
            const std::size_t begin = std::string_view("StartProcess(\"/bin/true ").size();
            arguments.push_back(call.substr(begin, call.find('"', begin) - begin));
        }
        return arguments;
    }
    void Click(std::string_view key) { Event(EventObject::Button, key); }
    void WriteAndReload(const std::vector<CatalogueTool>& tools) {
        installation.WriteTools(tools);
        host->Framework()->Tools().Reload();
    }
};

TEST_F(ShownTools, AButtonStartsTheToolThatItShowsAfterAnotherSort) {
    LoadWith({Program("Run A", "Tobr1", "RUN", "a"), Program("Run Z", "Tobr2", "RUN", "z")});
    ClaimReport("AddMenu"); // the second of that identifier
    ClaimReport("AddButton");
    Probe().SortTools("name", "1", true);
    ASSERT_EQ(ListedNames(), (Texts{"Run Z", "Run A"}));
    ASSERT_EQ(Button("btnRUN").toolTip, "text 16 Run A");
    Click("btnRUN");
    EXPECT_EQ(Started(), Texts{"a"});
}

TEST_F(ShownTools, AButtonStartsTheToolOfItsExactIdentifier) {
    LoadWith({Program("A", "Tobr1", "abc", "lower"), Program("B", "Tobr2", "ABC", "upper")});
    Click("btnABC");
    Click("btnabc");
    EXPECT_EQ(Started(), (Texts{"upper", "lower"}));
}

TEST_F(ShownTools, AButtonsNameInAnotherLetterCaseMeansTheFirst) {
    LoadWith({Program("A", "Tobr1", "abc", "first"), Program("B", "Tobr2", "ABC", "second")});
    Click("BTNaBc");
    EXPECT_EQ(Started(), Texts{"first"});
}

TEST_F(ShownTools, AButtonOfAToolWithoutANameStartsNothing) {
    LoadWith({Program("Last", "Tobr1", "LST", "last"), Program("", "Tobr2", "NON", "nameless")});
    Probe().LastNodeKey() = "Last";
    Click("btnNON");
    EXPECT_EQ(Started(), Texts{});
    EXPECT_EQ(Probe().LastNodeKey(), "Last");
}

TEST_F(ShownTools, AButtonStartsARenamedTool) {
    LoadWith({Program("A", "Tobr1", "AAA", "a")});
    host->Framework()->Tools().Item("A")->Set("Name", base::Value("New"));
    Click("btnAAA");
    EXPECT_EQ(Started(), Texts{"a"});
    EXPECT_EQ(Probe().LastNodeKey(), "New");
}

TEST_F(ShownTools, AButtonStartsItsToolAsTheCatalogueHasItNow) {
    LoadWith({Program("A", "Tobr1", "AAA", "old"), Program("B", "Tobr2", "BBB", "b")});
    WriteAndReload({Program("Other", "Tobr9", "AAA", "other"), Program("Renamed", "Tobr1", "AAA", "new"),
                    Program("A", "Tobr3", "AAA", "namesake")});
    Click("btnAAA");
    EXPECT_EQ(Started(), Texts{"new"});
    ForgetCalls();
    Click("btnBBB");
    EXPECT_EQ(Started(), Texts{}) << "its record is gone";
}

TEST_F(ShownTools, AButtonOfTheComponentsOwnIsNotTakenForTheHosts) {
    LoadWith({Program("A", "Tobr1", "UPDATETOOLS", "a")});
    Click("btnUPDATETOOLS");
    EXPECT_EQ(Started(), Texts{"a"});
    Click("BTNUPDATETOOLS");
    EXPECT_EQ(ToolsNode().view, "ocxToolsUpdate");
}

TEST_F(ShownTools, ASeparatorStartsNothing) {
    LoadWith({Program("A", "Tobr1", "AAA", "a")});
    Click("KvTM10_Sep1");
    EXPECT_EQ(Started(), Texts{});
}

TEST_F(ShownTools, ARowStartsTheToolThatItShowsAndNotAHiddenOneOfItsKey) {
    CatalogueTool hidden = Program("Hidden", "Tobr1", "HID", "hidden");
    hidden.showInList = "0";
    LoadWith({hidden, Program("Shown", "Tobr1", "SHO", "shown")});
    host->NodeEvent("tabQRV", "nodTools");
    host->ListItemEvent("lvTools", "Shown", eventKind::Opened);
    EXPECT_EQ(Started(), Texts{"shown"});
}

TEST_F(ShownTools, ARowStartsItsOwnOfSeveralToolsOfOneName) {
    CatalogueTool hidden = Program("Run", "Tobr1", "HID", "hidden");
    hidden.showInList = "0";
    LoadWith({hidden, Program("Run", "Tobr2", "RUN", "shown")});
    host->NodeEvent("tabQRV", "nodTools");
    host->ListItemEvent("lvTools", "Run", eventKind::Opened);
    EXPECT_EQ(Started(), Texts{"shown"});
}

TEST_F(ShownTools, ARowStartsAToolThatWasRenamedInTheCatalogue) {
    LoadWith({Program("Old", "Tobr1", "AAA", "a")});
    host->NodeEvent("tabQRV", "nodTools");
    WriteAndReload({Program("New", "Tobr1", "AAA", "a")});
    host->ListItemEvent("lvTools", "Old", eventKind::Opened);
    EXPECT_EQ(Started(), Texts{"a"});
    EXPECT_EQ(Probe().LastNodeKey(), "New");
}

TEST_F(ShownTools, ACheckMarkIsTheRowsOwnToolsOfSeveralOfOneName) {
    CatalogueTool hidden = Program("Run", "Tobr1", "HID", "hidden");
    hidden.showInList = "0";
    LoadWith({hidden, Program("Run", "Tobr2", "RUN", "shown")});
    host->NodeEvent("tabQRV", "nodTools");
    host->ListItemEvent("lvTools", "Run", eventKind::CheckChanged, false);
    EXPECT_FALSE(host->Model().Tools()[1].showInList);
    EXPECT_EQ(ListedNames(), Texts{});
}

TEST_F(ShownTools, ANodeStartsTheListedToolAndNotAHiddenNamesake) {
    CatalogueTool hidden = Program("Run", "Tobr1", "HID", "hidden");
    hidden.showInList = "0";
    LoadWith({hidden, Program("Run", "Tobr2", "RUN", "shown")});
    host->NodeEvent("tabQRV", "nodTools", eventKind::Expanded);
    host->NodeEvent("tabQRV", "Run", eventKind::Opened);
    EXPECT_EQ(Started(), Texts{"shown"});
}

TEST_F(ShownTools, AnInProcessToolIsLoadedByItsKeyWhereItsNameMeansAnother) {
    LoadWith({{.name = "Run", .vrex = "V1", .showInList = "0"}, {.name = "Run", .vrex = "V2"}});
    host->NodeEvent("tabQRV", "nodTools");
    host->Refuse("V2");
    host->ListItemEvent("lvTools", "Run", eventKind::Opened);
    EXPECT_EQ(CallsOf("Loader.Load"), Texts{"Loader.Load(\"V2\", \"KvTM10\")"});
    EXPECT_EQ(ClaimBox().text, "text 40\r\n\ttext 47Run");
}

} // namespace kvtm::test
