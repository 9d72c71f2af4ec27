#include "host/Benchmarks.h"

#include <utility>

namespace arvon::host {

namespace {

class Recorder final : public IBenchmarkRecorder {
public:
    explicit Recorder(std::shared_ptr<std::deque<std::string>> texts) : texts_(std::move(texts)) {}

    void SetEnabled(bool enabled) override { enabled_ = enabled; }
    void Record(std::string_view text) override {
        if (!enabled_) return;
        if (texts_->size() == Support::MaximumTexts) texts_->pop_front();
        texts_->emplace_back(text);
    }

private:
    std::shared_ptr<std::deque<std::string>> texts_;
    bool enabled_ = false;
};

} // namespace

std::shared_ptr<IBenchmarkRecorder> Support::NewBenchmarkRecorder() {
    return std::make_shared<Recorder>(texts_);
}

} // namespace arvon::host
