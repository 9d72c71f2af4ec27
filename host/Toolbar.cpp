#include "host/Toolbar.h"

#include "host/Errors.h"

#include <algorithm>

namespace arvon::host {

std::string Button::Key() const {
    trace_.Read("Button.Key", key_);
    return key_;
}

std::string Button::Owner() const {
    trace_.Read("Button.Owner", key_);
    return owner_;
}

void Button::SetOwner(std::string_view owner) {
    trace_.Call("Button.SetOwner", key_, owner);
    owner_ = owner;
    trace_.Changed(ModelPart::Toolbar);
}

void Button::SetVisible(bool visible) {
    trace_.Call("Button.SetVisible", key_, visible);
    visible_ = visible;
    trace_.Changed(ModelPart::Toolbar);
}

void Button::SetToolTip(std::string_view toolTip) {
    trace_.Call("Button.SetToolTip", key_, toolTip);
    toolTip_ = toolTip;
    trace_.Changed(ModelPart::Toolbar);
}

void Button::SetPicture(std::string_view pictureName) {
    trace_.Call("Button.SetPicture", key_, pictureName);
    picture_ = pictureName;
    trace_.Changed(ModelPart::Toolbar);
}

std::size_t Buttons::Count() const {
    trace_.Read("Buttons.Count");
    return buttons_.Count();
}

std::shared_ptr<IButton> Buttons::Item(std::size_t position) {
    trace_.Read("Buttons.Item", position);
    return buttons_.Item(position);
}

std::shared_ptr<IButton> Buttons::Item(std::string_view key) {
    trace_.Call("Buttons.Item", key);
    const std::shared_ptr<Button>* found = buttons_.Find(key);
    return found ? *found : nullptr;
}

std::shared_ptr<IButton> Buttons::Add(std::size_t position, std::string_view key, ButtonStyle style) {
    trace_.Call("Buttons.Add", position, key, style);
    const auto button = std::make_shared<Button>(trace_, key, style);
    buttons_.Add(button, button->KeyText(), std::min(position, buttons_.Count() + 1));
    trace_.Changed(ModelPart::Toolbar);
    return button;
}

std::size_t Buttons::PositionOf(std::string_view key) {
    trace_.Call("Buttons.PositionOf", key);
    return buttons_.PositionOf(key);
}

void Buttons::Remove(std::string_view key) {
    trace_.Call("Buttons.Remove", key);
    if (!buttons_.Remove(key)) RaiseNoSuch("button", key);
    trace_.Changed(ModelPart::Toolbar);
}

const Button* Buttons::Find(std::string_view key) const {
    const std::shared_ptr<Button>* found = buttons_.Find(key);
    return found ? found->get() : nullptr;
}

std::vector<model::Button> Buttons::Snapshot() const {
    std::vector<model::Button> rows;
    for (const auto& button : buttons_)
        rows.push_back(button->Snapshot());
    return rows;
}

} // namespace arvon::host
