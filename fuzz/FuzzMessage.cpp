#include "base/ComponentError.h"
#include "host/MessageXml.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace arvon::host;

namespace {

std::string Written(messageXml::Root root, const messageXml::Content& content) {
    if (root == messageXml::Root::Request)
        return messageXml::WriteRequest(content.name, content.numbers[0], content.parameters);
    return messageXml::WriteEvent(content.numbers[0], content.name, content.numbers[1], content.numbers[2],
                                  content.parameters);
}

} // namespace

/// Whatever is accepted must be written as a text that reads back as the same message.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const messageXml::Root root : {messageXml::Root::Request, messageXml::Root::Event}) {
        messageXml::Content content;
        try {
            content = messageXml::Read(root, text);
        } catch (const base::ComponentError&) {
            continue;
        }
        const std::string written = Written(root, content);
        if (Written(root, messageXml::Read(root, written)) != written) std::abort();
    }
    return 0;
}
