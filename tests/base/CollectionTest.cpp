#include "base/Collection.h"

#include "tests/base/RefusalOf.h"

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using base::Collection;

/// The items in order, by for-each.
template <class T> std::vector<T> Walk(const Collection<T>& collection) {
    std::vector<T> items;
    for (const T& item : collection)
        items.push_back(item);
    return items;
}

Collection<int> Numbers(int count) {
    Collection<int> numbers;
    for (int i = 1; i <= count; ++i)
        numbers.Add(i, "k" + std::to_string(i));
    return numbers;
}

// Far more steps than a test's time allows when one step takes time in proportion to the size.
constexpr int many = 300'000;

TEST(Collection, StartsEmpty) {
    const Collection<int> collection;
    EXPECT_EQ(collection.Count(), 0u);
    EXPECT_TRUE(collection.IsEmpty());
    EXPECT_TRUE(Walk(collection).empty());
}

TEST(Collection, CountsFromOne) {
    const Collection<int> numbers = Numbers(3);
    EXPECT_EQ(numbers.Item(1), 1);
    EXPECT_EQ(numbers.Item(3), 3);
}

TEST(Collection, RefusesPositionsOutside) {
    Collection<int> numbers = Numbers(3);
    for (const std::size_t position : {std::size_t{0}, std::size_t{4}, static_cast<std::size_t>(-1)}) {
        EXPECT_EQ(RefusalOf([&] { numbers.Item(position); }).number, base::errors::OutOfRange);
        EXPECT_EQ(RefusalOf([&] { numbers.KeyAt(position); }).number, base::errors::OutOfRange);
        EXPECT_EQ(RefusalOf([&] { numbers.Remove(position); }).number, base::errors::OutOfRange);
    }
    EXPECT_EQ(RefusalOf([&] { numbers.Item(4); }).description, "position 4 is outside 1 to 3");
    EXPECT_EQ(RefusalOf([&] { numbers.Add(9, "", 0); }).number, base::errors::OutOfRange);
    EXPECT_EQ(RefusalOf([&] { numbers.Add(9, "", 5); }).number, base::errors::OutOfRange);
    EXPECT_EQ(numbers.Count(), 3u);
}

TEST(Collection, RefusesARepeatedKeyAndStaysAsItWas) {
    Collection<int> numbers = Numbers(2);
    const Refusal refusal = RefusalOf([&] { numbers.Add(9, "k1"); });
    EXPECT_EQ(refusal.number, base::errors::DuplicateKey);
    EXPECT_EQ(refusal.description, "the key \"k1\" is already in the collection");
    EXPECT_EQ(RefusalOf([&] { numbers.Add(9, "k2", 1); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(Walk(numbers), (std::vector{1, 2}));
    EXPECT_EQ(*numbers.Find("k1"), 1);
}

TEST(Collection, ComparesKeysExactly) {
    Collection<int> numbers;
    numbers.Add(1, "Key");
    numbers.Add(2, "key");
    numbers.Add(3, "key ");
    EXPECT_EQ(*numbers.Find("Key"), 1);
    EXPECT_EQ(*numbers.Find("key"), 2);
    EXPECT_EQ(*numbers.Find("key "), 3);
    EXPECT_EQ(numbers.Find("KEY"), nullptr);
}

TEST(Collection, HandsOutWhatIsTakenByKey) {
    Collection<std::unique_ptr<int>> numbers;
    numbers.Add(std::make_unique<int>(1), "one");
    numbers.Add(std::make_unique<int>(2), "two");
    const std::optional<std::unique_ptr<int>> taken = numbers.Take("one");
    ASSERT_TRUE(taken);
    EXPECT_EQ(**taken, 1);
    EXPECT_EQ(numbers.Count(), 1u);
    EXPECT_EQ(numbers.Find("one"), nullptr);
    EXPECT_EQ(numbers.PositionOf("two"), 1u);
    EXPECT_FALSE(numbers.Take("one"));
}

TEST(Collection, FindsItemsUnderTheKeysThatTheyKeep) {
    Collection<std::shared_ptr<std::string>, std::string_view> names;
    const auto add = [&](const char* text) {
        auto name = std::make_shared<std::string>(text);
        const std::string_view key = *name;
        return names.Add(std::move(name), key);
    };
    const std::shared_ptr<std::string> first = add("a name too long to lie in the object itself");
    add("short");
    EXPECT_EQ(*names.Find("a name too long to lie in the object itself"), first);
    EXPECT_EQ(RefusalOf([&] { add("short"); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(names.KeyAt(2), "short");
    EXPECT_TRUE(names.Remove("a name too long to lie in the object itself"));
    EXPECT_EQ(names.PositionOf("short"), 1u);
}

TEST(Collection, HoldsAnyNumberOfEntriesWithoutAKey) {
    Collection<int> numbers;
    numbers.Add(1);
    numbers.Add(2);
    EXPECT_EQ(numbers.Count(), 2u);
    EXPECT_EQ(numbers.Find(""), nullptr);
    EXPECT_EQ(numbers.PositionOf(""), 0u);
    EXPECT_FALSE(numbers.Remove(std::string_view()));
    EXPECT_EQ(numbers.KeyAt(1), "");
}

TEST(Collection, FindsTheConstItemUnderAKey) {
    const Collection<int> numbers = Numbers(3);
    ASSERT_NE(numbers.Find("k2"), nullptr);
    EXPECT_EQ(*numbers.Find("k2"), 2);
    EXPECT_EQ(numbers.Find("k4"), nullptr);
}

TEST(Collection, LetsItemsBeChangedInPlace) {
    Collection<int> numbers = Numbers(3);
    numbers.Item(2) = 20;
    *numbers.Find("k3") = 30;
    numbers.Add(4, "k4") = 40;
    EXPECT_EQ(Walk(numbers), (std::vector{1, 20, 30, 40}));
}

TEST(Collection, InsertsAtAPosition) {
    Collection<int> numbers = Numbers(2);
    numbers.Add(10, "first", 1);
    numbers.Add(20, "middle", 3);
    numbers.Add(30, "last", 5);
    EXPECT_EQ(Walk(numbers), (std::vector{10, 1, 20, 2, 30}));
    EXPECT_EQ(numbers.PositionOf("middle"), 3u);
    EXPECT_EQ(numbers.PositionOf("last"), 5u);
    EXPECT_EQ(numbers.PositionOf("k2"), 4u);
}

TEST(Collection, InsertsIntoAnEmptyCollectionAtPositionOne) {
    Collection<int> numbers;
    numbers.Add(7, "", 1);
    EXPECT_EQ(numbers.Item(1), 7);
}

TEST(Collection, ClosesUpAfterARemoval) {
    Collection<int> numbers = Numbers(4);
    EXPECT_EQ(numbers.Item(4), 4);
    numbers.Remove(2);
    EXPECT_EQ(Walk(numbers), (std::vector{1, 3, 4}));
    EXPECT_EQ(numbers.Item(2), 3);
    EXPECT_EQ(numbers.PositionOf("k4"), 3u);
    EXPECT_EQ(numbers.Find("k2"), nullptr);
}

TEST(Collection, RemovesByKey) {
    Collection<int> numbers = Numbers(3);
    EXPECT_TRUE(numbers.Remove("k1"));
    EXPECT_FALSE(numbers.Remove("k1"));
    EXPECT_EQ(Walk(numbers), (std::vector{2, 3}));
}

TEST(Collection, RemovesByAKeyThatLivesInItsOwnEntry) {
    Collection<int> numbers;
    numbers.Add(1, std::string(100, 'x'));
    const std::string_view own = numbers.KeyAt(1);
    EXPECT_TRUE(numbers.Remove(own));
    EXPECT_TRUE(numbers.IsEmpty());
}

TEST(Collection, TakesAKeyAgainAfterItsRemoval) {
    Collection<int> numbers = Numbers(2);
    numbers.Remove("k1");
    numbers.Add(9, "k1");
    EXPECT_EQ(numbers.PositionOf("k1"), 2u);
    numbers.Clear();
    numbers.Add(8, "k1");
    EXPECT_EQ(Walk(numbers), std::vector{8});
}

TEST(Collection, KeepsItsSnapshotWhenItChanges) {
    Collection<int> numbers = Numbers(3);
    const std::vector<int> snapshot = numbers.Snapshot();
    numbers.Clear();
    EXPECT_EQ(snapshot, (std::vector{1, 2, 3}));
}

TEST(Collection, KeepsIteratorsValidWhileOthersComeAndGo) {
    Collection<int> numbers = Numbers(3);
    auto at = numbers.begin();
    ++at;
    numbers.Remove("k1");
    numbers.Add(4);
    EXPECT_EQ(*at, 2);
    ++at;
    ++at;
    EXPECT_EQ(*at, 4);
    ++at;
    EXPECT_TRUE(at == numbers.end());
}

TEST(Collection, KeepsItemsInTheirPlaceInMemory) {
    Collection<int> numbers = Numbers(1);
    const int* first = &numbers.Item(1);
    for (int i = 0; i < 1000; ++i)
        numbers.Add(i, "", 1);
    EXPECT_EQ(numbers.Find("k1"), first);
}

TEST(Collection, MovesWithKeysAndPositions) {
    Collection<int> source = Numbers(3);
    EXPECT_EQ(source.Item(3), 3);
    Collection<int> target = std::move(source);
    EXPECT_EQ(*target.Find("k2"), 2);
    EXPECT_EQ(target.PositionOf("k3"), 3u);
    target.Remove(1);
    EXPECT_EQ(target.Item(2), 3);
    Collection<int> other = Numbers(1);
    other = std::move(target);
    EXPECT_EQ(Walk(other), (std::vector{2, 3}));
    EXPECT_EQ(other.Find("k1"), nullptr);
}

TEST(Collection, HoldsItemsThatCannotBeCopied) {
    Collection<std::unique_ptr<int>> pointers;
    pointers.Add(std::make_unique<int>(5), "five");
    pointers.Add(std::make_unique<int>(4), "four", 1);
    EXPECT_EQ(**pointers.Find("five"), 5);
    EXPECT_EQ(*pointers.Item(1), 4);
}

/// An item that looks at its collection as it goes.
struct Witness {
    explicit Witness(Collection<std::shared_ptr<Witness>>& all) : owner(all) {}
    ~Witness() { seen = owner.Find("other") != nullptr && owner.Find("own") == nullptr; }
    Collection<std::shared_ptr<Witness>>& owner;
    inline static bool seen = false;
};

TEST(Collection, KeepsOtherEntriesWhenAnItemsDestructorLooksAtIt) {
    Collection<std::shared_ptr<Witness>> all;
    all.Add(std::make_shared<Witness>(all), "other");
    all.Add(std::make_shared<Witness>(all), "own");
    all.Remove("own");
    EXPECT_TRUE(Witness::seen);
    all.Clear();
}

TEST(Collection, WalksForwardsByPositionInConstantSteps) {
    const Collection<int> numbers = Numbers(many);
    for (int i = 1; i <= many; ++i)
        ASSERT_EQ(numbers.Item(static_cast<std::size_t>(i)), i);
}

TEST(Collection, RemovesAsItWalksBackwardsInConstantSteps) {
    Collection<int> numbers = Numbers(many);
    for (std::size_t i = numbers.Count(); i >= 1; --i) {
        if (numbers.Item(i) % 2 == 0) numbers.Remove(i);
    }
    EXPECT_EQ(numbers.Count(), static_cast<std::size_t>(many / 2));
    EXPECT_EQ(numbers.Item(many / 2), many - 1);
}

TEST(Collection, RemovesAsItWalksForwardsInConstantSteps) {
    Collection<int> numbers = Numbers(many);
    for (std::size_t i = 1; i <= numbers.Count();) {
        if (numbers.Item(i) % 2 == 0)
            numbers.Remove(i);
        else
            ++i;
    }
    EXPECT_EQ(numbers.Count(), static_cast<std::size_t>(many / 2));
}

TEST(Collection, InsertsAsItWalksInConstantSteps) {
    Collection<int> numbers = Numbers(many);
    for (std::size_t i = 1; i <= numbers.Count(); i += 2)
        numbers.Add(-numbers.Item(i), "", i);
    EXPECT_EQ(numbers.Count(), 2u * many);
    EXPECT_EQ(numbers.Item(1), -1);
    EXPECT_EQ(numbers.Item(2u * many), many);
}

TEST(Collection, EmptiesFromTheFrontInConstantSteps) {
    Collection<int> numbers = Numbers(many);
    int expected = 0;
    while (!numbers.IsEmpty()) {
        ASSERT_EQ(numbers.Item(1), ++expected);
        numbers.Remove(1);
    }
    EXPECT_EQ(expected, many);
}

TEST(Collection, RemovesByKeyInConstantStepsInAnyOrder) {
    Collection<int> numbers = Numbers(many);
    EXPECT_EQ(numbers.Item(many), many);
    for (int i = 1; i < many; i += 2)
        ASSERT_TRUE(numbers.Remove("k" + std::to_string(i)));
    EXPECT_EQ(numbers.Count(), static_cast<std::size_t>(many / 2));
    EXPECT_EQ(numbers.Item(1), 2);
}

TEST(Collection, AnswersPositionsOfKeysInConstantStepsBetweenChanges) {
    const Collection<int> numbers = Numbers(many);
    for (int i = many; i >= 1; --i)
        ASSERT_EQ(numbers.PositionOf("k" + std::to_string(i)), static_cast<std::size_t>(i));
}

/// The same operations on a plain vector: slow, and easy to see right.
class Model {
public:
    struct Entry {
        int item;
        std::string key;
    };

    std::size_t PositionOf(const std::string& key) const {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!key.empty() && entries[i].key == key) return i + 1;
        }
        return 0;
    }

    std::vector<Entry> entries;
};

void ExpectSame(const Collection<int>& collection, const Model& model, std::mt19937& random) {
    ASSERT_EQ(collection.Count(), model.entries.size());
    std::size_t i = 0;
    for (const int item : collection)
        ASSERT_EQ(item, model.entries[i++].item);
    if (model.entries.empty()) return;
    // Only some positions, so that the index stays partly built.
    for (int look = 0; look < 3; ++look) {
        const std::size_t at = random() % model.entries.size();
        ASSERT_EQ(collection.Item(at + 1), model.entries[at].item);
        ASSERT_EQ(collection.KeyAt(at + 1), model.entries[at].key);
        ASSERT_EQ(collection.PositionOf(model.entries[at].key), model.PositionOf(model.entries[at].key));
    }
}

TEST(Collection, BehavesAsAPlainListUnderRandomOperations) {
    std::mt19937 random(20240301);
    Collection<int> collection;
    Model model;
    for (int step = 0; step < 20'000; ++step) {
        const std::string key = random() % 4 == 0 ? "" : "k" + std::to_string(random() % 60);
        const std::size_t position = random() % (model.entries.size() + 1) + 1;
        const bool isTaken = model.PositionOf(key) != 0;
        switch (random() % 5) {
        case 0:
        case 1:
            if (isTaken) {
                ASSERT_EQ(RefusalOf([&] { collection.Add(step, key); }).number, base::errors::DuplicateKey);
                break;
            }
            collection.Add(step, key);
            model.entries.push_back({step, key});
            break;
        case 2:
            if (isTaken) break;
            collection.Add(step, key, position);
            model.entries.insert(model.entries.begin() + static_cast<std::ptrdiff_t>(position - 1),
                                 {step, key});
            break;
        case 3:
            if (position > model.entries.size()) break;
            collection.Remove(position);
            model.entries.erase(model.entries.begin() + static_cast<std::ptrdiff_t>(position - 1));
            break;
        default: {
            const std::size_t at = model.PositionOf(key);
            ASSERT_EQ(collection.Remove(key), at != 0);
            if (at != 0) model.entries.erase(model.entries.begin() + static_cast<std::ptrdiff_t>(at - 1));
        }
        }
        ASSERT_NO_FATAL_FAILURE(ExpectSame(collection, model, random)) << "after step " << step;
    }
}

TEST(Collection, TakesEmptyTextAsAKeyWhereItIsSaidToBeOne) {
    Collection<int> numbers;
    numbers.Add(1);
    numbers.AddKeyed(2, "");
    numbers.AddKeyed(3, "k");
    numbers.Add(4, "");
    ASSERT_TRUE(numbers.Find(""));
    EXPECT_EQ(*numbers.Find(""), 2);
    EXPECT_EQ(numbers.PositionOf(""), 2u);
    EXPECT_EQ(RefusalOf([&] { numbers.AddKeyed(5, ""); }).number, base::errors::DuplicateKey);
    EXPECT_EQ(Walk(numbers), (std::vector<int>{1, 2, 3, 4}));

    numbers.Remove(std::size_t{1}); // which has no key
    numbers.Remove(std::size_t{3});
    EXPECT_EQ(*numbers.Find(""), 2);
    numbers.Remove(std::size_t{1});
    EXPECT_FALSE(numbers.Find(""));
    numbers.AddKeyed(6, "");
    EXPECT_TRUE(numbers.Remove(std::string_view()));
    EXPECT_EQ(Walk(numbers), std::vector<int>{3});
}

} // namespace
