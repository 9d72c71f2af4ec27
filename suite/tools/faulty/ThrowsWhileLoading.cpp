// A tool that fails while it loads, after it has registered as a listener.

#include "suite/tools/SuiteTool.h"

namespace {

class ThrowsWhileLoading : public suite::SuiteTool {
public:
    ThrowsWhileLoading() : SuiteTool("ThrowsWhileLoading") {}

protected:
    void OnLoad() override {
        throw base::ComponentError(1002, "ThrowsWhileLoading", "the licence file is missing");
    }
};

} // namespace

SUITE_EXPORT_TOOL(ThrowsWhileLoading)
