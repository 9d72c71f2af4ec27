#include "base/Text.h"
#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

namespace {

/// An item that is always there, with the numbers of its texts.
struct FixedItem {
    std::string_view key;
    std::int32_t captionResource;
    std::int32_t descriptionResource;
};
constexpr FixedItem optionsItem{menu::ToolOptions, 61, 62};
constexpr FixedItem contextTaskItem{menu::ToolContextTask, 8, 9};
constexpr FixedItem launchItem{menu::Launch, 10, 11};

constexpr std::int32_t toolTextResource = 16;

/// The identifier under which menu and toolbar show a tool; empty for one that they leave out.
std::string IdentifierInMenus(const arvon::IToolRecord& tool) {
    return tool.ShowInList() ? tool.Get(property::Identifier).ToText() : std::string();
}

std::string Joined(std::string_view first, std::string_view second) {
    std::string joined;
    joined.reserve(first.size() + second.size());
    return joined.append(first).append(second);
}

} // namespace

std::vector<ToolRecord> ToolMain::ToolsInOrder(bool useListedTools) {
    if (useListedTools) return ListedTools().Snapshot();
    arvon::IToolRecords& records = m_oFramework->Tools();
    std::vector<ToolRecord> tools;
    tools.reserve(records.Count());
    for (std::size_t position = 1; position <= records.Count(); ++position)
        tools.push_back(records.Item(position));
    return tools;
}

bool ToolMain::AddMenu(arvon::IMenu& parent, const ToolRecord& tool, std::string_view toolText,
                       bool previous) {
    return Guarded("AddMenu", previous, [&] {
        const std::string identifier = IdentifierInMenus(*tool);
        if (identifier.empty()) return previous;
        const std::string caption = Joined("&", tool->Name());
        parent.Items().Add(Joined(menu::ToolPrefix, identifier), caption, Joined(toolText, caption), Self);
        return true;
    });
}

// A button that cannot be finished goes again: without an owner no later building would find it.
template <class Finish> void ToolMain::PlaceButton(std::size_t position, const ShownButton& shown,
                                                   arvon::ButtonStyle style, Finish&& finish) {
    arvon::IButtons& buttons = m_oFramework->Buttons();
    const std::shared_ptr<arvon::IButton> button = buttons.Add(position, shown.sKey, style);
    m_aShownButtons.push_back(shown);
    const auto takeAway = [&] {
        buttons.Remove(shown.sKey);
        std::erase_if(m_aShownButtons, [&](const ShownButton& other) { return other.sKey == shown.sKey; });
    };
    FinishOrTakeAway([&] { finish(*button); }, takeAway);
}

// True when there is a button more.
bool ToolMain::AddButton(const ToolRecord& tool, std::string_view toolText, std::size_t position) {
    return Guarded("AddButton", false, [&] {
        const std::string identifier = IdentifierInMenus(*tool);
        if (identifier.empty()) return false;
        PlaceButton(position, {Joined(button::ToolPrefix, identifier), tool}, arvon::ButtonStyle::Push,
                    [&](arvon::IButton& button) {
                        button.SetVisible(true);
                        button.SetPicture(base::FirstCharacters(identifier, 3));
                        button.SetOwner(Self);
                        button.SetToolTip(Joined(toolText, " ").append(tool->Name()));
                    });
        return true;
    });
}

bool ToolMain::BuildToolMenu(arvon::IMenu& parent, bool useListedTools) {
    return Guarded("BuildToolMenu", false, [&] {
        const std::vector<ToolRecord> tools = ToolsInOrder(useListedTools);
        const std::string toolText = LoadResString(toolTextResource);
        bool itemAdded = false;
        for (const ToolRecord& tool : tools)
            itemAdded = AddMenu(parent, tool, toolText, itemAdded);
        if (!tools.empty() || itemAdded) parent.Items().AddSeparator(menu::ToolsSeparator, Self);
        parent.Items().Add(optionsItem.key, LoadResString(optionsItem.captionResource),
                           LoadResString(optionsItem.descriptionResource), Self);
        return true;
    });
}

// No guard: RebuildToolMenus reports.
bool ToolMain::BuildToolButtons(bool useListedTools) {
    AddSeparatorButton(button::FirstSeparator);
    const std::string toolText = LoadResString(toolTextResource);
    std::size_t position = m_oFramework->Buttons().PositionOf(button::FirstSeparator) + 1;
    for (const ToolRecord& tool : ToolsInOrder(useListedTools)) {
        if (AddButton(tool, toolText, position)) ++position;
    }
    AddSeparatorButton(button::LastSeparator);
    return true;
}

void ToolMain::AddSeparatorButton(std::string_view key) {
    arvon::IButtons& buttons = m_oFramework->Buttons();
    if (buttons.Item(key)) return;
    PlaceButton(buttons.Count() + 1, {std::string(key), nullptr}, arvon::ButtonStyle::Separator,
                [](arvon::IButton& separator) {
                    separator.SetOwner(Self);
                    separator.SetVisible(true);
                });
}

void ToolMain::RemoveOwnButtons() {
    arvon::IButtons& buttons = m_oFramework->Buttons();
    // from the last to the first, so that no removal moves a button that is still to be looked at
    for (std::size_t position = buttons.Count(); position >= 1; --position) {
        const std::shared_ptr<arvon::IButton> button = buttons.Item(position);
        const std::string owner = button->Owner();
        if (owner == Self || (owner.empty() && IsShownButton(button->Key()))) buttons.Remove(button->Key());
    }
    m_aShownButtons.clear();
}

void ToolMain::RebuildToolMenus(bool useListedTools) {
    Guarded("RebuildToolMenus", [&] {
        const std::shared_ptr<arvon::IMenu> toolMenu = m_oFramework->Menus().Item(menu::Tools);
        RequireObject(toolMenu, "RebuildToolMenus", "the host has no menu \"mnuTool\"");
        toolMenu->Items().Clear();
        BuildToolMenu(*toolMenu, useListedTools);
        // the new items too wait for the end of a load or of the Vantor
        if (m_bBusy || !m_colLoadedTools.IsEmpty()) SetMenus(false);
        RemoveOwnButtons();
        BuildToolButtons(useListedTools);
    });
}

bool ToolMain::SetMenus(bool enabled) {
    return Guarded("SetMenus", false, [&] {
        const std::shared_ptr<arvon::IMenu> toolMenu = m_oFramework->Menus().Item(menu::Tools);
        if (!toolMenu) return false;
        const auto setItem = [&](std::string_view key) {
            if (const std::shared_ptr<arvon::IMenuItem> item = toolMenu->Items().Item(key))
                item->SetEnabled(enabled);
        };
        constexpr bool useListedTools = false;
        for (const ToolRecord& tool : ToolsInOrder(useListedTools)) {
            const std::string identifier = IdentifierInMenus(*tool);
            if (!identifier.empty()) setItem(Joined(menu::ToolPrefix, identifier));
        }
        setItem(menu::ToolsSeparator);
        return true;
    });
}

// No guard: the node event's handler reports.
void ToolMain::BuildContextMenu() {
    arvon::IMenuItems& items = m_oFramework->ContextMenu();
    for (std::size_t position = items.Count(); position >= 1; --position) {
        const std::shared_ptr<arvon::IMenuItem> item = items.Item(position);
        if (item->Owner() == Self) items.Remove(item->Key());
    }

    const auto add = [&](arvon::IMenuItems& under, const FixedItem& fixed) {
        const std::shared_ptr<arvon::IMenuItem> item = under.Add(
            fixed.key, LoadResString(fixed.captionResource), LoadResString(fixed.descriptionResource), Self);
        item->SetVisible(true);
        item->SetEnabled(true);
        return item;
    };
    // half a menu is none
    FinishOrTakeAway([&] { add(add(items, contextTaskItem)->Items(), launchItem); },
                     [&] { items.Remove(contextTaskItem.key); });
}

} // namespace kvtm
