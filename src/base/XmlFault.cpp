#include "base/XmlFault.h"

#include "base/ComponentError.h"
#include "base/NumberText.h"
#include "base/Text.h"
#include "base/Utf8.h"

#include <libxml/globals.h>

#include <algorithm>

namespace base {

namespace {

void PrintNothing(void*, const char*, ...) {}

} // namespace

QuietLibrary::QuietLibrary() : print_(xmlGenericError), printContext_(xmlGenericErrorContext) {
    xmlSetGenericErrorFunc(nullptr, &PrintNothing);
}

QuietLibrary::~QuietLibrary() {
    xmlSetGenericErrorFunc(printContext_, print_);
}

std::string ReasonOf(XmlErrorArgument error) {
    constexpr std::size_t shownCharacters = 300;
    if (!error || !error->message) return "unknown error " + std::to_string(error ? error->code : 0);
    // The library cuts long messages at a byte, not at a character.
    std::string reason =
        FromCodePoints(ToCodePoints(FirstCharacters(TrimWhiteSpace(error->message), shownCharacters)));
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    return reason;
}

void RaiseXmlFault(int line, int column, std::string_view reason) {
    throw ComponentError(errors::InvalidCall, "XmlDocument",
                         "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " +
                             std::string(reason));
}

void RaiseXmlFaultAt(std::string_view text, std::size_t offset, std::string_view reason) {
    const std::string_view before = text.substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::string_view lineBefore = before.substr(before.rfind('\n') + 1);
    int column = 1;
    for (std::size_t at = 0; at < lineBefore.size(); ++column)
        at += DecodeUtf8(lineBefore, at).length;
    RaiseXmlFault(static_cast<int>(line), column, reason);
}

} // namespace base
