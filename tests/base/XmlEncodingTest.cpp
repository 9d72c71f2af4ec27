#include "base/XmlEncoding.h"

#include "base/Text.h"
#include "base/TextConverter.h"
#include "base/XmlDocument.h"
#include "tests/base/XmlFileFixture.h"

#include <string>
#include <utility>
#include <vector>

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

/// UTF-8 text in another encoding.
std::string Encoded(std::string_view text, const std::string& encoding) {
    const base::TextConverter converter(encoding, "UTF-8");
    return converter.Run(text, [&](std::string_view rest, std::string&) {
        ADD_FAILURE() << encoding << " has no \"" << rest << '"';
        return rest.size();
    });
}

/// A document whose declaration names the encoding that it is in.
std::string Declared(const std::string& encoding, std::string_view content) {
    const std::string declaration = "<?xml version='1.0' encoding='" + encoding + "'?>";
    // the library writes "<" of UTF-7 in a form that no declaration may have
    if (encoding == "UTF-7") return declaration + Encoded(content, encoding);
    return Encoded(declaration + std::string(content), encoding);
}

class EncodedXmlFile : public XmlFileFixture {};

TEST_F(EncodedXmlFile, IsReadInUtf8) {
    EXPECT_EQ(TextOf("<a>é€😀</a>"), "é€😀");
    EXPECT_EQ(TextOf("\xEF\xBB\xBF<a>é</a>"), "é");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='utf-8'?><a>é</a>"), "é");
    EXPECT_EQ(TextOf("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a>é</a>"), "é");
}

TEST_F(EncodedXmlFile, IsReadInUtf16) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>é€😀</a>";
    EXPECT_EQ(TextOf("\xFF\xFE" + Utf16(text, false)), "é€😀");
    EXPECT_EQ(TextOf("\xFE\xFF" + Utf16(text, true)), "é€😀");
    EXPECT_EQ(TextOf("\xFF\xFE" + Utf16("<a>é</a>", false)), "é");
    EXPECT_EQ(TextOf(Utf16(text, false)), "é€😀");
    EXPECT_EQ(TextOf(Utf16(text, true)), "é€😀");
}

TEST_F(EncodedXmlFile, IsReadInUtf32) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-32\"?><a>é€😀</a>";
    for (const char* encoding : {"UTF-32LE", "UTF-32BE"}) {
        EXPECT_EQ(TextOf(Encoded("\uFEFF" + text, encoding)), "é€😀") << encoding;
        EXPECT_EQ(TextOf(Encoded(text, encoding)), "é€😀") << encoding;
    }
}

TEST_F(EncodedXmlFile, IsReadInItsDeclaredEncoding) {
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>gr\xFC\xDF \x80</a>"), "grüß \u0080");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding = \"windows-1252\" ?><a>\x80 \x9F\xE9</a>"), "€ Ÿé");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='us-ascii'?><a>abc&#233;</a>"), "abcé");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='windows-1250'?><a>\xA3\xF3"
                     "d\x9F</a>"),
              "Łódź");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='windows-1251'?><a>\xCA\xEB\xFE\xF7</a>"), "Ключ");
    for (const auto& [encoding, text] :
         std::vector<std::pair<std::string, std::string>>{{"ISO-8859-2", "Łódź"},
                                                          {"iso-8859-15", "€ Žœ"},
                                                          {"KOI8-R", "Ключ"},
                                                          {"CP850", "Größe ½"},
                                                          {"Shift_JIS", "テスト"},
                                                          {"EUC-JP", "日本"},
                                                          {"ISO-2022-JP", "日本 <b> 語"},
                                                          {"GB18030", "中文 😀"},
                                                          {"Big5", "中文"},
                                                          {"EUC-KR", "한국"},
                                                          {"TIS-620", "ไทย"},
                                                          {"windows-1255", "שלום"},
                                                          {"UTF-7", "é +€"},
                                                          {"macintosh", "äöü"}}) {
        EXPECT_EQ(TextOf(Declared(encoding, "<a>" + base::Replace(text, "<b>", "&lt;b&gt;") + "</a>")), text)
            << encoding;
    }
}

TEST_F(EncodedXmlFile, IsReadInEbcdic) {
    for (const char* encoding : {"IBM037", "ebcdic-cp-us", "IBM500", "IBM1141", "CP1047"})
        EXPECT_EQ(TextOf(Declared(encoding, "<a b='[]'>Größe!</a>")), "Größe!") << encoding;
    EXPECT_NE(RefusalOfBytes(Encoded("<?xml version='1.0'?><a/>", "IBM037")).description.find("EBCDIC"),
              std::string::npos);
    EXPECT_NE(RefusalOfBytes(Encoded("<?xml version='1.0' encoding='ISO-8859-1'?><a/>", "IBM037"))
                  .description.find("is not that of these bytes"),
              std::string::npos);
    EXPECT_NE(RefusalOfBytes("\x4C\x6F\xA7\x94").description.find("EBCDIC"), std::string::npos);
    EXPECT_NE(RefusalOfBytes("\x4C\x6F\xA7\x94" + std::string(5000, '\x25')).description.find("EBCDIC"),
              std::string::npos);
}

TEST_F(EncodedXmlFile, GivesBytesWithoutACharacterTheControlsThatTheSystemGivesThem) {
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='windows-1252'?><a>\x81\x8D\x8F\x90\x9D</a>"),
              "\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(TextOf("<?xml version='1.0' encoding='cp1250'?><a>\x83</a>"), "\u0083");
    EXPECT_EQ(RefusalOfBytes("<?xml version='1.0' encoding='windows-1253'?><a>\xFF</a>").number,
              base::errors::InvalidCall);
}

TEST_F(EncodedXmlFile, IsWrittenAsUtf8WhateverItWas) {
    const std::string utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b=\"ü\"/>";
    for (const char* encoding : {"ISO-8859-1", "windows-1250", "UTF-16LE", "UTF-32BE", "IBM037"}) {
        XmlDocument document;
        document.LoadFile(folder.Write("file.xml", Declared(encoding, "<a b='ü'/>")));
        EXPECT_EQ(document.Text(), utf8) << encoding;
        EXPECT_EQ(TextOf(document.Text()), "");
    }
    XmlDocument document;
    document.LoadFile(folder.Write("file.xml", Encoded("<a>ü</a>", "UTF-16BE")));
    EXPECT_EQ(document.Text(), "<a>ü</a>") << "no declaration where there was none";
}

TEST_F(EncodedXmlFile, BelievesAByteOrderMarkMoreThanTheDeclaration) {
    EXPECT_EQ(TextOf("\xEF\xBB\xBF<?xml version='1.0' encoding='windows-1252'?><a>é</a>"), "é");
    EXPECT_EQ(TextOf("\xFF\xFE" + Utf16("<?xml version='1.0' encoding='UTF-8'?><a>é</a>", false)), "é");
    EXPECT_NE(RefusalOfBytes("\xEF\xBB\xBF"
                             "<?xml version='1.0' encoding='windows-1252'?><a>\xE9</a>")
                  .description.find("not well-formed UTF-8"),
              std::string::npos);
}

TEST_F(EncodedXmlFile, TakesNoInstructionForADeclaration) {
    EXPECT_EQ(TextOf("<?xml-stylesheet encoding='windows-1252'?><a>é</a>"), "é");
    EXPECT_EQ(TextOf("<!-- <?xml version='1.0' encoding='windows-1252'?> --><a>é</a>"), "é");
}

TEST_F(EncodedXmlFile, IsRefusedInEncodingsThatAreNotKnown) {
    for (const std::string& encoding :
         {"no-such-thing"s, ""s, "//TRANSLIT"s, "UTF-8//IGNORE"s, "ASCII//TRANSLIT"s, "ISO-8859-1,UTF-8"s,
          "../../lib/evil"s, "8859-1"s, " ASCII"s, "ASCII\n"s, "\xC3\xA9"s, std::string(100'000, 'x')}) {
        const Refusal refusal =
            RefusalOfBytes("<?xml version='1.0' encoding='" + encoding + "'?><a>\x1B$B</a>");
        EXPECT_EQ(refusal.number, base::errors::InvalidCall) << encoding.substr(0, 20);
        EXPECT_NE(refusal.description.find("line 1, column 31: the encoding"), std::string::npos)
            << refusal.description;
        EXPECT_NE(refusal.description.find("is not supported here"), std::string::npos);
        EXPECT_LT(refusal.description.size(), 400u);
    }
}

TEST_F(EncodedXmlFile, IsRefusedWhenItsDeclarationLies) {
    for (const char* encoding : {"UTF-16", "UTF-16LE", "UCS-4", "UTF-32", "EBCDIC-CP-US", "IBM500", "UNICODE",
                                 "INTERNAL", "WCHAR_T"}) {
        const Refusal refusal =
            RefusalOfBytes("<?xml version='1.0' encoding='" + std::string(encoding) + "'?><a/>");
        EXPECT_EQ(refusal.number, base::errors::InvalidCall) << encoding;
        EXPECT_NE(refusal.description.find("line 1, column 31: the encoding \"" + std::string(encoding) +
                                           "\" is not "),
                  std::string::npos)
            << refusal.description;
    }
}

TEST_F(EncodedXmlFile, IsRefusedForBytesThatItsEncodingDoesNotHave) {
    const auto expect = [&](std::string_view bytes, const std::string& reason) {
        const std::string found = RefusalOfBytes(bytes).description;
        EXPECT_NE(found.find(reason), std::string::npos) << found;
    };
    expect("<?xml version='1.0' encoding='ASCII'?>\n<a>\xE9</a>",
           "line 2, column 4: the bytes are no character of ASCII");
    expect("\xFF\xFE" + Utf16("<a>\n", false) + "\x3D\xD8"s + Utf16("</a>", false),
           "line 2, column 1: the bytes are no character of UTF-16LE");
    expect("\xFF\xFE" + Utf16("<a/>", false) + " ", "line 1, column 5: the bytes");
    expect("\xFE\xFF\xDC\x00"s, "line 1, column 1: the bytes");
    expect("\xFF\xFE\0\0<\0\0"s, "line 1, column 1: the bytes are no character of UTF-32LE");
    expect("\0\0\xFE\xFF\0\x11\0\0"s, "line 1, column 1: the bytes are no character of UTF-32BE");
    expect("<?xml version='1.0' encoding='Shift_JIS'?><a/>\x83", "line 1, column 47: the bytes");
    expect("<?xml version='1.0' encoding='EUC-JP'?><a>\xC6</a>", "line 1, column 43: the bytes");
    expect("<?xml version='1.0' encoding='UTF-7'?><a>+2AA-</a>", "the bytes are no character of UTF-7");
    expect("<a>\xE9</a>", "line 1, column 4: ");
}

TEST_F(EncodedXmlFile, IsHeldToTheSameBoundsInEveryEncoding) {
    const std::string entities = "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>";
    const std::string deep = [] {
        std::string text;
        for (int i = 0; i <= XmlDocument::MaximumDepth; ++i)
            text += "<a>";
        return text;
    }();
    for (const char* encoding : {"windows-1251", "UTF-16LE", "UTF-32BE", "UTF-7", "IBM037", "ISO-2022-JP"}) {
        EXPECT_NE(RefusalOfBytes(Declared(encoding, entities)).description.find("document type"),
                  std::string::npos)
            << encoding;
        EXPECT_NE(RefusalOfBytes(Declared(encoding, deep)).description.find("levels deep"), std::string::npos)
            << encoding;
        EXPECT_NE(RefusalOfBytes(Declared(encoding, "<a>\u0001</a>")).number, 0) << encoding;
        EXPECT_NE(RefusalOfBytes(Declared(encoding, "<a>\0</a>"s)).number, 0) << encoding;
    }
}

TEST_F(EncodedXmlFile, IsRefusedWhenItsTextIsTooLargeInUtf8) {
    std::string bytes = "<?xml version='1.0' encoding='EUC-KR'?><a>";
    const std::size_t rest = XmlDocument::MaximumBytes * 2 / 3 + 1000; // three bytes of UTF-8 for two
    bytes.append(rest, '\xB0');
    const std::string refused = RefusalOfBytes(bytes).description;
    EXPECT_NE(refused.find("the text is larger than"), std::string::npos) << refused;
}

TEST(XmlEncodingName, IsFoundInADeclarationAlone) {
    const auto nameIn = [](std::string_view text) -> std::string {
        const auto place = base::FindXmlEncoding(text);
        return place ? std::string(text.substr(place->offset, place->length)) : "(none)";
    };
    EXPECT_EQ(nameIn("<?xml version='1.0' encoding = \"a'b\"?>"), "a'b");
    EXPECT_EQ(nameIn("\xEF\xBB\xBF<?xml version='1.0' encoding='x'?>"), "x");
    for (const char* text :
         {"", "<?xml", "<?xml version='1.0'?><a encoding='x'/>", "<?xml-model encoding='x'?>",
          " <?xml encoding='x'?>", "<?xml encoding?>", "<?xml encoding=?>", "<?xml encoding='x?>",
          "<?xml encoding=x?>", "<?xml encoding='"})
        EXPECT_EQ(nameIn(text), "(none)") << text;
}

} // namespace
