#include "tests/options/OptionsFixture.h"

#include "options/OptionErrors.h"

#include <fstream>
#include <gmock/gmock.h>

namespace kvtm::test {
namespace {

constexpr std::int32_t noSettings = base::errors::ObjectErrorBase + optionError::NoLocaleSettings;

class Locale : public OptionsTest {
protected:
    void WriteHostSettings(std::string_view text) {
        std::ofstream(installation.Folder() / "host.ini") << text;
    }
};

TEST_F(Locale, IsReadFromTheHostsSettings) {
    LoadWithTools("");
    EXPECT_EQ(Probe().FontName(), "Sans");
    EXPECT_EQ(Probe().FontSize(), "9");
    EXPECT_EQ(Probe().LocaleId(), "1033");
}

TEST_F(Locale, WithoutFontNameOrSizeIsReported) {
    for (const std::string_view font : {"FontName=Sans\n", "FontSize=9\n", ""}) {
        WriteHostSettings("[Framework]\nLocaleID=1031\n" + std::string(font));
        LoadWithTools("");
        EXPECT_EQ(ClaimReport("GetLocaleProps").number, noSettings);
        EXPECT_EQ(Probe().LocaleId(), "1031"); // taken before the complaint
        host.reset();
    }
}

TEST_F(Locale, WithoutSettingsIsReportedAndKeepsWhatItHad) {
    LoadWithTools("");
    host->FailNext("GetSettings");
    Probe().GetLocaleProps();
    EXPECT_EQ(ClaimReport("GetLocaleProps").number, 1001);
    EXPECT_EQ(Probe().FontName(), "Sans");
}

TEST_F(Locale, ASwitchThatTheFrameworkAnswersIsToldAndKept) {
    LoadWithTools("");
    host->SetLanguageAnswer("done");
    Probe().SetNewLang("1031");
    const Box box = ClaimBox();
    EXPECT_EQ(box.text, "text 1034");
    EXPECT_EQ(box.title, "text 1035");
    EXPECT_EQ(box.style, 64);
    EXPECT_EQ(Probe().LocaleId(), "1031");
}

TEST_F(Locale, AnEmptyAnswerIsToldAndKeepsTheLanguage) {
    LoadWithTools("");
    host->SetLanguageAnswer("");
    Probe().SetNewLang("1031");
    const Box box = ClaimBox();
    EXPECT_EQ(box.text, "text 1036");
    EXPECT_EQ(box.title, "text 1035");
    EXPECT_EQ(box.style, 64);
    EXPECT_EQ(Probe().LocaleId(), "1033");
}

TEST_F(Locale, ASwitchThatFailsIsReported) {
    LoadWithTools("");
    host->FailNext("SwitchLanguage");
    Probe().SetNewLang("1031");
    ClaimReport("cToolMain.SetNewLang");
    EXPECT_EQ(Probe().LocaleId(), "1033");
    host->SetLanguageAnswer("done");
    host->FailNext("ShowMessage");
    Probe().SetNewLang("1031");
    ClaimReport("cToolMain.SetNewLang");
    EXPECT_EQ(Probe().LocaleId(), "1033"); // kept only after the message
}

} // namespace
} // namespace kvtm::test
