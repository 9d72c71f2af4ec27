// A library whose entry point throws.

#include "tests/host/tools/TestTool.h"

#include <stdexcept>

namespace {
class ThrowsWhenMade : public TestTool {
public:
    ThrowsWhenMade() : TestTool("ThrowsWhenMade") { throw std::runtime_error("no memory for a tool"); }
};
} // namespace

EXPORT_TEST_TOOL(ThrowsWhenMade)
