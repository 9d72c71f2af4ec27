#include "platform/StringModules.h"

#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/linux/StringTable.h"
#include "platform/linux/UserLanguage.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <list>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr off_t LargestModule = off_t{64} << 20; // bytes
constexpr std::size_t KeptModules = 2;           // the old and the new language during a switch

/// Which file a descriptor is open on, and in which state.
struct ModuleIdentity {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = 0;
    std::array<long long, 4> times{};

    explicit ModuleIdentity(const struct stat& status)
        : device(status.st_dev), node(status.st_ino),
          size(status.st_size), times{status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
                                      status.st_ctim.tv_nsec} {}
    friend bool operator==(const ModuleIdentity&, const ModuleIdentity&) = default;
};

/// A copy of the file, not a mapping: one that shrinks meanwhile must not end the process. At most the size
/// that the file had at first.
std::string ReadWhole(int file, off_t size) {
    std::string content(static_cast<std::size_t>(size), '\0');
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t count =
            ::pread(file, content.data() + done, content.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    content.resize(done);
    return content;
}

class FileStringModules final : public StringModules {
public:
    std::string LoadString(std::int32_t module, std::uint32_t number, std::size_t capacity) override {
        if (module <= 0 || capacity <= 1) return ""; // 0 is no module
        const StringTable* table = TableOf(module);
        if (table == nullptr) return "";
        const auto text =
            table->Find(static_cast<std::uint16_t>(number)); // as the system: the low half counts
        if (!text) return "";
        std::string bytes = codePage_->ToAnsi(base::FromUtf16(*text));
        if (bytes.size() >= capacity) bytes.resize(capacity - 1);
        return bytes;
    }

private:
    struct Module {
        ModuleIdentity identity;
        StringTable table;
    };

    /// The descriptor says anew at each call which file it means: its owner may have put another one behind
    /// it.
    const StringTable* TableOf(int file) {
        struct stat status {};
        if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > LargestModule)
            return nullptr;
        const ModuleIdentity identity(status);
        const auto known = std::find_if(modules_.begin(), modules_.end(),
                                        [&](const Module& module) { return module.identity == identity; });
        if (known != modules_.end()) {
            modules_.splice(modules_.begin(), modules_, known);
        } else {
            modules_.push_front({identity, StringTable(ReadWhole(file, status.st_size), language_)});
            if (modules_.size() > KeptModules) modules_.pop_back();
        }
        return &modules_.front().table;
    }

    const std::uint16_t language_ = UserLanguage();
    std::unique_ptr<CodePage> codePage_ = CodePage::Create();
    std::list<Module> modules_; // the last used first
};

} // namespace

std::unique_ptr<StringModules> StringModules::Create() {
    return std::make_unique<FileStringModules>();
}

} // namespace platform
