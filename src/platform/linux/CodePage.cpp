#include "platform/CodePage.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/TextConverter.h"
#include "platform/Windows1252.h"

#include <algorithm>
#include <cstdlib>

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

class NamedCodePage final : public CodePage {
public:
    explicit NamedCodePage(std::string name) : name_(std::move(name)) {}

    std::string FromAnsi(std::string_view bytes) const override {
        const base::TextConverter converter(std::string(Utf8Name), name_);
        return converter.Run(bytes, [](std::string_view, std::string& output) {
            output += ReplacementCharacter;
            return std::size_t{1};
        });
    }

    std::string ToAnsi(std::string_view text) const override {
        const std::string wellFormed = base::FromCodePoints(base::ToCodePoints(text));
        const base::TextConverter converter(name_, std::string(Utf8Name));
        return converter.Run(wellFormed, [](std::string_view rest, std::string& output) {
            output += '?';
            return base::FirstCharacters(rest, 1).size();
        });
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
    const std::string utf8(Utf8Name);
    const bool bothWays =
        base::TextConverter(utf8, name).IsOpen() && base::TextConverter(name, utf8).IsOpen();
    if (!bothWays)
        throw base::ComponentError(base::errors::InvalidCall, "KvTM10.CodePage",
                                   "ARVON_CODE_PAGE: expected the number of a code page, found \"" + setting +
                                       "\"");
    return std::make_unique<NamedCodePage>(name);
}

} // namespace platform
