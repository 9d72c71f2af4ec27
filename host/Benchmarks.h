#pragma once

#include "core/contract/Tool.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

namespace arvon::host {

/// The host's support library: benchmark recorders that all write to one list of bounded length.
class Support final : public ISupport {
public:
    static constexpr std::size_t MaximumTexts = 10'000;

    std::shared_ptr<IBenchmarkRecorder> NewBenchmarkRecorder() override;
    const std::deque<std::string>& Texts() const noexcept { return *texts_; }

private:
    std::shared_ptr<std::deque<std::string>> texts_ = std::make_shared<std::deque<std::string>>();
};

} // namespace arvon::host
