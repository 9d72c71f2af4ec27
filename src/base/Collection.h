#pragma once

#include "base/ComponentError.h"
#include "base/KeyedSet.h"

#include <cstddef>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace base {

/// An ordered collection that counts from 1, with optional unique keys (compared exactly).
///
/// Appending, removing and finding by key take constant time. Positions are kept as an index of the first
/// entries that is cut back at each change and extended when asked, so walks forwards or backwards by
/// position, and walks that remove or insert as they go, take constant time a step too. Iterators stay valid
/// until their own entry is removed.
///
/// `Key` is what the entries hold their keys in: std::string_view where every key is a text that its item
/// keeps, unmoved, for as long as it is in the collection.
template <class T, class Key = std::string> class Collection {
    struct Entry {
        T item;
        Key key = {};
        bool isKeyed = false;
        std::size_t position = 0; // meaningful only while positions_[position - 1] is this entry
    };
    using Entries = std::list<Entry>;
    using Place = typename Entries::iterator;

    struct KeyOf {
        std::string_view operator()(Place place) const { return place->key; }
    };

public:
    Collection() = default;
    Collection(Collection&&) noexcept = default;
    Collection& operator=(Collection&&) noexcept = default;
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;

    std::size_t Count() const noexcept { return entries_.size(); }
    bool IsEmpty() const noexcept { return entries_.empty(); }

    /// Appends. An empty key means no key. Throws DuplicateKey, and OutOfRange from the overload with a
    /// position.
    T& Add(T item, std::string_view key = {}) { return InsertAt(entries_.end(), std::move(item), key); }

    /// Appends under a key that may be the empty text too. Throws DuplicateKey.
    T& AddKeyed(T item, std::string_view key) { return InsertKeyed(entries_.end(), std::move(item), key); }

    /// Inserts so that the item stands at `position` (1 to Count + 1).
    T& Add(T item, std::string_view key, std::size_t position) {
        if (position == Count() + 1) return Add(std::move(item), key);
        return InsertAt(At(position), std::move(item), key);
    }

    /// The item at a position. Throws OutOfRange.
    T& Item(std::size_t position) { return At(position)->item; }
    const T& Item(std::size_t position) const { return At(position)->item; }

    /// The item under a key, null when there is none.
    T* Find(std::string_view key) noexcept {
        const auto found = keys_.find(key);
        return found == keys_.end() ? nullptr : &Place(*found)->item;
    }
    const T* Find(std::string_view key) const noexcept { return const_cast<Collection*>(this)->Find(key); }

    /// The key of the entry at a position; empty too when it has none. Throws OutOfRange.
    const Key& KeyAt(std::size_t position) const { return At(position)->key; }

    /// The position of a key, 0 when there is none.
    std::size_t PositionOf(std::string_view key) const {
        const auto found = keys_.find(key);
        if (found == keys_.end()) return 0;
        const Place wanted = *found;
        while (!HasKnownPosition(wanted))
            ExtendPositions();
        return wanted->position;
    }

    /// Removes the entry at a position. Throws OutOfRange.
    void Remove(std::size_t position) { Erase(At(position)); }

    /// Removes the entry under a key; false when there is none.
    bool Remove(std::string_view key) { return Take(key).has_value(); }

    /// Removes the entry under a key and hands out its item; nothing when there is none.
    std::optional<T> Take(std::string_view key) {
        const auto found = keys_.find(key);
        if (found == keys_.end()) return {};
        const Place place = *found;
        std::optional<T> item(std::move(place->item));
        keys_.erase(found);
        ForgetPositionsFrom(place);
        entries_.erase(place);
        return item;
    }

    void Clear() noexcept {
        keys_.clear();
        positions_.clear();
        entries_.clear();
    }

    /// The items as they stand now: for loops during which a nested delivery may change the collection.
    std::vector<T> Snapshot() const {
        std::vector<T> items;
        items.reserve(Count());
        for (const Entry& entry : entries_)
            items.push_back(entry.item);
        return items;
    }

    /// Walks the items in order (for-each).
    class Iterator {
    public:
        explicit Iterator(typename Entries::const_iterator at) : at_(at) {}
        const T& operator*() const { return at_->item; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator==(const Iterator&) const = default;

    private:
        typename Entries::const_iterator at_;
    };
    Iterator begin() const { return Iterator(entries_.begin()); }
    Iterator end() const { return Iterator(entries_.end()); }

private:
    T& InsertAt(Place before, T item, std::string_view key) {
        if (!key.empty()) return InsertKeyed(before, std::move(item), key);
        if (before != entries_.end()) ForgetPositionsFrom(before);
        return entries_.emplace(before, std::move(item))->item;
    }

    T& InsertKeyed(Place before, T item, std::string_view key) {
        if (before != entries_.end()) ForgetPositionsFrom(before);
        Entries made; // stays out of the collection when its key is refused
        made.emplace_back(std::move(item), Key(key), true);
        const Place added = made.begin();
        if (!keys_.insert(added).second) {
            throw ComponentError(errors::DuplicateKey, "Collection",
                                 "the key \"" + std::string(key) + "\" is already in the collection");
        }
        entries_.splice(before, made);
        return added->item;
    }

    void Erase(Place place) {
        ForgetPositionsFrom(place);
        if (place->isKeyed) keys_.erase(place);
        entries_.erase(place);
    }

    Place At(std::size_t position) const {
        if (position < 1 || position > Count()) {
            throw ComponentError(errors::OutOfRange, "Collection",
                                 "position " + std::to_string(position) + " is outside 1 to " +
                                     std::to_string(Count()));
        }
        while (positions_.size() < position)
            ExtendPositions();
        return positions_[position - 1];
    }

    void ExtendPositions() const {
        const Place next =
            positions_.empty() ? const_cast<Entries&>(entries_).begin() : std::next(positions_.back());
        positions_.push_back(next);
        next->position = positions_.size();
    }

    bool HasKnownPosition(Place place) const {
        return place->position >= 1 && place->position <= positions_.size() &&
               positions_[place->position - 1] == place;
    }

    void ForgetPositionsFrom(Place place) {
        if (HasKnownPosition(place)) positions_.resize(place->position - 1);
    }

    Entries entries_;
    KeyedSet<Place, KeyOf> keys_;
    mutable std::vector<Place> positions_; // of the first entries, as far as they are known
};

} // namespace base
