#include "platform/linux/StringTable.h"

#include "tests/platform/ModuleBuilder.h"
#include "tests/support/ProcessorTime.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <random>

using platform::StringTable;

namespace {

constexpr std::array<std::uint16_t, 7> Numbers = {1, 2, 15, 16, 1033, 2000, 65535};

std::string GoodModule() {
    return ReadWholeFile(STRING_MODULE);
}

std::u16string TextOf(const StringTable& table, std::uint16_t number) {
    return table.Find(number).value_or(u"(none)");
}

TEST(StringTable, ReadsWhatTheResourceCompilerMade) {
    const StringTable table(GoodModule());
    EXPECT_EQ(TextOf(table, 1), u"one");
    EXPECT_EQ(TextOf(table, 2), u"two\nlines");
    EXPECT_EQ(TextOf(table, 15), u"last of its block");
    EXPECT_EQ(TextOf(table, 16), u"first of its block");
    EXPECT_EQ(TextOf(table, 2000), u"日本");
    EXPECT_EQ(TextOf(table, 65535), u"the last of all");
}

TEST(StringTable, TakesTheFirstLanguageWithoutANeutralOne) {
    EXPECT_EQ(TextOf(StringTable(GoodModule()), 1033), u"deutsch")
        << "the lower language number stands first";
}

TEST(StringTable, HasNothingUnderOtherNumbers) {
    const StringTable table(GoodModule());
    for (const std::uint16_t number : {0, 3, 14, 17, 1032, 1034, 2001, 65534})
        EXPECT_FALSE(table.Find(number)) << number;
}

TEST(StringTable, ReadsBothWidths) {
    for (const bool is64 : {false, true}) {
        const StringTable table(
            ModuleBuilder().Block(1, 0, {u"zero", u"one"}).Block(65, 0, {u"1024"}).Build(is64));
        EXPECT_EQ(TextOf(table, 0), u"zero");
        EXPECT_EQ(TextOf(table, 1), u"one");
        EXPECT_EQ(TextOf(table, 1024), u"1024");
        EXPECT_FALSE(table.Find(2));
    }
}

TEST(StringTable, PrefersTheNeutralLanguage) {
    const StringTable table(
        ModuleBuilder().Block(1, 0, {u"neutral"}).Block(1, 1031, {u"deutsch"}).Build(false));
    EXPECT_EQ(TextOf(table, 0), u"neutral");
}

TEST(StringTable, PrefersTheUsersLanguage) {
    constexpr std::uint16_t german = 0x0407, swissGerman = 0x0807, french = 0x040C;
    const std::string module = ModuleBuilder()
                                   .Block(1, 0, {u"neutral"})
                                   .Block(1, 0x0007, {u"deutsch"})
                                   .Block(1, german, {u"deutsch (Deutschland)"})
                                   .Block(1, 0x0409, {u"english"})
                                   .Block(2, 0x0409, {u"english alone"})
                                   .Block(2, 0x0415, {u"polski"})
                                   .Build(false);
    EXPECT_EQ(TextOf(StringTable(module, german), 0), u"deutsch (Deutschland)");
    EXPECT_EQ(TextOf(StringTable(module, swissGerman), 0), u"deutsch") << "the language without a country";
    EXPECT_EQ(TextOf(StringTable(module, french), 0), u"neutral");
    EXPECT_EQ(TextOf(StringTable(module), 0), u"neutral");
    EXPECT_EQ(TextOf(StringTable(module, 0x0415), 16), u"polski") << "each block for itself";
    EXPECT_EQ(TextOf(StringTable(module, german), 16), u"english alone");
}

TEST(StringTable, FindsTheUsersLanguageAmongMany) {
    ModuleBuilder builder;
    for (char16_t language = 1; language <= 300; ++language)
        builder.Block(1, 0x400 + 2u * language, {std::u16string(1, language)});
    const std::string module = builder.Build(true);
    for (char16_t language = 1; language <= 300; ++language)
        EXPECT_EQ(TextOf(StringTable(module, static_cast<std::uint16_t>(0x400 + 2 * language)), 0),
                  std::u16string(1, language));
    EXPECT_EQ(TextOf(StringTable(module, 0x403), 0), std::u16string(1, 1)) << "not there: the first";
}

TEST(StringTable, TakesANamedLanguageOnlyWhereItStandsFirst) {
    // The language's directory at 48: one by name, whose number would be German's, and the neutral one.
    const std::uint32_t below = ModuleBuilder::Below, data = 48 + 16 + 2 * 8;
    std::string section = ModuleBuilder::Directory({{6, 24 | below}}) +
                          ModuleBuilder::Directory({{1, 48 | below}}) +
                          ModuleBuilder::Directory({{below | 0x407, data}, {0, data + 16}}, 1);
    const auto addEntry = [&](std::uint32_t at) {
        ModuleBuilder::Add(section, ModuleBuilder::SectionAddress + at, 4);
        for (const std::uint32_t number : {32u, 0u, 0u})
            ModuleBuilder::Add(section, number, 4);
    };
    addEntry(data + 32);
    addEntry(data + 64);
    for (const char letter : {'a', 'b'})
        (section += {'\1', '\0', letter}).append(29, '\0');
    const std::string module = ModuleBuilder::WithSection(false, section);
    EXPECT_EQ(TextOf(StringTable(module, 0x407), 0), u"b");
    EXPECT_EQ(TextOf(StringTable(module), 0), u"b");
    std::string withoutNeutral = module;
    withoutNeutral[ModuleBuilder::SectionOffset + 48 + 16 + 8] = 9;
    EXPECT_EQ(TextOf(StringTable(withoutNeutral, 0x407), 0), u"a");
}

TEST(StringTable, KeepsNulsAndLongTexts) {
    const std::u16string nul(u"a\0b", 3), longest(65535, u'x');
    const StringTable table(ModuleBuilder().Block(1, 0, {nul, longest, u"behind"}).Build(true));
    EXPECT_EQ(TextOf(table, 0), nul);
    EXPECT_EQ(TextOf(table, 1), longest);
    EXPECT_EQ(TextOf(table, 2), u"behind");
}

TEST(StringTable, HasNothingInAFileOfAnotherKind) {
    for (const std::string& file :
         {std::string(), std::string("MZ"), std::string("plain text"), std::string(100, '\0'),
          "\x7F"
          "ELF" +
              std::string(100, '\1')})
        EXPECT_FALSE(StringTable(file).Find(1));
}

TEST(StringTable, ReadsNothingWrongFromAFileThatEndsEarly) {
    const std::string good = GoodModule();
    const StringTable whole(good);
    for (std::size_t size = 0; size < good.size(); ++size) {
        const StringTable cut(good.substr(0, size));
        for (const std::uint16_t number : Numbers) {
            const auto text = cut.Find(number);
            EXPECT_TRUE(!text || text == whole.Find(number)) << size;
        }
    }
}

TEST(StringTable, SurvivesDamagedBytes) {
    const std::array<std::string, 2> goods = {
        GoodModule(), ModuleBuilder().Block(1, 0, {u"a", u"b"}).Block(2, 7, {u"c"}).Build(false)};
    std::mt19937 random(1033);
    std::size_t found = 0, missing = 0;
    for (int i = 0; i < 30'000; ++i) {
        std::string bytes = goods[random() % 2];
        for (unsigned flips = 1 + random() % 8; flips-- > 0;) {
            // Headers and directories are where damage leads astray; the 64-bit one's begin at 0x600 or so.
            const std::size_t at = random() % 2 == 0 ? random() % 0x200 : random() % bytes.size();
            bytes[at] = static_cast<char>(random() % 4 == 0 ? 0xFF : random());
        }
        const StringTable table(std::move(bytes), i % 2 == 0 ? 0 : 0x407);
        for (const std::uint16_t number : Numbers)
            ++(table.Find(number) ? found : missing);
    }
    EXPECT_GT(found, 10'000u);
    EXPECT_GT(missing, 10'000u);
}

TEST(StringTable, IgnoresDirectoriesThatLeadBackToThemselves) {
    const std::uint32_t below = ModuleBuilder::Below;
    for (const std::uint32_t id : {6u, 1u}) {
        const StringTable table(
            ModuleBuilder::WithSection(true, ModuleBuilder::Directory({{6, below}, {id, below}})));
        EXPECT_FALSE(table.Find(1));
    }
}

TEST(StringTable, StaysQuickWhateverCountsAreClaimed) {
    // Every level is the one directory, which claims the most entries that a count can hold.
    std::vector<std::array<std::uint32_t, 2>> entries(131'070, {6, ModuleBuilder::Below});
    std::string section = ModuleBuilder::Directory(entries, 0xFFFF, 0xFFFF);
    const auto find = [&] { return StringTable(ModuleBuilder::WithSection(false, section), 0x407).Find(1); };
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_FALSE(find()); }), InProportion);
    section = ModuleBuilder::Directory({{6, ModuleBuilder::Below}}, 0, 0xFFFF); // and they are not there
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_FALSE(find()); }), InProportion);
}

TEST(StringTable, RefusesMoreSectionsThanALibraryMayHave) {
    std::string module = ModuleBuilder().Block(1, 0, {u"abc"}).Build(false);
    const std::size_t count = static_cast<unsigned char>(module[0x3C]) + 6u;
    ASSERT_EQ(TextOf(StringTable(module), 0), u"abc");
    module[count + 1] = 1; // 256 and more
    EXPECT_FALSE(StringTable(module).Find(0));
}

TEST(StringTable, IgnoresWhatIsNoStringBlock) {
    const std::uint32_t below = ModuleBuilder::Below;
    // A string type without a directory; a block by name; block numbers that no string has; a language that
    // is a directory once more.
    std::string section = ModuleBuilder::Directory({{6, 24}});
    EXPECT_FALSE(StringTable(ModuleBuilder::WithSection(true, section)).Find(0));
    section = ModuleBuilder::Directory({{6, 24 | below}}) +
              ModuleBuilder::Directory(
                  {{100 | below, 24 | below}, {0, 24 | below}, {4097, 24 | below}, {1, 24 | below}}, 1);
    EXPECT_FALSE(StringTable(ModuleBuilder::WithSection(true, section)).Find(0));
}

TEST(StringTable, ReadsNothingOutsideOfItsBlock) {
    // The first length says more than the block holds; the block's size says more than the section holds.
    const std::string good = ModuleBuilder().Block(1, 0, {u"abc"}).Build(false);
    const std::size_t data = good.size() - 16 * 2 - 3 * 2;
    std::string longer = good;
    longer[data] = 20;
    EXPECT_EQ(TextOf(StringTable(longer), 0).size(), 6u) << "only (none)";
    std::string outside = good;
    outside[data - 12] = static_cast<char>(0xFF);
    EXPECT_FALSE(StringTable(outside).Find(0));
}

} // namespace
