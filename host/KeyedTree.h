#pragma once

#include "base/Collection.h"
#include "base/KeyedSet.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace arvon::host {

/// A tree of items, level below level, in which an item of any level is found by its key in constant time.
///
/// `Item` derives from KeyedTree<Item>::Place and offers `const std::string& KeyText() const` and
/// `Level* LevelBelow()`, null while nothing was put below it.
template <class Item> class KeyedTree {
    using Entries = base::Collection<std::shared_ptr<Item>, std::string_view>; // under their own keys

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
        friend class KeyedTree;
        Level* standing_ = nullptr;
        Item* namesake_ = nullptr; // the next item of the tree that has the same key
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
            return Take(items_.Add(item, item->KeyText()));
        }

        /// Puts the item in the place of the one of its key, which must be there.
        const std::shared_ptr<Item>& Replace(std::shared_ptr<Item> item) {
            const std::string& key = item->KeyText();
            const std::size_t position = items_.PositionOf(key);
            Remove(key);
            return Take(items_.Add(item, key, position));
        }

        bool Remove(std::string_view key) {
            const std::optional<std::shared_ptr<Item>> taken = items_.Take(key);
            if (taken) Release(**taken);
            return taken.has_value();
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
        const Entries& Items() const noexcept { return items_; }
        Item* Parent() const noexcept { return parent_; }
        KeyedTree* Tree() const noexcept { return tree_; }

    private:
        friend class KeyedTree;

        const std::shared_ptr<Item>& Take(const std::shared_ptr<Item>& added) {
            added->Place::standing_ = this;
            if (tree_) tree_->Take(*added);
            return added;
        }
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
        Entries items_;
    };

    /// The item of that key, the first in tree order where several levels have one; null when there is none.
    Item* First(std::string_view key) const {
        const auto found = index_.find(key);
        if (found == index_.end()) return nullptr;
        Item* first = *found;
        if (!first->Place::namesake_) return first;
        std::vector<std::size_t> firstPath = PathOf(*first);
        for (Item* other = first->Place::namesake_; other; other = other->Place::namesake_) {
            std::vector<std::size_t> path = PathOf(*other);
            if (path >= firstPath) continue;
            first = other;
            firstPath = std::move(path);
        }
        return first;
    }

private:
    void Take(Item& item) {
        if (item.KeyText().empty()) return;
        const auto [known, isFirst] = index_.insert(&item);
        if (isFirst) return;
        item.Place::namesake_ = std::exchange((*known)->Place::namesake_, &item);
    }
    void Drop(Item& item) {
        const auto known = index_.find(item.KeyText());
        if (known == index_.end()) return;
        Item* const next = std::exchange(item.Place::namesake_, nullptr);
        if (*known == &item) {
            index_.erase(known);
            if (next) index_.insert(next);
            return;
        }
        Item* before = *known;
        while (before->Place::namesake_ != &item)
            before = before->Place::namesake_;
        before->Place::namesake_ = next;
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

    struct KeyOf {
        std::string_view operator()(const Item* item) const { return item->KeyText(); }
    };
    base::KeyedSet<Item*, KeyOf> index_; // one item of each key; the others follow as its namesakes
    std::size_t roots_ = 0;
};

} // namespace arvon::host
