#include "suite/programs/catalogue/CatalogueBuilder.h"
#include "base/XmlDocument.h"
#include "tests/suite/SuiteCopy.h"

#include <gmock/gmock.h>

namespace suite::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

ProgramDescriptor Descriptor(const std::string& folder, const std::string& text) {
    ProgramDescriptor descriptor{folder, {}};
    descriptor.document.LoadText(text);
    return descriptor;
}

std::string Build(const std::vector<ProgramDescriptor>& descriptors,
                  const std::string& previous = "<Tools/>") {
    base::XmlDocument before;
    before.LoadText(previous);
    return BuildCatalogue(descriptors, before).document.Text();
}

TEST(CatalogueBuilder, KeepsTheOrderAndTheAttributesOfTheDescriptors) {
    EXPECT_EQ(Build({Descriptor("b", "<Program><Tool VREX='B' Name='b' Extra='&lt;'/></Program>"),
                     Descriptor("a", "<Program><Tool Name='a' VREX='A'/></Program>")}),
              "<Tools><Tool VREX=\"B\" Name=\"b\" Extra=\"&lt;\"/><Tool Name=\"a\" VREX=\"A\"/></Tools>");
}

TEST(CatalogueBuilder, PutsTheToolsOfAGroupTogether) {
    EXPECT_EQ(Build({Descriptor("a", "<Program Group='G'><Tool Name='a' VREX='A'/></Program>"),
                     Descriptor("b", "<Program><Tool Name='b' VREX='B'/></Program>"),
                     Descriptor("c", "<Program Group='G'><Tool Name='c' VREX='C'/></Program>")}),
              "<Tools><Group Name=\"G\"><Tool Name=\"a\" VREX=\"A\"/><Tool Name=\"c\" VREX=\"C\"/></Group>"
              "<Tool Name=\"b\" VREX=\"B\"/></Tools>");
}

TEST(CatalogueBuilder, KeepsToolsInsideTools) {
    const std::string nested = "<Tool Name=\"a\" VREX=\"A\"><Tool Name=\"b\" VREX=\"B\"/></Tool>";
    EXPECT_EQ(Build({Descriptor("a", "<Program>" + nested + "</Program>")}), "<Tools>" + nested + "</Tools>");
}

TEST(CatalogueBuilder, PutsAProgramInsideTheToolThatItNamesOrElseIntoItsGroup) {
    const ProgramDescriptor outer = Descriptor("a", "<Program Group='G'><Tool Name='a' VREX='A'/></Program>");
    const ProgramDescriptor inner =
        Descriptor("b", "<Program Group='G' Inside='A'><Tool Name='b' VREX='B'/></Program>");
    EXPECT_EQ(Build({outer, inner}), "<Tools><Group Name=\"G\"><Tool Name=\"a\" VREX=\"A\"><Tool "
                                     "Name=\"b\" VREX=\"B\"/></Tool></Group></Tools>");
    EXPECT_EQ(Build({inner}), "<Tools><Group Name=\"G\"><Tool Name=\"b\" VREX=\"B\"/></Group></Tools>");
}

TEST(CatalogueBuilder, KeepsWhatTheUserChoseToShow) {
    EXPECT_EQ(
        Build({Descriptor("a", "<Program><Tool Name='a' VREX='A' ShowInList='-1'/><Tool Name='b' VREX='B' "
                               "ShowInList='-1'/></Program>")},
              "<Tools><Group><Tool VREX='A' ShowInList='0'/></Group><Tool VREX='B'/></Tools>"),
        "<Tools><Tool Name=\"a\" VREX=\"A\" ShowInList=\"0\"/><Tool Name=\"b\" VREX=\"B\" "
        "ShowInList=\"-1\"/></Tools>");
}

TEST(CatalogueBuilder, TellsWhichNamesAndCommandLinesGoBack) {
    base::XmlDocument previous;
    previous.LoadText("<Tools><Tool Name='x' VREX='A' CommandLine='--x'/><Tool Name='b' VREX='B' "
                      "CommandLine=''/><Tool Name='c' VREX='C' ShowInList='0' version='1'/><Tool VREX='D'/>"
                      "<Tool Name='gone' VREX='E'/></Tools>");
    const std::vector<ProgramDescriptor> descriptors = {
        Descriptor("f", "<Program><Tool Name='a' VREX='A'/><Tool Name='b' VREX='B' CommandLine='--b'/>"
                        "<Tool Name='c' VREX='C' ShowInList='-1' version='2'/><Tool Name='d' VREX='D'/>"
                        "</Program>")};
    const Catalogue catalogue = BuildCatalogue(descriptors, previous);
    EXPECT_THAT(catalogue.document.Text(),
                HasSubstr("<Tool Name=\"a\" VREX=\"A\"/><Tool Name=\"b\" VREX=\"B\" CommandLine=\"--b\"/>"));
    EXPECT_THAT(
        catalogue.dropped,
        ElementsAre("A: the name \"x\" goes back to \"a\", the command line \"--x\" goes back to \"\"",
                    "B: the command line \"\" goes back to \"--b\""));
    EXPECT_THAT(catalogue.problems, IsEmpty());
}

TEST(CatalogueBuilder, NeitherNameNorVrexOfAToolThatIsLeftOutIsTaken) {
    const std::vector<ProgramDescriptor> descriptors = {
        Descriptor("f1", "<Program><Tool Name='a' VREX='A'/></Program>"),
        Descriptor("f2", "<Program><Tool Name='b' VREX='A'/><Tool Name='a' VREX='C'/></Program>"),
        Descriptor("f3", "<Program><Tool Name='b' VREX='B'/><Tool Name='c' VREX='C'/></Program>"),
    };
    const Catalogue catalogue = BuildCatalogue(descriptors, {});
    EXPECT_EQ(catalogue.document.Text(), "<Tools><Tool Name=\"a\" VREX=\"A\"/><Tool Name=\"b\" VREX=\"B\"/>"
                                         "<Tool Name=\"c\" VREX=\"C\"/></Tools>");
    EXPECT_THAT(catalogue.problems, ElementsAre(HasSubstr("\"b\" (A)"), HasSubstr("\"a\" (C)")));
}

TEST(CatalogueBuilder, LeavesOutWhatIsIncompleteOrThereTwiceAndSaysSo) {
    const std::vector<ProgramDescriptor> descriptors = {
        Descriptor("f1", "<Program><Tool Name='a' VREX='A'/><Tool Name='x'/><Tool VREX='X'/></Program>"),
        Descriptor("f2", "<Program><Tool Name='a' VREX='A2'/><Tool Name='a3' VREX='A'/></Program>"),
        Descriptor("f3", "<Programs><Tool Name='c' VREX='C'/></Programs>"),
    };
    const Catalogue catalogue = BuildCatalogue(descriptors, {});
    EXPECT_EQ(catalogue.document.Text(), "<Tools><Tool Name=\"a\" VREX=\"A\"/></Tools>");
    EXPECT_THAT(catalogue.problems,
                ElementsAre(HasSubstr("f1: a tool without \"VREX\""),
                            HasSubstr("f1: a tool without \"Name\""), HasSubstr("f2: the tool \"a\" (A2)"),
                            HasSubstr("f2: the tool \"a3\" (A)"),
                            HasSubstr("f3: the root should be \"Program\", found \"Programs\"")));
}

TEST(CatalogueBuilder, MakesAnEmptyCatalogueOfNothing) {
    EXPECT_EQ(Build({}), "<Tools/>");
}

class BuildToolXml : public SuiteCopy {
protected:
    ProgramEnd RunBuilder(const std::vector<std::string>& arguments = {}) {
        return Run(Quarra("Tobr11/BuildToolXML_Arvon11.exe"), arguments);
    }
    std::string CatalogueText() { return Read(Quarra("Arvon/Tools.xml")); }
    std::vector<std::string> Names() {
        base::XmlDocument catalogue;
        catalogue.LoadFile(Quarra("Arvon/Tools.xml"));
        std::vector<std::string> names;
        for (const base::XmlNode& tool : catalogue.Select("//Tool"))
            names.push_back(tool.Attribute("Name"));
        return names;
    }
};

TEST_F(BuildToolXml, MakesTheCatalogueThatTheSuiteShips) {
    const std::string shipped = CatalogueText();
    const ProgramEnd end = RunBuilder();
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_EQ(CatalogueText(), shipped);

    fs::remove(Quarra("Arvon/Tools.xml"));
    const ProgramEnd first = RunBuilder();
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.errors, "");
    EXPECT_EQ(CatalogueText(), shipped);
}

TEST_F(BuildToolXml, TakesInANewProgramAndDropsOneThatIsGone) {
    fs::create_directory(Quarra("Über"));
    Write(Quarra("Über/Program.xml"), "<Program><Tool Name='Übersicht' VREX='Über'/></Program>");
    fs::remove_all(Quarra("Vn34"));
    const std::vector<std::string> before = Names();
    EXPECT_EQ(RunBuilder().exitCode, 0);
    const std::vector<std::string> after = Names();
    EXPECT_EQ(after.size(), before.size());
    EXPECT_THAT(after, testing::Contains("Übersicht"));
    EXPECT_THAT(after, testing::Not(testing::Contains("Wärmebedarf")));
}

TEST_F(BuildToolXml, OneDamagedProgramDoesNotHideTheOthers) {
    const std::size_t count = Names().size();
    Write(Quarra("Vn34/Program.xml"), "<Program><Tool Name='W");
    const ProgramEnd end = RunBuilder();
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_THAT(end.errors, HasSubstr("Vn34"));
    EXPECT_EQ(Names().size(), count - 1);
}

TEST_F(BuildToolXml, ReplacesACatalogueThatCannotBeRead) {
    const std::string shipped = CatalogueText();
    Write(Quarra("Arvon/Tools.xml"), "<Tools><Tool");
    const ProgramEnd end = RunBuilder();
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_THAT(end.errors, HasSubstr("what the user chose to show or hide cannot be taken over: "));
    EXPECT_THAT(end.errors, HasSubstr("Tools.xml: "));
    EXPECT_EQ(CatalogueText(), shipped);
}

TEST_F(BuildToolXml, TellsWhatWasEditedAndGoesBack) {
    const std::string shipped = CatalogueText();
    std::string edited = shipped;
    edited.replace(edited.find("Name=\"Layout\""), 13, "Name=\"Plans\"");
    Write(Quarra("Arvon/Tools.xml"), edited);
    const ProgramEnd end = RunBuilder();
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(end.errors, "BuildToolXML_Arvon11: Tobr43: the name \"Plans\" goes back to \"Layout\"\n");
    EXPECT_EQ(CatalogueText(), shipped);
}

TEST_F(BuildToolXml, KeepsAToolWhenTheOneThatItStandsInIsGone) {
    fs::remove_all(Quarra("Jx320"));
    EXPECT_EQ(RunBuilder().exitCode, 0);
    EXPECT_THAT(Names(), testing::Contains("Level Book"));
    EXPECT_THAT(Names(), testing::Not(testing::Contains("Site Survey")));
}

TEST_F(BuildToolXml, WorksOnTheInstallationThatItIsGiven) {
    const std::string shipped = CatalogueText();
    fs::create_directories(Outside("other/drive_c/QUARRA/Arvon"));
    Write(Outside("other/registry.reg"), "Windows Registry Editor Version 5.00\r\n");
    EXPECT_EQ(RunBuilder({"--installation", Outside("other").string()}).exitCode, 0);
    EXPECT_THAT(Read(Outside("other/drive_c/QUARRA/Arvon/Tools.xml")), HasSubstr("<Tools/>"));
    EXPECT_EQ(CatalogueText(), shipped);
}

TEST_F(BuildToolXml, WorksOnTheInstallationThatTheEnvironmentNames) {
    fs::create_directories(Outside("other/drive_c/QUARRA/Arvon"));
    Write(Outside("other/registry.reg"), "Windows Registry Editor Version 5.00\r\n");
    const TestVariable installation("ARVON_INSTALLATION", Outside("other").c_str());
    EXPECT_EQ(RunBuilder().exitCode, 0);
    EXPECT_THAT(Read(Outside("other/drive_c/QUARRA/Arvon/Tools.xml")), HasSubstr("<Tools/>"));
}

TEST_F(BuildToolXml, SaysWhyItCannotWork) {
    const ProgramEnd noInstallation = RunBuilder({"--installation", Outside("missing").string()});
    EXPECT_EQ(noInstallation.exitCode, 1);
    EXPECT_THAT(noInstallation.errors, HasSubstr("BuildToolXML_Arvon11: "));
    EXPECT_EQ(RunBuilder({"--installation"}).exitCode, 2);
    EXPECT_EQ(RunBuilder({"something"}).exitCode, 2);
}

} // namespace
} // namespace suite::test
