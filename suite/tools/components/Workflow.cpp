// The workflow component (listener "WORKFLOW"): keeps a record of the tools that were unloaded.
//
// Told by the tool manager's event "ToolUnloaded". Request "History": the names, one a line, oldest first;
// the newest 1,000.

#include "suite/tools/SuiteTool.h"

#include <deque>

namespace {

constexpr std::size_t LongestHistory = 1000;

class Workflow : public suite::SuiteTool {
public:
    Workflow() : SuiteTool("WORKFLOW") {}

protected:
    void OnEvent(arvon::IEvent& event) override {
        if (event.Name() != "ToolUnloaded") return;
        unloaded_.push_back(Text(event.Parameters(), "ToolName"));
        if (unloaded_.size() > LongestHistory) unloaded_.pop_front();
    }

    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() != "History") return {};
        std::string lines;
        for (const std::string& name : unloaded_)
            lines += (lines.empty() ? "" : "\n") + name;
        return lines;
    }

private:
    std::deque<std::string> unloaded_;
};

} // namespace

SUITE_EXPORT_TOOL(Workflow)
