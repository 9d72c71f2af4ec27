#include "options/ToolOptions.h"

#include "base/ComponentError.h"
#include "tests/options/ServicesInMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kvtm::test {
namespace {

using base::Value;
using testing::ElementsAre;

constexpr std::string_view schema = "<Options><ToolOptions>"
                                    "<Tool ID=\"SOV02\"><DisplayName>Tool Manager</DisplayName>"
                                    "<Option><Name>cmbLanguage</Name><Value>1033</Value></Option>"
                                    "<Option><Name>lblOrder</Name></Option></Tool>"
                                    "<Tool ID=\"Vn34\"><Option><Name>chkWärme</Name><Value> ON </Value>"
                                    "<Visible>0</Visible></Option></Tool>"
                                    "</ToolOptions></Options>";
constexpr std::string_view file = "C:\\OPTIONS.XML";

class ToolOptionsTest : public testing::Test {
protected:
    std::vector<std::string> Keys() {
        std::vector<std::string> keys;
        for (const ToolOptions::Record& record : options.NewEnum())
            keys.push_back(record->Key);
        return keys;
    }
    static std::string TextOf(const ToolOption& record, std::string_view name) {
        const auto* property = record.Properties.Find(name);
        return property ? (*property)->Value.ToText() : "no property";
    }
    static std::string Sets(std::string_view sets) {
        return "<Options><ToolOptions>" + std::string(sets) + "</ToolOptions></Options>";
    }

    static std::string Option(std::string_view name, std::string_view value) {
        return "<Option><Name>" + std::string(name) + "</Name><Value>" + std::string(value) +
               "</Value></Option>";
    }

    ServicesInMemory memory;
    ToolOptions options{memory.services};
};

TEST_F(ToolOptionsTest, StartsEmpty) {
    EXPECT_EQ(options.Count(), 0u);
    EXPECT_EQ(options.XML(), "");
    EXPECT_EQ(options.Item(Value(1)), nullptr);
}

TEST_F(ToolOptionsTest, LoadReadsOptionsAndPlainPropertiesInDocumentOrder) {
    ASSERT_TRUE(options.Load(schema));
    EXPECT_THAT(Keys(), ElementsAre("SOV02", "Vn34"));
    const ToolOptions::Record manager = options.Item(Value("SOV02"));
    ASSERT_TRUE(manager);
    EXPECT_EQ(manager->Properties.Count(), 3u);
    EXPECT_EQ(manager->Properties.Item(1)->Name, "DisplayName");
    EXPECT_EQ(TextOf(*manager, "DisplayName"), "Tool Manager");
    EXPECT_EQ(TextOf(*manager, "cmbLanguage"), "1033");
    EXPECT_EQ(TextOf(*options.Item(Value("Vn34")), "chkWärme"), " ON ");
    EXPECT_EQ(manager->XMLObject.Attribute("ID"), "SOV02");
    EXPECT_EQ(options.XML(), schema);
}

TEST_F(ToolOptionsTest, OptionWithoutASecondChildHasAnEmptyValue) {
    ASSERT_TRUE(options.Load(schema));
    EXPECT_TRUE((*options.Item(Value("SOV02"))->Properties.Find("lblOrder"))->Value.IsEmpty());
}

TEST_F(ToolOptionsTest, OnlyThePositionTellsNameAndValueApart) {
    ASSERT_TRUE(options.Load(Sets("<Any ID=\"a\"><Option><Value>first</Value><Name>second</Name></Option>"
                                  "<Option>bare<x/></Option></Any>")));
    const ToolOptions::Record record = options.Item(Value("a"));
    EXPECT_EQ(TextOf(*record, "first"), "second");
    EXPECT_EQ(TextOf(*record, "bare"), "");
}

TEST_F(ToolOptionsTest, OptionSetsAreTheChildrenOfTheFirstToolOptionsElementAnywhere) {
    ASSERT_TRUE(options.Load("<a><b><ToolOptions><x ID=\"1\"/></ToolOptions></b>"
                             "<ToolOptions><x ID=\"2\"/></ToolOptions></a>"));
    EXPECT_THAT(Keys(), ElementsAre("1"));
}

TEST_F(ToolOptionsTest, ToolsDirectlyUnderTheRootAreNotLoadedButSaved) {
    constexpr std::string_view direct = "<Options><Tool ID=\"a\"/></Options>";
    EXPECT_FALSE(options.Load(direct));
    EXPECT_TRUE(options.Save(direct, file));
    EXPECT_EQ(memory.File(file), direct);
}

TEST_F(ToolOptionsTest, LoadWithoutToolOptionsTakesTheEarlierRecordsAway) {
    ASSERT_TRUE(options.Load(schema));
    EXPECT_FALSE(options.Load("<Options/>"));
    EXPECT_EQ(options.Count(), 0u);
    EXPECT_EQ(options.XML(), schema);
}

TEST_F(ToolOptionsTest, ARepeatedIdEndsLoadAndKeepsTheFirstSet) {
    EXPECT_FALSE(options.Load(Sets("<Tool ID=\"a\"><Option><Name>n</Name><Value>1</Value></Option></Tool>"
                                   "<Tool ID=\"a\"/><Tool ID=\"b\"/>")));
    EXPECT_THAT(Keys(), ElementsAre("a"));
    EXPECT_EQ(TextOf(*options.Item(Value("a")), "n"), "1");
    EXPECT_EQ(options.XML(), "");
}

TEST_F(ToolOptionsTest, IdsThatDifferInLetterCaseAreTwoSets) {
    ASSERT_TRUE(options.Load(Sets("<Tool ID=\"a\"/><Tool ID=\"A\"/>")));
    EXPECT_THAT(Keys(), ElementsAre("a", "A"));
}

TEST_F(ToolOptionsTest, ARepeatedPropertyNameEndsLoadWithTheSetsBeforeIt) {
    EXPECT_FALSE(options.Load(Sets("<Tool ID=\"a\"/><Tool ID=\"b\"><Name>1</Name><Name>2</Name></Tool>"
                                   "<Tool ID=\"c\"/>")));
    EXPECT_THAT(Keys(), ElementsAre("a", "b"));
    EXPECT_EQ(TextOf(*options.Item(Value("b")), "Name"), "1");
}

TEST_F(ToolOptionsTest, AnOptionWithoutChildrenIsPassedOverByLoadAndSave) {
    const std::string sets =
        Sets("<Tool ID=\"a\"><Option/>" + Option("n", "1") + "<Option/></Tool><Tool ID=\"b\"/>");
    ASSERT_TRUE(options.Load(sets));
    EXPECT_THAT(Keys(), ElementsAre("a", "b"));
    EXPECT_EQ(options.Item(Value("a"))->Properties.Count(), 1u);
    EXPECT_EQ(TextOf(*options.Item(Value("a")), "n"), "1");
    EXPECT_TRUE(options.Save(sets, file));
    EXPECT_EQ(memory.File(file), sets);
}

TEST_F(ToolOptionsTest, EmptyTextIsAnIdentifierLikeAnyOther) {
    const std::string sets = Sets("<Tool ID=\"\">" + Option("n", "1") + "</Tool><Tool ID=\"a\"/>");
    ASSERT_TRUE(options.Load(sets));
    EXPECT_THAT(Keys(), ElementsAre("", "a"));
    ASSERT_TRUE(options.Item(Value("")));
    EXPECT_EQ(TextOf(*options.Item(Value("")), "n"), "1");
    EXPECT_TRUE(options.Save(sets, file));
    EXPECT_EQ(memory.File(file), sets);

    EXPECT_FALSE(options.Load(Sets("<Tool ID=\"\"/><Tool ID=\"\"/>")));
    EXPECT_THAT(Keys(), ElementsAre(""));
    options.Clear();
    EXPECT_FALSE(options.Item(Value("")));
}

TEST_F(ToolOptionsTest, EmptyTextIsANameLikeAnyOther) {
    const std::string sets =
        Sets("<Tool ID=\"a\"><Option><Name/><Value>1</Value></Option>" + Option("n", "2") + "</Tool>");
    ASSERT_TRUE(options.Load(sets));
    const ToolOptions::Record record = options.Item(Value("a"));
    EXPECT_EQ(TextOf(*record, ""), "1");
    (*record->Properties.Find(""))->Value = Value("changed");
    EXPECT_TRUE(options.Save(sets, file)); // which loads the text again: the element is the old record's
    EXPECT_EQ(record->XMLObject.FirstChild().FirstChild().NextSibling().Text(), "changed");

    EXPECT_FALSE(options.Load(Sets("<Tool ID=\"a\">" + Option("", "1") + Option("", "2") + "</Tool>")));
    EXPECT_EQ(TextOf(*options.Item(Value("a")), ""), "1");
}

TEST_F(ToolOptionsTest, SetsWithoutAnIdAreSkipped) {
    constexpr std::string_view sets = "<Tool/><Tool id=\"x\"/><Tool Id=\"y\" other=\"1\"/><Tool ID=\"z\"/>";
    ASSERT_TRUE(options.Load(Sets(sets)));
    EXPECT_THAT(Keys(), ElementsAre("z"));
    EXPECT_TRUE(options.Save(Sets(sets), file));
    EXPECT_EQ(memory.File(file), Sets(sets));
}

TEST_F(ToolOptionsTest, ACommentAmongTheSetsEndsLoadAndSave) {
    const std::string text = Sets("<Tool ID=\"a\"/><!-- note --><Tool ID=\"b\"/>");
    EXPECT_FALSE(options.Load(text));
    EXPECT_THAT(Keys(), ElementsAre("a"));
    EXPECT_FALSE(options.Save(text, file));
    EXPECT_EQ(memory.File(file), ServicesInMemory::NoFile);
}

TEST_F(ToolOptionsTest, ACommentWithinASetIsNoProperty) {
    ASSERT_TRUE(options.Load(Sets("<Tool ID=\"a\"><!-- one --><x>1</x><!-- two --></Tool>")));
    EXPECT_EQ(options.Item(Value("a"))->Properties.Count(), 1u);
}

TEST_F(ToolOptionsTest, TextThatIsNotWellFormedLeavesEverythingAsItWas) {
    ASSERT_TRUE(options.Load(schema));
    for (const std::string_view bad : {"", "<Options>", "no xml", "<a/><b/>"}) {
        EXPECT_FALSE(options.Load(bad));
        EXPECT_FALSE(options.Save(bad, file));
    }
    EXPECT_THAT(Keys(), ElementsAre("SOV02", "Vn34"));
    EXPECT_EQ(options.XML(), schema);
    EXPECT_EQ(memory.File(file), ServicesInMemory::NoFile);
}

TEST_F(ToolOptionsTest, ItemOfAnUnknownKeyOrPositionIsNothing) {
    ASSERT_TRUE(options.Load(schema));
    EXPECT_EQ(options.Item(Value("sov02")), nullptr);
    EXPECT_EQ(options.Item(Value("1")), nullptr); // a key, not a position
    EXPECT_EQ(options.Item(Value(0)), nullptr);
    EXPECT_EQ(options.Item(Value(-1)), nullptr);
    EXPECT_EQ(options.Item(Value(3)), nullptr);
    EXPECT_EQ(options.Item(Value(1e300)), nullptr);
    EXPECT_EQ(options.Item(Value(std::shared_ptr<base::Object>())), nullptr);
    EXPECT_EQ(options.Item(Value(2))->Key, "Vn34");
    EXPECT_EQ(options.Item(Value(2.0))->Key, "Vn34");
}

TEST_F(ToolOptionsTest, AnEnumeratorKeepsToTheRecordsOfItsStart) {
    ASSERT_TRUE(options.Load(schema));
    ToolOptions::Enumerator enumerator = options.NewEnum();
    options.Clear();
    EXPECT_EQ(enumerator.Next()->Key, "SOV02");
    EXPECT_EQ(enumerator.Next()->Key, "Vn34");
    EXPECT_EQ(enumerator.Next(), nullptr);
    enumerator.Reset();
    EXPECT_EQ(enumerator.Next()->Key, "SOV02");
}

TEST_F(ToolOptionsTest, ClearKeepsTheText) {
    ASSERT_TRUE(options.Load(schema));
    options.Clear();
    EXPECT_EQ(options.Count(), 0u);
    EXPECT_EQ(options.XML(), schema);
}

TEST_F(ToolOptionsTest, SaveWritesTheTextAsPassedAndTheValuesIntoTheElements) {
    ASSERT_TRUE(options.Load(schema));
    const ToolOptions::Record record = options.Item(Value("SOV02"));
    (*record->Properties.Find("cmbLanguage"))->Value = Value(1031);
    (*record->Properties.Find("lblOrder"))->Value = Value("not written");
    (*record->Properties.Find("DisplayName"))->Value = Value("not written");
    ASSERT_TRUE(options.Save(schema, file));
    EXPECT_EQ(memory.File(file), schema);
    EXPECT_EQ(record->XMLObject.Xml(), "<Tool ID=\"SOV02\"><DisplayName>Tool Manager</DisplayName>"
                                       "<Option><Name>cmbLanguage</Name><Value>1031</Value></Option>"
                                       "<Option><Name>lblOrder</Name></Option></Tool>");
    // the text was loaded again
    EXPECT_EQ(TextOf(*options.Item(Value("SOV02")), "cmbLanguage"), "1033");
}

TEST_F(ToolOptionsTest, SaveRefusesASetThatIsNoRecord) {
    ASSERT_TRUE(options.Load(schema));
    EXPECT_FALSE(options.Save(Sets("<Tool ID=\"SOV02\"/><Tool ID=\"new\"/>"), file));
    EXPECT_EQ(memory.File(file), ServicesInMemory::NoFile);
    EXPECT_THAT(Keys(), ElementsAre("SOV02", "Vn34"));
}

TEST_F(ToolOptionsTest, SaveRefusesASetWhoseRecordLacksAnOption) {
    ASSERT_TRUE(options.Load(schema));
    options.Item(Value("SOV02"))->Properties.Remove("cmbLanguage");
    EXPECT_FALSE(options.Save(schema, file));
    EXPECT_EQ(memory.File(file), ServicesInMemory::NoFile);
}

TEST_F(ToolOptionsTest, SaveThatCannotWriteAnswersFalse) {
    ASSERT_TRUE(options.Load(schema));
    memory.Refuse();
    EXPECT_FALSE(options.Save(schema, file));
    EXPECT_THAT(Keys(), ElementsAre("SOV02", "Vn34"));
}

TEST_F(ToolOptionsTest, ARecordKeepsItsDocumentAlive) {
    ToolOptions::Record record;
    {
        ToolOptions shortLived(memory.services);
        ASSERT_TRUE(shortLived.Load(schema));
        record = shortLived.Item(Value("Vn34"));
    }
    EXPECT_EQ(record->XMLObject.Parent().Name(), "ToolOptions");
}

} // namespace
} // namespace kvtm::test
