// The catalogue generator is launched like any program; its end brings the new catalogue.

#include "tests/launch/LaunchFixture.h"

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
