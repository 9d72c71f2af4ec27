#include "catalogue/RecordSort.h"

#include "base/Text.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace kvtm::test {

using base::ComponentError;
using base::Value;

namespace {

/// A record with one property, "key", that can be made unreadable.
class OneProperty final : public arvon::IToolRecord {
public:
    OneProperty(std::string name, Value key) : name_(std::move(name)), key_(std::move(key)) {}

    std::string Name() const override { return name_; }
    std::string Classification() const override { return {}; }
    bool ShowInList() const override { return true; }
    Value Get(std::string_view member) const override {
        ++reads;
        if (broken) throw ComponentError(1001, "Arvon110", "reading " + name_ + " failed");
        if (!base::EqualIgnoringCase(member, "key")) NoSuchMember(member);
        return key_;
    }

    bool broken = false;
    mutable int reads = 0;

private:
    std::string name_;
    Value key_;
};

ToolCollection RecordsWith(const std::vector<Value>& keys) {
    ToolCollection records;
    for (const Value& key : keys)
        records.Add(std::make_shared<OneProperty>("record " + std::to_string(records.Count() + 1), key));
    return records;
}

OneProperty& At(ToolCollection& records, std::size_t position) {
    return static_cast<OneProperty&>(*records.Item(position));
}

std::vector<std::string> Names(const ToolCollection& records) {
    std::vector<std::string> names;
    for (const ToolRecord& record : records)
        names.push_back(record->Name());
    return names;
}

std::vector<std::string> Keys(const ToolCollection& records) {
    std::vector<std::string> keys;
    for (const ToolRecord& record : records)
        keys.push_back(record->Get("key").ToText());
    return keys;
}

// The plain insertion sort whose results and failures the fast one must have.
// ----------------------------------------------------------------------------------------------------------

base::Date DateOf(const ToolRecord& record, const std::string& text) {
    try {
        return Value(text).ToDate();
    } catch (const ComponentError& error) {
        throw ComponentError(error.Number(), error.Source(),
                             "tool \"" + record->Name() + "\": " + error.Description());
    }
}

bool GoesBefore(const ToolRecord& our, const std::string& ours, const ToolRecord& their,
                const std::string& theirs, const RecordOrder& order) {
    if (order.asDates && order.descending) {
        base::LeadingNumber(ours);
        base::LeadingNumber(theirs);
        return false;
    }
    if (order.asDates) {
        const base::Date ourDate = DateOf(our, ours);
        const base::Date theirDate = DateOf(their, theirs);
        return theirDate > ourDate;
    }
    const std::u32string ourCodes = base::ToCodePoints(ours);
    const std::u32string theirCodes = base::ToCodePoints(theirs);
    return order.descending ? ourCodes > theirCodes : ourCodes < theirCodes;
}

ToolCollection InsertionSort(const ToolCollection& records, const RecordOrder& order) {
    ToolCollection result;
    for (const ToolRecord& record : records) {
        const std::string ours = record->Get(order.property).ToText();
        std::size_t place = 1;
        while (place <= result.Count()) {
            const ToolRecord& other = result.Item(place);
            if (GoesBefore(record, ours, other, other->Get(order.property).ToText(), order)) break;
            ++place;
        }
        result.Add(record, {}, place);
    }
    return result;
}

struct Outcome {
    std::vector<std::string> names;
    std::int32_t errorNumber = 0;
    std::string errorText;
    bool operator==(const Outcome&) const = default;
};

template <class Sort> Outcome OutcomeOf(Sort sort, const ToolCollection& records, const RecordOrder& order) {
    try {
        return {Names(sort(records, order)), 0, {}};
    } catch (const ComponentError& error) {
        return {{}, error.Number(), error.Description()};
    }
}

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << testing::PrintToString(outcome.names) << " " << outcome.errorNumber << " " << outcome.errorText;
}

// ----------------------------------------------------------------------------------------------------------

/// Short texts that share beginnings, from all parts of Unicode, some longer than a machine word.
Value AnyText(TestRandom& random) {
    static const std::vector<std::string> pieces = {"a",
                                                    "b",
                                                    "A",
                                                    "B",
                                                    "1",
                                                    "10",
                                                    "2",
                                                    " ",
                                                    "&",
                                                    ".",
                                                    "Z",
                                                    "\n",
                                                    "~",
                                                    "\xC3\xA4",
                                                    "\xC3\x9F",
                                                    "\xE2\x80\x93",
                                                    "\xEF\xBF\xBD",
                                                    "\xF0\x9F\x94\xA7"};
    std::string text = random.OnceIn(4) ? "a common start, " : "";
    for (std::size_t left = random.Below(4); left > 0; --left)
        text += random.OneOf(pieces);
    if (random.OnceIn(12)) text += std::string(1, '\0') + "x";
    return Value(text);
}

Value AnyDate(TestRandom& random, bool invalidToo, std::size_t number) {
    if (invalidToo && random.OnceIn(10)) return Value("no date " + std::to_string(number));
    const int day = static_cast<int>(random.Below(5)) + 1;
    switch (random.Below(5)) {
    case 0:
        return Value(base::FromCalendar({2024, 3, day, static_cast<int>(random.Below(2)) * 13, 5, 0}));
    case 1:
        return Value("2024-03-0" + std::to_string(day));
    case 2:
        return Value("3/" + std::to_string(day) + "/2024");
    case 3:
        return Value("2024-03-0" + std::to_string(day) + "T13:05:00");
    default:
        return Value(base::Date{45352.0 + day}); // 2024-03-01 is day 45352
    }
}

Value AnyOther(TestRandom& random) {
    static const std::vector<Value> others = {Value(),   Value(true),  Value(12),   Value(2.5),
                                              Value(""), Value(false), Value("12"), Value(-3)};
    return random.OneOf(others);
}

} // namespace

TEST(RecordSort, PutsCapitalsBeforeSmallLetters) {
    const ToolCollection records = RecordsWith({"b", "A", "a"});
    EXPECT_EQ(Keys(SortRecords(records, {"key"})), (std::vector<std::string>{"A", "a", "b"}));
    EXPECT_EQ(Keys(SortRecords(records, {"key", true})), (std::vector<std::string>{"b", "a", "A"}));
}

TEST(RecordSort, PutsAShorterTextBeforeALongerOneThatItStarts) {
    const ToolCollection records = RecordsWith({"Layout 2", "Layout", "Layout ", ""});
    EXPECT_EQ(Keys(SortRecords(records, {"key"})),
              (std::vector<std::string>{"", "Layout", "Layout ", "Layout 2"}));
}

TEST(RecordSort, ComparesTextsLongerThanAMachineWord) {
    const ToolCollection records = RecordsWith({"Pipework 2", "Pipework 10", "Pipework", "Pipewor"});
    EXPECT_EQ(Keys(SortRecords(records, {"key"})),
              (std::vector<std::string>{"Pipewor", "Pipework", "Pipework 10", "Pipework 2"}));
}

TEST(RecordSort, OrdersBeyondAsciiByCharacterCode) {
    const std::string umlaut = "\xC3\x84", tool = "\xF0\x9F\x94\xA7", replacement = "\xEF\xBF\xBD";
    const ToolCollection records = RecordsWith({tool, umlaut, replacement, "z"});
    EXPECT_EQ(Keys(SortRecords(records, {"key"})),
              (std::vector<std::string>{"z", umlaut, replacement, tool}));
}

TEST(RecordSort, KeepsTheOrderOfEqualRecordsInBothDirections) {
    const ToolCollection records = RecordsWith({"2", "1", "2", "1"});
    EXPECT_EQ(Names(SortRecords(records, {"key"})),
              (std::vector<std::string>{"record 2", "record 4", "record 1", "record 3"}));
    EXPECT_EQ(Names(SortRecords(records, {"key", true})),
              (std::vector<std::string>{"record 1", "record 3", "record 2", "record 4"}));
}

TEST(RecordSort, OrdersDatesHoweverTheyAreWritten) {
    const ToolCollection records =
        RecordsWith({"2024-03-02", "3/1/2024", Value(base::FromCalendar({2023, 12, 31})), "2024-03-01"});
    EXPECT_EQ(Names(SortRecords(records, {"key", false, true})),
              (std::vector<std::string>{"record 3", "record 2", "record 4", "record 1"}));
}

TEST(RecordSort, LeavesTheOrderAloneWhenDescendingByDates) {
    const ToolCollection records = RecordsWith({"2024-03-02", "no date", "2024-03-03", ""});
    EXPECT_EQ(Names(SortRecords(records, {"key", true, true})), Names(records));
}

TEST(RecordSort, GivesNothingForNothing) {
    EXPECT_TRUE(SortRecords({}, {"key"}).IsEmpty());
    EXPECT_TRUE(SortRecords({}, {"key", false, true}).IsEmpty());
}

TEST(RecordSort, GivesRecordsWithoutKeysAndKeepsTheSource) {
    ToolCollection records;
    records.Add(std::make_shared<OneProperty>("b", "b"), "b");
    records.Add(std::make_shared<OneProperty>("a", "a"), "a");
    const ToolCollection sorted = SortRecords(records, {"key"});
    EXPECT_EQ(sorted.Find("a"), nullptr);
    EXPECT_EQ(sorted.KeyAt(1), "");
    EXPECT_EQ(Names(records), (std::vector<std::string>{"b", "a"}));
    EXPECT_NE(records.Find("a"), nullptr);
}

TEST(RecordSort, ReadsEachPropertyOnce) {
    for (const bool descending : {false, true}) {
        for (const bool asDates : {false, true}) {
            ToolCollection records = RecordsWith({"2024-03-02", "2024-03-01", "2024-03-03"});
            SortRecords(records, {"key", descending, asDates});
            for (std::size_t position = 1; position <= 3; ++position)
                EXPECT_EQ(At(records, position).reads, 1);
        }
    }
}

TEST(RecordSort, NeverConvertsARecordThatStandsAlone) {
    const ToolCollection records = RecordsWith({"no date"});
    EXPECT_EQ(SortRecords(records, {"key", false, true}).Count(), 1u);
}

TEST(RecordSort, RefusesADateThatIsNoneOnceThereIsAnother) {
    const ToolCollection records = RecordsWith({"no date", "2024-03-01"});
    EXPECT_EQ(RefusalOf([&] {
                  SortRecords(records, {"key", false, true});
              }).number,
              base::errors::TypeMismatch);
}

TEST(RecordSort, NamesTheToolWhoseDateIsNone) {
    const ToolCollection records = RecordsWith({"2024-03-01", "2024-03-02", "1e400", "last week"});
    const Outcome third = OutcomeOf(SortRecords, records, {"key", false, true});
    EXPECT_EQ(third.errorNumber, base::errors::Overflow);
    EXPECT_EQ(third.errorText, "tool \"record 3\": \"1e400\" is too large for a number");
    const Outcome first =
        OutcomeOf(SortRecords, RecordsWith({"last week", "2024-03-02"}), {"key", false, true});
    EXPECT_EQ(first.errorNumber, base::errors::TypeMismatch);
    EXPECT_EQ(first.errorText, "tool \"record 1\": \"last week\" is not a date");
}

TEST(RecordSort, TakesFourDigitsForAYear) {
    const ToolCollection records = RecordsWith({"2024-03-01", "2023", "2023134", "2022-12-31"});
    EXPECT_EQ(Names(SortRecords(records, {"key", false, true})),
              (std::vector<std::string>{"record 4", "record 2", "record 3", "record 1"}));
}

TEST(RecordSort, ReportsAnUnreadableSecondRecordBeforeTheFirstOnesDate) {
    ToolCollection records = RecordsWith({"no date", "2024-03-01"});
    At(records, 2).broken = true;
    const Outcome outcome = OutcomeOf(SortRecords, records, {"key", false, true});
    EXPECT_EQ(outcome.errorText, "reading record 2 failed");
}

TEST(RecordSort, RefusesAPropertyThatRecordsDoNotHave) {
    const Outcome outcome = OutcomeOf(SortRecords, RecordsWith({"a"}), {"colour"});
    EXPECT_EQ(outcome.errorNumber, base::errors::NoSuchMember);
}

TEST(RecordSort, RefusesAnObjectAsAProperty) {
    const ToolCollection records = RecordsWith({Value(std::make_shared<OneProperty>("inner", "x"))});
    EXPECT_EQ(OutcomeOf(SortRecords, records, {"key"}).errorNumber, base::errors::TypeMismatch);
}

class RandomRecordSort : public testing::TestWithParam<unsigned> {};

TEST_P(RandomRecordSort, HasTheResultsAndFailuresOfThePlainInsertionSort) {
    TestRandom random(GetParam());
    std::size_t failures = 0, sorted = 0;
    for (int round = 0; round < 1000; ++round) {
        const RecordOrder order{"key", random.OnceIn(2), random.OnceIn(2)};
        const bool invalidToo = random.OnceIn(3);
        std::vector<Value> keys(random.Below(30));
        for (Value& key : keys) {
            key = order.asDates       ? AnyDate(random, invalidToo, random.Below(1000))
                  : random.OnceIn(20) ? AnyOther(random)
                                      : AnyText(random);
        }
        ToolCollection records = RecordsWith(keys);
        if (random.OnceIn(4) && !keys.empty()) At(records, random.Below(keys.size()) + 1).broken = true;

        const Outcome wanted = OutcomeOf(InsertionSort, records, order);
        ASSERT_EQ(OutcomeOf(SortRecords, records, order), wanted)
            << "round " << round << ", descending " << order.descending << ", as dates " << order.asDates
            << ", keys " << testing::PrintToString(keys.size());
        ++(wanted.errorNumber != 0 ? failures : sorted);
    }
    // both kinds of outcome were met often
    EXPECT_GT(failures, 150u);
    EXPECT_GT(sorted, 500u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRecordSort, testing::Values(1u, 2u, 3u, 4u, 5u));

} // namespace kvtm::test
