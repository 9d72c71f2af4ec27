#include "base/TextConverter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>

namespace base {

namespace {

const iconv_t none = reinterpret_cast<iconv_t>(-1);

} // namespace

TextConverter::TextConverter(const std::string& to, const std::string& from)
    : handle_(iconv_open(to.c_str(), from.c_str())) {}

TextConverter::~TextConverter() {
    if (IsOpen()) iconv_close(handle_);
}

bool TextConverter::IsOpen() const noexcept {
    return handle_ != none;
}

std::string TextConverter::Run(std::string_view input, const Misfit& misfit, std::size_t limit) const {
    std::string output;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr); // no state left of an earlier text
    char* next = const_cast<char*>(input.data());       // which is only read
    std::size_t left = input.size();
    std::array<char, 16384> room;
    while (left > 0 && output.size() <= limit) {
        char* roomNext = room.data();
        std::size_t roomLeft = room.size();
        const std::size_t result = iconv(handle_, &next, &left, &roomNext, &roomLeft);
        const int error = errno;
        output.append(room.data(), room.size() - roomLeft);
        if (result != static_cast<std::size_t>(-1) || error == E2BIG) continue;
        const std::size_t passed = std::clamp<std::size_t>(misfit({next, left}, output), 1, left);
        next += passed;
        left -= passed;
    }
    char* roomNext = room.data();
    std::size_t roomLeft = room.size();
    iconv(handle_, nullptr, nullptr, &roomNext, &roomLeft); // what it held back, waiting for an accent
    output.append(room.data(), room.size() - roomLeft);
    return output;
}

} // namespace base
