// The catalogue generator is launched like any program; its end brings the new catalogue.

#include "core/contract/EventShapes.h"
#include "tests/launch/LaunchFixture.h"

#include <utility>

using namespace kvtm;
using namespace kvtm::test;

namespace {

class CatalogueGenerator : public LaunchingTest {
protected:
    void EndOfGenerator() { ProcessEnded("C:\\QUARRA\\Tobr11\\BuildToolXML_Arvon11.exe", 9); }
};

} // namespace

TEST_F(CatalogueGenerator, BringsTheNewToolIntoHostAndListAndTellsOnce) {
    LoadSuite({{.name = "A"}});
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    EndOfGenerator();
    EXPECT_EQ(ClaimBox().text, "text 42\r\ntext 43\r\ntext 44");
    EXPECT_EQ(host->Model().Tools().size(), 2u);
    EXPECT_EQ(ListedNames(), (Strings{"A", "B"}));

    EndOfGenerator(); // nothing new: no message
}

TEST_F(CatalogueGenerator, TakesAwayWhatTheNewCatalogueLacksWithoutAWord) {
    LoadSuite({{.name = "A"}, {.name = "B"}});
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "B"}});
    EndOfGenerator();
    EXPECT_EQ(ListedNames(), Strings{"B"});
}

TEST_F(CatalogueGenerator, LeavesTheScreenAndTheCurrentToolAsTheyAre) {
    LoadSuiteInFront({{.name = "B", .identifier = "BBB"}, {.name = "C"}});
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "C");
    host->Framework()->Tabs().Add(2, "tabOther", "Other", nullptr, true)->BringForward();
    host->Framework()->BringPageForward("Other");
    installation.WriteTools({{.name = "C"}, {.name = "A", .identifier = "AAA"}});
    const Strings rows = RowTexts(), nodes = NodeKeys(), items = EnabledToolItems();
    ForgetCalls();
    EndOfGenerator();
    ClaimBox();

    EXPECT_EQ(ListedNames(), (Strings{"A", "C"})) << "in the stored order";
    EXPECT_EQ(Probe().LastNodeKey(), "C");
    EXPECT_EQ(host->Model().Tabs().front().selected, "C");
    EXPECT_EQ(host->Model().CurrentControl(), "tabOther");
    EXPECT_EQ(host->Model().Page(), "Other");
    EXPECT_EQ(RowTexts(), rows);
    EXPECT_EQ(NodeKeys(), nodes);
    EXPECT_EQ(EnabledToolItems(), items);
    for (const char* operation : {"Node.Select", "Node.Release", "Node.Refresh", "Tab.BringForward",
                                  "BringPageForward", "ListView.Clear", "MenuItems.Clear", "Nodes.Remove"})
        EXPECT_TRUE(CallsOf(operation).empty()) << operation;
    EXPECT_NE(Request(request::GetToolProperties), "") << "those of the tool that is still selected";
}

TEST_F(CatalogueGenerator, IsOnlyCountedAfterUnloading) {
    LoadSuite({{.name = "A"}});
    Probe().CountToolsInCatalog(false);
    host->Unload();
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    ForgetCalls();
    EndOfGenerator();
    EXPECT_EQ(ClaimBox().text, "text 42\r\ntext 43\r\ntext 44");
    EXPECT_EQ(Probe().KnownToolCount(), 2);
    EXPECT_EQ(host->Model().Tools().size(), 1u) << "the host was not asked to read";
    EXPECT_EQ(ListedNames(), Strings{"A"});
    EXPECT_TRUE(CallsOf("Tools.Reload").empty());

    EXPECT_TRUE(Load()); // and from the next load on it is taken again
    EndOfGenerator();
    EXPECT_EQ(ListedNames(), (Strings{"A", "B"}));
}

TEST_F(CatalogueGenerator, ThatEndsWhileTheUserReadsBringsNoFalseNewsLater) {
    int boxes = 0;
    arvon::host::Hooks hooks;
    hooks.showMessage = [&](const std::string&, std::int32_t, const std::string&) {
        if (++boxes > 1) return;
        installation.WriteTools({{.name = "A"}, {.name = "B"}, {.name = "C"}});
        EndOfGenerator();
    };
    LoadWith({{.name = "A"}}, hooks);
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    EndOfGenerator();
    EXPECT_EQ(boxes, 2);
    EXPECT_EQ(Probe().KnownToolCount(), 3);
    EndOfGenerator();
    EXPECT_EQ(boxes, 2) << "nothing new since";
    ClaimBox();
    ClaimBox();
}

TEST_F(CatalogueGenerator, ThatTakesToolsAwayWhileTheUserReadsHasTheLastWord) {
    bool isNested = false;
    arvon::host::Hooks hooks;
    hooks.showMessage = [&](const std::string&, std::int32_t, const std::string&) {
        if (std::exchange(isNested, true)) return;
        installation.WriteTools({{.name = "A"}});
        EndOfGenerator();
    };
    LoadWith({{.name = "A"}}, hooks);
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    EndOfGenerator();
    ClaimBox();
    EXPECT_EQ(Probe().KnownToolCount(), 1);
}
