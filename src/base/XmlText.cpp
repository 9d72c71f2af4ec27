#include "base/XmlText.h"

#include "base/Utf8.h"

namespace base {

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

bool IsXmlName(const char* name) noexcept {
    // The library complains on standard error about ill-formed names.
    return IsXmlText(name) && xmlValidateQName(XmlText(name), 0) == 0;
}

} // namespace base
