#include "tests/platform/RegistryFileFixture.h"

#include "base/Text.h"
#include "tests/support/ProcessorTime.h"

using namespace std::string_literals;
using platform::RegistryFile;
using platform::RegistryValue;

namespace {

TEST_F(RegistryFileTest, ReadsTextsWithTheirNul) {
    const auto file = ReadKey("\"BinPath\"=\"C:\\\\QUARRA\\\\Bin\"\r\n@=\"default\"\r\n\"Empty\"=\"\"\r\n");
    EXPECT_EQ(DataOf(file, "BinPath"), "C:\\QUARRA\\Bin\0"s);
    EXPECT_EQ(DataOf(file, ""), "default\0"s);
    EXPECT_EQ(DataOf(file, "Empty"), "\0"s);
    EXPECT_EQ(DataOf(file, "Other"), "(none)");
}

TEST_F(RegistryFileTest, IgnoresLetterCaseOfKeysAndNames) {
    const auto file = ReadKey("\"Größe\"=\"1\"\r\n");
    EXPECT_TRUE(file.HasKey("hkey_local_machine\\software\\VELTRANE\\arvon11"));
    EXPECT_EQ(DataOf(file, "GRÖßE"), "1\0"s);
}

TEST_F(RegistryFileTest, KnowsKeysByWhatStandsBelowThem) {
    const auto file = ReadKey("");
    EXPECT_TRUE(file.HasKey("HKEY_LOCAL_MACHINE\\SOFTWARE"));
    EXPECT_TRUE(file.HasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane\\"));
    EXPECT_FALSE(file.HasKey("HKEY_LOCAL_MACHINE\\SOFT"));
    EXPECT_FALSE(file.HasKey(Key + "\\Below"));
    EXPECT_FALSE(file.HasKey("HKEY_CURRENT_USER\\SOFTWARE"));
}

TEST_F(RegistryFileTest, UnderstandsTheShortNamesOfRoots) {
    const auto file = Read(Header + "[HKLM\\A]\r\n\"x\"=\"1\"\r\n[HKCU\\B]\r\n");
    EXPECT_TRUE(file.Find("HKEY_LOCAL_MACHINE\\A", "x"));
    EXPECT_TRUE(file.HasKey("HKEY_CURRENT_USER\\B"));
}

TEST_F(RegistryFileTest, ResolvesQuotesAndBackslashesOnly) {
    EXPECT_EQ(DataOf(ReadKey("\"a\"=\"say \\\"hi\\\" \\\\ \\n C:\\QUARRA\"\r\n"), "a"),
              "say \"hi\" \\ \\n C:\\QUARRA\0"s);
    EXPECT_EQ(DataOf(ReadKey("\"a\\\"b\\\\\"=\"1\"\r\n"), "a\"b\\"), "1\0"s);
}

TEST_F(RegistryFileTest, ReadsTextsOverSeveralLines) {
    const auto file = ReadKey("\"a\"=\"one\r\ntwo\"\r\n\"b\"=\"3\"\r\n");
    EXPECT_EQ(DataOf(file, "a"), "one\r\ntwo\0"s);
    EXPECT_EQ(DataOf(file, "b"), "3\0"s);
}

TEST_F(RegistryFileTest, ReadsNumbersAndBytes) {
    const auto file =
        ReadKey("\"n\"=dword:0000040A\r\n\"s\"=dword:7\r\n\"b\"=hex:01,fF,00\r\n\"none\"=hex:\r\n"
                "\"q\"=hex(b):01,00,00,00,00,00,00,00\r\n");
    EXPECT_EQ(DataOf(file, "n", 4), "\x0A\x04\0\0"s);
    EXPECT_EQ(DataOf(file, "s", 4), "\x07\0\0\0"s);
    EXPECT_EQ(DataOf(file, "b", 3), "\x01\xFF\0"s);
    EXPECT_EQ(DataOf(file, "none", 3), "");
    EXPECT_EQ(DataOf(file, "q", 11), "\x01\0\0\0\0\0\0\0"s);
}

TEST_F(RegistryFileTest, ReadsBytesOverContinuationLines) {
    const auto file =
        ReadKey("\"b\"=hex:01,02,\\\r\n  03,\\\n\t04\r\n\"c\"=hex:05 , 06,\\\r\n\r\n\"d\"=\"x\"\r\n");
    EXPECT_EQ(DataOf(file, "b", 3), "\x01\x02\x03\x04");
    EXPECT_EQ(DataOf(file, "c", 3), "\x05\x06");
    EXPECT_EQ(DataOf(file, "d"), "x\0"s);
}

TEST_F(RegistryFileTest, ReadsTextsWrittenAsBytes) {
    const auto file = ReadKey("\"a\"=hex(1):61,00,e4,00,ac,20\r\n\"x\"=hex(2):25,00,00,00\r\n"
                              "\"m\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n\"odd\"=hex(1):61,00,62\r\n");
    EXPECT_EQ(DataOf(file, "a"), "a\xE4\x80") << "three bytes, no NUL";
    EXPECT_EQ(DataOf(file, "x", 2), "%\0"s);
    EXPECT_EQ(DataOf(file, "m", 7), "a\0b\0\0"s);
    EXPECT_EQ(DataOf(file, "odd"), "a");
}

TEST_F(RegistryFileTest, TakesTheLastOfSeveralValues) {
    const auto file = ReadKey("\"a\"=\"1\"\r\n\"A\"=\"2\"\r\n[" + Key + "\\]\r\n\"a\"=\"3\"\r\n");
    EXPECT_EQ(DataOf(file, "a"), "3\0"s);
}

TEST_F(RegistryFileTest, DeletesValuesAndKeys) {
    EXPECT_EQ(DataOf(ReadKey("\"a\"=\"1\"\r\n\"A\"=-\r\n"), "a"), "(none)");
    EXPECT_EQ(DataOf(ReadKey("\"a\"=-\r\n\"a\"=\"2\"\r\n"), "a"), "2\0"s);
    const auto file =
        ReadKey("\"a\"=\"1\"\r\n[" + Key + "\\Below]\r\n[" + Key + "x]\r\n[-" + Key + "]\r\n\"a\"=\"9\"\r\n");
    EXPECT_FALSE(file.HasKey(Key));
    EXPECT_FALSE(file.HasKey(Key + "\\Below"));
    EXPECT_TRUE(file.HasKey(Key + "x"));
    EXPECT_EQ(DataOf(file, "a"), "(none)") << "values below a deletion belong to no key";
}

TEST_F(RegistryFileTest, KeepsTheParentOfADeletedKey) {
    const auto file = ReadKey("[-" + Key + "]\r\n");
    EXPECT_TRUE(file.HasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane"));
    EXPECT_FALSE(
        Read(Header + "[-HKEY_LOCAL_MACHINE\\Never\\There]\r\n").HasKey("HKEY_LOCAL_MACHINE\\Never"));
}

TEST_F(RegistryFileTest, KeepsBracketsInsideKeys) {
    EXPECT_TRUE(
        Read(Header + "[HKEY_LOCAL_MACHINE\\a]b\\[c]] ; note\r\n").HasKey("HKEY_LOCAL_MACHINE\\a]b\\[c]"));
}

TEST_F(RegistryFileTest, PassesOverCommentsAndEmptyLines) {
    const auto file =
        Read("\r\n; made by hand\r\n" + Header + "; more\n\n  [" + Key + "]\n ; [x\n\t\"a\"=\"1\" ; why\n");
    EXPECT_EQ(DataOf(file, "a"), "1\0"s);
}

TEST_F(RegistryFileTest, NeedsNoLineEndAtTheEnd) {
    EXPECT_EQ(DataOf(ReadKey("\"a\"=\"1\""), "a"), "1\0"s);
}

TEST_F(RegistryFileTest, TakesAFileWithoutStatementsForAnEmptyRegistry) {
    for (const char* text :
         {"", "\r\n", "; nothing\r\n", "\xEF\xBB\xBF", "Windows Registry Editor Version 5.00"})
        EXPECT_FALSE(Read(text).HasKey("HKEY_LOCAL_MACHINE\\SOFTWARE")) << text;
}

TEST_F(RegistryFileTest, ReadsEveryEncoding) {
    const std::u16string text =
        u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\A]\r\n\"ä\"=\"€\"\r\n";
    for (const std::string& bytes :
         {Utf16(text), base::FromUtf16(text), "\xEF\xBB\xBF" + base::FromUtf16(text)})
        EXPECT_EQ(Read(bytes).Find("HKEY_LOCAL_MACHINE\\A", "Ä").value_or(RegistryValue{}).data, "\x80\0"s);
}

TEST_F(RegistryFileTest, ReadsTheOlderFormat) {
    const auto file =
        Read("REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\A]\r\n\"\xE4\"=\"\x80\"\r\n\"s\"=hex(2):61,62,00\r\n");
    EXPECT_EQ(file.Find("HKEY_LOCAL_MACHINE\\A", "ä").value_or(RegistryValue{}).data, "\x80\0"s);
    EXPECT_EQ(file.Find("HKEY_LOCAL_MACHINE\\A", "s").value_or(RegistryValue{}).data, "ab\0"s);
}

TEST_F(RegistryFileTest, KeepsEverythingElseWhenAValueIsWritten) {
    const std::string before =
        "; by hand\r\n" + Header + "[" + Key +
        "]\r\n; why\r\n\"A\"=\"1\" ; old\r\n\"B\"=hex:01,\\\r\n  02\r\n\r\n[HKLM\\Z]\r\n";
    EXPECT_EQ(Read(before).WithValue(Key, "a", {1, "2\0"s}),
              "; by hand\r\n" + Header + "[" + Key +
                  "]\r\n; why\r\n\"a\"=\"2\"\r\n\"B\"=hex:01,\\\r\n  02\r\n\r\n[HKLM\\Z]\r\n");
    EXPECT_EQ(Read(before).WithValue(Key, "b", {1, "2\0"s}),
              "; by hand\r\n" + Header + "[" + Key +
                  "]\r\n; why\r\n\"A\"=\"1\" ; old\r\n\"b\"=\"2\"\r\n\r\n[HKLM\\Z]\r\n");
    EXPECT_EQ(
        Read(before).WithValue(Key, "C", {1, "2\0"s}),
        "; by hand\r\n" + Header + "[" + Key +
            "]\r\n; why\r\n\"A\"=\"1\" ; old\r\n\"B\"=hex:01,\\\r\n  02\r\n\"C\"=\"2\"\r\n\r\n[HKLM\\Z]\r\n");
}

TEST_F(RegistryFileTest, WritesATextWithOneNulInQuotesAndAnyOtherAsBytes) {
    const auto line = [&](std::uint32_t type, const std::string& data) {
        const std::string bytes = ReadKey("").WithValue(Key, "v", {type, data});
        const std::string start = Header + "[" + Key + "]\r\n";
        EXPECT_TRUE(bytes.starts_with(start));
        const auto back = Read(bytes).Find(Key, "v");
        EXPECT_TRUE(back && back->type == type && back->data == data) << bytes;
        return bytes.substr(start.size());
    };
    EXPECT_EQ(line(1, "C:\\a \"b\" \xE4\0"s), "\"v\"=\"C:\\\\a \\\"b\\\" ä\"\r\n");
    EXPECT_EQ(line(1, "abc"), "\"v\"=hex(1):61,00,62,00,63,00\r\n");
    EXPECT_EQ(line(1, ""), "\"v\"=hex(1):\r\n");
    EXPECT_EQ(line(1, "\0"s), "\"v\"=\"\"\r\n");
    EXPECT_EQ(line(1, "a\0b\0"s), "\"v\"=hex(1):61,00,00,00,62,00,00,00\r\n");
    EXPECT_EQ(line(1, "a\nb\0"s), "\"v\"=hex(1):61,00,0a,00,62,00,00,00\r\n");
    EXPECT_EQ(line(2, "a\0"s), "\"v\"=hex(2):61,00,00,00\r\n");
    EXPECT_EQ(line(3, "\x01\xFF"), "\"v\"=hex:01,ff\r\n");
    EXPECT_EQ(line(4, "\x0A\x04\0\0"s), "\"v\"=dword:0000040a\r\n");
    EXPECT_EQ(line(4, "\x01"), "\"v\"=hex(4):01\r\n");
    EXPECT_EQ(line(11, "\x01"), "\"v\"=hex(b):01\r\n");
    EXPECT_EQ(line(0, "\x01"), "\"v\"=hex(0):01\r\n");
}

TEST_F(RegistryFileTest, BreaksLongRowsOfBytes) {
    const std::string data(100, 'x');
    const std::string bytes = ReadKey("").WithValue(Key, "v", {3, data});
    for (std::size_t at = 0, end; (end = bytes.find('\n', at)) != std::string::npos; at = end + 1)
        EXPECT_LE(end - at, 81u);
    EXPECT_EQ(DataOf(Read(bytes), "v", 3), data);
    const std::string longText = std::string(2'000'000, 'x') + '\0';
    EXPECT_EQ(DataOf(Read(ReadKey("").WithValue(Key, "v", {1, longText})), "v"), longText);
}

TEST_F(RegistryFileTest, WritesInTheEncodingAndLineEndsThatItFound) {
    const std::u16string start = u"Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\A]\n";
    const std::string key = "HKEY_LOCAL_MACHINE\\A";
    const RegistryValue value{1, "\x80\0"s};
    EXPECT_EQ(Read(Utf16(start)).WithValue(key, "ä", value), Utf16(start + u"\"ä\"=\"€\"\n"));
    EXPECT_EQ(Read("\xEF\xBB\xBF" + base::FromUtf16(start)).WithValue(key, "ä", value),
              "\xEF\xBB\xBF" + base::FromUtf16(start + u"\"ä\"=\"€\"\n"));
    const std::string ansi = "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\A]\r\n;\xE4\r\n";
    EXPECT_EQ(Read(ansi).WithValue(key, "ä", value),
              "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\A]\r\n\"\xE4\"=\"\x80\"\r\n;\xE4\r\n");
    EXPECT_EQ(Read(ansi).WithValue(key, "s", {1, "ab"}).find("hex(1):61,62\r\n") == std::string::npos, false);
}

TEST_F(RegistryFileTest, GivesAKeyWithoutALineOfItsOwnOne) {
    const std::string bytes =
        ReadKey("\"a\"=\"1\"").WithValue("HKEY_LOCAL_MACHINE\\SOFTWARE", "new", {1, "x\0"s});
    EXPECT_EQ(bytes, Header + "[" + Key +
                         "]\r\n\"a\"=\"1\"\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\r\n\"new\"=\"x\"\r\n");
    EXPECT_EQ(Read(bytes).Find("HKEY_LOCAL_MACHINE\\SOFTWARE", "new").value_or(RegistryValue{}).data, "x\0"s);
}

TEST_F(RegistryFileTest, WritesBehindHalfALineEnd) {
    const std::string start = Header + "[" + Key + "]";
    EXPECT_EQ(Read(start + "\r").WithValue(Key, "a", {1, "1\0"s}), start + "\r\n\"a\"=\"1\"\r\n");
}

TEST_F(RegistryFileTest, WritesBehindADeletionOfTheValue) {
    const std::string bytes = ReadKey("\"a\"=\"1\"\r\n\"a\"=-\r\n").WithValue(Key, "a", {1, "2\0"s});
    EXPECT_EQ(DataOf(Read(bytes), "a"), "2\0"s);
    const std::string again = ReadKey("[-" + Key + "]\r\n[" + Key + "]\r\n").WithValue(Key, "a", {1, "2\0"s});
    EXPECT_EQ(DataOf(Read(again), "a"), "2\0"s);
}

TEST_F(RegistryFileTest, KnowsTheRootsByTheirShortNamesToo) {
    const auto file = Read(Header + "[HKLM\\a]\r\n[hkcu\\a]\r\n[HKCR\\a]\r\n[HKU\\a]\r\n[HKLMX\\a]\r\n");
    for (const char* root : {"HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER", "HKEY_CLASSES_ROOT", "HKEY_USERS"})
        EXPECT_TRUE(file.HasKey(std::string(root) + "\\A")) << root;
    EXPECT_TRUE(file.HasKey("HKLMX\\A"));
}

TEST_F(RegistryFileTest, GivesValuesBehindADeletedKeyToNoOther) {
    const auto file = ReadKey("\"a\"=\"1\"\r\n[-HKLM\\Other]\r\n\"b\"=\"2\"\r\n");
    EXPECT_EQ(DataOf(file, "a"), "1\0"s);
    EXPECT_EQ(DataOf(file, "b"), "(none)");
}

TEST_F(RegistryFileTest, AllowsBlanksAroundTheEqualsSign) {
    EXPECT_EQ(DataOf(ReadKey("\"a\" \t=  \"1\""), "a"), "1\0"s);
    EXPECT_EQ(DataOf(ReadKey("@ = \"1\""), ""), "1\0"s);
}

TEST_F(RegistryFileTest, StaysQuickOverManyDeepKeys) {
    std::string text = Header;
    std::string deep = "HKLM";
    for (int i = 0; i < 20'000; ++i)
        deep += "\\a";
    for (int i = 0; i < 100; ++i)
        text += "[" + deep + "]\r\n[-" + deep + "]\r\n";
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_TRUE(Read(text).HasKey("HKEY_LOCAL_MACHINE\\A")); }),
              InProportion);
}

} // namespace
