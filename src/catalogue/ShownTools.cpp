#include "base/Text.h"
#include "catalogue/ToolVisibility.h"
#include "core/Names.h"
#include "core/ToolMain.h"

#include <algorithm>

namespace kvtm {

// Records may share a name, an identifier or a VREX, and may be sorted, renamed or read again while something
// on the screen still shows one of them: what is found here is the record that it was made for.

namespace {

/// The first of the items whose text is equal, exactly or else in upper case; null when there is none.
template <class Item, class TextOf>
const Item* FindByText(const std::vector<Item>& items, std::string_view text, TextOf&& textOf) {
    const Item* found = nullptr;
    for (const Item& item : items) {
        const std::string own = textOf(item);
        if (own == text) return &item;
        if (!found && base::EqualIgnoringCase(own, text)) found = &item;
    }
    return found;
}

} // namespace

ToolRecord ToolMain::FindTool(std::string_view sVrex, std::string_view sName) {
    ToolRecord first;
    arvon::IToolRecords& tools = m_oFramework->Tools();
    for (std::size_t position = 1; position <= tools.Count(); ++position) {
        const ToolRecord tool = tools.Item(position);
        if (tool->Get(property::Vrex).ToText() != sVrex) continue;
        if (tool->Name() == sName) return tool;
        if (!first && !sVrex.empty()) first = tool;
    }
    return first;
}

ToolRecord ToolMain::FindPresent(const ToolRecord& tool) {
    const std::string sName = tool->Name();
    if (m_oFramework->Tools().Item(sName) == tool) return tool; // as nearly always
    constexpr bool useListedTools = false;
    const std::vector<ToolRecord> present = ToolsInOrder(useListedTools);
    if (std::find(present.begin(), present.end(), tool) != present.end()) return tool;
    return FindTool(tool->Get(property::Vrex).ToText(), sName); // the catalogue was read again
}

ToolRecord ToolMain::SelectedTool() {
    const arvon::IListItem* row = CurrentRow();
    return row ? FindTool(row->Key(), row->Text()) : nullptr;
}

ToolRecord ToolMain::ToolOfRow(std::string_view sText) {
    const arvon::IListItem* row = CurrentRow();
    if (row && row->Text() == sText) {
        if (const ToolRecord tool = FindTool(row->Key(), sText)) return tool;
    }
    return m_oFramework->Tools().Item(sText);
}

const arvon::IListItem* ToolMain::CurrentRow() {
    const std::shared_ptr<arvon::IView> listView = m_oFramework->Views().Item(view::ToolList);
    const arvon::IListView* list = listView ? listView->List() : nullptr;
    return list ? list->CurrentItem() : nullptr;
}

// Nodes are made for listed tools: one that is hidden may stand before them under the same name.
ToolRecord ToolMain::ToolOfNode(std::string_view sName) {
    const ToolRecord first = m_oFramework->Tools().Item(sName);
    constexpr bool showAllTools = false;
    if (!first || IsShown(*first, showAllTools)) return first;
    for (const ToolRecord& tool : ListedTools().Snapshot()) {
        if (tool->Name() == sName) return tool;
    }
    return first;
}

bool ToolMain::IsShownButton(std::string_view sKey) const {
    return std::any_of(m_aShownButtons.begin(), m_aShownButtons.end(),
                       [&](const ShownButton& button) { return button.sKey == sKey; });
}

// Without a button there may still be a tool that would have it; the listed tools come first to it.
ToolRecord ToolMain::ToolOfButton(std::string_view sKey) {
    if (sKey.empty()) return nullptr;
    const auto* shown = FindByText(m_aShownButtons, sKey, [](const ShownButton& b) { return b.sKey; });
    if (shown) return shown->oTool ? FindPresent(shown->oTool) : nullptr;

    std::vector<ToolRecord> tools = ToolsInOrder(true);
    const std::vector<ToolRecord> all = ToolsInOrder(false);
    tools.insert(tools.end(), all.begin(), all.end());
    const ToolRecord* tool = FindByText(tools, sKey, [](const ToolRecord& t) {
        const std::string identifier = t->Get(property::Identifier).ToText();
        return identifier.empty() ? identifier : std::string(button::ToolPrefix) + identifier;
    });
    return tool ? *tool : nullptr;
}

} // namespace kvtm
