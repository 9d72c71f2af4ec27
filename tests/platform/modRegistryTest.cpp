#include "platform/modRegistry.h"

#include "platform/Services.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace platform;
using namespace platform::modRegistry;

namespace {

constexpr std::int32_t ErrorBase = base::errors::ObjectErrorBase;

class modRegistryTest : public testing::Test {
protected:
    modRegistryTest() : variable(InstallationVariable, folder.Path().c_str()) {
        WriteRegistry("\"BinPath\"=\"C:\\\\QUARRA\\\\Bin\"\r\n\"Brand\"=\"Größe\"\r\n");
        std::filesystem::create_directories(folder / "drive_c/QUARRA/Bin");
        services = Services::Create();
    }
    void WriteRegistry(const std::string& lines) const {
        folder.Write("registry.reg", "Windows Registry Editor Version 5.00\r\n\r\n"
                                     "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane\\Arvon11]\r\n" +
                                         lines);
    }
    void WriteUi(const std::string& content) const { folder.Write(UiFile, content); }
    std::string Ui() const { return folder.Read(UiFile); }

    std::string Get(std::string_view name, std::string_view fallback = "default",
                    std::string_view subKey = FrameworkKey) const {
        return getRegistryStringValue(services, HkeyLocalMachine, subKey, name, fallback);
    }
    bool Set(std::string_view name, std::string_view value, std::string_view subKey = FrameworkKey) const {
        return setRegistryStringValue(services, HkeyLocalMachine, subKey, name, value);
    }

    static constexpr const char* UiFile = "drive_c/QUARRA/Bin/UIKeys.txt";
    TestFolder folder;
    TestVariable variable;
    Services services;
};

TEST_F(modRegistryTest, ReadsAValueAsText) {
    EXPECT_EQ(Get("BinPath"), "C:\\QUARRA\\Bin");
    EXPECT_EQ(Get("brand"), "Größe");
}

TEST_F(modRegistryTest, AnswersTheDefaultForAMissingValue) {
    EXPECT_EQ(Get("Nothing"), "default");
    EXPECT_EQ(Get("Nothing", ""), "");
}

TEST_F(modRegistryTest, ReadsUpTo254CharactersWhole) {
    WriteRegistry("\"fits\"=\"" + std::string(254, 'x') + "\"\r\n\"long\"=\"" + std::string(255, 'x') +
                  "\"\r\n\"umlauts\"=\"" +
                  [] {
                      std::string text;
                      for (int i = 0; i < 254; ++i)
                          text += "ä"; // two bytes here, one in the registry
                      return text;
                  }() +
                  "\"\r\n");
    EXPECT_EQ(Get("fits"), std::string(254, 'x'));
    EXPECT_EQ(Get("long"), "default");
    EXPECT_EQ(Get("umlauts").size(), 508u);
}

TEST_F(modRegistryTest, DropsTheLastByteWhateverItIs) {
    WriteRegistry("\"bare\"=hex(1):61,00,62,00,63,00\r\n\"empty\"=hex(1):\r\n\"number\"=dword:00636261\r\n");
    EXPECT_EQ(Get("bare"), "ab");
    EXPECT_EQ(Get("empty"), "");
    EXPECT_EQ(Get("number"), "abc") << "the kind of the value is not looked at";
}

TEST_F(modRegistryTest, FailsToReadFromAKeyThatIsMissing) {
    const Refusal refusal = RefusalOf([&] { Get("x", "default", "SOFTWARE\\None\\"); });
    EXPECT_EQ(refusal.number, ErrorBase + 2001);
    EXPECT_EQ(refusal.source, "ArvonU110.getRegistryStringValue");
    EXPECT_NE(refusal.description.find("HKEY_LOCAL_MACHINE\\SOFTWARE\\None\\"), std::string::npos);
    EXPECT_NE(refusal.description.find(": it does not exist (result 2)"), std::string::npos)
        << refusal.description;
}

TEST_F(modRegistryTest, StoresTextWithoutItsNul) {
    EXPECT_TRUE(Set("New", "abc"));
    RegistryKey key = 0;
    ASSERT_EQ(services.registry->OpenKey(HkeyLocalMachine, FrameworkKey, KeyQueryValue, key), 0);
    std::string buffer(10, ' ');
    std::uint32_t type = 0, size = 10;
    ASSERT_EQ(services.registry->QueryValue(key, "New", type, buffer, size), 0);
    EXPECT_EQ(type, RegSz);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(buffer, "abc       ");
}

TEST_F(modRegistryTest, StoresTextInAnsiForm) {
    EXPECT_TRUE(Set("Größe", "ä€語"));
    RegistryKey key = 0;
    ASSERT_EQ(services.registry->OpenKey(HkeyLocalMachine, FrameworkKey, KeyQueryValue, key), 0);
    std::string buffer(10, ' ');
    std::uint32_t type = 0, size = 10;
    ASSERT_EQ(services.registry->QueryValue(key,
                                            "Gr\xF6\xDF"
                                            "e",
                                            type, buffer, size),
              0);
    EXPECT_EQ(buffer.substr(0, size), "\xE4\x80?");
}

TEST_F(modRegistryTest, FailsToWriteBelowAKeyThatIsMissing) {
    const Refusal refusal = RefusalOf([&] { Set("x", "y", "SOFTWARE\\None"); });
    EXPECT_EQ(refusal.number, ErrorBase + 2004);
    EXPECT_EQ(refusal.source, "ArvonU110.setRegistryStringValue");
    EXPECT_EQ(RefusalOf([&] { Get("x", "", "SOFTWARE\\None"); }).number, ErrorBase + 2001)
        << "it was not created";
}

TEST_F(modRegistryTest, FailsWithTheResultOfAWriteThatIsRefused) {
    const Refusal refusal = RefusalOf([&] { Set("a\nb", "y"); });
    EXPECT_EQ(refusal.number, ErrorBase + 2003);
    EXPECT_NE(refusal.description.find("a\nb"), std::string::npos);
}

TEST_F(modRegistryTest, SendsTheUiKeyToItsFile) {
    WriteUi("ReportsLogoFile=C:\\logo.jpg\r\n");
    EXPECT_EQ(Get("ReportsLogoFile", "x", UiValueKey), "C:\\logo.jpg");
    EXPECT_FALSE(Set("ReportsLogoFile", "C:\\new.jpg", UiValueKey)) << "false even when written";
    EXPECT_EQ(Ui(), "ReportsLogoFile=C:\\new.jpg\r\n");
    EXPECT_EQ(getRegistryStringValue(services, 0x1234, UiValueKey, "ReportsLogoFile", "x"), "C:\\new.jpg")
        << "the hive does not matter";
}

TEST_F(modRegistryTest, HasNoDefaultForTheUiKey) {
    WriteUi("Other=1\r\n");
    EXPECT_EQ(Get("ReportsLogoFile", "x", UiValueKey), "");
}

TEST_F(modRegistryTest, SendsOtherSpellingsOfTheUiKeyToTheRegistry) {
    WriteUi("Value=file\r\n");
    for (const char* subKey : {"software\\Veltrane\\UI\\", "SOFTWARE\\Veltrane\\UI"})
        EXPECT_EQ(RefusalOf([&] { Get("Value", "x", subKey); }).number, ErrorBase + 2001) << subKey;
    folder.Write("registry.reg",
                 folder.Read("registry.reg") +
                     "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane\\UI]\r\n\"Value\"=\"registry\"\r\n");
    for (const char* subKey : {"software\\Veltrane\\UI\\", "SOFTWARE\\Veltrane\\UI"})
        EXPECT_EQ(Get("Value", "x", subKey), "registry");
    EXPECT_EQ(Get("Value", "x", UiValueKey), "file");
}

TEST_F(modRegistryTest, TakesEverythingBehindTheFirstEqualsSign) {
    WriteUi("ReportsLogoFile=C:\\a=b.jpg\r\nBlank= x \r\nNone=\r\n");
    EXPECT_EQ(getUIValue(services, "ReportsLogoFile"), "C:\\a=b.jpg");
    EXPECT_EQ(getUIValue(services, "Blank"), " x ");
    EXPECT_EQ(getUIValue(services, "None"), "");
}

TEST_F(modRegistryTest, MatchesTheBeginningOfLines) {
    WriteUi("Logo=1\r\nLogoFile=2\r\n");
    EXPECT_EQ(getUIValue(services, "Logo"), "1");
    EXPECT_EQ(getUIValue(services, "LogoF"), "2");
    EXPECT_EQ(getUIValue(services, "logo"), "");
    EXPECT_EQ(getUIValue(services, "ogo"), "");
    EXPECT_FALSE(setUIValue(services, "Logo", "9"));
    EXPECT_EQ(Ui(), "Logo=9\r\nLogoFile=9\r\n");
}

TEST_F(modRegistryTest, TakesALongerKeyThatComesFirst) {
    WriteUi("ReportsLogoFile=a\r\nReports=b\r\n");
    EXPECT_EQ(getUIValue(services, "Reports"), "a");
}

TEST_F(modRegistryTest, MatchesOnlyLinesWithAnEqualsSign) {
    WriteUi("Logo\r\n; Logo=0\r\n Logo=1\r\nLogo 2 = 3\r\n");
    EXPECT_EQ(getUIValue(services, "Logo"), " 3");
    EXPECT_FALSE(setUIValue(services, "Logo", "x"));
    EXPECT_EQ(Ui(), "Logo\r\n; Logo=0\r\n Logo=1\r\nLogo 2 =x\r\n");
}

TEST_F(modRegistryTest, MatchesAKeyThatReachesPastTheEqualsSign) {
    WriteUi("a=b=c\r\n");
    EXPECT_EQ(getUIValue(services, "a=b"), "b=c");
    EXPECT_EQ(getUIValue(services, ""), "b=c") << "every line begins with nothing";
}

TEST_F(modRegistryTest, WritesLinesBackWithTheirEndsNormalised) {
    WriteUi("one\nA=1\r\n\r\ntwo\rlast");
    EXPECT_FALSE(setUIValue(services, "absent", "x"));
    EXPECT_EQ(Ui(), "one\r\nA=1\r\n\r\ntwo\r\nlast\r\n");
    EXPECT_EQ(getUIValue(services, "A"), "1");
    WriteUi("");
    EXPECT_FALSE(setUIValue(services, "A", "x"));
    EXPECT_EQ(Ui(), "");
}

TEST_F(modRegistryTest, KeepsEveryByteThatItDoesNotWrite) {
    std::string line;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n') line += static_cast<char>(byte);
    WriteUi(line + "\r\nK=\xE4\r\n");
    EXPECT_EQ(getUIValue(services, "K"), "ä");
    EXPECT_FALSE(setUIValue(services, "K", "ö€"));
    EXPECT_EQ(Ui(), line + "\r\nK=\xF6\x80\r\n");
}

TEST_F(modRegistryTest, MatchesNoLineByAKeyThatTheCodePageLacks) {
    WriteUi("?=1\r\n\xE4=2\r\n");
    EXPECT_EQ(getUIValue(services, "語"), "");
    EXPECT_EQ(getUIValue(services, "ä"), "2");
    EXPECT_FALSE(setUIValue(services, "語", "x"));
    EXPECT_EQ(Ui(), "?=1\r\n\xE4=2\r\n");
}

TEST_F(modRegistryTest, WritesUpTo101Lines) {
    std::string lines;
    for (int i = 0; i < 101; ++i)
        lines += "K" + std::to_string(i) + "=1\r\n";
    WriteUi(lines);
    EXPECT_FALSE(setUIValue(services, "K100", "2"));
    EXPECT_EQ(getUIValue(services, "K100"), "2");

    WriteUi(lines + "one more");
    const Refusal refusal = RefusalOf([&] { setUIValue(services, "K0", "2"); });
    EXPECT_EQ(refusal.number, base::errors::OutOfRange);
    EXPECT_NE(refusal.description.find("102"), std::string::npos) << refusal.description;
    EXPECT_EQ(Ui(), lines + "one more");
    EXPECT_EQ(getUIValue(services, "K100"), "1") << "reading has no such limit";
}

TEST_F(modRegistryTest, NeedsTheBinFolder) {
    for (const char* lines : {"", "\"BinPath\"=\"\"\r\n"}) {
        WriteRegistry(lines);
        const Refusal get = RefusalOf([&] { getUIValue(services, "K"); });
        EXPECT_EQ(get.number, 0);
        EXPECT_EQ(get.source, "ArvonU110.getUIValue");
        EXPECT_EQ(get.description, "Unable to read BinPath");
        const Refusal set = RefusalOf([&] { setUIValue(services, "K", "1"); });
        EXPECT_EQ(set.number, 0);
        EXPECT_EQ(set.source, "ArvonU110.setUIValue");
        EXPECT_EQ(set.description, "Unable to read BinPath");
    }
}

TEST_F(modRegistryTest, NeedsTheFrameworkKey) {
    folder.Write("registry.reg", "Windows Registry Editor Version 5.00\r\n");
    EXPECT_EQ(RefusalOf([&] { getUIValue(services, "K"); }).number, ErrorBase + 2001);
}

TEST_F(modRegistryTest, NeedsTheFile) {
    EXPECT_EQ(RefusalOf([&] { getUIValue(services, "K"); }).number, base::errors::FileNotFound);
    EXPECT_EQ(RefusalOf([&] { setUIValue(services, "K", "1"); }).number, base::errors::FileNotFound);
    EXPECT_FALSE(std::filesystem::exists(folder / UiFile));
    WriteRegistry("\"BinPath\"=\"C:\\\\nowhere\"\r\n");
    EXPECT_EQ(RefusalOf([&] { getUIValue(services, "K"); }).number, base::errors::PathNotFound);
    WriteRegistry("\"BinPath\"=\"Z:\\\\nowhere\"\r\n");
    EXPECT_EQ(RefusalOf([&] { getUIValue(services, "K"); }).number, base::errors::PathNotFound);
}

TEST_F(modRegistryTest, ReadsTheFileAnewEachTime) {
    WriteUi("K=1\r\n");
    EXPECT_EQ(getUIValue(services, "K"), "1");
    WriteUi("K=2\r\n");
    EXPECT_EQ(getUIValue(services, "K"), "2");
}

/// Counts open keys.
class CountingRegistry : public Registry {
public:
    int open = 0;
    std::int32_t queryAnswer = registryResult::Success;
    std::string seenBuffer;
    std::uint32_t seenSize = 0, seenType = 0, reportedSize = 0;

    std::int32_t OpenKey(std::uint32_t, std::string_view, std::uint32_t, RegistryKey& key) override {
        key = 1;
        ++open;
        return registryResult::Success;
    }
    std::int32_t QueryValue(RegistryKey, std::string_view, std::uint32_t& type, std::span<char> buffer,
                            std::uint32_t& size) override {
        seenBuffer.assign(buffer.begin(), buffer.end());
        seenSize = size;
        seenType = type;
        size = reportedSize;
        return queryAnswer;
    }
    std::int32_t SetValue(RegistryKey, std::string_view, std::uint32_t, std::span<const char>) override {
        throw base::ComponentError(base::errors::FileAccess, "x", "disk full");
    }
    std::int32_t CloseKey(RegistryKey) override {
        --open;
        return registryResult::Success;
    }
};

TEST_F(modRegistryTest, ClosesItsKeyHoweverItEnds) {
    auto counting = std::make_unique<CountingRegistry>();
    CountingRegistry& registry = *counting;
    services.registry = std::move(counting);
    for (const std::int32_t answer : {registryResult::Success, registryResult::MoreData}) {
        registry.queryAnswer = answer;
        Get("x");
        EXPECT_EQ(registry.open, 0);
    }
    EXPECT_EQ(RefusalOf([&] { Set("x", "y"); }).description, "disk full");
    EXPECT_EQ(registry.open, 0);
}

TEST_F(modRegistryTest, QueriesInto255Blanks) {
    auto counting = std::make_unique<CountingRegistry>();
    CountingRegistry& registry = *counting;
    services.registry = std::move(counting);
    registry.reportedSize = 4;
    EXPECT_EQ(Get("x"), "   ") << "what the query did not write";
    EXPECT_EQ(registry.seenBuffer, std::string(255, ' '));
    EXPECT_EQ(registry.seenSize, 255u);
    EXPECT_EQ(registry.seenType, RegSz);
    registry.reportedSize = 0xFFFFFFFF; // a size past the buffer must not be believed
    EXPECT_EQ(Get("x"), std::string(255, ' '));
}

} // namespace
