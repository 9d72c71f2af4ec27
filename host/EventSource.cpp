#include "host/EventSource.h"

#include "host/Messages.h"
#include "host/ReferenceHost.h"
#include "host/Router.h"

#include <memory>

namespace arvon::host {

namespace {

constexpr std::string_view rowType = "IListItem";
constexpr std::string_view columnType = "IColumnHeader";

Event NewEvent(EventObject object, std::string_view name, std::int32_t category = 0) {
    Event event;
    event.SetObjectType(static_cast<std::int32_t>(object));
    event.SetName(name);
    event.SetCategory(category);
    return event;
}

void AddText(Event& event, std::string_view name, const Value& value) {
    event.Parameters().Add(ParameterType::Text, name, value, true);
}

} // namespace

void EventSource::Process(std::string_view caller, std::string_view commandLine, std::int32_t processId) {
    Event event = NewEvent(EventObject::Process, "ShellProcessComplete");
    AddText(event, eventParameter::ApplicationNameAndPath, commandLine);
    event.Parameters().Add(ParameterType::Integer, eventParameter::ProcessId, processId, true);
    Deliver(caller, event);
}

void EventSource::Menu(std::string_view owner, std::string_view itemKey) {
    Deliver(owner, NewEvent(EventObject::Menu, itemKey));
}

void EventSource::Button(std::string_view owner, std::string_view buttonKey) {
    Deliver(owner, NewEvent(EventObject::Button, buttonKey));
}

void EventSource::Node(std::string_view owner, std::string_view tabKey, std::int32_t kind,
                       std::string_view nodeKey) {
    Event event = NewEvent(EventObject::Node, tabKey, kind);
    AddText(event, eventParameter::Key, nodeKey);
    Deliver(owner, event);
}

void EventSource::Row(std::string_view owner, std::string_view viewKey, std::int32_t kind,
                      std::string_view text, bool checked) {
    Event event = NewEvent(EventObject::ListItem, viewKey, kind);
    AddText(event, eventParameter::ObjectType, rowType);
    AddText(event, eventParameter::SecondType, "");
    AddText(event, eventParameter::Text, text);
    AddText(event, eventParameter::Checked, checked);
    Deliver(owner, event);
}

void EventSource::Column(std::string_view owner, std::string_view viewKey, std::string_view columnKey,
                         std::string_view order) {
    Event event = NewEvent(EventObject::ListItem, viewKey, eventKind::ColumnClicked);
    AddText(event, eventParameter::ObjectType, columnType);
    AddText(event, eventParameter::SecondType, columnType);
    AddText(event, eventParameter::Key, columnKey);
    AddText(event, eventParameter::Order, order);
    Deliver(owner, event);
}

void EventSource::Task(std::string_view owner, std::string_view taskKey, bool flag) {
    Event event = NewEvent(EventObject::Task, taskKey);
    AddText(event, eventParameter::Flag, flag);
    Deliver(owner, event);
}

void EventSource::Tab(std::string_view owner, std::string_view tabKey, std::int32_t kind,
                      std::string_view selectedNode) {
    Event event = NewEvent(EventObject::Tab, tabKey, kind);
    AddText(event, eventParameter::SelectedItem, selectedNode);
    Deliver(owner, event);
}

void EventSource::Deliver(std::string_view owner, const IEvent& event) {
    auto message = std::make_shared<Message>();
    message->SetType(static_cast<std::int32_t>(MessageType::Event));
    message->SetSource(listenerId::Shell);
    message->SetDestination(owner == listenerId::Shell ? listenerId::Component : owner);
    message->SetBody(event.Xml());
    router_.Route(message);
}

} // namespace arvon::host
