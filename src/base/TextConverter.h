#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace base {

/// A conversion between two encodings that the system's library knows by name.
class TextConverter {
public:
    /// Puts into the output what stands for bytes at the start of `rest` that cannot be converted (or half a
    /// character at the very end), and answers how many bytes that was, at least one. It may throw.
    using Misfit = std::function<std::size_t(std::string_view rest, std::string& output)>;

    TextConverter(const std::string& to, const std::string& from);
    ~TextConverter();
    TextConverter(const TextConverter&) = delete;
    TextConverter& operator=(const TextConverter&) = delete;

    /// False where one of the names is not known.
    bool IsOpen() const noexcept;
    /// The whole input, from the start of a text. Ends early, a little further, when the output is longer
    /// than `limit` bytes.
    std::string Run(std::string_view input, const Misfit& misfit,
                    std::size_t limit = std::string::npos) const;

private:
    void* handle_;
};

} // namespace base
