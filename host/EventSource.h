#pragma once

#include "core/contract/EventShapes.h"
#include "core/contract/Messages.h"

#include <cstdint>
#include <string_view>

namespace arvon::host {

class Router;

/// Raises the events of the host's objects: delivers them to the listener that owns the object. What the
/// host's own shell owns is answered by the tool manager.
class EventSource {
public:
    explicit EventSource(Router& router) : router_(router) {}

    void Process(std::string_view caller, std::string_view commandLine, std::int32_t processId);
    void Menu(std::string_view owner, std::string_view itemKey);
    void Button(std::string_view owner, std::string_view buttonKey);
    void Node(std::string_view owner, std::string_view tabKey, std::int32_t kind, std::string_view nodeKey);
    void Row(std::string_view owner, std::string_view viewKey, std::int32_t kind, std::string_view text,
             bool checked);
    void Column(std::string_view owner, std::string_view viewKey, std::string_view columnKey,
                std::string_view order);
    void Task(std::string_view owner, std::string_view taskKey, bool flag);
    void Tab(std::string_view owner, std::string_view tabKey, std::int32_t kind,
             std::string_view selectedNode);

private:
    void Deliver(std::string_view owner, const IEvent& event);

    Router& router_;
};

} // namespace arvon::host
