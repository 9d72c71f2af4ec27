#pragma once

#include "base/ComponentError.h"

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace base {

/// An ordered collection that counts from 1, with optional unique keys (compared exactly).
///
/// Appending, removing and finding by key take constant time. Positions are kept as an index of the first
/// entries that is cut back at each change and extended when asked, so walks forwards or backwards by
/// position, and walks that remove or insert as they go, take constant time a step too. Iterators stay valid
/// until their own entry is removed.
template <class T> class Collection {
    struct Entry {
        T item;
        std::string key;
        std::size_t position = 0; // meaningful only while positions_[position - 1] is this entry
    };
    using Entries = std::list<Entry>;
    using Place = typename Entries::iterator;

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
        return found == keys_.end() ? nullptr : &found->second->item;
    }
    const T* Find(std::string_view key) const noexcept { return const_cast<Collection*>(this)->Find(key); }

    /// The key of the entry at a position; empty when it has none. Throws OutOfRange.
    const std::string& KeyAt(std::size_t position) const { return At(position)->key; }

    /// The position of a key, 0 when there is none.
    std::size_t PositionOf(std::string_view key) const {
        const auto found = keys_.find(key);
        if (found == keys_.end()) return 0;
        const Place wanted = found->second;
        while (!HasKnownPosition(wanted))
            ExtendPositions();
        return wanted->position;
    }

    /// Removes the entry at a position. Throws OutOfRange.
    void Remove(std::size_t position) { Erase(At(position)); }

    /// Removes the entry under a key; false when there is none.
    bool Remove(std::string_view key) {
        const auto found = keys_.find(key);
        if (found == keys_.end()) return false;
        Erase(found->second);
        return true;
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
        if (!key.empty() && keys_.contains(key)) {
            throw ComponentError(errors::DuplicateKey, "Collection",
                                 "the key \"" + std::string(key) + "\" is already in the collection");
        }
        if (before != entries_.end()) ForgetPositionsFrom(before);
        const Place added = entries_.insert(before, Entry{std::move(item), std::string(key)});
        if (!key.empty()) keys_.emplace(std::string_view(added->key), added);
        return added->item;
    }

    void Erase(Place place) {
        ForgetPositionsFrom(place);
        if (!place->key.empty()) keys_.erase(std::string_view(place->key));
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
    std::unordered_map<std::string_view, Place> keys_; // views into the entries' own keys
    mutable std::vector<Place> positions_;             // of the first entries, as far as they are known
};

} // namespace base
