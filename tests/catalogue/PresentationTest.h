#pragma once

#include "core/Names.h"
#include "tests/support/ComponentFixture.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvtm::test {

using Texts = std::vector<std::string>;

/// What the user sees of the tools, in short.
class PresentationTest : public ComponentTest {
protected:
    std::optional<arvon::host::model::Menu> ToolMenu() const {
        for (const auto& menu : host->Model().Menus())
            if (menu.key == "mnuTool") return menu;
        return std::nullopt;
    }
    std::vector<arvon::host::model::MenuItem> ToolMenuItems() const {
        const auto menu = ToolMenu();
        return menu ? menu->items : std::vector<arvon::host::model::MenuItem>{};
    }
    Texts MenuKeys() const { return KeysOf(ToolMenuItems()); }
    /// Of the whole toolbar, but for what the host itself put there.
    Texts ButtonKeys() const {
        std::vector<arvon::host::model::Button> buttons = host->Model().Toolbar();
        std::erase_if(buttons, [](const auto& button) { return button.owner == listener::Shell; });
        return KeysOf(buttons);
    }
    arvon::host::model::Button Button(std::string_view key) const {
        return Entry(host->Model().Toolbar(), key);
    }
    arvon::host::model::Tab Navigator() const { return Entry(host->Model().Tabs(), "tabQRV"); }
    arvon::host::model::Node ToolsNode() const { return Entry(Navigator().nodes, "nodTools"); }
    Texts NodeKeys() const { return KeysOf(ToolsNode().nodes); }

    /// A second tab of another owner, in front.
    void BringAnotherTabForward() {
        host->Framework()->Tabs().Add(2, "tabOther", "Other", nullptr, true)->BringForward();
    }

    template <class Entries> static Texts KeysOf(const Entries& entries) {
        Texts keys;
        for (const auto& entry : entries)
            keys.push_back(entry.key);
        return keys;
    }
    /// The entry of that key; a failure, and an empty one, when there is none.
    template <class T> static T Entry(const std::vector<T>& entries, std::string_view key) {
        for (const auto& entry : entries)
            if (entry.key == key) return entry;
        ADD_FAILURE() << "there is no \"" << key << "\"";
        return {};
    }
};

} // namespace kvtm::test
