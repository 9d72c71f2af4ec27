#include "suite/tools/components/PackageComparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace suite {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

base::XmlDocument Document(const std::string& text) {
    base::XmlDocument document;
    document.LoadText(text);
    return document;
}

base::XmlDocument Package(const std::string& vrex, const std::string& version) {
    return Document("<Package><Tool Name='" + vrex + " of " + version + "' VREX='" + vrex + "' version='" +
                    version +
                    "' LastUpdated='2024-05-02'/><Description>Faster &amp; better</Description></Package>");
}

std::vector<std::string> Names(const std::vector<OfferedProgram>& programs) {
    std::vector<std::string> names;
    for (const OfferedProgram& program : programs)
        names.push_back(program.name);
    return names;
}

const char* const Catalogue =
    "<Tools><Tool Name='A' VREX='Tobr43' version='4.2'/><Group><Tool Name='B' VREX='Vn21' "
    "version='11.0.3'><Tool Name='C' VREX='Jx321' version='2.8.1'/></Tool></Group></Tools>";

TEST(PackageComparison, ComparesThePiecesOfVersionsAsNumbers) {
    EXPECT_LT(CompareVersions("3.9", "3.10"), 0);
    EXPECT_GT(CompareVersions("10", "9.9.9"), 0);
    EXPECT_EQ(CompareVersions("4.2", "4.2"), 0);
    EXPECT_EQ(CompareVersions("4.02", "4.2"), 0);
    EXPECT_LT(CompareVersions("99999999999999999998", "99999999999999999999"), 0);
}

TEST(PackageComparison, CountsAMissingPieceAsZero) {
    EXPECT_EQ(CompareVersions("4.2", "4.2.0"), 0);
    EXPECT_LT(CompareVersions("5.1", "5.1.2"), 0);
    EXPECT_EQ(CompareVersions("", "0"), 0);
}

TEST(PackageComparison, ComparesOtherPiecesAsTextWithoutLetterCase) {
    EXPECT_EQ(CompareVersions("4.2b", "4.2B"), 0);
    EXPECT_LT(CompareVersions("4.2a", "4.2b"), 0);
    EXPECT_GT(CompareVersions("4.x", "4.9"), 0);
}

TEST(PackageComparison, OffersOnlyNewerVersionsOfInstalledPrograms) {
    const std::vector<base::XmlDocument> packages = {Package("Tobr43", "4.3"), Package("Vn21", "11.0.3"),
                                                     Package("Jx321", "2.8.0"), Package("Qx31", "1.0")};
    const auto offered = OfferedPrograms(Document(Catalogue), packages, false);
    ASSERT_THAT(Names(offered), ElementsAre("Tobr43 of 4.3"));
    EXPECT_EQ(offered[0].installedVersion, "4.2");
    EXPECT_EQ(offered[0].description, "Faster & better");
}

TEST(PackageComparison, OffersNewProgramsOnlyWhenAskedForThem) {
    const std::vector<base::XmlDocument> packages = {Package("Tobr43", "4.3"), Package("Qx31", "1.0")};
    const auto offered = OfferedPrograms(Document(Catalogue), packages, true);
    ASSERT_THAT(Names(offered), ElementsAre("Qx31 of 1.0"));
    EXPECT_EQ(offered[0].installedVersion, "");
}

TEST(PackageComparison, FindsInstalledToolsAtAnyDepthWithoutLetterCase) {
    const std::vector<base::XmlDocument> packages = {Package("JX321", "3"), Package("vn21", "12")};
    EXPECT_THAT(Names(OfferedPrograms(Document(Catalogue), packages, false)),
                ElementsAre("JX321 of 3", "vn21 of 12"));
    EXPECT_THAT(OfferedPrograms(Document(Catalogue), packages, true), IsEmpty());
}

TEST(PackageComparison, OffersTheNewestOfSeveralPackages) {
    const std::vector<base::XmlDocument> packages = {Package("Tobr43", "4.9"), Package("Vn21", "12"),
                                                     Package("tobr43", "4.10"), Package("Tobr43", "4.3")};
    EXPECT_THAT(Names(OfferedPrograms(Document(Catalogue), packages, false)),
                ElementsAre("tobr43 of 4.10", "Vn21 of 12"));
}

TEST(PackageComparison, PassesOverDocumentsThatAreNoPackages) {
    const std::vector<base::XmlDocument> packages = {Document("<Package/>"),
                                                     Document("<Package><Tool Name='x'/></Package>"),
                                                     Document("<Other><Tool VREX='Qx31'/></Other>")};
    EXPECT_THAT(OfferedPrograms(Document(Catalogue), packages, true), IsEmpty());
}

TEST(PackageComparison, OffersEverythingToAnEmptyCatalogue) {
    const std::vector<base::XmlDocument> packages = {Package("Qx31", "1.0")};
    EXPECT_THAT(Names(OfferedPrograms(Document("<Tools/>"), packages, true)), ElementsAre("Qx31 of 1.0"));
    EXPECT_THAT(OfferedPrograms(Document("<Tools/>"), packages, false), IsEmpty());
}

TEST(PackageComparison, WritesTheOfferAsXml) {
    const OfferedProgram update{"Drainage & Sewers", "Vn40", "2.0", "2024-04-02", "Fill <levels>", "1.9"};
    EXPECT_EQ(OfferXml(std::vector{update}, false),
              "<Updates ShowNew=\"0\"><Tool Name=\"Drainage &amp; Sewers\" VREX=\"Vn40\" version=\"2.0\" "
              "installed=\"1.9\" LastUpdated=\"2024-04-02\">Fill &lt;levels&gt;</Tool></Updates>");
    EXPECT_EQ(OfferXml({}, true), "<Updates ShowNew=\"-1\"/>");
}

} // namespace
} // namespace suite
