// A tool that does not want to be loaded.

#include "tests/host/tools/TestTool.h"

namespace {
class Declines : public TestTool {
public:
    Declines() : TestTool("Declines") {}
    bool OnLoad() override { return false; }
};
} // namespace

EXPORT_TEST_TOOL(Declines)
