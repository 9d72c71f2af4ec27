#include "bench/options_peer.h"

#include <glib.h>

namespace {

class KeyFile final : public bench::OptionsPeer {
public:
    ~KeyFile() override { g_key_file_free(file_); }
    void Open(const std::filesystem::path& path) override { path_ = path; }
    void Put(const std::string& tool, const std::string& option, const std::string& value) override {
        g_key_file_set_string(file_, tool.c_str(), option.c_str(), value.c_str());
    }
    std::size_t Read(const std::string& tool, const std::string& option) override {
        gchar* value = g_key_file_get_string(file_, tool.c_str(), option.c_str(), nullptr);
        const std::size_t length = value ? std::char_traits<char>::length(value) : 0;
        g_free(value);
        return length;
    }
    void Save() override {
        gsize length = 0;
        gchar* text = g_key_file_to_data(file_, &length, nullptr);
        const auto flags =
            static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE);
        if (!g_file_set_contents_full(path_.c_str(), text, static_cast<gssize>(length), flags, 0600, nullptr))
            std::abort();
        g_free(text);
    }

private:
    GKeyFile* file_ = g_key_file_new();
    std::filesystem::path path_;
};

} // namespace

extern "C" KVTM_BENCH_EXPORT bench::OptionsPeer* NewGKeyFile() {
    return new KeyFile;
}
