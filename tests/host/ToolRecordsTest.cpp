// The catalogue Tools.xml, read.

#include "tests/base/DateTexts.h"
#include "tests/host/HostFixture.h"

namespace arvon::host::test {
namespace {

class ToolRecordsOfTheHost : public HostTest {
protected:
    void OpenWithXml(std::string_view xml) {
        installation.Write("Arvon/Tools.xml", xml);
        Open();
    }
    IToolRecords& Tools() { return Framework().Tools(); }
    base::Value Get(std::string_view member) { return Tools().Item(std::size_t{1})->Get(member); }
    /// Names in catalogue order.
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (std::size_t position = 1; position <= Tools().Count(); ++position)
            names.push_back(Tools().Item(position)->Name());
        return names;
    }
};

TEST_F(ToolRecordsOfTheHost, AreReadAtAnyDepthInDocumentOrder) {
    OpenWithXml("<?xml version=\"1.0\"?><!-- catalogue --><Tools><Tool Name=\"a\"><Tool Name=\"b\"/></Tool>"
                "<Group><Deeper><Tool Name=\"c\">text</Tool></Deeper><tool Name=\"no\"/></Group><Tool "
                "Name=\"d\"/></Tools>");
    EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
}

TEST_F(ToolRecordsOfTheHost, HaveAllTheirProperties) {
    OpenWithXml("<Tools><Tool Name=\"N\" VREX=\"V\" Identifier=\"I\" Classification=\"C\" ShowInList=\"0\" "
                "version=\"1.2\" "
                "LastUpdated=\"2024-03-01T14:05:00\" Kind=\"3\" Brand=\"B\" ProgramType=\"P\" Path=\"C:\\x\" "
                "CommandLine=\"x.exe /a\" Other=\"o\"/></Tools>");
    for (const auto& [member, text] :
         std::vector<std::pair<const char*, const char*>>{{"Name", "N"},
                                                          {"vrex", "V"},
                                                          {"IDENTIFIER", "I"},
                                                          {"Classification", "C"},
                                                          {"showinlist", "False"},
                                                          {"Version", "1.2"},
                                                          {"lastUpdated", "3/1/2024 2:05:00 PM"},
                                                          {"kind", "3"},
                                                          {"Brand", "B"},
                                                          {"ProgramType", "P"},
                                                          {"Path", "C:\\x"},
                                                          {"CommandLine", "x.exe /a"}})
        EXPECT_EQ(Get(member).ToText(), text) << member;
    EXPECT_EQ(Get("ShowInList").GetKind(), Value::Kind::Boolean);
    EXPECT_EQ(Get("Kind").GetKind(), Value::Kind::Integer);
    EXPECT_EQ(Get("LastUpdated").GetKind(), Value::Kind::Date);
    EXPECT_THAT(Get("xml").ToText(), testing::StartsWith("<Tool Name=\"N\" VREX=\"V\""));
    EXPECT_EQ(RefusalOf([&] { Get("Other"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { Get(""); }).number, base::errors::NoSuchMember);
    const auto record = Tools().Item(std::size_t{1});
    EXPECT_EQ(record->Name(), "N");
    EXPECT_EQ(record->Classification(), "C");
    EXPECT_FALSE(record->ShowInList());
    const auto shown = Model().Tools();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].vrex, "V");
    EXPECT_EQ(shown[0].lastUpdated, "2024-03-01T14:05:00");
    EXPECT_FALSE(shown[0].showInList);
    EXPECT_EQ(shown[0].kind, 3);
    EXPECT_EQ(shown[0].commandLine, "x.exe /a");
}

TEST_F(ToolRecordsOfTheHost, TakeMissingAttributesAsEmptyShownAndOfKindZero) {
    OpenWithXml("<Tools><Tool/></Tools>");
    for (const auto* member : {"Name", "VREX", "Identifier", "Classification", "version", "LastUpdated",
                               "Brand", "ProgramType", "Path", "CommandLine"})
        EXPECT_EQ(Get(member).ToText(), "") << member;
    EXPECT_EQ(Get("LastUpdated").GetKind(), Value::Kind::Text);
    EXPECT_TRUE(Get("ShowInList").ToBoolean());
    EXPECT_EQ(Get("Kind").ToInteger(), 0);
    EXPECT_THAT(recorder.problems, IsEmpty());
    EXPECT_THAT(Host().Problems(), IsEmpty());
}

TEST_F(ToolRecordsOfTheHost, ReadShowInListAsANumberOrAWord) {
    OpenWithXml("<Tools><Tool ShowInList=\"-1\"/><Tool ShowInList=\"0\"/><Tool ShowInList=\"True\"/>"
                "<Tool ShowInList=\"False\"/><Tool ShowInList=\"true\"/><Tool ShowInList=\"FALSE\"/><Tool "
                "ShowInList=\"1\"/>"
                "<Tool ShowInList=\"\"/></Tools>");
    std::vector<bool> shown;
    for (const model::Tool& tool : Model().Tools())
        shown.push_back(tool.showInList);
    EXPECT_THAT(shown, ElementsAre(true, false, true, false, true, false, true, true));
}

TEST_F(ToolRecordsOfTheHost, KeepALastUpdatedThatIsNoDateAsTextAndTellOfIt) {
    OpenWithXml("<Tools><Tool Name=\"odd\" LastUpdated=\"last week\"/><Tool LastUpdated=\"2024-02-30\"/>"
                "<Tool Name=\"far\" LastUpdated=\"99999999\"/><Tool LastUpdated=\"\"/><Tool/></Tools>");
    EXPECT_EQ(Get("LastUpdated").GetKind(), Value::Kind::Text);
    EXPECT_EQ(Get("LastUpdated").ToText(), "last week");
    EXPECT_EQ(Tools().Item(2)->Get("LastUpdated").ToText(), "2024-02-30");
    EXPECT_EQ(Tools().Item(3)->Get("LastUpdated").ToText(), "99999999");
    EXPECT_THAT(Host().Problems(),
                ElementsAre("Tools.xml, tool \"odd\": LastUpdated \"last week\" is not a date",
                            "Tools.xml, tool \"\": LastUpdated \"2024-02-30\" is not a date",
                            "Tools.xml, tool \"far\": LastUpdated \"99999999\" is not a date"));
}

TEST_F(ToolRecordsOfTheHost, TellOfALastUpdatedThatIsNoDateEachTimeTheyAreReadAndNotWhenItIsSet) {
    OpenWithXml("<Tools><Tool Name=\"odd\" LastUpdated=\"2024-03-01\"/></Tools>");
    Tools().Item(1)->Set("LastUpdated", Value("last week"));
    EXPECT_EQ(Get("LastUpdated").GetKind(), Value::Kind::Text);
    EXPECT_THAT(Host().Problems(), ElementsAre());
    Tools().Save();
    Tools().Reload();
    EXPECT_EQ(Host().Problems().size(), 1u);
    Tools().Item(1)->Set("LastUpdated", Value("May 2024"));
    EXPECT_EQ(Get("LastUpdated").ToText(), "5/1/2024");
}

TEST_F(ToolRecordsOfTheHost, HoldEveryLastUpdatedThatIsADate) {
    std::vector<std::pair<std::string, base::CalendarTime>> dates;
    for (const auto& [text, time] : dateTexts::isoDates)
        dates.emplace_back(text, time);
    for (const auto& [text, time] : dateTexts::classicDates)
        dates.emplace_back(text, time);
    for (const auto& [text, time] : dateTexts::dayNumbers)
        dates.emplace_back(text, time);
    for (const auto& [text, inRecord, elsewhere] : dateTexts::recordDigits)
        dates.emplace_back(text, inRecord);
    std::string xml = "<Tools>";
    for (const auto& [text, time] : dates)
        xml += "<Tool LastUpdated=\"" + text + "\"/>";
    OpenWithXml(xml + "</Tools>");
    EXPECT_THAT(Host().Problems(), ElementsAre());
    ASSERT_EQ(Tools().Count(), dates.size());
    for (std::size_t i = 0; i < dates.size(); ++i) {
        const Value lastUpdated = Tools().Item(i + 1)->Get("LastUpdated");
        ASSERT_EQ(lastUpdated.GetKind(), Value::Kind::Date) << dates[i].first;
        EXPECT_EQ(lastUpdated.ToText(), Value(base::FromCalendar(dates[i].second)).ToText())
            << dates[i].first;
    }
}

TEST_F(ToolRecordsOfTheHost, TellOfEveryLastUpdatedThatIsNoDate) {
    std::string xml = "<Tools>";
    std::size_t count = 0;
    for (const std::string text : dateTexts::noDates) {
        if (text.empty()) continue;
        xml += "<Tool LastUpdated=\"" + text + "\"/>";
        ++count;
    }
    OpenWithXml(xml + "</Tools>");
    EXPECT_EQ(Host().Problems().size(), count);
    for (std::size_t position = 1; position <= count; ++position)
        EXPECT_EQ(Tools().Item(position)->Get("LastUpdated").GetKind(), Value::Kind::Text);
}

TEST_F(ToolRecordsOfTheHost, TellOfValuesWithoutAMeaning) {
    OpenWithXml("<Tools><Tool Name=\"odd\" ShowInList=\"maybe\" Kind=\"third\"/></Tools>");
    EXPECT_TRUE(Get("ShowInList").ToBoolean());
    EXPECT_EQ(Get("Kind").ToInteger(), 0);
    EXPECT_THAT(Host().Problems(),
                ElementsAre("Tools.xml, tool \"odd\": ShowInList \"maybe\" has no meaning, read as -1",
                            "Tools.xml, tool \"odd\": Kind \"third\" has no meaning, read as 0"));
}

TEST_F(ToolRecordsOfTheHost, AreFoundByPositionAndExactName) {
    OpenWith({{.name = "a"}, {.name = "b"}, {.name = "a", .vrex = "second"}});
    EXPECT_EQ(Tools().Item("b"), Tools().Item(2));
    EXPECT_EQ(Tools().Item("a"), Tools().Item(1)); // the first of that name
    EXPECT_EQ(Tools().Item("A"), nullptr);
    EXPECT_EQ(Tools().Item(""), nullptr);
    for (const std::size_t outside : {0u, 4u})
        EXPECT_EQ(RefusalOf([&] { Tools().Item(outside); }).number, base::errors::OutOfRange);
}

TEST_F(ToolRecordsOfTheHost, OfARepeatedNameAreTakenOutOneAfterTheOther) {
    OpenWith(
        {{.name = "a", .vrex = "1"}, {.name = "b"}, {.name = "a", .vrex = "2"}, {.name = "a", .vrex = "3"}});
    for (const auto* next : {"2", "3"}) {
        Tools().Remove(Tools().Item("a"));
        EXPECT_EQ(Tools().Item("a")->Get("VREX").ToText(), next);
    }
    Tools().Remove(Tools().Item("a"));
    EXPECT_EQ(Tools().Item("a"), nullptr);
    EXPECT_THAT(Names(), ElementsAre("b"));
    EXPECT_EQ(RefusalOf([&] { Tools().Remove(Tools().Item("a")); }).number, base::errors::ObjectNotSet);
}

TEST_F(ToolRecordsOfTheHost, OfARepeatedNameAreTakenOutInAnyOrder) {
    OpenWith(
        {{.name = "a", .vrex = "1"}, {.name = "a", .vrex = "2"}, {.name = "b"}, {.name = "a", .vrex = "3"}});
    const auto second = Tools().Item(2);
    Tools().Remove(second);
    EXPECT_EQ(Tools().Item("a")->Get("VREX").ToText(), "1");
    EXPECT_THAT(Names(), ElementsAre("a", "b", "a"));
    const Refusal refusal = RefusalOf([&] { Tools().Remove(second); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.description, "no tool \"a\"");
    Tools().Remove(Tools().Item(1));
    EXPECT_EQ(Tools().Item("a")->Get("VREX").ToText(), "3");
    Tools().Save();
    EXPECT_EQ(installation.Read("Arvon/Tools.xml").find("VREX=\"2\""), std::string::npos);
    EXPECT_NE(installation.Read("Arvon/Tools.xml").find("VREX=\"3\""), std::string::npos);
}

TEST_F(ToolRecordsOfTheHost, AreFoundByTheNameThatTheyHaveByNow) {
    OpenWith({{.name = "a"}, {.name = "b"}, {.name = "b", .vrex = "second"}});
    const auto first = Tools().Item("a");
    first->Set("Name", "b");
    EXPECT_EQ(Tools().Item("a"), nullptr);
    EXPECT_EQ(Tools().Item("b"), first);
    Tools().Remove(Tools().Item("b"));
    Tools().Remove(Tools().Item("b"));
    EXPECT_EQ(Tools().Item("b")->Get("VREX").ToText(), "second");
}

TEST_F(ToolRecordsOfTheHost, OfABrokenFileAreNoneAndTheFileLineAndColumnAreNamed) {
    OpenWithXml("<Tools>\n  <Tool Name=\"a\">\n</Tools>");
    EXPECT_EQ(Tools().Count(), 0u);
    ASSERT_EQ(Host().Problems().size(), 1u);
    EXPECT_THAT(Host().Problems()[0], HasSubstr("drive_c/QUARRA/Arvon/Tools.xml: line 3, column "));
    OpenWithXml("<Catalogue><Tool Name=\"a\"/></Catalogue>");
    EXPECT_EQ(Tools().Count(), 0u);
    EXPECT_THAT(Host().Problems()[0],
                HasSubstr("Tools.xml: expected the root \"Tools\", found \"Catalogue\""));
    for (const auto* broken :
         {"", "no XML", "<!DOCTYPE Tools [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><Tools>&x;</Tools>"}) {
        OpenWithXml(broken);
        EXPECT_EQ(Tools().Count(), 0u);
        EXPECT_EQ(Host().Problems().size(), 1u) << broken;
    }
}

TEST_F(ToolRecordsOfTheHost, OfAMissingFileAreNoneAndTheFileIsNamed) {
    std::filesystem::remove(installation.File("Arvon/Tools.xml"));
    Open();
    EXPECT_EQ(Tools().Count(), 0u);
    ASSERT_EQ(Host().Problems().size(), 1u);
    EXPECT_THAT(Host().Problems()[0], HasSubstr("drive_c/QUARRA/Arvon/Tools.xml"));
    std::filesystem::create_directory(installation.File("Arvon/Tools.xml"));
    Open();
    EXPECT_EQ(Tools().Count(), 0u);
    EXPECT_EQ(Host().Problems().size(), 1u);
}

TEST_F(ToolRecordsOfTheHost, AreReadInOtherEncodingsToo) {
    OpenWithXml(
        "<?xml version=\"1.0\" encoding=\"windows-1252\"?><Tools><Tool Name=\"K\xE4se \x80\"/></Tools>");
    EXPECT_THAT(Names(), ElementsAre("K\u00E4se \u20AC"));
    OpenWithXml(std::string(
        "\xFF\xFE<\0T\0o\0o\0l\0s\0>\0<\0T\0o\0o\0l\0 \0N\0a\0m\0e\0=\0'\0\xE4\0'\0/\0>\0<\0/\0T\0o\0"
        "o\0l\0s\0>\0",
        64));
    EXPECT_THAT(Names(), ElementsAre("\u00E4"));
    OpenWithXml("\xEF\xBB\xBF<Tools><Tool Name=\"\u00E4\"/></Tools>");
    EXPECT_THAT(Names(), ElementsAre("\u00E4"));
}

TEST_F(ToolRecordsOfTheHost, AreReadAnewWhileThoseHandedOutLiveOn) {
    OpenWith({{.name = "a"}, {.name = "b"}});
    const auto held = Tools().Item("a");
    held->Set("version", "7");
    Tools().Remove(Tools().Item("b"));
    installation.WriteTools({{.name = "c"}, {.name = "a", .version = "2.0"}});
    Tools().Reload();
    EXPECT_THAT(Names(), ElementsAre("c", "a"));
    EXPECT_EQ(Tools().Item("a")->Get("version").ToText(), "2.0");
    EXPECT_EQ(held->Get("version").ToText(), "7");
    EXPECT_THAT(held->Get("XML").ToText(), HasSubstr("version=\"7\""));
    held->Set("Name", "z"); // is a record of nobody's by now
    EXPECT_THAT(Names(), ElementsAre("c", "a"));
    EXPECT_NE(Tools().Item("a"), nullptr);
}

TEST_F(ToolRecordsOfTheHost, StayAsTheyWereWhenTheFileBrokeMeanwhile) {
    OpenWith({{.name = "a"}, {.name = "b"}, {.name = "c"}});
    const auto held = Tools().Item("a");
    held->Set("version", "7");
    Tools().Remove(Tools().Item("b"));
    installation.Write("Arvon/Tools.xml", "<Tools>\n<Tool");
    Tools().Reload();
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    EXPECT_EQ(Tools().Item("a"), held);
    ASSERT_EQ(recorder.problems.size(), 1u);
    EXPECT_THAT(recorder.problems[0], HasSubstr("drive_c/QUARRA/Arvon/Tools.xml: line 2, column "));

    std::filesystem::remove(installation.File("Arvon/Tools.xml"));
    Tools().Reload();
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    EXPECT_EQ(recorder.problems.size(), 2u);

    // what was changed and removed before is not forgotten either
    installation.WriteTools({{.name = "a"}, {.name = "b"}, {.name = "c"}});
    Tools().Save();
    Tools().Reload();
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    EXPECT_EQ(Tools().Item("a")->Get("version").ToText(), "7");
    EXPECT_EQ(recorder.problems.size(), 2u);
}

TEST_F(ToolRecordsOfTheHost, OutliveTheirHost) {
    OpenWith({{.name = "a"}});
    const auto framework = Host().Framework(); // a tool holds both
    const auto held = Tools().Item("a");
    Close();
    EXPECT_EQ(held->Name(), "a");
    EXPECT_EQ(framework->Tools().Item("a"), held);
}

TEST_F(ToolRecordsOfTheHost, TakeChangesInTheirTypes) {
    OpenWith({{.name = "a"}});
    const auto record = Tools().Item("a");
    record->Set("SHOWINLIST", false);
    record->Set("Kind", "3");
    record->Set("LastUpdated", base::FromCalendar({2024, 3, 1, 14, 5, 0}));
    record->Set("version", 2);
    EXPECT_FALSE(record->ShowInList());
    EXPECT_EQ(record->Get("Kind").ToInteger(), 3);
    EXPECT_EQ(record->Get("LastUpdated").ToText(), "3/1/2024 2:05:00 PM");
    EXPECT_EQ(record->Get("version").ToText(), "2");
    EXPECT_THAT(
        record->Get("XML").ToText(),
        testing::AllOf(HasSubstr("ShowInList=\"0\""), HasSubstr("LastUpdated=\"2024-03-01T14:05:00\"")));
    record->Set("LastUpdated", base::FromCalendar({2024, 3, 1, 0, 0, 0}));
    EXPECT_EQ(Model().Tools()[0].lastUpdated, "2024-03-01");
}

TEST_F(ToolRecordsOfTheHost, RefuseWhatDoesNotFit) {
    OpenWith({{.name = "a"}});
    const auto record = Tools().Item("a");
    const std::string before = record->Get("XML").ToText();
    EXPECT_EQ(RefusalOf([&] { record->Set("Kind", "third"); }).number, base::errors::TypeMismatch);
    EXPECT_EQ(RefusalOf([&] { record->Set("ShowInList", "maybe"); }).number, base::errors::TypeMismatch);
    EXPECT_EQ(RefusalOf([&] { record->Set("XML", "<Tool/>"); }).number, base::errors::InvalidCall);
    EXPECT_EQ(RefusalOf([&] { record->Set("Colour", "red"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { record->Set("Name", "a\x01"); }).number, base::errors::InvalidCall);
    EXPECT_EQ(record->Get("XML").ToText(), before);
    EXPECT_EQ(record->Name(), "a");
}

} // namespace
} // namespace arvon::host::test
