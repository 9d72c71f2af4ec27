#pragma once

#include "host/Messages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The XML form of requests and events:
///
///     <Request Type="" Mode="0">
///       <Parameters><Parameter Name="" Type="2">text</Parameter></Parameters>
///     </Request>
///     <Event ObjectType="0" Name="" Category="0" Level="0"><Parameters>...</Parameters></Event>
///
/// Any attribute may be missing (0, or empty text), and so may the Parameters element. Blanks may stand
/// between elements and the text may open with an XML declaration; it is UTF-8, whatever that names.
/// Everything else is no message: other elements or attributes, text between elements, a second Parameters
/// element, comments, processing instructions, document type declarations, namespaces, numbers that are no
/// 32-bit integers.
namespace arvon::host::messageXml {

/// Longest text that is read.
inline constexpr std::size_t MaximumBytes = std::size_t{16} << 20;

enum class Root { Request, Event };

/// The root element's attributes, and the parameters. `name` is a request's Type or an event's Name;
/// `numbers` are a request's Mode, or an event's ObjectType, Category and Level.
struct Content {
    std::string name;
    std::array<std::int32_t, 3> numbers{};
    std::vector<std::shared_ptr<Parameter>> parameters;
};

/// Throws InvalidCall for a text that is not of the form, naming the line and what is wrong.
Content Read(Root root, std::string_view xml);

/// Characters that XML cannot hold (control characters, ill-formed UTF-8) are written as U+FFFD.
std::string WriteRequest(std::string_view type, std::int32_t mode,
                         const std::vector<std::shared_ptr<Parameter>>& parameters);
std::string WriteEvent(std::int32_t objectType, std::string_view name, std::int32_t category,
                       std::int32_t level, const std::vector<std::shared_ptr<Parameter>>& parameters);

} // namespace arvon::host::messageXml
