#include "base/ComponentError.h"
#include "base/XmlDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Whatever is accepted must be written as a text that reads back as the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    base::XmlDocument document;
    try {
        document.LoadText(std::string_view(reinterpret_cast<const char*>(data), size));
    } catch (const base::ComponentError&) {
        return 0;
    }
    base::XmlDocument again;
    again.LoadText(document.Text());
    if (again.Text() != document.Text()) std::abort();
    return 0;
}
