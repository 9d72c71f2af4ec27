#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace bench {

/// Another store of settings, for the same tools and options: groups and keys. Each lies in a library of its
/// own, because two versions of Qt cannot share one.
class OptionsPeer {
public:
    virtual ~OptionsPeer() = default;
    /// An empty store in that file.
    virtual void Open(const std::filesystem::path& file) = 0;
    virtual void Put(const std::string& tool, const std::string& option, const std::string& value) = 0;
    /// The value's length, so that it is really made.
    virtual std::size_t Read(const std::string& tool, const std::string& option) = 0;
    /// To the disk, as safely as the store can.
    virtual void Save() = 0;
};

} // namespace bench

/// What each library exports.
extern "C" bench::OptionsPeer* NewGKeyFile();
extern "C" bench::OptionsPeer* NewQSettings();
extern "C" bench::OptionsPeer* NewKConfig();
#define KVTM_BENCH_EXPORT __attribute__((visibility("default")))
