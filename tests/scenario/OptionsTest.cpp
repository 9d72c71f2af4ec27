#include "base/XmlDocument.h"
#include "tests/scenario/ConsoleRun.h"

#include <algorithm>
#include <filesystem>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// The options of the suite's tools: read, written, announced, edited in their dialog, kept in the file.
class Options : public Scenario {
protected:
    static constexpr const char* OptionsFile = "drive_c/QUARRA/Arvon/OPTIONS.XML";

    static base::XmlDocument Parsed(const std::string& text) {
        base::XmlDocument document;
        document.LoadText(text);
        return document;
    }
    /// The text of an element of the first option of that name; "(none)" when there is no such element.
    static std::string Element(const base::XmlDocument& options, const std::string& name,
                               const char* element) {
        const base::XmlNode node = options.SelectSingle("//Option[Name='" + name + "']/" + element);
        return node ? node.Text() : "(none)";
    }
    std::string Value(const std::string& name) const {
        return Element(Parsed(Read(OptionsFile)), name, "Value");
    }

    /// What a message carries under that name.
    static std::string Parameter(const Json& message, std::string_view name) {
        return Find(message.at("parameters"), "name", name).at("value");
    }
    static std::vector<std::string> Destinations(const std::vector<Json>& messages) {
        std::vector<std::string> destinations;
        for (const Json& message : messages)
            destinations.push_back(message.at("destination"));
        return destinations;
    }
    /// A request that writes the sheet of the tool "Tobr43".
    static std::string WriteSheet(const std::string& sheet) {
        return "request SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue='" + sheet + "'\n";
    }
    static constexpr const char* ReadSheet = "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet\n";
    /// A request that saves the whole text, as the dialog does.
    static std::string Update(const std::string& text, const std::string& more = {}) {
        std::string quoted;
        for (const char character : text)
            quoted += character == '\'' ? std::string("'\"'\"'") : std::string(1, character);
        return "request UpdateOptions" + more + " 'Options=" + quoted + "'\n";
    }
    /// The file's text in one line.
    std::string OnOneLine() const { return Parsed(Read(OptionsFile)).Text(); }
};

TEST_F(Options, AreAnnouncedToThoseWhoSubscribedInTheirOrder) {
    const Transcript run =
        Run("load\nlisten Jx310\nlisten Vn21\nlisten Tobr43\nlisten Nobody\n"
            "request GetOptionData ToolID=Vn21\n"
            "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet AddSubscriber=-1 SubscriberID=Tobr43\n"
            "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet AddSubscriber=0 SubscriberID=Nobody\n"
            "request GetOptionData ToolID=Qx12\n" // which does not listen
            "request GetOptionData ToolID=Jx310\nrequest GetOptionData ToolID=Vn21\n" +
            WriteSheet("A1 & \"B\"") + ReadSheet + "unlisten Vn21\n" + WriteSheet("A2"));
    EXPECT_THAT(run.Reports(), IsEmpty());
    const std::vector<Json> notices = run.Messages("NewOptions");
    EXPECT_THAT(Destinations(notices), ElementsAre("Vn21", "Tobr43", "Jx310", "Tobr43", "Jx310"));
    EXPECT_EQ(Element(Parsed(Parameter(notices.front(), "Options")), "cmbSheet", "Value"), "A1 & \"B\"");
    EXPECT_EQ(Element(Parsed(Parameter(notices.back(), "Options")), "cmbSheet", "Value"), "A2");
    EXPECT_THAT(run.Replies(), Contains("A1 & \"B\""));
    EXPECT_EQ(Value("cmbSheet"), "A2");
    EXPECT_EQ(Run(std::string("load\n") + ReadSheet).Replies().back(), "A2"); // from the file
}

TEST_F(Options, ComeFreshFromTheFileWhenAskedForWhole) {
    std::string text = Read(OptionsFile);
    const std::string before = "<Value>2.5</Value>";
    ASSERT_NE(text.find(before), std::string::npos);
    text.replace(text.find(before), before.size(), "<Value>7.5</Value>");
    Write(OptionsFile, text);
    const Transcript run = Run("load\nrequest GetOptionData ToolID=Tobr43\n"
                               "request GetOptionValue ToolID=Tobr43 OptionName=txtGridSpacing\n");
    EXPECT_EQ(run.Replies().back(), "7.5");
    EXPECT_EQ(Element(Parsed(run.Replies()[1]), "txtGridSpacing", "Value"), "7.5");
}

TEST_F(Options, DialogIsShownOnceInitialisedSavedAndClosed) {
    const std::string edited = [this] {
        base::XmlDocument document = Parsed(Read(OptionsFile));
        document.SelectSingle("//Option[Name='cmbSheet']/Value").SetText("A0");
        return document.Text();
    }();
    const Transcript run =
        Run("load\nlisten Tobr43\nrequest GetOptionData ToolID=Tobr43\n"
            "menu mnuToolOptions\nmenu mnuToolOptions\nrequest InitializeOptions\nshow windows\n" +
            Update(edited) + "show windows\n" + Update(edited, " UnloadOptionsTool=-1") + "show windows\n" +
            ReadSheet);
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Reports(), IsEmpty());
    std::vector<std::size_t> open;
    for (const Json& state : run.Of("state"))
        open.push_back(state.at("value").size());
    EXPECT_THAT(open, ElementsAre(1u, 1u, 0u));
    const Json window = run.Of("state").front().at("value").front();
    EXPECT_EQ(window.at("key"), "ocxToolOptions");
    EXPECT_EQ(window.at("control"), "KvTMU110.ctlOptions");
    EXPECT_EQ(window.at("width"), 7800);
    EXPECT_EQ(window.at("height"), 9500);
    EXPECT_EQ(window.at("mode"), 3);

    const Json received = Find(window.at("received"), "member", "Initialize");
    ASSERT_FALSE(received.is_null());
    EXPECT_EQ(Element(Parsed(received.at("text")), "cmbSheet", "Value"), "A3 landscape");
    const std::vector<Json> calls = run.Of("call");
    EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                            [](const Json& call) {
                                return call.at("operation") == "Views.Add" &&
                                       call.at("arguments").front() == "ocxToolOptions";
                            }),
              1);
    EXPECT_THAT(Destinations(run.Messages("NewOptions")), ElementsAre("Tobr43", "Tobr43"));
    EXPECT_EQ(run.Replies().back(), "A0");
    EXPECT_EQ(Value("cmbSheet"), "A0");
}

TEST_F(Options, DialogIsClosedOnRequestAndMayBeOpenedAgain) {
    const Transcript run = Run("load\nmenu mnuToolOptions\nrequest UnloadOptionsTool\nshow windows\n"
                               "request UnloadOptionsTool\nmenu mnuToolOptions\nshow windows\n");
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_THAT(run.Of("state").front().at("value"), IsEmpty());
    EXPECT_THAT(Column(run.State("windows"), "key"), ElementsAre("ocxToolOptions"));
}

TEST_F(Options, ThatCannotBeSavedAreReportedAndToldToNobody) {
    // while the suite runs, two of its programs put a folder in the file's place
    const std::string file = File(OptionsFile).string();
    Write("drive_c/QUARRA/Arvon/Tools.xml",
          "<Tools><Tool Name=\"Remover\" VREX=\"Tobr43\" Path=\"/bin/rm\" CommandLine=\"" + file +
              "\"/><Tool Name=\"Maker\" VREX=\"Jx310\" Path=\"/bin/mkdir\" CommandLine=\"-p " + file +
              "/inside\"/></Tools>");
    const std::string text = OnOneLine();
    const Transcript run =
        Run("load\nlisten Tobr43\nrequest GetOptionData ToolID=Tobr43\n" + std::string(ReadSheet) +
            "request LaunchTool ToolName=Remover\nwait 60\n"
            "request LaunchTool ToolName=Maker\nwait 60\n" +
            Update(text) + WriteSheet("A5") + "request GetResourcePath\n");
    EXPECT_THAT(run.Reports(), ElementsAre(HasSubstr(".HandleRequest: "), HasSubstr(".SetOptionValue: ")));
    EXPECT_THAT(run.Messages("NewOptions"), IsEmpty());
    EXPECT_THAT(run.Replies(), Contains("A3 landscape"));
    EXPECT_EQ(run.Replies()[run.Replies().size() - 2], "False");
    EXPECT_TRUE(std::filesystem::is_directory(File(OptionsFile)));
}

TEST_F(Options, OfPricesFollowTheProfile) {
    const std::string script = "load\nrequest GetOptionData ToolID=Qx12\n" + WriteSheet("A4");
    const auto handedOut = [&](const std::string& profile) {
        return Parsed(RunConsole({"--json", "--suite", suite, "--profile", profile}, script).Replies()[1]);
    };
    for (const char* profile : {"3", "5"}) {
        const base::XmlDocument shown = handedOut(profile);
        EXPECT_EQ(Element(shown, "chkShowPricing", "Visible"), "-1") << profile;
        EXPECT_EQ(Element(shown, "chkShowPricing", "Value"), "ON") << profile;
        EXPECT_EQ(Value("chkShowPricing"), "ON") << profile;
    }
    for (const char* profile : {"1", "guest", ""}) {
        const base::XmlDocument hidden = handedOut(profile);
        for (const char* name : {"chkShowPricing", "chkShowBaseUnitPriceBrkDn", "lblShowPricing",
                                 "lblShowBUPricing", "chkShowPricingUI", "lblShowPricingUI"}) {
            EXPECT_EQ(Element(hidden, name, "Visible"), "0") << profile << name;
            EXPECT_EQ(Element(hidden, name, "Value"), "OFF") << profile << name;
            EXPECT_EQ(Value(name), "OFF") << profile << name;
        }
        EXPECT_EQ(Element(hidden, "cmbCurrency", "Visible"), "(none)") << profile;
    }
    EXPECT_EQ(Value("cmbUnitOfMeasure"), "English");
}

TEST_F(Options, OfTheLanguageSwitchItAndSayWhetherItDid) {
    const std::string german = [this] {
        base::XmlDocument document = Parsed(Read(OptionsFile));
        document.SelectSingle("//Option[Name='cmbLanguage']/Value").SetText("1031");
        return document.Text();
    }();
    const Transcript refused = Run("load\nlanguage ''\n" + Update(german) + "request GetResourcePath\n");
    EXPECT_THAT(refused.Boxes(), SizeIs(1));
    EXPECT_EQ(refused.Replies().back(), R"(C:\QUARRA\Arvon\resources\1033)");
    const Transcript switched =
        Run("load\nlanguage Deutsch\n" + Update(german) + "request GetResourcePath\n");
    EXPECT_THAT(switched.Boxes(), SizeIs(1));
    EXPECT_NE(switched.Boxes(), refused.Boxes());
    EXPECT_EQ(switched.Replies().back(), R"(C:\QUARRA\Arvon\resources\1031)");
}

TEST_F(Options, ChooseTheOrderOfTheToolsAtOnceAndAtTheNextStart) {
    for (const char* order : {"-1", "0"}) {
        base::XmlDocument document = Parsed(Read(OptionsFile));
        document.SelectSingle("//Option[Name='optToolSortOrder']/Value").SetText(order);
        const auto now =
            Column(Run("load\n" + Update(document.Text()) + "show list\n").State("list"), "text");
        std::vector<std::string> sorted = now;
        std::sort(sorted.begin(), sorted.end());
        if (*order == '-') std::reverse(sorted.begin(), sorted.end());
        EXPECT_EQ(now, sorted);
        EXPECT_EQ(Column(Run("load\nshow list\n").State("list"), "text"), sorted);
    }
}

} // namespace scenario
