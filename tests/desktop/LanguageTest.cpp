#include "tests/desktop/DesktopFixture.h"

namespace desktop {
namespace {

class LanguageTest : public DesktopTest {
protected:
    void Switch(const char* language) {
        ActionOf(language)->trigger();
        Settle();
    }
    /// The component makes menus and buttons anew.
    void ShowAll() {
        window->Tasks().Click(QStringLiteral("tskShowAll"));
        Settle();
    }
    void ExpectCaptions(const QString& options, const QString& prefix) {
        EXPECT_EQ(ActionOf("mnuToolOptions")->text(), options);
        EXPECT_EQ(ActionOf("mnuLAY43")->statusTip(), prefix + QStringLiteral("Layout"));
        auto* button = Find<QToolBar>("toolBar")->findChild<QAction*>(QStringLiteral("btnLAY43"));
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->toolTip(), prefix + QStringLiteral(" Layout"));
    }
    void ExpectEnglish() { ExpectCaptions(QStringLiteral("&Options..."), QStringLiteral("Program:")); }
    void ExpectGerman() { ExpectCaptions(QStringLiteral("&Optionen..."), QStringLiteral("Programm:")); }
    void ExpectMarked(const QString& marked) {
        for (const char* language : {"language1031", "language1033"})
            EXPECT_EQ(ActionOf(language)->isChecked(), marked == QLatin1String(language)) << language;
    }
};

TEST_F(LanguageTest, CaptionsThatWereMadeAnewAfterASwitchAreSwitchedBack) {
    Open();
    ExpectEnglish();
    Switch("language1031");
    ExpectGerman();
    ShowAll();
    ExpectGerman();
    Switch("language1033");
    ExpectEnglish();
    ShowAll();
    Switch("language1031");
    ExpectGerman();
}

TEST_F(LanguageTest, CaptionsOfAStartInAnotherLanguageAreSwitchedToo) {
    Open("1031");
    ExpectGerman();
    Switch("language1033");
    ExpectEnglish();
    ShowAll();
    ExpectEnglish();
    Switch("language1031");
    ExpectGerman();
}

TEST_F(LanguageTest, TheMarkStaysWhenTheHostDeclinesTheSwitch) {
    Open();
    ExpectMarked(QStringLiteral("language1033"));
    bridge->Host().SetLanguageAnswer("");
    Switch("language1031");
    ASSERT_EQ(bridge->Model().Language(), "1033");
    ExpectMarked(QStringLiteral("language1033"));
    bridge->Host().FailNext("SwitchLanguage");
    Switch("language1031");
    ASSERT_EQ(bridge->Model().Language(), "1033");
    ExpectMarked(QStringLiteral("language1033"));
    Switch("language1031");
    ExpectMarked(QStringLiteral("language1031"));
}

} // namespace
} // namespace desktop
