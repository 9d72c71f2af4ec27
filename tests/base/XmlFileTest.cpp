#include "base/Text.h"
#include "base/XmlDocument.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestFolder.h"

#include <string>

namespace {

using base::XmlDocument;
using namespace std::string_literals;

std::string Utf16(std::string_view text, bool isBigEndian) {
    std::string bytes;
    for (const char16_t unit : base::ToUtf16(text)) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit);
        bytes += isBigEndian ? high : low;
        bytes += isBigEndian ? low : high;
    }
    return bytes;
}

class XmlFile : public testing::Test {
protected:
    std::string TextOf(std::string_view bytes) {
        XmlDocument document;
        document.LoadFile(folder.Write("file.xml", bytes));
        return document.Root().Text();
    }
    Refusal RefusalOfBytes(std::string_view bytes) {
        return RefusalOf([&] { TextOf(bytes); });
    }

    TestFolder folder;
};

TEST_F(XmlFile, IsReadInUtf8) {
    EXPECT_EQ(TextOf("<a>é€😀</a>"), "é€😀");
    EXPECT_EQ(TextOf("\xEF\xBB\xBF<a>é</a>"), "é");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='utf-8'?><a>é</a>"), "é");
    EXPECT_EQ(TextOf("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a>é</a>"), "é");
}

TEST_F(XmlFile, IsReadInUtf16) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>é€😀</a>";
    EXPECT_EQ(TextOf("\xFF\xFE" + Utf16(text, false)), "é€😀");
    EXPECT_EQ(TextOf("\xFE\xFF" + Utf16(text, true)), "é€😀");
    EXPECT_EQ(TextOf("\xFF\xFE" + Utf16("<a>é</a>", false)), "é");
    EXPECT_EQ(TextOf(Utf16(text, false)), "é€😀");
    EXPECT_EQ(TextOf(Utf16(text, true)), "é€😀");
}

TEST_F(XmlFile, IsReadInItsDeclaredEncoding) {
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>gr\xFC\xDF \x80</a>"), "grüß \u0080");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding = \"windows-1252\" ?><a>\x80 \x9F\xE9</a>"), "€ Ÿé");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='us-ascii'?><a>abc&#233;</a>"), "abcé");
}

TEST_F(XmlFile, IsWrittenAsUtf8WhateverItWas) {
    XmlDocument document;
    document.LoadFile(
        folder.Write("latin.xml", "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a b='\xFC'/>"));
    EXPECT_EQ(document.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b=\"ü\"/>");
}

TEST_F(XmlFile, IsRefusedInEncodingsThatAreNotKnown) {
    for (const std::string& encoding : {"UTF-7"s, "EBCDIC-CP-US"s, "UTF-16"s, "UCS-4"s, "SHIFT_JIS"s,
                                        "//TRANSLIT"s, "../../lib/evil"s, std::string(100'000, 'x')}) {
        const Refusal refusal =
            RefusalOfBytes("<?xml version='1.0' encoding='" + encoding + "'?><a>\x1B$B</a>");
        EXPECT_EQ(refusal.number, base::errors::InvalidCall) << encoding.substr(0, 20);
        EXPECT_NE(refusal.description.find("line 1, column 31: the encoding"), std::string::npos)
            << refusal.description;
        EXPECT_LT(refusal.description.size(), 400u);
    }
}

TEST_F(XmlFile, IsRefusedForBytesThatItsEncodingDoesNotHave) {
    EXPECT_NE(RefusalOfBytes("<?xml version='1.0' encoding='ASCII'?>\n<a>\xE9</a>")
                  .description.find("line 2, column 4: "),
              std::string::npos);
    EXPECT_NE(RefusalOfBytes("\xFF\xFE" + Utf16("<a>\n", false) + "\x3D\xD8"s + Utf16("</a>", false))
                  .description.find("line 2, column 1: half a UTF-16 surrogate pair"),
              std::string::npos);
    EXPECT_NE(
        RefusalOfBytes("\xFF\xFE" + Utf16("<a/>", false) + " ").description.find("line 1, column 5: half"),
        std::string::npos);
    EXPECT_NE(RefusalOfBytes("<a>\xE9</a>").description.find("line 1, column 4: "), std::string::npos);
    EXPECT_NE(RefusalOfBytes("\xFE\xFF\xDC\x00"s).description.find("line 1, column 1: half"),
              std::string::npos);
}

TEST_F(XmlFile, IsRefusedWithItsNameAndPlace) {
    const auto file = folder.Write("OPTIONS.XML", "<Options>\n  <Tool>\n</Options>");
    const Refusal refusal = RefusalOf([&] { XmlDocument().LoadFile(file); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_TRUE(refusal.description.starts_with(file.string() + ": line 3, column 11: "))
        << refusal.description;
}

TEST_F(XmlFile, IsRefusedWhenItIsEmpty) {
    EXPECT_NE(RefusalOfBytes("").description.find("line 1, column 1: the text is empty"), std::string::npos);
    EXPECT_NE(RefusalOfBytes("\xFF\xFE"s).description.find("the text is empty"), std::string::npos);
}

TEST_F(XmlFile, IsNotFoundWhenItIsMissing) {
    for (const auto& path : {folder.Path() / "missing.xml", folder.Path() / "no folder" / "missing.xml",
                             folder.Write("plain", "<a/>") / "below.xml", std::filesystem::path()}) {
        const Refusal refusal = RefusalOf([&] { XmlDocument().LoadFile(path); });
        EXPECT_EQ(refusal.number, base::errors::FileNotFound) << path;
        EXPECT_NE(refusal.description.find(path.string()), std::string::npos);
    }
}

TEST_F(XmlFile, IsNoFolderAndNoDevice) {
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(folder.Path()); }).number, base::errors::FileAccess);
    const std::filesystem::path device = "/dev/zero";
    if (!std::filesystem::exists(device)) GTEST_SKIP() << "this system has no such device";
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(device); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, CannotBeReadThroughALinkToItself) {
    const std::filesystem::path link = folder.Path() / "link.xml";
    std::filesystem::create_symlink(link, link);
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(link); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, CannotBeReadWithoutPermission) {
    const auto file = folder.Write("secret.xml", "<a/>");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    const OrdinaryUser user(folder.Path());
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(file); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, IsRefusedWhenItIsFarTooLarge) {
    const auto file = folder.Write("large.xml", "<a/>");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(file); }).number, base::errors::InvalidCall);
}

TEST_F(XmlFile, LeavesTheDocumentAsItWasWhenItIsRefused) {
    XmlDocument document;
    document.LoadText("<a/>");
    RefusalOf([&] { document.LoadFile(folder.Path() / "missing.xml"); });
    RefusalOf([&] { document.LoadFile(folder.Write("file.xml", "<b")); });
    EXPECT_EQ(document.Text(), "<a/>");
}

TEST_F(XmlFile, MayHaveAnyName) {
    XmlDocument document;
    document.LoadFile(folder.Write("grün 😀 %20 &.xml", "<a/>"));
    EXPECT_EQ(document.Text(), "<a/>");
}

} // namespace
