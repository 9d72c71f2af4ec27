// A tool that has itself loaded under all its names, and another tool, while it loads; and the other one once
// more while it unloads. The answers stand in the environment variable TEST_TOOL_ANSWERS.

#include "tests/host/tools/TestTool.h"

namespace {
class LoadsOthers : public TestTool {
public:
    LoadsOthers() : TestTool("LoadsOthers") {}
    bool OnLoad() override {
        for (const char* name : {"LoadsOthers", "LO1", "{lo}", "GoodTool"})
            Ask(name);
        return true;
    }
    void OnUnload() override { Ask("GoodTool"); }

private:
    void Ask(const char* name) {
        constexpr const char* variable = "TEST_TOOL_ANSWERS";
        const char* before = std::getenv(variable);
        const bool loaded = Host().Loader().Load(name, shared_from_this());
        setenv(variable, (std::string(before ? before : "") + (loaded ? "y" : "n")).c_str(), 1);
    }
};
} // namespace

EXPORT_TEST_TOOL(LoadsOthers)
