#pragma once

#include "host/Model.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace desktop {

class HostBridge;

/// What the host holds, in the language in force. The component gives its captions once, at its loading;
/// after a switch of the language those that are string resources are shown as the new language has them.
/// What the component wrote itself stays.
class SystemTexts {
public:
    explicit SystemTexts(const HostBridge& bridge) : bridge_(bridge) {}

    /// The language in force is the one in which captions are given from now on.
    void Remember();

    std::vector<arvon::host::model::Menu> Menus() const;
    std::vector<arvon::host::model::Button> Toolbar() const;
    std::vector<arvon::host::model::Tab> Tabs() const;
    std::vector<arvon::host::model::Column> Columns(std::string_view viewKey) const;
    std::vector<arvon::host::model::TaskView> TaskViews() const;

private:
    bool IsSwitched() const;
    /// Resource `id` in place of the caption, where there is such a one.
    void Put(std::string& caption, int id) const;
    void PutItems(std::vector<arvon::host::model::MenuItem>& items) const;
    /// "Program: Layout": what stands before the name.
    void PutPrefix(std::string& text) const;

    const HostBridge& bridge_;
    std::string language_, prefix_; // when the captions were given
};

} // namespace desktop
