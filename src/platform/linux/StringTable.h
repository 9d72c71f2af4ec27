#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The string resources of a library in the Windows format (32 or 64 bit), from the bytes of its file. The
/// bytes are untrusted: whatever they say, nothing outside of them is read, and a damaged library has the
/// strings that can still be reached, or none. Where a block of strings is there in several languages, the
/// user's counts, else the user's without a country, else the neutral one, else the first.
class StringTable {
public:
    /// `language` is the user's, 0 for none (see UserLanguage).
    explicit StringTable(std::string file, std::uint16_t language = 0);

    /// The string of that number. Nothing when there is none or it is empty.
    std::optional<std::u16string> Find(std::uint16_t number) const;

private:
    /// A stretch of the file; size 0 is none.
    struct Block {
        std::uint32_t offset = 0, size = 0;
    };
    static constexpr std::size_t BlockCount = 4096; // of sixteen strings each

    std::string file_;
    std::array<Block, BlockCount> blocks_{};
};

} // namespace platform
