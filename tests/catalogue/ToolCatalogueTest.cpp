#include "tests/support/ComponentFixture.h"

#include <fstream>

namespace kvtm::test {

class ToolCatalogue : public ComponentTest {
protected:
    std::vector<std::string> ListedNames() {
        std::vector<std::string> names;
        for (const ToolRecord& record : Probe().ListedTools())
            names.push_back(record->Name());
        return names;
    }
    void WriteCatalogue(std::string_view xml) { installation.Write("Arvon/Tools.xml", xml); }
};

TEST_F(ToolCatalogue, ListsWhatIsMeantForTheListInItsOrder) {
    LoadWith({{.name = "Pipes"},
              {.name = "Frame", .classification = "Manager"},
              {.name = "Layout"},
              {.name = "Base", .classification = "Core Tool"},
              {.name = "Hidden", .showInList = "0"},
              {.name = "Other", .classification = "manager"}});
    EXPECT_TRUE(Probe().LoadToolsCollection()); // the load sorted them
    EXPECT_EQ(ListedNames(), (std::vector<std::string>{"Pipes", "Layout", "Other"}));
    EXPECT_NE(Probe().ListedTools().Find("Layout"), nullptr);
}

TEST_F(ToolCatalogue, KeepsHiddenToolsOutEvenWhenAllAreShown) {
    LoadWith({{.name = "Layout"}, {.name = "Hidden", .showInList = "0"}});
    Probe().ShowAllTools() = true;
    EXPECT_TRUE(Probe().LoadToolsCollection());
    EXPECT_EQ(ListedNames(), std::vector<std::string>{"Layout"});
}

TEST_F(ToolCatalogue, EndsAtARepeatedNameAndKeepsWhatCameBefore) {
    LoadWith({});
    installation.WriteTools({{.name = "A"}, {.name = "B"}, {.name = "A"}, {.name = "C"}});
    host->Framework()->Tools().Reload();
    EXPECT_TRUE(Probe().LoadToolsCollection());
    EXPECT_EQ(ClaimReport("LoadToolsCollection").number, base::errors::DuplicateKey);
    EXPECT_EQ(ListedNames(), (std::vector<std::string>{"A", "B"}));
}

TEST_F(ToolCatalogue, ReportsAHostThatCannotGiveItsTools) {
    LoadWith({{.name = "A"}, {.name = "B"}});
    host->FailNext("Tools.Item");
    EXPECT_TRUE(Probe().LoadToolsCollection());
    EXPECT_EQ(ClaimReport("LoadToolsCollection").number, 1001);
    EXPECT_TRUE(ListedNames().empty());
}

TEST_F(ToolCatalogue, TellsOnceOfToolsAddedSinceTheBaseline) {
    LoadWith({{.name = "A"}, {.name = "B"}, {.name = "C"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(false), 3);
    installation.WriteTools({{.name = "A"}, {.name = "B"}, {.name = "C"}, {.name = "D"}, {.name = "E"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 5);
    EXPECT_EQ(ClaimBox().text, "text 42\r\ntext 43\r\ntext 44");
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 5);
}

TEST_F(ToolCatalogue, TellsOfAnyToolBeforeABaseline) {
    LoadWith({{.name = "A"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 1);
    ClaimBox();
}

TEST_F(ToolCatalogue, SaysNothingWhenTheCountFell) {
    LoadWith({{.name = "A"}, {.name = "B"}});
    Probe().CountToolsInCatalog(false);
    installation.WriteTools({{.name = "A"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 1);
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 2);
    ClaimBox();
}

TEST_F(ToolCatalogue, CountsToolsAtAnyDepth) {
    LoadWith({});
    WriteCatalogue(
        "<Tools><Tool Name='A'><Tool Name='B'/></Tool><Group><Sub><Tool Name='C'/></Sub></Group></Tools>");
    EXPECT_EQ(Probe().CountToolsInCatalog(false), 3);
}

TEST_F(ToolCatalogue, CountsNothingInAMissingOrBrokenFileAndKeepsTheBaseline) {
    LoadWith({{.name = "A"}, {.name = "B"}});
    Probe().CountToolsInCatalog(false);
    for (const char* broken : {"", "<Tools><Tool", "no xml", "<!DOCTYPE a []><Tools/>"}) {
        WriteCatalogue(broken);
        EXPECT_EQ(Probe().CountToolsInCatalog(true), 0) << broken;
    }
    std::filesystem::remove(installation.File("Arvon/Tools.xml"));
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 0);
    installation.WriteTools({{.name = "A"}, {.name = "B"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 2);
}

TEST_F(ToolCatalogue, CountsNothingInACatalogueWithoutTools) {
    LoadWith({{.name = "A"}});
    Probe().CountToolsInCatalog(false);
    WriteCatalogue("<Tools/>");
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 0);
    installation.WriteTools({{.name = "A"}});
    EXPECT_EQ(Probe().CountToolsInCatalog(true), 1);
    ClaimBox();
}

} // namespace kvtm::test
