#pragma once

#include "platform/DebugOutput.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvtm::test {

/// Keeps what is written to the debugger's output.
class DebugLines final : public platform::DebugOutput {
public:
    explicit DebugLines(std::vector<std::string>& lines) : lines_(lines) {}
    void Write(std::string_view line) noexcept override { lines_.emplace_back(line); }

private:
    std::vector<std::string>& lines_;
};

} // namespace kvtm::test
