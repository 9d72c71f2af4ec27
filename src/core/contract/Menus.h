#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace arvon {

class IMenuItems;

/// An entry of a menu or of the context menu.
class IMenuItem {
public:
    virtual ~IMenuItem() = default;
    virtual std::string Key() const = 0;
    virtual std::string Caption() const = 0;
    virtual std::string Owner() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual IMenuItems& Items() = 0; // entries below it
};

class IMenuItems {
public:
    virtual ~IMenuItems() = default;
    virtual std::size_t Count() const = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<IMenuItem> Item(std::size_t position) = 0;
    /// Null when there is none.
    virtual std::shared_ptr<IMenuItem> Item(std::string_view key) = 0;
    /// Appends an entry, enabled and visible. Throws DuplicateKey.
    virtual std::shared_ptr<IMenuItem> Add(std::string_view key, std::string_view caption,
                                           std::string_view description, std::string_view owner) = 0;
    virtual std::shared_ptr<IMenuItem> AddSeparator(std::string_view key, std::string_view owner) = 0;
    /// Throws InvalidCall for an unknown key.
    virtual void Remove(std::string_view key) = 0;
    virtual void Clear() = 0;
};

class IMenu {
public:
    virtual ~IMenu() = default;
    virtual std::string Key() const = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual IMenuItems& Items() = 0;
};

/// The host's menu bar.
class IMenus {
public:
    virtual ~IMenus() = default;
    /// Adds a menu. `before` and `after` name a neighbour where given; the last three are passed as the host
    /// wants them. One of the same key and owner is replaced by an empty one where it stands, so that a tool
    /// can load anew after a load that failed half way; another owner's throws DuplicateKey.
    virtual std::shared_ptr<IMenu> Add(std::string_view key, std::string_view caption, std::string_view text,
                                       std::string_view owner, std::optional<std::string_view> before,
                                       std::optional<std::string_view> after, std::int32_t first,
                                       std::int32_t second, bool flag) = 0;
    /// Null when there is none.
    virtual std::shared_ptr<IMenu> Item(std::string_view key) = 0;
    /// An entry of any menu by key; null when there is none.
    virtual std::shared_ptr<IMenuItem> FindItem(std::string_view key) = 0;
    /// Throws InvalidCall for an unknown key.
    virtual void Remove(std::string_view key) = 0;
};

enum class ButtonStyle : std::int32_t { Push = 0, Separator = 1 };

class IButton {
public:
    virtual ~IButton() = default;
    virtual std::string Key() const = 0;
    virtual std::string Owner() const = 0;
    virtual void SetOwner(std::string_view owner) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetToolTip(std::string_view toolTip) = 0;
    virtual void SetPicture(std::string_view pictureName) = 0;
};

/// The buttons of the host's toolbar.
class IButtons {
public:
    virtual ~IButtons() = default;
    virtual std::size_t Count() const = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<IButton> Item(std::size_t position) = 0;
    /// Null when there is none.
    virtual std::shared_ptr<IButton> Item(std::string_view key) = 0;
    /// Adds a button with no owner yet, hidden. `position`: from 1 within the toolbar, Count + 1 for the end;
    /// a position past the end counts as the end. Throws DuplicateKey.
    virtual std::shared_ptr<IButton> Add(std::size_t position, std::string_view key, ButtonStyle style) = 0;
    /// The position of a key from 1; 0 when there is none.
    virtual std::size_t PositionOf(std::string_view key) = 0;
    /// Throws InvalidCall for an unknown key.
    virtual void Remove(std::string_view key) = 0;
};

} // namespace arvon
