// Registry files that cannot be understood, as a whole or in part.

#include "base/ComponentError.h"
#include "tests/platform/RegistryFileFixture.h"
#include "tests/support/ProcessorTime.h"

#include <random>

using namespace std::string_literals;
using platform::RegistryFile;

namespace {

TEST_F(RegistryFileTest, RefusesAFileWithoutAHeader) {
    ExpectBroken("[HKEY_LOCAL_MACHINE\\A]\r\n", "line 1: expected \"Windows Registry");
    ExpectBroken("Windows Registry Editor Version 4.00\r\n", "line 1");
    ExpectBroken("# mine\r\n;\r\n\r\n[HKEY_LOCAL_MACHINE\\A]\r\n", "line 4");
    ExpectBroken("nonsense\r\n" + Header, "line 1");
}

TEST_F(RegistryFileTest, PassesOverAndNamesFileAndLineOfWhatItCannotUnderstand) {
    const std::string start = Header + "[" + Key + "]\r\n"; // three lines
    ExpectProblem(Header + "\"a\"=\"1\"\r\n", "line 3: expected a key in brackets before the first value");
    ExpectProblem(start + "BinPath=\"x\"\r\n", "line 4: expected a key in brackets, a value or a comment");
    ExpectProblem(start + "\r\n\"a\"\r\n", "line 5: expected \"=\"");
    ExpectProblem(start + "\"a\"=1\r\n", "line 4: expected a quoted text, dword:, hex: or -");
    ExpectProblem(start + "\"a\"=\r\n", "line 4");
    ExpectProblem(start + "\"a\"=dword:\r\n", "line 4: expected one to eight hexadecimal digits");
    ExpectProblem(start + "\"a\"=dword:123456789\r\n", "line 4: expected one to eight hexadecimal digits");
    ExpectProblem(start + "\"a\"=dword:12 x\r\n", "line 4: expected the end of the line");
    ExpectProblem(start + "\"a\"=hex 01\r\n", "line 4: expected \":\"");
    ExpectProblem(start + "\"a\"=hex(1:01\r\n", "line 4: expected \")\"");
    ExpectProblem(start + "\"a\"=hex:01,,02\r\n", "line 4: expected two hexadecimal digits");
    ExpectProblem(start + "\"a\"=hex:01,\r\n", "line 4: expected two hexadecimal digits");
    ExpectProblem(start + "\"a\"=hex:1\r\n", "line 4: expected two hexadecimal digits");
    ExpectProblem(start + "\"a\"=\"1\" 2\r\n", "line 4: expected the end of the line");
    ExpectProblem(start + "\"a\"=\"never closed\r\n\"b\"=\"2\"\r\n", "line 5: expected the end of the line");
    ExpectProblem(start + "# mine\r\n",
                  "line 4: expected a key in brackets, a value or a comment, found \"# mine\"");
    ExpectProblem(start + "// mine\r\n", "line 4");
    ExpectProblem("# mine\r\n" + start, "line 1: expected a comment to begin with \";\", found \"# mine\"");
    ExpectProblem("\r\n  // mine\r\n" + start, "line 2: expected a comment to begin");
    ExpectProblem(start + "\"a\"=hex:01,zz,\\\r\n  02,\\\r\n  03\r\n", "line 4: expected two");
    ExpectProblem(start + "\"a\"=hex:01,\\\r\n  zz,\\\r\n  03\r\n", "line 5: expected the end of the line");
    ExpectProblem(start + "\"a\"=hex:01,zz,\\\r\n\"b\"=\"2\"\r\n", "line 4: expected two");
    ExpectProblem(start + "C:\\a\\\r\n\"b\"=\"2\"\r\n", "line 4");
    ExpectProblem(start + "[HKEY\r\n", "line 4: expected \"]\"");
    ExpectProblem(start + "[HKEY] x\r\n", "line 4: expected the end of the line");
    ExpectProblem(start + "[]\r\n", "line 4: expected a key between the brackets");
    ExpectProblem(start + "\0\r\n"s, "line 4");
}

TEST_F(RegistryFileTest, NamesTheLineOfBytesThatAreNoText) {
    ExpectBroken(Header + "; \xFF\r\n", "line 3: expected UTF-8");
    ExpectBroken(Header + ";\r\n; \xC3", "line 4: expected UTF-8");
    ExpectBroken("\xFE\xFF", "line 1: expected UTF-8 or little-endian UTF-16, found big-endian");
    ExpectBroken(Utf16(u"Windows Registry Editor Version 5.00\n;\xD800\n"), "line 2: expected UTF-16");
    ExpectBroken(Utf16(u"\n\n") + "x", "line 3: expected UTF-16");
}

TEST_F(RegistryFileTest, RefusesALineWithoutEnd) {
    ExpectBroken(Header + ";" + std::string(RegistryFile::MaximumLine, 'x') + "\r\n",
                 "line 3: expected a line of at most");
}

TEST_F(RegistryFileTest, ReadsTheStatementsAroundWhatItPassesOver) {
    const auto file = ReadKey(
        "\"a\"=\"1\"\r\n# mine\r\n\"b\"=hex:0g\r\n\"c\"=\"never closed\r\n\"d\"=\"4\"\r\n\"a\"=dword:x\r\n");
    EXPECT_EQ(file.Problems().size(), 4U);
    EXPECT_EQ(DataOf(file, "a"), "1\0"s) << "the broken one does not count";
    EXPECT_EQ(DataOf(file, "b"), "(none)");
    EXPECT_EQ(DataOf(file, "c"), "(none)");
    EXPECT_EQ(DataOf(file, "d"), "4\0"s);
    EXPECT_TRUE(ReadKey("\"a\"=\"1\"\r\n; mine\r\n").Problems().empty());
}

TEST_F(RegistryFileTest, GivesValuesBelowABrokenKeyToNoKey) {
    const auto file = ReadKey(
        "\"a\"=\"1\"\r\n[HKLM\\Other\r\n\"a\"=\"2\"\r\n\"b\"=\"3\"\r\n[HKLM\\Next]\r\n\"c\"=\"4\"\r\n");
    EXPECT_EQ(file.Problems().size(), 1U);
    EXPECT_EQ(DataOf(file, "a"), "1\0"s);
    EXPECT_EQ(DataOf(file, "b"), "(none)");
    EXPECT_TRUE(file.Find("HKEY_LOCAL_MACHINE\\Next", "c"));
    EXPECT_EQ(DataOf(Read(Header + "\"x\"=\"0\"\r\n[" + Key + "]\r\n\"y\"=\"1\"\r\n"), "y"), "1\0"s);
}

TEST_F(RegistryFileTest, KeepsWhatItPassedOverWhenAValueIsWritten) {
    const std::string start = "# head\r\n" + Header + "[" + Key + "]\r\n// \"A\"\r\n";
    const std::string end = "  rubbish \xE2\x82\xAC\t\r\n\"B\"=hex:0,\\\r\n  zz\r\n[HKLM\\Z\r\n\"A\"=\"9\"";
    EXPECT_EQ(Read(start + "\"A\"=\"1\"\r\n" + end).WithValue(Key, "A", {1, "2\0"s}),
              start + "\"A\"=\"2\"\r\n" + end);
    EXPECT_EQ(Read(start + "\"A\"=\"1\"\r\n" + end).WithValue(Key, "B", {1, "2\0"s}),
              start + "\"A\"=\"1\"\r\n\"B\"=\"2\"\r\n" + end);
    EXPECT_EQ(Read(start + end).WithValue("HKEY_LOCAL_MACHINE\\SOFTWARE", "C", {1, "3\0"s}),
              start + end + "\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\r\n\"C\"=\"3\"\r\n");
}

TEST_F(RegistryFileTest, WritesNoValueThatATextInFrontOfItWouldTakeIn) {
    const RegistryFile file = ReadKey("\"a\"=\"never closed\r\n[HKLM\\B]\r\n");
    ASSERT_EQ(file.Problems().size(), 1U);
    EXPECT_NE(file.WithValue("HKEY_LOCAL_MACHINE\\B", "b", {1, "1\0"s}).find("\"b\"=\"1\""),
              std::string::npos);
    for (const char* name : {"; b", " ;"})
        EXPECT_EQ(RefusalOf([&] {
                      file.WithValue("HKEY_LOCAL_MACHINE\\B", name, {1, "1\0"s});
                  }).number,
                  base::errors::FileAccess)
            << name;
    EXPECT_EQ(RefusalOf([&] {
                  file.WithValue("HKEY_LOCAL_MACHINE\\B", "", {1, ";\0"s});
              }).number,
              base::errors::FileAccess);
}

TEST_F(RegistryFileTest, RefusesAFileThatIsNothingButProblems) {
    std::string lines;
    for (std::size_t i = 0; i < RegistryFile::MaximumProblems; ++i)
        lines += "#\r\n";
    EXPECT_EQ(ReadKey(lines).Problems().size(), RegistryFile::MaximumProblems);
    ExpectBroken(Header + "[HKLM]\r\n" + lines + "#\r\n", "line 1004: this is one more than 1000");
}

TEST_F(RegistryFileTest, StaysQuickOverManyProblems) {
    std::string text = Header + "[HKLM\\A]\r\n";
    for (int i = 0; i < 1'000'000; ++i)
        text += i % 1100 == 0 ? "\"a\"=\"" + std::string(i % 2, '\\') + "\n" : "; x\n";
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_GT(Read(text).Problems().size(), 400U); }), InProportion);
}

TEST_F(RegistryFileTest, SurvivesDamage) {
    const std::string good =
        Header + "[" + Key +
        "]\r\n\"a\"=\"C:\\\\x\"\r\n\"b\"=hex(7):61,00,\\\r\n  00,00\r\n@=dword:12\r\n[-HKLM\\Q]\r\n";
    std::mt19937 random(20240301);
    int understood = 0, passedOver = 0, refused = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string bytes = good.substr(0, random() % 4 == 0 ? random() % good.size() : good.size());
        for (unsigned flips = random() % 4; flips-- > 0 && !bytes.empty();)
            bytes[random() % bytes.size()] =
                static_cast<char>(random() % 3 == 0 ? "\"\\[]-=,;\r\n"[random() % 10] : random());
        try {
            const RegistryFile file = Read(bytes);
            file.Find(Key, "b");
            const std::string changed = file.WithValue(Key, "z", {1, "new"});
            const auto back = Read(changed).Find(Key, "z");
            EXPECT_TRUE(back && back->data == "new") << bytes;
            ++(file.Problems().empty() ? understood : passedOver);
        } catch (const base::ComponentError&) {
            ++refused;
        }
    }
    EXPECT_GT(understood, 1000);
    EXPECT_GT(passedOver, 1000);
    EXPECT_GT(refused, 1000);
}

} // namespace
