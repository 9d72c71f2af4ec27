#include "console/Snapshot.h"

#include "console/Words.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace arvon::console {

namespace model = host::model;

namespace {

/// What there is to show.
struct Model : host::ReferenceHost::ModelView {
    const Runs& runs;
};

constexpr std::string_view ToolList = "lvTools";

template <class Entries, class Entry> Json ListOf(const Entries& entries, Json (*toJson)(const Entry&)) {
    Json list = Json::array();
    for (const Entry& entry : entries)
        list.push_back(toJson(entry));
    return list;
}

Json OfTool(const model::Tool& tool) {
    return {{"Name", tool.name},
            {"VREX", tool.vrex},
            {"Identifier", tool.identifier},
            {"Classification", tool.classification},
            {"ShowInList", tool.showInList},
            {"version", tool.version},
            {"LastUpdated", tool.lastUpdated},
            {"Kind", tool.kind},
            {"Brand", tool.brand},
            {"ProgramType", tool.programType},
            {"Path", tool.path},
            {"CommandLine", tool.commandLine}};
}

Json OfRow(const model::ListRow& row) {
    return {{"key", row.key},
            {"text", row.text},
            {"checked", row.checked},
            {"version", row.SubItem("version")},
            {"lastupdated", row.SubItem("lastupdated")},
            {"classification", row.SubItem("classification")}};
}

Json OfColumn(const model::Column& column) {
    return {{"key", column.key}, {"caption", column.caption}, {"width", column.widthTwips}};
}

Json OfMenuItem(const model::MenuItem& item) {
    Json json = {{"key", item.key},         {"caption", item.caption},     {"description", item.description},
                 {"enabled", item.enabled}, {"separator", item.separator}, {"owner", item.owner}};
    if (!item.items.empty()) json["items"] = ListOf(item.items, &OfMenuItem);
    return json;
}

Json OfMenu(const model::Menu& menu) {
    return {{"key", menu.key},
            {"caption", menu.caption},
            {"visible", menu.visible},
            {"items", ListOf(menu.items, &OfMenuItem)}};
}

Json OfContextItem(const model::MenuItem& item) {
    return {{"key", item.key},
            {"caption", item.caption},
            {"description", item.description},
            {"owner", item.owner},
            {"visible", item.visible},
            {"enabled", item.enabled},
            {"items", ListOf(item.items, &OfContextItem)}};
}

Json OfButton(const model::Button& button) {
    return {{"key", button.key},         {"owner", button.owner},     {"visible", button.visible},
            {"toolTip", button.toolTip}, {"picture", button.picture}, {"separator", button.separator}};
}

Json OfNode(const model::Node& node) {
    return {{"key", node.key},   {"caption", node.caption},   {"image", node.image},
            {"view", node.view}, {"taskView", node.taskView}, {"nodes", ListOf(node.nodes, &OfNode)}};
}

Json OfTab(const model::Tab& tab) {
    return {{"key", tab.key},
            {"caption", tab.caption},
            {"nodes", ListOf(tab.nodes, &OfNode)},
            {"selected", tab.selected}};
}

Json OfView(const model::View& view) {
    return {{"key", view.key},
            {"kind", view.kind},
            {"owner", view.owner},
            {"control", view.control},
            {"caption", view.caption},
            {"width", view.widthTwips},
            {"height", view.heightTwips},
            {"mode", view.mode}};
}

Json OfReceived(const std::pair<std::string, std::string>& received) {
    return {{"member", received.first}, {"text", received.second}};
}

/// As views, and what the control in each has received.
Json OfWindows(const Model& model) {
    Json windows = ListOf(model.Windows(), &OfView);
    for (Json& window : windows) {
        window["received"] = Json::array();
        for (const model::Control& control : model.Controls())
            if (window["key"] == control.view) window["received"] = ListOf(control.members, &OfReceived);
    }
    return windows;
}

Json OfTask(const model::Task& task) {
    return {
        {"key", task.key}, {"caption", task.caption}, {"icon", task.icon}, {"description", task.description}};
}

Json OfTaskView(const model::TaskView& pane) {
    return {{"key", pane.key},
            {"kind", pane.kind},
            {"owner", pane.owner},
            {"title", pane.title},
            {"texts", pane.texts},
            {"listControl", pane.listControl},
            {"resourceBase", pane.resourceBase},
            {"visible", pane.visible},
            {"tasks", ListOf(pane.tasks, &OfTask)}};
}

Json OfLoadedTool(const model::LoadedTool& tool) {
    return {{"name", tool.name}, {"key", tool.key}};
}

Json OfProcess(const model::Process& process) {
    return {{"id", process.id}, {"commandLine", process.commandLine}};
}

/// ISO 8601 in UTC, to the millisecond.
std::string TimeText(std::chrono::system_clock::time_point time) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(milliseconds);
    const std::time_t whole = seconds.count();
    std::tm calendar{};
    gmtime_r(&whole, &calendar);
    char date[32], fraction[8];
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &calendar);
    std::snprintf(fraction, sizeof fraction, ".%03dZ", static_cast<int>((milliseconds - seconds).count()));
    return std::string(date) + fraction;
}

Json OfRun(const ProgramRun& run) {
    const bool bySignal = run.end && run.end->signal != 0;
    return {{"name", run.process.name},
            {"vrex", run.process.vrex},
            {"id", run.process.id},
            {"commandLine", run.process.commandLine},
            {"started", TimeText(run.started)},
            {"ended", run.ended ? Json(TimeText(*run.ended)) : Json()},
            {"exitCode", run.end && !bySignal ? Json(run.end->exitCode) : Json()},
            {"signal", bySignal ? Json(run.end->signal) : Json()}};
}

struct Part {
    std::string_view name;
    Json (*take)(const Model& model);
};

constexpr Part parts[] = {
    {"tools", [](const Model& m) { return ListOf(m.Tools(), &OfTool); }},
    {"list", [](const Model& m) { return ListOf(m.List(ToolList), &OfRow); }},
    {"columns", [](const Model& m) { return ListOf(m.Columns(ToolList), &OfColumn); }},
    {"menus", [](const Model& m) { return ListOf(m.Menus(), &OfMenu); }},
    {"toolbar", [](const Model& m) { return ListOf(m.Toolbar(), &OfButton); }},
    {"contextmenu", [](const Model& m) { return ListOf(m.ContextMenu(), &OfContextItem); }},
    {"tabs", [](const Model& m) { return ListOf(m.Tabs(), &OfTab); }},
    {"views", [](const Model& m) { return ListOf(m.Views(), &OfView); }},
    {"windows", &OfWindows},
    {"taskviews", [](const Model& m) { return ListOf(m.TaskViews(), &OfTaskView); }},
    {"loaded", [](const Model& m) { return ListOf(m.Loaded(), &OfLoadedTool); }},
    {"processes", [](const Model& m) { return ListOf(m.Processes(), &OfProcess); }},
    {"runs", [](const Model& m) { return ListOf(m.runs.All(), &OfRun); }},
    {"listeners", [](const Model& m) { return Json(m.Listeners()); }},
};

} // namespace

Json SnapshotOf(const host::ReferenceHost::ModelView& model, const Runs& runs, std::string_view what) {
    const auto part =
        std::find_if(std::begin(parts), std::end(parts), [&](const Part& p) { return p.name == what; });
    if (part == std::end(parts)) {
        throw CommandError("nothing to show under \"" + std::string(what) + "\"; there are " +
                           SnapshotNames());
    }
    return part->take({model, runs});
}

std::string SnapshotNames() {
    std::string names;
    for (const Part& part : parts)
        names += (names.empty() ? "" : ", ") + std::string(part.name);
    return names;
}

} // namespace arvon::console
