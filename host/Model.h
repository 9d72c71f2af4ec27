#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What the host holds at one moment, as plain values: for printing and drawing. Taken whole by
/// ReferenceHost::Model; later changes do not reach it.
namespace arvon::host::model {

struct Tool {
    std::string name, vrex, identifier, classification;
    bool showInList = true;
    std::string version, lastUpdated;
    std::int32_t kind = 0;
    std::string brand, programType, path, commandLine;
};

struct ListRow {
    std::string key, text;
    bool checked = false;
    bool current = false;
    std::vector<std::pair<std::string, std::string>> subItems; // column key and text, in the order of adding

    /// The text under a column; empty when there is none.
    std::string SubItem(const std::string& columnKey) const {
        for (const auto& [key_, text_] : subItems)
            if (key_ == columnKey) return text_;
        return {};
    }
};

struct Column {
    std::string key, caption;
    std::int32_t widthTwips = 0;
};

struct MenuItem {
    std::string key, caption, description, owner;
    bool enabled = true, visible = true, separator = false;
    std::vector<MenuItem> items;
};

struct Menu {
    std::string key, caption, description, owner;
    bool visible = true;
    std::vector<MenuItem> items;
};

struct Button {
    std::string key, owner;
    bool visible = false, separator = false;
    std::string toolTip, picture;
};

struct Node {
    std::string key, caption, owner;
    std::int32_t level = 1, image = 0;
    std::string view, taskView; // keys of the view and the task pane that it shows
    bool loaded = false;
    std::vector<Node> nodes;
};

struct Tab {
    std::string key, caption, owner;
    bool visible = false, enabled = false;
    std::vector<Node> nodes;
    std::string selected; // key of the selected node; empty when there is none
};

/// A view, and the window that shows one.
struct View {
    std::string key;
    std::int32_t kind = 0;
    std::string owner, control; // programmatic name of the control; empty for a list
    std::string caption;
    std::int32_t widthTwips = 0, heightTwips = 0, mode = 0;
    std::int32_t displayStyle = 0; // of a list
};

struct Task {
    std::string key, caption, icon, highlightedIcon, description;
};

struct TaskView {
    std::string key;
    std::int32_t kind = 0;
    std::string owner, title;
    std::vector<std::string> texts;
    std::string listControl, resourceBase;
    bool visible = false, showAll = false;
    std::vector<Task> tasks;
};

struct LoadedTool {
    std::string name, key;
};

/// `name` and `vrex` are those of the program's record when it was started; empty for one of no record.
struct Process {
    std::int64_t id = 0;
    std::string commandLine, caller;
    std::string name, vrex;
};

struct ProcessEnd {
    int exitCode = 0; // 128 and the signal's number for a program that was ended by a signal
    int signal = 0;   // that number; 0 for a program that ended by itself
};

struct Banner {
    std::string caption, picture;
    std::int32_t pictureFlag = 0;
};

/// What a control double of the host received, member by member in the order of first setting: ("Initialize",
/// its argument), ("GetUpdateButton.Enabled", "True").
struct Control {
    std::string view, control;
    std::vector<std::pair<std::string, std::string>> members;
};

} // namespace arvon::host::model
