// The catalogue Tools.xml, written: what was changed and nothing else.

#include "tests/host/HostFixture.h"

#include "base/Text.h"

#include <filesystem>
#include <sys/stat.h>
#include <tuple>

namespace arvon::host::test {
namespace {

constexpr std::string_view catalogue =
    "<?xml version='1.0'?>\r\n"
    "<!-- kept: <Tool Name=\"comment\"/> -->\n"
    "<Tools Made = \"by hand\" >\n"
    "\t<Tool  Name='Alpha'   VREX=\"A1\" version=\"1\"\n\t\tOther=\"x > y\" />\n"
    "  <Group><![CDATA[ <Tool Name=\"section\"/> ]]>\n"
    "    <Tool Name=\"Beta\" VREX=\"B1\">\n"
    "      <Note>text &amp; more</Note>\n"
    "      <Tool Name=\"Gamma\" VREX=\"G1\"/>\n"
    "    </Tool>\n"
    "  </Group>\n"
    "  <Tool Name=\"Delta\" VREX=\"D1\"/><?instruction <Tool?>\n"
    "</Tools>\n\n";

class ToolsSave : public HostTest {
protected:
    ToolsSave() {
        installation.Write("Arvon/Tools.xml", catalogue);
        Open();
    }
    IToolRecords& Tools() { return Framework().Tools(); }
    std::string Text() { return installation.Read("Arvon/Tools.xml"); }
    /// The catalogue with one piece of it replaced.
    static std::string With(std::string_view piece, std::string_view replacement,
                            std::string_view text = catalogue) {
        EXPECT_NE(text.find(piece), std::string::npos) << piece;
        return base::Replace(text, piece, replacement);
    }
};

TEST_F(ToolsSave, WritesNothingWhenNothingChanged) {
    const auto before = std::filesystem::last_write_time(installation.File("Arvon/Tools.xml"));
    Tools().Save();
    Tools().Item("Alpha")->Set("version", "1"); // is so already
    Tools().Save();
    EXPECT_EQ(Text(), catalogue);
    EXPECT_EQ(std::filesystem::last_write_time(installation.File("Arvon/Tools.xml")), before);
}

TEST_F(ToolsSave, WritesNothingWhenWhatWasChangedWasPutBack) {
    const auto before = std::filesystem::last_write_time(installation.File("Arvon/Tools.xml"));
    const auto record = Tools().Item("Delta");
    for (const auto& [property, changed, back] : {std::tuple{"Name", "Epsilon", "Delta"},
                                                  {"VREX", "E1", "D1"},
                                                  {"Brand", "Halcrest", ""},
                                                  {"ShowInList", "0", "-1"},
                                                  {"Kind", "3", "0"}}) {
        record->Set(property, changed);
        record->Set(property, "2");
        record->Set(property, back);
    }
    Tools().Save();
    EXPECT_EQ(Text(), catalogue);
    EXPECT_EQ(std::filesystem::last_write_time(installation.File("Arvon/Tools.xml")), before);
}

TEST_F(ToolsSave, ChangesTheAttributeAndKeepsEveryOtherByte) {
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Save();
    EXPECT_EQ(Text(), With("version=\"1\"", "version=\"2\""));
}

TEST_F(ToolsSave, AddsAnAttributeBehindTheOthers) {
    Tools().Item("Delta")->Set("Brand", "Halcrest");
    Tools().Item("Alpha")->Set("Kind", 3);
    Tools().Item("Alpha")->Set("ShowInList", false);
    Tools().Save();
    EXPECT_EQ(Text(), With("Other=\"x > y\"", "Other=\"x > y\" ShowInList=\"0\" Kind=\"3\"",
                           With("VREX=\"D1\"", "VREX=\"D1\" Brand=\"Halcrest\"")));
}

TEST_F(ToolsSave, EscapesWhatItWrites) {
    Tools().Item("Alpha")->Set("version", "<&>\"'\t\n\u20AC");
    Tools().Save();
    Tools().Reload();
    EXPECT_EQ(Tools().Item("Alpha")->Get("version").ToText(), "<&>\"'\t\n\u20AC");
    EXPECT_THAT(Text(),
                testing::StartsWith("<?xml version='1.0'?>\r\n<!-- kept: <Tool Name=\"comment\"/> -->\n"));
}

TEST_F(ToolsSave, TakesARemovedToolOutWithItsLine) {
    Tools().Remove(Tools().Item("Gamma"));
    Tools().Save();
    EXPECT_EQ(Text(), With("      <Tool Name=\"Gamma\" VREX=\"G1\"/>\n", ""));
    Tools().Remove(Tools().Item("Delta")); // which does not stand alone on its line
    Tools().Save();
    EXPECT_EQ(Text(), With("<Tool Name=\"Delta\" VREX=\"D1\"/>", "",
                           With("      <Tool Name=\"Gamma\" VREX=\"G1\"/>\n", "")));
}

TEST_F(ToolsSave, KeepsAToolThatStandsInsideARemovedOne) {
    Tools().Remove(Tools().Item("Beta"));
    Tools().Save();
    Tools().Reload();
    EXPECT_EQ(Tools().Item("Beta"), nullptr);
    ASSERT_NE(Tools().Item("Gamma"), nullptr);
    EXPECT_THAT(Text(), testing::Not(HasSubstr("Note")));
    EXPECT_EQ(Tools().Count(), 3u);
}

TEST_F(ToolsSave, RemovesAndChangesTogether) {
    Tools().Remove(Tools().Item("Beta"));
    Tools().Remove(Tools().Item("Gamma"));
    Tools().Item("Delta")->Set("Name", "Epsilon");
    Tools().Save();
    Tools().Reload();
    EXPECT_EQ(Tools().Count(), 2u);
    EXPECT_EQ(Tools().Item("Epsilon")->Get("VREX").ToText(), "D1");
    EXPECT_THAT(Text(), HasSubstr("<![CDATA[ <Tool Name=\"section\"/> ]]>"));
}

TEST_F(ToolsSave, FindsARenamedToolAgainAndAgain) {
    for (const auto* name : {"One", "Two", "Three"}) {
        Tools().Item(std::size_t{1})->Set("Name", name);
        Tools().Item(std::size_t{1})->Set("VREX", name);
        Tools().Save();
        EXPECT_THAT(Text(), HasSubstr("Name='" + std::string(name) + "'   VREX=\"" + name + "\""));
    }
    Tools().Remove(Tools().Item("Three"));
    Tools().Save();
    EXPECT_THAT(Text(), testing::Not(HasSubstr("Three")));
}

TEST_F(ToolsSave, KeepsWhatSomebodyElseWroteMeanwhile) {
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Remove(Tools().Item("Delta"));
    installation.Write("Arvon/Tools.xml", With("<Group>", "<Tool Name=\"New\"/><Group>"));
    Tools().Save();
    EXPECT_EQ(Text(), With("version=\"1\"", "version=\"2\"",
                           With("<Tool Name=\"Delta\" VREX=\"D1\"/>", "",
                                With("<Group>", "<Tool Name=\"New\"/><Group>"))));
}

TEST_F(ToolsSave, TellsOfAChangedToolThatTheFileHoldsNoMore) {
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Remove(Tools().Item("Delta"));
    installation.Write("Arvon/Tools.xml", "<Tools><Tool Name=\"Beta\" VREX=\"B1\"/></Tools>");
    Tools().Save();
    EXPECT_EQ(Text(), "<Tools><Tool Name=\"Beta\" VREX=\"B1\"/></Tools>");
    ASSERT_EQ(recorder.problems.size(), 1u);
    EXPECT_THAT(recorder.problems[0], HasSubstr("holds the tool \"Alpha\" no more"));
}

TEST_F(ToolsSave, TellsRepeatedToolsApartByTheirOrder) {
    OpenWith({{.name = "a", .version = "1"}, {.name = "a", .version = "2"}, {.name = "a", .version = "3"}});
    Tools().Item(3)->Set("version", "33");
    Tools().Remove(Tools().Item("a")); // the first
    Tools().Save();
    Tools().Reload();
    ASSERT_EQ(Tools().Count(), 2u);
    EXPECT_EQ(Tools().Item(1)->Get("version").ToText(), "2");
    EXPECT_EQ(Tools().Item(2)->Get("version").ToText(), "33");
}

TEST_F(ToolsSave, LeavesADamagedOrMissingFileAlone) {
    Tools().Item("Alpha")->Set("version", "2");
    const std::string damaged(catalogue.substr(0, 200));
    installation.Write("Arvon/Tools.xml", damaged);
    const Refusal refusal = RefusalOf([&] { Tools().Save(); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_THAT(refusal.description, HasSubstr("Tools.xml: line "));
    EXPECT_EQ(Text(), damaged);
    std::filesystem::remove(installation.File("Arvon/Tools.xml"));
    EXPECT_EQ(RefusalOf([&] { Tools().Save(); }).number, base::errors::FileNotFound);
    EXPECT_FALSE(std::filesystem::exists(installation.File("Arvon/Tools.xml")));
    installation.Write("Arvon/Tools.xml", catalogue); // the change is still there to be saved
    Tools().Save();
    EXPECT_EQ(Text(), With("version=\"1\"", "version=\"2\""));
}

TEST_F(ToolsSave, IsOneStepAndKeepsModeAndLink) {
    const auto file = installation.File("Arvon/Tools.xml"), real = installation.File("Real.xml");
    std::filesystem::rename(file, real);
    std::filesystem::create_symlink(real, file);
    ASSERT_EQ(::chmod(real.c_str(), 0640), 0);
    struct stat before {
    }, after{};
    ASSERT_EQ(::stat(real.c_str(), &before), 0);
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Save();
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    ASSERT_EQ(::stat(real.c_str(), &after), 0);
    EXPECT_EQ(after.st_mode & 0777u, 0640u);
    EXPECT_NE(after.st_ino, before.st_ino); // another file took its place
    for (const auto& entry : std::filesystem::directory_iterator(installation.File("Arvon")))
        EXPECT_THAT(entry.path().filename().string(),
                    testing::AnyOf("Tools.xml", "OPTIONS.XML", "Bin", "resources"));
}

TEST_F(ToolsSave, KeepsAByteOrderMark) {
    installation.Write("Arvon/Tools.xml", "\xEF\xBB\xBF" + std::string(catalogue));
    Open();
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Save();
    EXPECT_EQ(Text(), "\xEF\xBB\xBF" + With("version=\"1\"", "version=\"2\""));
}

TEST_F(ToolsSave, MakesAFileInAnotherEncodingOneInUtf8) {
    installation.Write("Arvon/Tools.xml",
                       "<?xml version=\"1.0\" encoding='windows-1252' ?>\n<Tools><!-- \xE4 -->\n"
                       "  <Tool Name=\"K\xE4se\"/>\n</Tools>");
    Open();
    Tools().Item("K\u00E4se")->Set("version", "2 \u20AC");
    Tools().Save();
    EXPECT_EQ(Text(), "<?xml version=\"1.0\" encoding='UTF-8' ?>\n<Tools><!-- \u00E4 -->\n"
                      "  <Tool Name=\"K\u00E4se\" version=\"2 \u20AC\"/>\n</Tools>");
    Tools().Reload();
    EXPECT_EQ(Tools().Item("K\u00E4se")->Get("version").ToText(), "2 \u20AC");
}

TEST_F(ToolsSave, DeclaresNoOtherEncodingThanItWrites) {
    const auto saved = [&](std::string_view text) {
        installation.Write("Arvon/Tools.xml", text);
        Open();
        Tools().Item("\u0141\u00F3d\u017A")->Set("version", "2");
        Tools().Save();
        return Text();
    };
    const std::string tools = "<Tools><Tool Name=\"\u0141\u00F3d\u017A\" version=\"2\"/></Tools>";
    EXPECT_EQ(saved("<?xml version='1.0' encoding='windows-1250'?><Tools><Tool Name=\"\xA3\xF3"
                    "d\x9F\" version=\"1\"/></Tools>"),
              "<?xml version='1.0' encoding='UTF-8'?>" + tools);
    const std::string old = base::Replace(tools, "2", "1");
    EXPECT_EQ(saved("\xEF\xBB\xBF<?xml version='1.0' encoding='windows-1250'?>" + old),
              "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>" + tools)
        << "the mark told the truth";
    EXPECT_EQ(saved("<?xml version='1.0' encoding='utf-8'?>" + old),
              "<?xml version='1.0' encoding='utf-8'?>" + tools);
    EXPECT_EQ(saved("<?xml-model encoding='windows-1250'?>" + old),
              "<?xml-model encoding='windows-1250'?>" + tools)
        << "that is no declaration";
}

TEST_F(ToolsSave, KeepsADocumentTypeThatNamesTheRoot) {
    installation.Write("Arvon/Tools.xml", "<!DOCTYPE Tools >\n<Tools><Tool Name=\"a\"/></Tools>");
    Open();
    Tools().Item("a")->Set("version", "2");
    Tools().Save();
    EXPECT_EQ(Text(), "<!DOCTYPE Tools >\n<Tools><Tool Name=\"a\" version=\"2\"/></Tools>");
}

TEST_F(ToolsSave, RefusesToolsInANamespaceRatherThanHarmThem) {
    const std::string text = "<Tools><x xmlns=\"urn:x\"><Tool Name=\"a\"/></x><Tool Name=\"b\"/></Tools>";
    installation.Write("Arvon/Tools.xml", text);
    Open();
    EXPECT_EQ(Tools().Count(), 1u);
    Tools().Item("b")->Set("version", "2");
    EXPECT_EQ(RefusalOf([&] { Tools().Save(); }).number, base::errors::InvalidCall);
    EXPECT_EQ(Text(), text);
}

TEST_F(ToolsSave, FollowsAnEditByTheUser) {
    std::string edited;
    Hooks hooks;
    hooks.editRecord = [&](IToolRecord& record) {
        edited = record.Name();
        record.Set("Brand", "Mine");
        return edited == "Alpha";
    };
    Open(std::move(hooks));
    Tools().Edit(Tools().Item("Alpha"), "EditTool");
    EXPECT_EQ(edited, "Alpha");
    EXPECT_THAT(Text(), HasSubstr("Brand=\"Mine\""));
    const std::string before = Text();
    Tools().Edit(Tools().Item("Delta"), "EditTool"); // which the user gave up
    EXPECT_EQ(edited, "Delta");
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(RefusalOf([&] { Tools().Edit(nullptr, "EditTool"); }).number, base::errors::ObjectNotSet);
    EXPECT_THAT(recorder.calls, testing::Contains("Tools.Edit(\"Alpha\", \"EditTool\")"));
}

TEST_F(ToolsSave, FollowsAnEditDuringWhichTheCatalogueWasReadAnew) {
    Hooks hooks;
    hooks.editRecord = [&](IToolRecord& record) {
        record.Set("Name", "Alef");
        Tools().Reload();
        record.Set("ShowInList", false);
        record.Set("LastUpdated", base::FromCalendar({2024, 3, 1, 0, 0, 0}));
        return true;
    };
    Open(std::move(hooks));
    const auto held = Tools().Item("Alpha");
    Tools().Edit(held, "EditTool");
    EXPECT_EQ(Text(),
              With("Other=\"x > y\" />", "Other=\"x > y\" ShowInList=\"0\" LastUpdated=\"2024-03-01\" />",
                   With("'Alpha'", "'Alef'")));
    ASSERT_NE(Tools().Item("Alef"), nullptr);
    EXPECT_NE(Tools().Item("Alef"), held);
    EXPECT_FALSE(Tools().Item("Alef")->ShowInList());
    EXPECT_EQ(Tools().Item("Alpha"), nullptr);
    EXPECT_THAT(recorder.problems, IsEmpty());
}

TEST_F(ToolsSave, TellsOfAnEditOfARecordThatTheCatalogueHoldsNoMore) {
    Hooks hooks;
    hooks.editRecord = [&](IToolRecord& record) {
        record.Set("Brand", "Mine");
        installation.WriteTools({{.name = "Other"}});
        Tools().Reload();
        return true;
    };
    Open(std::move(hooks));
    Tools().Edit(Tools().Item("Alpha"), "EditTool");
    EXPECT_THAT(recorder.problems,
                ElementsAre("the catalogue holds the tool \"Alpha\" no more: its changes were not saved"));
    EXPECT_EQ(Text().find("Mine"), std::string::npos);
}

TEST_F(ToolsSave, IsNotDoneByAnEditWithoutAnEditor) {
    Tools().Item("Alpha")->Set("version", "2");
    Tools().Edit(Tools().Item("Alpha"), "EditTool");
    EXPECT_EQ(Text(), catalogue);
}

} // namespace
} // namespace arvon::host::test
