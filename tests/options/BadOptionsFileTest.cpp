#include "tests/options/OptionsFixture.h"

#include "core/Names.h"
#include "tests/support/LocalSocket.h"
#include "tests/support/OrdinaryUser.h"

#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/stat.h>

namespace kvtm::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// A port of this machine that somebody may be lured to.
class Port {
public:
    std::string Url() const { return "http://127.0.0.1:" + std::to_string(socket_.Port()) + "/x"; }
    bool WasVisited() const {
        pollfd waiting{socket_.Descriptor(), POLLIN, 0};
        return ::poll(&waiting, 1, 0) != 0;
    }

private:
    LocalSocket socket_;
};

std::string Deep(std::size_t levels) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i)
        text += "<Options>";
    for (std::size_t i = 0; i < levels; ++i)
        text += "</Options>";
    return text;
}

std::string EntityBomb() {
    std::string text = "<!DOCTYPE Options [<!ENTITY e0 \"ha\">";
    for (int i = 1; i < 30; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY e" + std::to_string(i) + " \"" + inner + inner + "\">";
    }
    return text +
           "]><Options><Tool ID=\"a\"><Option><Name>n</Name><Value>&e29;</Value></Option></Tool></Options>";
}

class BadOptionsFile : public OptionsTest {
protected:
    /// Loads the tool manager on the file as it stands; what loading reports comes from reading options.
    void LoadOnBadFile() {
        CreateHost();
        CreateTool();
        ASSERT_TRUE(Load());
        ClaimReadingReports();
    }

    void ClaimReadingReports() {
        for (const Report& report : ClaimReports()) {
            EXPECT_THAT(report.procedure, AnyOf(HasSubstr(".cToolMain.getOptionData"),
                                                HasSubstr(".GetOptionValue"), HasSubstr(".SetToolOrder")))
                << report.description;
            EXPECT_NE(report.number, 0);
        }
    }

    /// Nothing is read and nothing written, and every answer is reported.
    void ExpectNoOptions() {
        EXPECT_EQ(Get("a", "n"), "False");
        ClaimReport("cToolMain.getOptionData");
        ClaimReport("GetOptionValue");
        EXPECT_EQ(Get("SOV02", "optToolSortOrder"), "False");
        ClaimReadingReports();
        EXPECT_EQ(Set("a", "n", "2", "True"), "False");
        ClaimReport("SetOptionValue");
        EXPECT_EQ(Probe().getOptionData(""), "");
        ClaimReport("cToolMain.getOptionData");
    }

    void ExpectRefused(std::string_view text) {
        installation.Write(file, text);
        LoadOnBadFile();
        ExpectNoOptions();
        EXPECT_TRUE(FileText() == text) << "the damaged file was changed";
    }

    static std::string Good() { return Options(SortOptions() + Tool("a", Option("n", "1"))); }
};

TEST_F(BadOptionsFile, Missing) {
    fs::remove(installation.File(file));
    LoadOnBadFile();
    ExpectNoOptions();
    EXPECT_FALSE(fs::exists(installation.File(file)));
}

TEST_F(BadOptionsFile, Empty) {
    ExpectRefused("");
}
TEST_F(BadOptionsFile, BlanksOnly) {
    ExpectRefused(" \r\n\t");
}
TEST_F(BadOptionsFile, AllNul) {
    ExpectRefused(std::string(4096, '\0'));
}
TEST_F(BadOptionsFile, NotWellFormed) {
    ExpectRefused("<Options><Tool></Options>");
}
TEST_F(BadOptionsFile, NoXml) {
    ExpectRefused("[Options]\nn=1\n");
}
TEST_F(BadOptionsFile, IllFormedUtf8) {
    ExpectRefused("<Options><Tool ID=\"\xC3\"/></Options>");
}
TEST_F(BadOptionsFile, OtherRoot) {
    ExpectRefused("<Settings/>");
}
TEST_F(BadOptionsFile, OptionsWithinOptions) {
    ExpectRefused("<Options><Options/></Options>");
}
TEST_F(BadOptionsFile, AHundredThousandLevels) {
    ExpectRefused(Deep(100'000));
}
TEST_F(BadOptionsFile, EntityBomb) {
    ExpectRefused(test::EntityBomb());
}

TEST_F(BadOptionsFile, CutShortAnywhere) {
    const std::string whole = Good();
    for (const std::size_t length : {1ul, 9ul, whole.size() / 2, whole.size() - 1}) {
        SCOPED_TRACE(length);
        ExpectRefused(whole.substr(0, length));
        host->Unload();
        tool.reset();
        host.reset();
    }
}

TEST_F(BadOptionsFile, ADirectory) {
    fs::remove(installation.File(file));
    fs::create_directory(installation.File(file));
    LoadOnBadFile();
    ExpectNoOptions();
    EXPECT_TRUE(fs::is_directory(installation.File(file)));
}

TEST_F(BadOptionsFile, APipe) {
    fs::remove(installation.File(file));
    ASSERT_EQ(::mkfifo(installation.File(file).c_str(), 0600), 0);
    LoadOnBadFile();
    ExpectNoOptions();
}

TEST_F(BadOptionsFile, ALinkToItself) {
    fs::remove(installation.File(file));
    fs::create_symlink("OPTIONS.XML", installation.File(file));
    LoadOnBadFile();
    ExpectNoOptions();
}

TEST_F(BadOptionsFile, Unreadable) {
    installation.Write(file, Good());
    fs::permissions(installation.File(file), fs::perms::none);
    {
        const OrdinaryUser user(installation.Folder());
        LoadOnBadFile();
        ExpectNoOptions();
    }
    fs::permissions(installation.File(file), fs::perms(0600));
    EXPECT_EQ(FileText(), Good());
    EXPECT_EQ(Get("a", "n"), "1"); // it is read as soon as it can be
}

TEST_F(BadOptionsFile, ReadOnly) {
    installation.Write(file, Good());
    fs::permissions(installation.File(file), fs::perms(0444));
    const OrdinaryUser user(installation.Folder());
    LoadOnBadFile();
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_EQ(Set("a", "n", "2"), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, base::errors::FileAccess);
    EXPECT_EQ(FileText(), Good());
}

TEST_F(BadOptionsFile, ExternalEntitiesReachNobody) {
    const Port port;
    const fs::path pipe = installation.Folder() / "pipe"; // opening it would block for good
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& target : {"file://" + pipe.string(), pipe.string(), port.Url()}) {
        for (const std::string& declaration :
             {"<!DOCTYPE Options [<!ENTITY x SYSTEM \"" + target + "\">]>",
              "<!DOCTYPE Options SYSTEM \"" + target + "\">",
              "<!DOCTYPE Options [<!ENTITY % x SYSTEM \"" + target + "\"> %x;]>"}) {
            SCOPED_TRACE(declaration);
            const bool isEntity = declaration.find("ENTITY x") != std::string::npos;
            ExpectRefused(declaration + "<Options><Tool ID=\"a\"><Option><Name>n</Name><Value>" +
                          (isEntity ? "&x;" : "") + "</Value></Option></Tool></Options>");
            host->Unload();
            tool.reset();
            host.reset();
        }
    }
    EXPECT_FALSE(port.WasVisited());
}

TEST_F(BadOptionsFile, AStyleSheetOrInclusionIsNotFollowed) {
    const Port port;
    installation.Write(file, "<?xml-stylesheet href=\"" + port.Url() + "\"?><Options>" + SortOptions() +
                                 "<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"" +
                                 port.Url() + "\"/>" + Tool("a", Option("n", "1")) + "</Options>");
    LoadOnBadFile();
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_FALSE(port.WasVisited());
}

TEST_F(BadOptionsFile, FiftyMebibytesOfOptionsAreServed) {
    std::string text = "<Options><ToolOptions>" + SortOptions();
    for (int i = 0; text.size() < std::size_t{50} << 20; ++i) {
        text += "<Tool ID=\"T" + std::to_string(i) + "\"><Option><Name>n</Name><Value>" +
                std::string(10'000, 'v') + "</Value></Option></Tool>";
    }
    installation.Write(file, text + "</ToolOptions></Options>");
    LoadOnBadFile();
    EXPECT_EQ(Get("T5000", "n"), std::string(10'000, 'v'));
    EXPECT_EQ(Set("T5000", "n", "short"), "True");
    EXPECT_EQ(FileText().size(),
              text.size() + std::string_view("</ToolOptions></Options>").size() - 10'000 + 5);
}

TEST_F(BadOptionsFile, FiftyMebibytesOfNothingAreRefused) {
    ExpectRefused("<Options>" + std::string(std::size_t{50} << 20, '<'));
}

TEST_F(BadOptionsFile, IsReadAgainOnceItIsRepaired) {
    installation.Write(file, "<Options>");
    LoadOnBadFile();
    ExpectNoOptions();
    installation.Write(file, Good());
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_EQ(Set("a", "n", "2"), "True");
}

TEST_F(BadOptionsFile, DamagedWhileInUseIsReplacedOnlyByTheDocumentInMemory) {
    LoadWithTools(Tool("a", Option("n", "1")));
    installation.Write(file, "damaged");
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_EQ(FileText(), "damaged");
    EXPECT_EQ(Probe().getOptionData(""), "");
    ClaimReport("cToolMain.getOptionData");
    EXPECT_EQ(FileText(), "damaged");
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() + Tool("a", Option("n", "2"))));
}

TEST_F(BadOptionsFile, UpdatesOfTheSameKindAreRefused) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    for (const std::string& bad : {std::string(), Deep(100'000), test::EntityBomb(), Good().substr(0, 40)}) {
        EXPECT_EQ(Request(request::UpdateOptions, {{"Options", bad}}), "");
        ClaimReport("HandleRequest");
        EXPECT_EQ(FileText(), before);
        EXPECT_EQ(Get("a", "n"), "1");
    }
}

} // namespace
} // namespace kvtm::test
