#pragma once

#include "host/ReferenceHost.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

/// The XML text of a request with parameters that need no escaping.
inline std::string RequestText(std::string_view type,
                               const std::vector<std::pair<std::string, std::string>>& parameters = {}) {
    std::string text = "<Request Type=\"" + std::string(type) + "\" Mode=\"0\"><Parameters>";
    for (const auto& [name, value] : parameters)
        text += "<Parameter Name=\"" + name + "\" Type=\"2\">" + value + "</Parameter>";
    return text + "</Parameters></Request>";
}

inline std::string Send(arvon::host::ReferenceHost& host, const std::string& request) {
    constexpr std::int32_t requestMessage = 2;
    return host.SendMessage(requestMessage, request);
}

/// The least that a request costs: libxml2 reads its text and drops it.
inline void BareParse(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        xmlDoc* document =
            xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NONET);
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}

} // namespace bench
