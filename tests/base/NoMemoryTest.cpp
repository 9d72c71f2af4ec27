// What promises to fail never does so without memory, too: an exception would end the program.

#include "tests/base/NoMemory.h"

#include "base/Collection.h"
#include "base/NumberText.h"
#include "base/Text.h"
#include "base/Value.h"
#include "base/XmlDocument.h"
#include "base/XmlText.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using base::Value;

bool AllocationFails() {
    const NoMemory none;
    try {
        const auto block = std::make_unique<std::string>();
        return !block;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

TEST(NoMemory, IsToBeHadWhileItIsRefused) {
    EXPECT_TRUE(AllocationFails());
    EXPECT_NO_THROW(std::string(1000, 'x'));
}

TEST(NoMemory, IsNeededToReadALeadingNumber) {
    for (const auto& [text, number] : std::vector<std::pair<std::string, double>>{
             {"12 x", 12},
             {"1E3", 1000},
             {"1d3", 1000},
             {"-2.5D+1 apples", -25},
             {"1e400", std::numeric_limits<double>::max()},
             {"0." + std::string(100'000, '0') + "1E100001", 1},
             {std::string(100'000, '1') + "e-99999", 1.1111111111111112},
             {"none", 0}}) {
        SCOPED_TRACE(text.substr(0, 40));
        double read = 0;
        {
            const NoMemory none;
            read = base::LeadingNumber(text);
        }
        EXPECT_DOUBLE_EQ(read, number);
    }
}

TEST(NoMemory, IsNeededToCompareWithANumber) {
    for (const Value& value :
         {Value("1,000"), Value("1E3"), Value(" 1d3 "), Value("+1,000.000"), Value("&H3E8"), Value(1000),
          Value(1000.0), Value(base::Date{1000}), Value(std::string(100'000, '0') + "1,000E0")}) {
        bool isEqual = false;
        {
            const NoMemory none;
            isEqual = value.EqualsNumber(1000) && !value.EqualsNumber(999);
        }
        EXPECT_TRUE(isEqual) << value.ToText().substr(0, 40);
    }
}

TEST(NoMemory, IsNeededToLookIntoATextOrTakeItsEnds) {
    const std::string text = "  " + std::string(5000, 'x') + "\xC3\xA4\xFF ";
    const Value value(text);
    bool isRight = false;
    {
        const NoMemory none;
        const std::string* held = value.TextIfAny();
        isRight = held && held->size() == text.size() && base::TrimBlanks(*held).size() == text.size() - 3 &&
                  base::TrimWhiteSpace(*held).size() == text.size() - 3 &&
                  base::FirstCharacters(*held, 5003).size() == 5004 && !base::IsWellFormedUtf8(*held) &&
                  !base::IsXmlText(*held) && !base::IsXmlName(*held) && base::IsXmlName("a:b");
    }
    EXPECT_TRUE(isRight);
}

TEST(NoMemory, IsNeededToFindMoveAndClearInACollection) {
    base::Collection<std::string> items;
    for (int i = 0; i < 1000; ++i)
        items.Add(std::string(100, 'x'), "a key longer than a short text " + std::to_string(i));
    bool isRight = false;
    {
        const NoMemory none;
        base::Collection<std::string> moved(std::move(items));
        isRight = moved.Count() == 1000 && moved.Find("a key longer than a short text 999") &&
                  !moved.Find("another key, longer than a short text");
        items = std::move(moved);
        items.Clear();
        isRight = isRight && items.IsEmpty() && !items.Find("a key longer than a short text 0");
    }
    EXPECT_TRUE(isRight);
    items.Add("usable", "again");
    EXPECT_EQ(*items.Find("again"), "usable");
}

TEST(NoMemory, IsNeededToMoveAndReleaseNodes) {
    base::XmlDocument document;
    document.LoadText("<a><b/></a>");
    base::XmlNode node = document.Root(), other = node;
    bool isRight = false;
    {
        const NoMemory none;
        const base::XmlNode moved(std::move(node));
        other = moved;
        isRight = other.IsElement() && other == moved && !document.HasDeclaration() && !document.IsEmpty();
    }
    EXPECT_TRUE(isRight);
}

} // namespace
