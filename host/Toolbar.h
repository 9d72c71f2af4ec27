#pragma once

#include "base/Collection.h"
#include "core/contract/Menus.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class Button final : public IButton {
public:
    Button(Trace& trace, std::string_view key, ButtonStyle style) : trace_(trace), key_(key), style_(style) {}

    std::string Key() const override;
    std::string Owner() const override;
    void SetOwner(std::string_view owner) override;
    void SetVisible(bool visible) override;
    void SetToolTip(std::string_view toolTip) override;
    void SetPicture(std::string_view pictureName) override;

    const std::string& KeyText() const noexcept { return key_; }
    const std::string& OwnerText() const noexcept { return owner_; }
    bool IsVisible() const noexcept { return visible_; }
    bool IsSeparator() const noexcept { return style_ == ButtonStyle::Separator; }
    model::Button Snapshot() const { return {key_, owner_, visible_, IsSeparator(), toolTip_, picture_}; }

private:
    Trace& trace_;
    std::string key_, owner_, toolTip_, picture_;
    ButtonStyle style_;
    bool visible_ = false;
};

class Buttons final : public IButtons {
public:
    explicit Buttons(Trace& trace) : trace_(trace) {}

    std::size_t Count() const override;
    std::shared_ptr<IButton> Item(std::size_t position) override;
    std::shared_ptr<IButton> Item(std::string_view key) override;
    std::shared_ptr<IButton> Add(std::size_t position, std::string_view key, ButtonStyle style) override;
    std::size_t PositionOf(std::string_view key) override;
    void Remove(std::string_view key) override;

    /// Without a call's record; null when there is none.
    const Button* Find(std::string_view key) const;
    std::vector<model::Button> Snapshot() const;

private:
    Trace& trace_;
    base::Collection<std::shared_ptr<Button>, std::string_view> buttons_; // under their own keys
};

} // namespace arvon::host
