#pragma once

#include <cstdint>
#include <string_view>

/// How the host fills the events that its objects raise.
///
/// | raised by | ObjectType | Name                   | Category  | parameters                               |
/// |-----------|------------|------------------------|-----------|------------------------------------------|
/// | process   | Process    | "ShellProcessComplete" | 0         | sApplicationNameAndPath (text),          |
/// |           |            |                        |           | lProcessID (integer)                     |
/// | menu item | Menu       | key of the item        | 0         |                                          |
/// | button    | Button     | key of the button      | 0         |                                          |
/// | tree node | Node       | key of its tab         | node kind | key: the node's key                      |
/// | list row  | ListItem   | key of its view        | list kind | objectType "IListItem", secondType "",   |
/// |           |            |                        |           | Text, Checked                            |
/// | column    | ListItem   | key of its view        | list kind | objectType and secondType                |
/// |           |            |                        |           | "IColumnHeader", key, order              |
/// | task      | Task       | key of the task        | 0         | Flag: the task's flag                    |
/// | tab       | Tab        | key of the tab         | tab kind  | selectedItem: key of the selected node   |
namespace arvon {

enum class EventObject : std::int32_t {
    Process = 0,
    Menu = 1,
    Button = 2,
    Node = 3,
    ListItem = 4,
    Task = 5,
    Tab = 12,
};

/// Event kinds (the event's Category) of nodes, tabs and lists.
namespace eventKind {
inline constexpr std::int32_t CheckChanged = 1;  // list row
inline constexpr std::int32_t Selected = 5;      // node, tab
inline constexpr std::int32_t ContextMenu = 7;   // node
inline constexpr std::int32_t ColumnClicked = 8; // column header
inline constexpr std::int32_t Opened = 13;       // node, list row
inline constexpr std::int32_t Expanded = 14;     // node
} // namespace eventKind

/// Parameter names of these events.
namespace eventParameter {
inline constexpr std::string_view ApplicationNameAndPath = "sApplicationNameAndPath";
inline constexpr std::string_view ProcessId = "lProcessID";
inline constexpr std::string_view Key = "key";
inline constexpr std::string_view Order = "order";
inline constexpr std::string_view SelectedItem = "selectedItem";
inline constexpr std::string_view ObjectType = "objectType";
inline constexpr std::string_view SecondType = "secondType";
inline constexpr std::string_view Text = "Text";
inline constexpr std::string_view Checked = "Checked";
inline constexpr std::string_view Flag = "Flag";
} // namespace eventParameter

} // namespace arvon
