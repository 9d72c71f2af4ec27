#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <xcb/xcb.h>

namespace suite::test {

/// The display of the tests, to see and to use windows of other programs. Every wait ends after 20 seconds,
/// with an exception that says what was waited for.
class XDisplay {
public:
    /// The display of that name, as in the environment variable DISPLAY.
    explicit XDisplay(const std::string& name);

    /// Waits for a visible window with this title.
    xcb_window_t Window(std::string_view title) const;
    bool HasWindow(std::string_view title) const { return Find(title) != XCB_NONE; }
    /// Waits until there is none. A display learns a little later than its caller that a program has ended.
    void WaitUntilGone(std::string_view title) const;
    /// What the close button of a window's frame sends.
    void AskToClose(xcb_window_t window) const;
    /// Presses the key that has this symbol, and lets it go.
    void PressKey(xcb_window_t window, xcb_keysym_t key) const;

private:
    xcb_window_t Find(std::string_view title) const;
    xcb_window_t Below(xcb_window_t window, std::string_view title) const;
    bool IsVisible(xcb_window_t window) const;
    std::string Property(xcb_window_t window, const char* name) const;
    xcb_atom_t Atom(std::string_view name) const;
    xcb_keycode_t KeyCode(xcb_keysym_t key) const;
    template <class Event> void Send(xcb_window_t window, const Event& event, std::uint32_t mask) const;

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection_;
    xcb_window_t root_ = XCB_NONE;
};

} // namespace suite::test
