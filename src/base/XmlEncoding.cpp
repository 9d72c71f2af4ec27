#include "base/XmlEncoding.h"

#include "base/Text.h"
#include "base/TextConverter.h"
#include "base/Utf8.h"
#include "base/XmlDocument.h"
#include "base/XmlFault.h"

#include <algorithm>

namespace base {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view Blanks = " \t\r\n";

/// How files without a name for their encoding begin. Longer ones first: a UTF-32 mark begins as a UTF-16
/// one.
struct Form {
    std::string_view start;
    std::size_t markLength;
    const char* encoding;
};
constexpr Form Forms[] = {
    {"\xFF\xFE\0\0"sv, 4, "UTF-32LE"}, {"\0\0\xFE\xFF"sv, 4, "UTF-32BE"}, {"<\0\0\0"sv, 0, "UTF-32LE"},
    {"\0\0\0<"sv, 0, "UTF-32BE"},      {"\xFF\xFE"sv, 2, "UTF-16LE"},     {"\xFE\xFF"sv, 2, "UTF-16BE"},
    {"<\0"sv, 0, "UTF-16LE"},          {"\0<"sv, 0, "UTF-16BE"},
};
constexpr std::string_view EbcdicStart = "\x4C\x6F\xA7\x94"; // "<?xm"
constexpr const char* EbcdicInvariant = "IBM037"; // has the declaration's characters as all of them

bool IsAsciiLetter(char character) noexcept {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// The grammar of XML for such names. It leaves out what the library would take for more than a name
/// ("//IGNORE").
bool IsEncodingName(std::string_view name) {
    constexpr std::size_t longest = 64;
    return !name.empty() && name.size() <= longest && IsAsciiLetter(name[0]) &&
           std::all_of(name.begin(), name.end(), [](char each) {
               return IsAsciiLetter(each) || (each >= '0' && each <= '9') ||
                      "._-"sv.find(each) != "._-"sv.npos;
           });
}

/// Whether the system gives the bytes without a character in this code page the control of the same number.
/// Of 1255 and 1258 the converter may hold a letter back, which a control must not overtake.
bool FillsGaps(std::string_view name) {
    const std::string upper = UpperCase(name);
    const bool isOfSystem = upper.starts_with("WINDOWS-125") || upper.starts_with("CP125");
    return isOfSystem && !upper.ends_with('5') && !upper.ends_with('8');
}

/// The text of bytes in an encoding, whose name the library knows.
std::string Decode(std::string_view bytes, const TextConverter& converter, std::string_view name) {
    const bool fillsGaps = FillsGaps(name);
    return converter.Run(
        bytes,
        [&](std::string_view rest, std::string& text) -> std::size_t {
            const auto byte = static_cast<unsigned char>(rest[0]);
            if (!fillsGaps || byte < 0x80 || byte >= 0xA0)
                RaiseXmlFaultAt(text, text.size(), "the bytes are no character of " + std::string(name));
            AppendUtf8(text, byte);
            return 1;
        },
        XmlDocument::MaximumBytes);
}

/// Takes what cannot be read for a difference to what is expected.
std::string DecodeRoughly(std::string_view bytes, const TextConverter& converter) {
    return converter.Run(bytes, [](std::string_view rest, std::string& text) {
        text += '\0';
        return rest.size();
    });
}

/// The text of bytes whose declaration, read as `head`, names their encoding.
std::string DecodeAsDeclared(std::string_view bytes, std::string_view head, XmlEncodingName place) {
    const std::string name(head.substr(place.offset, place.length));
    const auto refuse = [&](std::string_view reason) {
        constexpr std::size_t shownCharacters = 40;
        RaiseXmlFaultAt(head, place.offset,
                        "the encoding \"" + std::string(FirstCharacters(name, shownCharacters)) + "\" " +
                            std::string(reason));
    };
    if (!IsEncodingName(name)) refuse("is not supported here");
    const TextConverter converter("UTF-8", name);
    if (!converter.IsOpen()) refuse("is not supported here");
    if (DecodeRoughly(bytes.substr(0, head.size()), converter) != head) refuse("is not that of these bytes");
    return Decode(bytes, converter, name);
}

std::string DecodeEbcdic(std::string_view bytes) {
    constexpr std::size_t longestDeclaration = 512;
    std::string head =
        DecodeRoughly(bytes.substr(0, longestDeclaration), TextConverter("UTF-8", EbcdicInvariant));
    head.resize(std::min(head.find("?>"), head.size())); // ASCII up to here, so that lengths are the same
    const auto place = FindXmlEncoding(head);
    if (!place || !std::all_of(head.begin(), head.end(),
                               [](char each) { return static_cast<unsigned char>(each) < 0x80; }))
        RaiseXmlFault(1, 1, "the bytes look like EBCDIC, and no declaration says which");
    return DecodeAsDeclared(bytes, head, *place);
}

} // namespace

bool HasXmlDeclaration(std::string_view text) noexcept {
    constexpr std::string_view start = "<?xml";
    return text.starts_with(start) && text.size() > start.size() &&
           Blanks.find(text[start.size()]) != std::string_view::npos;
}

std::optional<XmlEncodingName> FindXmlEncoding(std::string_view text) {
    const std::size_t mark = text.starts_with(Utf8Mark) ? Utf8Mark.size() : 0;
    const std::string_view declaration = text.substr(0, text.find("?>"));
    if (!HasXmlDeclaration(declaration.substr(mark))) return std::nullopt;
    const auto skipBlanks = [&](std::size_t at) { return declaration.find_first_not_of(Blanks, at); };
    constexpr std::string_view word = "encoding";
    std::size_t at = declaration.find(word);
    if (at == std::string_view::npos) return std::nullopt;
    at = skipBlanks(at + word.size());
    if (at == std::string_view::npos || declaration[at] != '=') return std::nullopt;
    at = skipBlanks(at + 1);
    if (at == std::string_view::npos || (declaration[at] != '"' && declaration[at] != '\''))
        return std::nullopt;
    const std::size_t end = declaration.find(declaration[at], at + 1);
    if (end == std::string_view::npos) return std::nullopt;
    return XmlEncodingName{at + 1, end - at - 1};
}

std::string DecodeXml(std::string bytes) {
    const std::string_view view = bytes;
    if (view.starts_with(Utf8Mark)) return bytes;
    for (const Form& form : Forms) {
        if (view.starts_with(form.start))
            return Decode(view.substr(form.markLength), TextConverter("UTF-8", form.encoding), form.encoding);
    }
    if (view.starts_with(EbcdicStart)) return DecodeEbcdic(view);

    const auto place = FindXmlEncoding(view);
    if (!place) return bytes;
    const std::string name = UpperCase(view.substr(place->offset, place->length));
    if (name == "UTF-8" || name == "UTF8") return bytes;
    return DecodeAsDeclared(view, view.substr(0, view.find("?>")), *place);
}

} // namespace base
