#include "bench/options_peer.h"

#include <KConfig>
#include <KConfigGroup>

#include <cstdlib>
#include <memory>

namespace {

class Config final : public bench::OptionsPeer {
public:
    void Open(const std::filesystem::path& path) override {
        config_ = std::make_unique<KConfig>(QString::fromStdString(path.string()), KConfig::SimpleConfig);
    }
    void Put(const std::string& tool, const std::string& option, const std::string& value) override {
        Group(tool).writeEntry(option.c_str(), QString::fromStdString(value));
    }
    std::size_t Read(const std::string& tool, const std::string& option) override {
        return static_cast<std::size_t>(Group(tool).readEntry(option.c_str(), QString()).size());
    }
    void Save() override {
        if (!config_->sync()) std::abort();
    }

private:
    KConfigGroup Group(const std::string& tool) {
        return KConfigGroup(config_.get(), QString::fromStdString(tool));
    }
    std::unique_ptr<KConfig> config_;
};

} // namespace

extern "C" KVTM_BENCH_EXPORT bench::OptionsPeer* NewKConfig() {
    return new Config;
}
