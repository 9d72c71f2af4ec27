#pragma once

#include "core/contract/Menus.h"
#include "host/KeyedTree.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class MenuItem;

/// What the entries of one menu bar, or of the context menu, have in common.
struct MenuContext {
    Trace& trace;
    ModelPart part;
    KeyedTree<MenuItem> tree;
};

/// Operation names of one collection of entries.
struct MenuItemsOperations {
    std::string_view count, item, add, addSeparator, remove, clear;
};
inline constexpr MenuItemsOperations menuItemsOperations{"MenuItems.Count",  "MenuItems.Item",
                                                         "MenuItems.Add",    "MenuItems.AddSeparator",
                                                         "MenuItems.Remove", "MenuItems.Clear"};
inline constexpr MenuItemsOperations contextMenuOperations{"ContextMenu.Count",  "ContextMenu.Item",
                                                           "ContextMenu.Add",    "ContextMenu.AddSeparator",
                                                           "ContextMenu.Remove", "ContextMenu.Clear"};

class MenuItems final : public IMenuItems {
public:
    MenuItems(MenuContext& context, MenuItem* parent, const MenuItemsOperations& operations);

    std::size_t Count() const override;
    std::shared_ptr<IMenuItem> Item(std::size_t position) override;
    std::shared_ptr<IMenuItem> Item(std::string_view key) override;
    std::shared_ptr<IMenuItem> Add(std::string_view key, std::string_view caption,
                                   std::string_view description, std::string_view owner) override;
    std::shared_ptr<IMenuItem> AddSeparator(std::string_view key, std::string_view owner) override;
    void Remove(std::string_view key) override;
    void Clear() override;

    KeyedTree<MenuItem>::Level& Level() noexcept { return level_; }
    std::vector<model::MenuItem> Snapshot() const;

private:
    MenuContext& context_;
    const MenuItemsOperations& operations_;
    KeyedTree<MenuItem>::Level level_;
};

class MenuItem final : public IMenuItem, public KeyedTree<MenuItem>::Place {
public:
    MenuItem(MenuContext& context, std::string_view key, std::string_view caption,
             std::string_view description, std::string_view owner, bool separator);

    std::string Key() const override;
    std::string Caption() const override;
    std::string Owner() const override;
    void SetEnabled(bool enabled) override;
    void SetVisible(bool visible) override;
    IMenuItems& Items() override;

    const std::string& KeyText() const noexcept { return key_; }
    const std::string& OwnerText() const noexcept { return owner_; }
    KeyedTree<MenuItem>::Level* LevelBelow() noexcept { return items_ ? &items_->Level() : nullptr; }
    bool IsEnabled() const noexcept { return enabled_; }
    /// Whether it is visible itself, and every item above it.
    bool IsInSight() const noexcept;
    bool IsSeparator() const noexcept { return separator_; }
    model::MenuItem Snapshot() const;

private:
    MenuContext& context_;
    std::string key_, caption_, description_, owner_;
    bool enabled_ = true, visible_ = true, separator_;
    std::unique_ptr<MenuItems> items_; // made when first asked for
};

class Menu final : public IMenu {
public:
    Menu(MenuContext& context, std::string_view key, std::string_view caption, std::string_view description,
         std::string_view owner);

    std::string Key() const override;
    void SetVisible(bool visible) override;
    IMenuItems& Items() override;

    MenuItems& Entries() noexcept { return items_; }
    const std::string& OwnerText() const noexcept { return owner_; }
    bool IsVisible() const noexcept { return visible_; }
    model::Menu Snapshot() const;

private:
    MenuContext& context_;
    std::string key_, caption_, description_, owner_;
    bool visible_ = true;
    MenuItems items_;
};

class Menus final : public IMenus {
public:
    explicit Menus(Trace& trace) : context_{trace, ModelPart::Menus, {}} {}
    ~Menus() override;

    std::shared_ptr<IMenu> Add(std::string_view key, std::string_view caption, std::string_view text,
                               std::string_view owner, std::optional<std::string_view> before,
                               std::optional<std::string_view> after, std::int32_t first, std::int32_t second,
                               bool flag) override;
    std::shared_ptr<IMenu> Item(std::string_view key) override;
    std::shared_ptr<IMenuItem> FindItem(std::string_view key) override;
    void Remove(std::string_view key) override;

    /// Without a call's record; null when there is none.
    MenuItem* Find(std::string_view key) const { return context_.tree.First(key); }
    /// Whether the item is in sight, and the menu that it stands in visible.
    bool IsInSight(const MenuItem& item) const;
    std::vector<model::Menu> Snapshot() const;

private:
    std::size_t PlaceFor(std::optional<std::string_view> before, std::optional<std::string_view> after) const;

    MenuContext context_;
    base::Collection<std::shared_ptr<Menu>> menus_;
};

class ContextMenu {
public:
    explicit ContextMenu(Trace& trace)
        : context_{trace, ModelPart::ContextMenu, {}}, items_(context_, nullptr, contextMenuOperations) {}

    MenuItems& Items() noexcept { return items_; }
    MenuItem* Find(std::string_view key) const { return context_.tree.First(key); }
    /// Without a call's record.
    void Empty();
    std::vector<model::MenuItem> Snapshot() const { return items_.Snapshot(); }

private:
    MenuContext context_;
    MenuItems items_;
};

} // namespace arvon::host
