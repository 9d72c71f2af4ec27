// A tool that throws what is no ComponentError, while it loads.

#include "tests/host/tools/TestTool.h"

namespace {
class ThrowsOddly : public TestTool {
public:
    ThrowsOddly() : TestTool("ThrowsOddly") {}
    bool OnLoad() override { throw 42; }
};
} // namespace

EXPORT_TEST_TOOL(ThrowsOddly)
