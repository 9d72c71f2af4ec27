#pragma once

#include <libxml/tree.h>

#include <string>
#include <string_view>

namespace base {

/// The library's texts are NUL-terminated UTF-8; null reads as empty.
inline std::string_view ViewOf(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}
inline const xmlChar* XmlText(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

/// Whether this is the namespace of "xml:space" and its like, which needs no declaration.
bool IsXmlNamespace(const xmlNs& space) noexcept;

/// Name with prefix.
std::string QualifiedName(const xmlNs* space, const xmlChar* name);

/// Whether a text is well-formed UTF-8 of characters that XML allows.
bool IsXmlText(std::string_view text) noexcept;
/// Throws InvalidCall for one that is not, or is larger than a document may be.
void RequireXmlText(std::string_view text);
/// Whether a text names an element or attribute, with or without a prefix.
bool IsXmlName(std::string_view name) noexcept;

} // namespace base
