#include "tests/desktop_controls/Support.h"

#include "base/ComponentError.h"
#include "base/Value.h"

#include <gmock/gmock.h>

namespace desktop::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* layout =
    "<Tool Name=\"Layout\" VREX=\"Tobr43\" Identifier=\"LAY\" Classification=\"Drafting\" ShowInList=\"-1\" "
    "version=\"4.2.1\" LastUpdated=\"2024-03-18\" Kind=\"0\" Brand=\"Veltrane\" ProgramType=\"STANDARD\" "
    "Path=\"C:\\QUARRA\\Tobr43\\Tobr43.exe\" CommandLine=\"\" Extra=\"more\">Sheets and plans</Tool>";

class PropertiesTest : public testing::Test {
protected:
    void Open(const std::string& xml) {
        peer.replies["GetToolProperties"] = xml;
        control = MakeControl("KvTMU110.ctlToolProperties", peer.Services());
        panel.reset(control->Widget());
        panel->resize(480, 420);
        ShowInFront(*panel);
    }
    /// The value beside a caption; empty when there is no such row.
    QString Value(const QString& caption) const {
        for (const QLineEdit* field : panel->findChildren<QLineEdit*>())
            if (field->accessibleName() == caption) return field->text();
        return {};
    }
    template <class T> T& Part(const QString& name) { return Child<T>(*panel, name); }
    void Enable(const char* button, bool enabled) {
        control->Get(button).ToObject()->Set("Enabled", base::Value(enabled));
    }

    Peer peer;
    std::shared_ptr<ControlObject> control;
    std::unique_ptr<QWidget> panel;
};

} // namespace

TEST_F(PropertiesTest, ShowsWhatTheRecordHolds) {
    peer.texts[2] = "Fassung";
    peer.texts[13] = "d.m.yyyy";
    Open(layout);
    EXPECT_THAT(peer.Types(), ElementsAre("Initialize", "GetToolProperties"));
    EXPECT_EQ(Part<QLabel>("title").text(), "Layout");
    EXPECT_EQ(Value("Fassung"), "4.2.1");
    EXPECT_EQ(Value("Last updated"), "18.3.2024");
    EXPECT_EQ(Value("Shown in the list"), "Yes");
    EXPECT_EQ(Value("Program"), "C:\\QUARRA\\Tobr43\\Tobr43.exe");
    EXPECT_EQ(Value("Extra"), "more");
    EXPECT_EQ(Value("Command line"), "") << "an empty value has no row";
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "properties");
}

TEST_F(PropertiesTest, ShowsEveryDateThatTheListShows) {
    peer.texts[13] = "d.m.yyyy";
    for (const auto& [given, shown] :
         std::vector<std::pair<const char*, const char*>>{{"20240318", "18.3.2024"},
                                                          {"2024-03-18T09:30:00+02:00", "18.3.2024"},
                                                          {"2024-W12-1", "18.3.2024"},
                                                          {"3/18/2024 1:00 PM", "18.3.2024"},
                                                          {"March 2024", "1.3.2024"},
                                                          {"2024", "1.1.2024"},
                                                          {"2024-03-18x", "2024-03-18x"},
                                                          {"last week", "last week"}}) {
        Open(QString(layout).replace("2024-03-18", given).toStdString());
        EXPECT_EQ(Value("Last updated"), shown);
    }
}

TEST_F(PropertiesTest, ButtonsFollowTheMembers) {
    Open(layout);
    EXPECT_TRUE(Part<QPushButton>("launch").isEnabled());
    Enable("GetLaunchButton", false);
    EXPECT_FALSE(Part<QPushButton>("launch").isEnabled());
    EXPECT_TRUE(Part<QPushButton>("update").isEnabled());
    Enable("GetUpdateButton", false);
    EXPECT_FALSE(Part<QPushButton>("update").isEnabled());
    EXPECT_THAT(Part<QPushButton>("update").toolTip().toStdString(), HasSubstr("profile does not permit"));
    EXPECT_FALSE(control->Get("getupdatebutton").ToObject()->Get("enabled").ToBoolean());
    Enable("GetUpdateButton", true);
    EXPECT_TRUE(Part<QPushButton>("update").isEnabled());
    EXPECT_THROW(control->Get("GetNothing"), base::ComponentError);
    EXPECT_THROW(control->Get("GetUpdateButton").ToObject()->Get("Colour"), base::ComponentError);
}

TEST_F(PropertiesTest, AButtonHeldBeyondItsControlDoesNoHarm) {
    Open(layout);
    const auto button = control->Get("GetLaunchButton").ToObject();
    control.reset();
    button->Set("Enabled", base::Value(false));
    EXPECT_FALSE(button->Get("Enabled").ToBoolean());
}

TEST_F(PropertiesTest, LaunchesTheToolThatItShows) {
    Open(layout);
    Click(Part<QPushButton>("launch"));
    ASSERT_EQ(peer.Of("LaunchTool").size(), 1U);
    EXPECT_EQ(peer.Of("LaunchTool")[0].parameters.at("ToolName"), "Layout");
}

TEST_F(PropertiesTest, UpdateAndCloseSendTheirRequests) {
    Open(layout);
    QTest::keyClick(&Part<QPushButton>("update"), Qt::Key_Space);
    EXPECT_EQ(peer.Of("SaveToolProperties").size(), 1U);
    Click(Part<QPushButton>("close"));
    EXPECT_EQ(peer.Of("CancelToolProperties").size(), 1U);
}

TEST_F(PropertiesTest, ThePanelMayGoWhileItsRequestIsCarriedOut) {
    Open(layout);
    peer.doings["LaunchTool"] = [this] { panel.reset(); };
    Part<QPushButton>("launch").click();
    EXPECT_FALSE(panel);
    panel.reset(control->Widget());
    panel->show();
    peer.doings["Initialize"] = [this] { panel.reset(); };
    control->Refresh();
    EXPECT_FALSE(panel);
}

TEST_F(PropertiesTest, TellsWhyAToolCannotBeUsed) {
    peer.problems["Layout"] = "<i>C:\\QUARRA\\Tobr43\\Tobr43.exe</i> is missing";
    Open(layout);
    EXPECT_TRUE(Part<QLabel>("problem").isVisible());
    EXPECT_EQ(Part<QLabel>("problem").text(),
              "This program cannot be used: <i>C:\\QUARRA\\Tobr43\\Tobr43.exe</i> is missing");
    EXPECT_EQ(Part<QLabel>("problem").textFormat(), Qt::PlainText);
    EXPECT_EQ(Unnamed(*panel), QStringList());
    TakePictures(*panel, "properties-problem");
    peer.problems.clear();
    control->Refresh();
    EXPECT_FALSE(Part<QLabel>("problem").isVisible());
}

TEST_F(PropertiesTest, WithoutAToolItSaysSo) {
    Open("");
    EXPECT_FALSE(Part<QPushButton>("launch").isEnabled());
    EXPECT_FALSE(Part<QPushButton>("update").isEnabled());
    EXPECT_FALSE(Part<QLabel>("title").isVisible());
    TakePictures(*panel, "properties-empty");
    peer.replies["GetToolProperties"] = layout;
    control->Refresh();
    EXPECT_EQ(Part<QLabel>("title").text(), "Layout");
    EXPECT_TRUE(Part<QPushButton>("launch").isEnabled());
}

TEST_F(PropertiesTest, AnAnswerThatIsShownAlreadyLeavesEverythingAsItIs) {
    Open(layout);
    QPointer<QLineEdit> field;
    for (QLineEdit* one : panel->findChildren<QLineEdit*>())
        if (one->accessibleName() == "Program") field = one;
    ASSERT_TRUE(field);
    field->setFocus();
    field->setSelection(3, 6);
    control->Refresh();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->selectedText(), "QUARRA");
    EXPECT_TRUE(field->hasFocus());

    peer.texts[2] = "Fassung";
    control->Retranslate();
    EXPECT_EQ(Value("Fassung"), "4.2.1") << "in another language it is filled anew";
    peer.replies["GetToolProperties"] = "<Tool Name=\"Layout\" version=\"5\"/>";
    control->Refresh();
    EXPECT_EQ(Value("Fassung"), "5");
}

TEST_F(PropertiesTest, AnUnreadableRecordIsTold) {
    Open("<Tool Name=");
    bool told = false;
    for (const QLabel* label : panel->findChildren<QLabel*>())
        told = told || label->text().contains("cannot be read");
    EXPECT_TRUE(told);
    EXPECT_FALSE(Part<QPushButton>("launch").isEnabled());
}

TEST_F(PropertiesTest, LongAndMarkedUpValuesStayPlainAndInTheirPlace) {
    Open("<Tool Name=\"&lt;b&gt;X&lt;/b&gt; &amp;Y\" Path=\"" + std::string(5000, 'p') + "\"/>");
    EXPECT_EQ(Part<QLabel>("title").text(), "<b>X</b> &Y");
    EXPECT_EQ(Value("Program").size(), 5000);
    EXPECT_EQ(panel->width(), 480);
}

TEST_F(PropertiesTest, HiddenItAsksNothing) {
    Open(layout);
    panel->hide();
    peer.sent.clear();
    control->Refresh();
    control->Retranslate();
    EXPECT_THAT(peer.Types(), testing::IsEmpty());
}

} // namespace desktop::test
