#include "console/LineSource.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <poll.h>
#include <unistd.h>

namespace arvon::console {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

class DescriptorLines final : public LineSource {
public:
    DescriptorLines(int descriptor, SideWatch watch) : descriptor_(descriptor), watch_(std::move(watch)) {}

    std::optional<std::string> Next() override {
        if (watch_.act) watch_.act();
        for (;;) {
            const std::size_t end = pending_.find('\n', searched_);
            if (end != std::string::npos) return Take(end, end + 1);
            searched_ = pending_.size();
            if (!ReadMore()) break;
        }
        if (start_ == pending_.size()) return std::nullopt;
        return Take(pending_.size(), pending_.size());
    }

private:
    std::string Take(std::size_t end, std::size_t next) {
        std::string line = pending_.substr(start_, end - start_);
        if (first_ && line.starts_with(ByteOrderMark)) line.erase(0, ByteOrderMark.size());
        first_ = false;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        start_ = searched_ = next;
        return line;
    }

    bool ReadMore() {
        pending_.erase(0, start_);
        searched_ -= start_;
        start_ = 0;
        WaitForInput();
        std::array<char, 65536> block;
        for (;;) {
            const ssize_t count = read(descriptor_, block.data(), block.size());
            if (count > 0) pending_.append(block.data(), static_cast<std::size_t>(count));
            if (count >= 0) return count > 0;
            if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "reading commands");
        }
    }

    void WaitForInput() {
        for (;;) {
            std::array<pollfd, 2> waits{{{descriptor_, POLLIN, 0}, {watch_.descriptor, POLLIN, 0}}};
            if (poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR)
                return; // read tells what is wrong
            if (waits[1].revents != 0 && watch_.act) watch_.act();
            if (waits[0].revents != 0) return;
        }
    }

    int descriptor_;
    SideWatch watch_;
    bool first_ = true; // the next line is
    std::string pending_;
    std::size_t start_ = 0;    // of the next line
    std::size_t searched_ = 0; // no line end between start_ and here
};

} // namespace

std::unique_ptr<LineSource> LineSource::OfDescriptor(int descriptor, SideWatch watch) {
    return std::make_unique<DescriptorLines>(descriptor, std::move(watch));
}

} // namespace arvon::console
