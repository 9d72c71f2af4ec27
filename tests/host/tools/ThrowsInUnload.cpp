// A tool that fails while it unloads.

#include "tests/host/tools/TestTool.h"

#include <stdexcept>

namespace {
class ThrowsInUnload : public TestTool {
public:
    ThrowsInUnload() : TestTool("ThrowsInUnload") {}
    void OnUnload() override { throw std::runtime_error("something is in use"); }
};
} // namespace

EXPORT_TEST_TOOL(ThrowsInUnload)
