#pragma once

#include "base/Collection.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace arvon::host {

/// A tree of items, level below level, in which an item of any level is found by its key in constant time.
///
/// `Item` derives from KeyedTree<Item>::Place and offers `const std::string& KeyText() const` and
/// `Level* LevelBelow()`, null while nothing was put below it.
template <class Item> class KeyedTree {
public:
    class Level;

    /// Where an item stands.
    class Place {
    public:
        /// Null once the item was taken out.
        Level* Standing() const noexcept { return standing_; }
        Item* Parent() const noexcept { return standing_ ? standing_->Parent() : nullptr; }
        /// False once the item, or one above it, was taken out.
        bool IsInTree() const noexcept { return standing_ && standing_->Tree(); }

    private:
        friend class Level;
        Level* standing_ = nullptr;
    };

    /// The items below one parent, or below no parent at the root.
    class Level {
    public:
        /// `tree`: null for items that stand in no tree any more.
        Level(KeyedTree* tree, Item* parent) : tree_(tree), parent_(parent) {
            if (tree && !parent) rank_ = ++tree->roots_;
        }
        ~Level() { Clear(); }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

        /// Throws DuplicateKey.
        const std::shared_ptr<Item>& Append(std::shared_ptr<Item> item) {
            const std::shared_ptr<Item>& added = items_.Add(item, item->KeyText());
            added->Place::standing_ = this;
            if (tree_) tree_->Take(*added);
            return added;
        }

        bool Remove(std::string_view key) {
            const std::shared_ptr<Item>* found = items_.Find(key);
            if (!found) return false;
            const std::shared_ptr<Item> item = *found; // keeps the key alive while it is looked up again
            Release(*item);
            items_.Remove(key);
            return true;
        }

        void Clear() {
            for (const auto& item : items_)
                Release(*item);
            items_.Clear();
        }

        /// Empties the level and takes it out of the tree.
        void Close() {
            Clear();
            tree_ = nullptr;
        }

        std::shared_ptr<Item> Find(std::string_view key) const {
            const std::shared_ptr<Item>* found = items_.Find(key);
            return found ? *found : nullptr;
        }
        const base::Collection<std::shared_ptr<Item>>& Items() const noexcept { return items_; }
        Item* Parent() const noexcept { return parent_; }
        KeyedTree* Tree() const noexcept { return tree_; }

    private:
        friend class KeyedTree;

        void Release(Item& item) {
            if (tree_) tree_->Drop(item);
            item.Place::standing_ = nullptr;
            if (Level* below = item.LevelBelow()) below->Detach();
        }
        void Detach() {
            for (const auto& item : items_) {
                if (tree_) tree_->Drop(*item);
                if (Level* below = item->LevelBelow()) below->Detach();
            }
            tree_ = nullptr;
        }

        KeyedTree* tree_;
        Item* parent_;
        std::size_t rank_ = 0; // order among the roots of a tree that has several
        base::Collection<std::shared_ptr<Item>> items_;
    };

    /// The item of that key, the first in tree order where several levels have one; null when there is none.
    Item* First(std::string_view key) const {
        const auto [begin, end] = index_.equal_range(key);
        if (begin == end) return nullptr;
        Item* first = begin->second;
        if (std::next(begin) == end) return first;
        std::vector<std::size_t> firstPath = PathOf(*first);
        for (auto other = std::next(begin); other != end; ++other) {
            std::vector<std::size_t> path = PathOf(*other->second);
            if (path >= firstPath) continue;
            first = other->second;
            firstPath = std::move(path);
        }
        return first;
    }

private:
    void Take(Item& item) {
        if (!item.KeyText().empty()) index_.emplace(item.KeyText(), &item);
    }
    void Drop(Item& item) {
        const auto [begin, end] = index_.equal_range(item.KeyText());
        const auto found = std::find_if(begin, end, [&](const auto& entry) { return entry.second == &item; });
        if (found != end) index_.erase(found);
    }

    static std::vector<std::size_t> PathOf(const Item& item) {
        std::vector<std::size_t> path;
        const Item* at = &item;
        while (const Level* level = at->Standing()) {
            path.push_back(level->Items().PositionOf(at->KeyText()));
            if (!level->Parent()) {
                path.push_back(level->rank_);
                break;
            }
            at = level->Parent();
        }
        std::reverse(path.begin(), path.end());
        return path;
    }

    std::unordered_multimap<std::string_view, Item*> index_; // views into the items' own keys
    std::size_t roots_ = 0;
};

} // namespace arvon::host
