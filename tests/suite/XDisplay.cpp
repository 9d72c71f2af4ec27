#include "tests/suite/XDisplay.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <thread>

namespace suite::test {
namespace {

/// The answer to a request, which goes by itself; null when there is none (a window that has just gone).
template <class Answer> auto Owned(Answer* answer) {
    return std::unique_ptr<Answer, void (*)(void*)>(answer, std::free);
}

void WaitUntil(const std::function<bool()>& isSo, const std::string& complaint) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(complaint);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace

XDisplay::XDisplay(const std::string& name)
    : connection_(xcb_connect(name.c_str(), nullptr), xcb_disconnect) {
    if (xcb_connection_has_error(connection_.get()))
        throw std::runtime_error("no display \"" + name + "\": these tests want one, such as xvfb-run's");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
}

xcb_window_t XDisplay::Window(std::string_view title) const {
    xcb_window_t window = XCB_NONE;
    WaitUntil([&] { return (window = Find(title)) != XCB_NONE; },
              "no window \"" + std::string(title) + "\" appeared");
    return window;
}

void XDisplay::WaitUntilGone(std::string_view title) const {
    WaitUntil([&] { return !HasWindow(title); }, "the window \"" + std::string(title) + "\" did not go");
}

xcb_window_t XDisplay::Find(std::string_view title) const {
    return Below(root_, title);
}

xcb_window_t XDisplay::Below(xcb_window_t window, std::string_view title) const {
    const auto tree =
        Owned(xcb_query_tree_reply(connection_.get(), xcb_query_tree(connection_.get(), window), nullptr));
    if (!tree) return XCB_NONE;
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        if (Property(children[i], "_NET_WM_NAME") == title && IsVisible(children[i])) return children[i];
        if (const xcb_window_t found = Below(children[i], title)) return found;
    }
    return XCB_NONE;
}

bool XDisplay::IsVisible(xcb_window_t window) const {
    const auto attributes = Owned(xcb_get_window_attributes_reply(
        connection_.get(), xcb_get_window_attributes(connection_.get(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::string XDisplay::Property(xcb_window_t window, const char* name) const {
    const auto answer = Owned(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 0, window, Atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024),
        nullptr));
    if (!answer) return {};
    return {static_cast<const char*>(xcb_get_property_value(answer.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))};
}

xcb_atom_t XDisplay::Atom(std::string_view name) const {
    const auto answer = Owned(xcb_intern_atom_reply(
        connection_.get(),
        xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!answer) throw std::runtime_error("no atom " + std::string(name));
    return answer->atom;
}

template <class Event>
void XDisplay::Send(xcb_window_t window, const Event& event, std::uint32_t mask) const {
    char bytes[32] = {}; // every event has this size
    static_assert(sizeof event <= sizeof bytes);
    std::memcpy(bytes, &event, sizeof event);
    xcb_send_event(connection_.get(), 0, window, mask, bytes);
    xcb_flush(connection_.get());
}

void XDisplay::AskToClose(xcb_window_t window) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = Atom("WM_PROTOCOLS");
    event.data.data32[0] = Atom("WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    Send(window, event, XCB_EVENT_MASK_NO_EVENT);
}

void XDisplay::PressKey(xcb_window_t window, xcb_keysym_t key) const {
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = KeyCode(key);
    event.root = root_;
    event.event = window;
    event.same_screen = 1;
    Send(window, event, XCB_EVENT_MASK_KEY_PRESS);
    event.response_type = XCB_KEY_RELEASE;
    Send(window, event, XCB_EVENT_MASK_KEY_RELEASE);
}

xcb_keycode_t XDisplay::KeyCode(xcb_keysym_t key) const {
    const xcb_setup_t* setup = xcb_get_setup(connection_.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapping = Owned(xcb_get_keyboard_mapping_reply(
        connection_.get(), xcb_get_keyboard_mapping(connection_.get(), setup->min_keycode, count), nullptr));
    if (!mapping) throw std::runtime_error("no keyboard");
    const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int code = 0; code < count; ++code) {
        if (symbols[code * mapping->keysyms_per_keycode] == key)
            return static_cast<xcb_keycode_t>(setup->min_keycode + code);
    }
    throw std::runtime_error("no key with the symbol " + std::to_string(key));
}

} // namespace suite::test
