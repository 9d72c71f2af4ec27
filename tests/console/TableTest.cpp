#include "console/Table.h"

#include <gmock/gmock.h>

using namespace arvon::console;
using testing::ElementsAre;

TEST(Table, AlignsColumnsByCharacters) {
    const Json state = {{{"key", "a"}, {"caption", "Wärme"}, {"width", 5}},
                        {{"key", "long"}, {"caption", "x"}, {"width", 10}}};
    EXPECT_THAT(TableOf(state), ElementsAre("key   caption  width", "a     Wärme    5", "long  x        10"));
}

TEST(Table, AlignsColumnsByWhatTheirCharactersTake) {
    const Json state = {{{"caption", "熱負荷"}, {"width", 5}},
                        {{"caption", "Wa\u0308rme"}, {"width", 10}},
                        {{"caption", "x"}, {"width", 1}}};
    EXPECT_THAT(TableOf(state),
                ElementsAre("caption  width", "熱負荷   5", "Wa\u0308rme    10", "x        1"));
}

TEST(Table, LeavesOutColumnsInWhichNothingStands) {
    const Json state = {{{"key", "a"}, {"picture", ""}}, {{"key", "b"}, {"picture", ""}}};
    EXPECT_THAT(TableOf(state), ElementsAre("key", "a", "b"));
}

TEST(Table, IndentsWhatLiesBelowAnEntry) {
    const Json state = {
        {{"key", "mnuTool"},
         {"visible", true},
         {"items", {{{"key", "mnuA"}, {"enabled", false}}, {{"key", "mnuB"}, {"enabled", true}}}}}};
    EXPECT_THAT(TableOf(state), ElementsAre("key      visible  enabled", "mnuTool  yes",
                                            "  mnuA            no", "  mnuB            yes"));
}

TEST(Table, WritesPlainValuesOneALine) {
    EXPECT_THAT(TableOf(Json::array({"KvTM10", "SnapIn"})), ElementsAre("KvTM10", "SnapIn"));
}

TEST(Table, SaysWhenThereIsNothing) {
    EXPECT_THAT(TableOf(Json::array()), ElementsAre("(none)"));
}

TEST(Table, JoinsPlainListsInACell) {
    const Json state = {{{"key", "p"}, {"texts", {"one", "two"}}}};
    EXPECT_THAT(TableOf(state), ElementsAre("key  texts", "p    one, two"));
}
