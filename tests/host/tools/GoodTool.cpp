// A tool that loads and unloads.

#include "tests/host/tools/TestTool.h"

namespace {
class GoodTool : public TestTool {
public:
    GoodTool() : TestTool("GoodTool") {}
};
} // namespace

EXPORT_TEST_TOOL(GoodTool)
