#include "base/XmlText.h"

#include "base/ComponentError.h"
#include "base/Utf8.h"
#include "base/XmlDocument.h"

#include <algorithm>
#include <iterator>

namespace base {

namespace {

struct CharacterRange {
    char32_t first;
    char32_t last;
};

/// Characters that a name may start with, and those that it may also go on with; the colon stands between two
/// names. From the fifth edition of XML 1.0: the library has the parser of this edition, but checks single
/// names by an earlier one.
constexpr CharacterRange nameStarts[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr CharacterRange nameParts[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t count> bool IsIn(const CharacterRange (&ranges)[count], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const CharacterRange& range) {
        return character >= range.first && character <= range.last;
    });
}

bool IsPlainName(std::string_view name) {
    for (std::size_t at = 0; at < name.size();) {
        const Utf8Step step = DecodeUtf8(name, at);
        const bool isNameCharacter =
            IsIn(nameStarts, step.character) || (at > 0 && IsIn(nameParts, step.character));
        if (!step.isWellFormed || !isNameCharacter) return false;
        at += step.length;
    }
    return !name.empty();
}

} // namespace

bool IsXmlNamespace(const xmlNs& space) noexcept {
    return ViewOf(space.href) == "http://www.w3.org/XML/1998/namespace";
}

std::string QualifiedName(const xmlNs* space, const xmlChar* name) {
    std::string qualified;
    if (space && space->prefix) qualified.append(ViewOf(space->prefix)).append(":");
    return qualified.append(ViewOf(name));
}

bool IsXmlText(std::string_view text) noexcept {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Step step = DecodeUtf8(text, at);
        const bool isControl = step.character < 0x20 && step.character != '\t' && step.character != '\n' &&
                               step.character != '\r';
        if (!step.isWellFormed || isControl || step.character == 0xFFFE || step.character == 0xFFFF)
            return false;
        at += step.length;
    }
    return true;
}

void RequireXmlText(std::string_view text) {
    const auto refuse = [](const std::string& reason) {
        throw ComponentError(errors::InvalidCall, "XmlDocument", reason);
    };
    if (text.size() > XmlDocument::MaximumBytes)
        refuse("a text has " + std::to_string(text.size()) + " bytes");
    if (!IsXmlText(text)) refuse("a text has characters that XML cannot hold or is ill-formed UTF-8");
}

bool IsXmlName(std::string_view name) noexcept {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return IsPlainName(name);
    return IsPlainName(name.substr(0, colon)) && IsPlainName(name.substr(colon + 1));
}

} // namespace base
