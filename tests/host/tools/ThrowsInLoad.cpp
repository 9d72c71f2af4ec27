// A tool that fails while it loads, after it has registered as a listener.

#include "tests/host/tools/TestTool.h"

namespace {
class ThrowsInLoad : public TestTool {
public:
    ThrowsInLoad() : TestTool("ThrowsInLoad") {}
    bool OnLoad() override {
        throw base::ComponentError(1002, "ThrowsInLoad", "the licence file is missing");
    }
};
} // namespace

EXPORT_TEST_TOOL(ThrowsInLoad)
