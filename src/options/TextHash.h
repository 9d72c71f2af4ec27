#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace kvtm {

/// Hash of a text, for tables in memory. `seed`: chains texts, and keeps whoever writes the texts from
/// choosing ones that collide.
inline std::uint64_t TextHash(std::string_view text, std::uint64_t seed) noexcept {
    __extension__ using Wide = unsigned __int128;
    constexpr std::uint64_t first = 0x9e3779b97f4a7c15, second = 0xd6e8feb86659fd93;
    const auto mix = [](std::uint64_t a, std::uint64_t b) {
        const Wide product = static_cast<Wide>(a) * b;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    };
    const auto bytes = [](const char* from, std::size_t count) {
        std::uint64_t word = 0;
        if (count > 0) std::memcpy(&word, from, count); // an empty text may have no address
        return word;
    };

    std::uint64_t state = mix(seed ^ first, text.size() ^ second);
    while (text.size() > sizeof(std::uint64_t)) {
        state = mix(state ^ bytes(text.data(), sizeof(std::uint64_t)), first ^ seed);
        text.remove_prefix(sizeof(std::uint64_t));
    }
    return mix(state ^ bytes(text.data(), text.size()), second ^ seed);
}

} // namespace kvtm
