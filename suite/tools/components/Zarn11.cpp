// The launcher component (listener "Zarn11"): knows which tools of the suite are running.
//
// Told by the tool manager's events "Tool_Load", "Tool_UnLoad" (the end of a process) and "Tool_Unload" (of a
// tool by its VREX). Request "RunningTools": one running tool a line, its name, VREX and process id (0
// in-process), between TABs.

#include "base/Text.h"
#include "suite/tools/SuiteTool.h"

#include <vector>

namespace {

struct RunningTool {
    std::string name;
    std::string vrex;
    std::int32_t processId = 0;
};

class Zarn11 : public suite::SuiteTool {
public:
    Zarn11() : SuiteTool("Zarn11") {}

protected:
    void OnEvent(arvon::IEvent& event) override {
        arvon::IParameters& parameters = event.Parameters();
        const std::string vrex = Text(parameters, "vrex");
        const std::int32_t processId = ProcessId(parameters);
        if (event.Name() == "Tool_Load") {
            running_.push_back({Text(parameters, "ToolName"), vrex, processId});
        } else if (event.Name() == "Tool_UnLoad") {
            std::erase_if(running_, [&](const RunningTool& tool) {
                return tool.processId != 0 && tool.processId == processId;
            });
        } else if (event.Name() == "Tool_Unload") {
            std::erase_if(running_,
                          [&](const RunningTool& tool) { return base::EqualIgnoringCase(tool.vrex, vrex); });
        }
    }

    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() != "RunningTools") return {};
        std::string lines;
        for (const RunningTool& tool : running_) {
            lines += (lines.empty() ? "" : "\n") + tool.name + '\t' + tool.vrex + '\t' +
                     std::to_string(tool.processId);
        }
        return lines;
    }

private:
    static std::int32_t ProcessId(arvon::IParameters& parameters) {
        const std::shared_ptr<arvon::IParameter> parameter = parameters.Item("ProcessID");
        return parameter ? parameter->GetValue().ToInteger() : 0;
    }

    std::vector<RunningTool> running_;
};

} // namespace

SUITE_EXPORT_TOOL(Zarn11)
