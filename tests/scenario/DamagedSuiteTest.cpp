#include "tests/scenario/ConsoleRun.h"

namespace fs = std::filesystem;

namespace scenario {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Files of the suite that are broken or gone.
class DamagedSuite : public Scenario {
protected:
    static constexpr const char* Catalogue = "drive_c/QUARRA/Arvon/Tools.xml";
    static constexpr const char* Strings = "drive_c/QUARRA/Arvon/resources/1033/Tools.dll";
    static constexpr const char* Options = "drive_c/QUARRA/Arvon/OPTIONS.XML";
    static constexpr const char* ResourcePath = R"(C:\QUARRA\Arvon\resources\1033)";
};

TEST_F(DamagedSuite, WithABrokenCatalogueListsNoTools) {
    for (const char* content : {"", "<Tools><Tool", "\xFF\xFE", "<Other/>"}) {
        SCOPED_TRACE(content);
        Write(Catalogue, content);
        const Transcript run = Run("load\nshow list\nshow tools\nrequest GetResourcePath\n");
        EXPECT_EQ(run.ExitStatus(), 0);
        EXPECT_THAT(run.Replies(), ElementsAre("True", ResourcePath));
        EXPECT_THAT(run.State("list"), IsEmpty());
        EXPECT_THAT(run.State("tools"), IsEmpty());
    }
}

TEST_F(DamagedSuite, TellsWhatIsWrongWithTheCatalogue) {
    Write(Catalogue, "<Tools><Tool");
    EXPECT_THAT(Column(Run("load\n").Of("problem"), "text"), Contains(HasSubstr("Tools.xml")));
}

TEST_F(DamagedSuite, WithoutACatalogueListsNoTools) {
    fs::remove(File(Catalogue));
    const Transcript run = Run("load\nshow list\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.State("list"), IsEmpty());
}

TEST_F(DamagedSuite, WithABrokenRegistryDoesNotLoadAndSaysWhy) {
    Write("registry.reg", std::string(200, '\xFF'));
    const Transcript run = Run("load\nshow listeners\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Errors(), ElementsAre(HasSubstr("registry.reg")));
}

TEST_F(DamagedSuite, WithRegistryLinesThatAreNoneLoadsAndTellsOfThemOnce) {
    Write("registry.reg", "# mine\r\n" + Read("registry.reg") + "\r\nBinPath=C:\\\r\n");
    const Transcript run = Run("load\nshow list\nrequest GetResourcePath\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(Column(run.Of("problem"), "text"),
                ElementsAre(AllOf(HasSubstr("registry.reg"), HasSubstr("# mine")), HasSubstr("BinPath=C:")));
    EXPECT_FALSE(run.State("list").empty());
}

TEST_F(DamagedSuite, WithABrokenStringLibraryLoadsWithoutTexts) {
    const std::string whole = Read(Strings);
    for (const std::size_t size : {std::size_t{0}, std::size_t{64}, whole.size() / 2}) {
        SCOPED_TRACE(size);
        Write(Strings, whole.substr(0, size));
        const Transcript run = Run("load\nshow columns\nrequest GetResourcePath\n");
        EXPECT_EQ(run.ExitStatus(), 0);
        EXPECT_THAT(run.Replies(), ElementsAre("True", ResourcePath));
        EXPECT_THAT(Column(run.State("columns"), "caption"), Each(IsEmpty()));
    }
}

TEST_F(DamagedSuite, WithoutItsStringLibraryHasNoModule) {
    fs::remove(File(Strings));
    const Transcript run = Run("load\nrequest GetResourceModule\n");
    EXPECT_THAT(run.Replies(), ElementsAre("True", "0"));
}

TEST_F(DamagedSuite, KeepsABrokenOptionsFileAsItIs) {
    Write(Options, "<Options><Tool");
    const Transcript run = Run("load\nrequest GetOptionValue ToolID=Tobr43 OptionName=cmbSheet\n"
                               "request SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue=A0\n"
                               "request GetResourcePath\n");
    EXPECT_EQ(run.Replies().back(), ResourcePath);
    EXPECT_EQ(Read(Options), "<Options><Tool");
}

} // namespace scenario
