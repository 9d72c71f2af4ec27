#pragma once

#include <libxml/xmlerror.h>
#include <libxml/xmlversion.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

#if LIBXML_VERSION >= 21200
using XmlErrorArgument = const xmlError*;
#else
using XmlErrorArgument = xmlError*;
#endif

/// As long as it lives, the library prints nothing: not all of its complaints go to a handler of the parser
/// or expression at hand.
class QuietLibrary {
public:
    QuietLibrary();
    ~QuietLibrary();
    QuietLibrary(const QuietLibrary&) = delete;
    QuietLibrary& operator=(const QuietLibrary&) = delete;

private:
    xmlGenericErrorFunc print_;
    void* printContext_;
};

/// What the library says of an error: one line, bounded, well-formed.
std::string ReasonOf(XmlErrorArgument error);

/// Raises the error of a text that was refused. Lines and columns (in characters) count from 1.
[[noreturn]] void RaiseXmlFault(int line, int column, std::string_view reason);
/// The same for the character at an offset (in bytes) of a text.
[[noreturn]] void RaiseXmlFaultAt(std::string_view text, std::size_t offset, std::string_view reason);

} // namespace base
