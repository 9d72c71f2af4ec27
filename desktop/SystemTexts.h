#pragma once

#include "host/Model.h"

#include <QString>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace desktop {

class HostBridge;

/// What the host holds, in the language in force. The component gives its captions at its loading, and some
/// of them again later, each time in the language of that moment; those that are string resources are shown
/// as the language in force has them. What the component wrote itself stays.
class SystemTexts {
public:
    explicit SystemTexts(const HostBridge& bridge) : bridge_(bridge) {}

    /// Captions may be given in the language in force from now on. Every language in which they are shown is
    /// remembered anyway. Returns what stands before a program's name in it; empty where it has no such text.
    std::string Remember() const;

    std::vector<arvon::host::model::Menu> Menus() const;
    std::vector<arvon::host::model::Button> Toolbar() const;
    std::vector<arvon::host::model::Tab> Tabs() const;
    std::vector<arvon::host::model::Column> Columns(std::string_view viewKey) const;
    std::vector<arvon::host::model::TaskView> TaskViews() const;

private:
    /// Resource `id` in place of the caption, where there is such a one.
    void Put(std::string& caption, int id) const;
    void PutItems(std::vector<arvon::host::model::MenuItem>& items, const std::string& prefix) const;
    /// "Program: Layout": `prefix` in place of what stands before the name.
    void PutPrefix(std::string& text, const std::string& prefix) const;

    const HostBridge& bridge_;
    mutable std::set<std::string> prefixes_; // of every language that was in force
};

} // namespace desktop
