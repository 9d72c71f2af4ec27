#include "host/Menus.h"

#include "host/Errors.h"

namespace arvon::host {

// MenuItems
// -----------------------------------------------------------------------------------------------------

MenuItems::MenuItems(MenuContext& context, MenuItem* parent, const MenuItemsOperations& operations)
    : context_(context), operations_(operations),
      level_(!parent || parent->IsInTree() ? &context.tree : nullptr, parent) {}

std::size_t MenuItems::Count() const {
    context_.trace.Read(operations_.count);
    return level_.Items().Count();
}

std::shared_ptr<IMenuItem> MenuItems::Item(std::size_t position) {
    context_.trace.Read(operations_.item, position);
    return level_.Items().Item(position);
}

std::shared_ptr<IMenuItem> MenuItems::Item(std::string_view key) {
    context_.trace.Call(operations_.item, key);
    return level_.Find(key);
}

std::shared_ptr<IMenuItem> MenuItems::Add(std::string_view key, std::string_view caption,
                                          std::string_view description, std::string_view owner) {
    context_.trace.Call(operations_.add, key, caption, description, owner);
    const auto added =
        level_.Append(std::make_shared<MenuItem>(context_, key, caption, description, owner, false));
    context_.trace.Changed(context_.part);
    return added;
}

std::shared_ptr<IMenuItem> MenuItems::AddSeparator(std::string_view key, std::string_view owner) {
    context_.trace.Call(operations_.addSeparator, key, owner);
    const auto added = level_.Append(std::make_shared<MenuItem>(context_, key, "", "", owner, true));
    context_.trace.Changed(context_.part);
    return added;
}

void MenuItems::Remove(std::string_view key) {
    context_.trace.Call(operations_.remove, key);
    if (!level_.Remove(key)) RaiseNoSuch("menu item", key);
    context_.trace.Changed(context_.part);
}

void MenuItems::Clear() {
    context_.trace.Call(operations_.clear);
    level_.Clear();
    context_.trace.Changed(context_.part);
}

std::vector<model::MenuItem> MenuItems::Snapshot() const {
    std::vector<model::MenuItem> rows;
    rows.reserve(level_.Items().Count());
    for (const auto& item : level_.Items())
        rows.push_back(item->Snapshot());
    return rows;
}

// MenuItem
// ------------------------------------------------------------------------------------------------------

MenuItem::MenuItem(MenuContext& context, std::string_view key, std::string_view caption,
                   std::string_view description, std::string_view owner, bool separator)
    : context_(context), key_(key), caption_(caption), description_(description), owner_(owner),
      separator_(separator) {}

std::string MenuItem::Key() const {
    context_.trace.Read("MenuItem.Key", key_);
    return key_;
}

std::string MenuItem::Caption() const {
    context_.trace.Read("MenuItem.Caption", key_);
    return caption_;
}

std::string MenuItem::Owner() const {
    context_.trace.Read("MenuItem.Owner", key_);
    return owner_;
}

void MenuItem::SetEnabled(bool enabled) {
    context_.trace.Call("MenuItem.SetEnabled", key_, enabled);
    enabled_ = enabled;
    context_.trace.Changed(context_.part);
}

void MenuItem::SetVisible(bool visible) {
    context_.trace.Call("MenuItem.SetVisible", key_, visible);
    visible_ = visible;
    context_.trace.Changed(context_.part);
}

IMenuItems& MenuItem::Items() {
    context_.trace.Read("MenuItem.Items", key_);
    if (!items_) items_ = std::make_unique<MenuItems>(context_, this, menuItemsOperations);
    return *items_;
}

bool MenuItem::IsInSight() const noexcept {
    const MenuItem* at = this;
    while (at && at->visible_)
        at = at->Parent();
    return !at;
}

model::MenuItem MenuItem::Snapshot() const {
    model::MenuItem row{key_, caption_, description_, owner_, enabled_, visible_, separator_, {}};
    if (items_) row.items = items_->Snapshot();
    return row;
}

// Menu
// ----------------------------------------------------------------------------------------------------------

Menu::Menu(MenuContext& context, std::string_view key, std::string_view caption, std::string_view description,
           std::string_view owner)
    : context_(context), key_(key), caption_(caption), description_(description), owner_(owner),
      items_(context, nullptr, menuItemsOperations) {}

std::string Menu::Key() const {
    context_.trace.Read("Menu.Key", key_);
    return key_;
}

void Menu::SetVisible(bool visible) {
    context_.trace.Call("Menu.SetVisible", key_, visible);
    visible_ = visible;
    context_.trace.Changed(context_.part);
}

IMenuItems& Menu::Items() {
    context_.trace.Read("Menu.Items", key_);
    return items_;
}

model::Menu Menu::Snapshot() const {
    return {key_, caption_, description_, owner_, visible_, items_.Snapshot()};
}

// Menus
// ---------------------------------------------------------------------------------------------------------

Menus::~Menus() {
    for (const auto& menu : menus_)
        menu->Entries().Level().Close();
}

std::shared_ptr<IMenu> Menus::Add(std::string_view key, std::string_view caption, std::string_view text,
                                  std::string_view owner, std::optional<std::string_view> before,
                                  std::optional<std::string_view> after, std::int32_t first,
                                  std::int32_t second, bool flag) {
    context_.trace.Call("Menus.Add", key, caption, text, owner, before, after, first, second, flag);
    const auto menu = std::make_shared<Menu>(context_, key, caption, text, owner);
    std::shared_ptr<Menu>* present = menus_.Find(key);
    if (present && (*present)->OwnerText() == owner) {
        (*present)->Entries().Level().Close();
        *present = menu;
    } else {
        menus_.Add(menu, key, PlaceFor(before, after));
    }
    context_.trace.Changed(context_.part);
    return menu;
}

std::size_t Menus::PlaceFor(std::optional<std::string_view> before,
                            std::optional<std::string_view> after) const {
    if (before)
        if (const std::size_t position = menus_.PositionOf(*before)) return position;
    if (after)
        if (const std::size_t position = menus_.PositionOf(*after)) return position + 1;
    return menus_.Count() + 1;
}

std::shared_ptr<IMenu> Menus::Item(std::string_view key) {
    context_.trace.Call("Menus.Item", key);
    const std::shared_ptr<Menu>* found = menus_.Find(key);
    return found ? *found : nullptr;
}

std::shared_ptr<IMenuItem> Menus::FindItem(std::string_view key) {
    context_.trace.Call("Menus.FindItem", key);
    MenuItem* found = Find(key);
    return found ? found->Standing()->Find(key) : nullptr;
}

void Menus::Remove(std::string_view key) {
    context_.trace.Call("Menus.Remove", key);
    std::shared_ptr<Menu>* found = menus_.Find(key);
    if (!found) RaiseNoSuch("menu", key);
    (*found)->Entries().Level().Close(); // whoever still holds the menu has an empty one
    menus_.Remove(key);
    context_.trace.Changed(context_.part);
}

bool Menus::IsInSight(const MenuItem& item) const {
    if (!item.IsInSight()) return false;
    const MenuItem* top = &item;
    while (top->Parent())
        top = top->Parent();
    for (const auto& menu : menus_)
        if (&menu->Entries().Level() == top->Standing()) return menu->IsVisible();
    return false;
}

std::vector<model::Menu> Menus::Snapshot() const {
    std::vector<model::Menu> rows;
    for (const auto& menu : menus_)
        rows.push_back(menu->Snapshot());
    return rows;
}

// ContextMenu
// ---------------------------------------------------------------------------------------------------

void ContextMenu::Empty() {
    if (items_.Level().Items().IsEmpty()) return;
    items_.Level().Clear();
    context_.trace.Changed(context_.part);
}

} // namespace arvon::host
