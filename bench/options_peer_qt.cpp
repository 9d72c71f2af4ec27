#include "bench/options_peer.h"

#include <QSettings>

#include <cstdlib>
#include <memory>

namespace {

class Settings final : public bench::OptionsPeer {
public:
    void Open(const std::filesystem::path& path) override {
        settings_ = std::make_unique<QSettings>(QString::fromStdString(path.string()), QSettings::IniFormat);
    }
    void Put(const std::string& tool, const std::string& option, const std::string& value) override {
        settings_->setValue(Key(tool, option), QString::fromStdString(value));
    }
    std::size_t Read(const std::string& tool, const std::string& option) override {
        return static_cast<std::size_t>(settings_->value(Key(tool, option)).toString().size());
    }
    void Save() override {
        settings_->sync();
        if (settings_->status() != QSettings::NoError) std::abort();
    }

private:
    static QString Key(const std::string& tool, const std::string& option) {
        return QString::fromStdString(tool) + QLatin1Char('/') + QString::fromStdString(option);
    }
    std::unique_ptr<QSettings> settings_;
};

} // namespace

extern "C" KVTM_BENCH_EXPORT bench::OptionsPeer* NewQSettings() {
    return new Settings;
}
