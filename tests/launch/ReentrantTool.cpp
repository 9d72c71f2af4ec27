// A Vantor that, while it loads, asks the tool manager for another launch, and selects another node: what a
// host may bring about by delivering events during a load. What it was answered stands in the environment
// variable KVTM_TEST_ANSWER.

#include "suite/tools/SuiteTool.h"

#include <cstdlib>

namespace {

class ReentrantTool : public suite::SuiteTool {
public:
    ReentrantTool() : SuiteTool("ReentrantTool") {}

protected:
    void OnLoad() override {
        const std::string answer = Ask("KvTM10", "LaunchTool", {{"ToolName", "Layout"}});
        setenv("KVTM_TEST_ANSWER", answer.c_str(), 1);
    }
};

} // namespace

SUITE_EXPORT_TOOL(ReentrantTool)
