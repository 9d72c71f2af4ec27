#include "platform/CodePage.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/Windows1252.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <iconv.h>

namespace platform {

namespace {

constexpr std::string_view Utf8Name = "UTF-8";
constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD"; // U+FFFD

class BuiltInCodePage final : public CodePage {
public:
    std::string FromAnsi(std::string_view bytes) const override {
        std::u32string characters(bytes.size(), U'\0');
        std::transform(bytes.begin(), bytes.end(), characters.begin(),
                       [](char byte) { return windows1252::ToCharacter(static_cast<unsigned char>(byte)); });
        return base::FromCodePoints(characters);
    }

    std::string ToAnsi(std::string_view text) const override {
        const std::u16string units = base::ToUtf16(text); // the system writes unit by unit, "??" for a pair
        std::string bytes(units.size(), '?');
        std::transform(units.begin(), units.end(), bytes.begin(), [](char16_t unit) {
            return static_cast<char>(windows1252::ToByte(unit).value_or('?'));
        });
        return bytes;
    }
};

/// One conversion; closes its descriptor.
class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : handle_(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (IsOpen()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const noexcept { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// What cannot be converted becomes `replacement`; `unitSize` tells how many bytes that was.
    template <typename UnitSize>
    std::string Run(std::string_view input, std::string_view replacement, UnitSize unitSize) {
        std::string output;
        std::string source(input); // iconv takes its input by a pointer to non-const
        char* next = source.data();
        std::size_t left = source.size();
        std::array<char, 1024> room{};
        while (left > 0) {
            char* roomNext = room.data();
            std::size_t roomLeft = room.size();
            const std::size_t result = iconv(handle_, &next, &left, &roomNext, &roomLeft);
            const int error = errno;
            output.append(room.data(), room.size() - roomLeft);
            if (result != static_cast<std::size_t>(-1) || error == E2BIG) continue;
            const std::size_t bad = std::min(left, unitSize(std::string_view(next, left)));
            next += bad;
            left -= bad;
            output.append(replacement);
        }
        char* roomNext = room.data();
        std::size_t roomLeft = room.size();
        iconv(handle_, nullptr, nullptr, &roomNext, &roomLeft); // what it held back, waiting for an accent
        output.append(room.data(), room.size() - roomLeft);
        return output;
    }

private:
    iconv_t handle_;
};

class NamedCodePage final : public CodePage {
public:
    explicit NamedCodePage(std::string name) : name_(std::move(name)) {}

    std::string FromAnsi(std::string_view bytes) const override {
        Converter converter(std::string(Utf8Name), name_);
        return converter.Run(bytes, ReplacementCharacter, [](std::string_view) { return std::size_t{1}; });
    }

    std::string ToAnsi(std::string_view text) const override {
        const std::string wellFormed = base::FromCodePoints(base::ToCodePoints(text));
        Converter converter(name_, std::string(Utf8Name));
        return converter.Run(wellFormed, "?",
                             [](std::string_view rest) { return base::FirstCharacters(rest, 1).size(); });
    }

private:
    std::string name_;
};

/// iconv's name of a code page given by its number or by a name that iconv knows.
std::string IconvName(const std::string& setting) {
    const bool isNumber = setting.find_first_not_of("0123456789") == std::string::npos;
    if (!isNumber) return setting;
    if (setting == "65001") return std::string(Utf8Name);
    return "CP" + setting;
}

} // namespace

std::unique_ptr<CodePage> CodePage::Create() {
    const char* variable = std::getenv("ARVON_CODE_PAGE");
    const std::string setting = variable == nullptr ? "" : variable;
    if (setting.empty() || setting == "1252") return std::make_unique<BuiltInCodePage>();
    const std::string name = IconvName(setting);
    const bool bothWays =
        Converter(std::string(Utf8Name), name).IsOpen() && Converter(name, std::string(Utf8Name)).IsOpen();
    if (!bothWays)
        throw base::ComponentError(base::errors::InvalidCall, "KvTM10.CodePage",
                                   "ARVON_CODE_PAGE: expected the number of a code page, found \"" + setting +
                                       "\"");
    return std::make_unique<NamedCodePage>(name);
}

} // namespace platform
