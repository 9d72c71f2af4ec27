#include "base/Utf8.h"
#include "host/MessageXml.h"

#include <array>
#include <charconv>

namespace arvon::host::messageXml {

namespace {

// Bytes that stand for themselves, in both texts and attribute values.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (int byte = 0x20; byte <= 0x7F; ++byte)
        plain[static_cast<std::size_t>(byte)] = true;
    for (const char special : {'&', '<', '>', '"'})
        plain[static_cast<unsigned char>(special)] = false;
    return plain;
}();

/// Whether XML can hold a character beyond ASCII.
bool IsXmlCharacter(char32_t character) {
    return character != 0xFFFE && character != 0xFFFF;
}

void AppendEscaped(std::string& out, std::string_view text, bool attribute) {
    std::size_t done = 0;
    std::size_t at = 0;
    const auto put = [&](std::string_view replacement, std::size_t length) {
        out.append(text, done, at - done).append(replacement);
        at += length;
        done = at;
    };
    while (at < text.size()) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (plainBytes[byte]) {
            ++at;
            continue;
        }
        switch (byte) {
        case '&':
            put("&amp;", 1);
            continue;
        case '<':
            put("&lt;", 1);
            continue;
        case '>':
            put("&gt;", 1);
            continue;
        case '"':
            put("&quot;", 1);
            continue;
        case '\r':
            put("&#13;", 1);
            continue;
        case '\t':
            attribute ? put("&#9;", 1) : void(++at);
            continue;
        case '\n':
            attribute ? put("&#10;", 1) : void(++at);
            continue;
        default:
            break;
        }
        const base::Utf8Step step = base::DecodeUtf8(text, at);
        if (byte >= 0x80 && step.isWellFormed && IsXmlCharacter(step.character)) {
            at += step.length;
        } else {
            put("\xEF\xBF\xBD", step.length);
        }
    }
    out.append(text, done);
}

void AppendNumber(std::string& out, std::int32_t number) {
    char digits[12];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    out.append(digits, end);
}

void AppendParameters(std::string& out, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    out += "<Parameters>";
    for (const auto& parameter : parameters) {
        out += "<Parameter Name=\"";
        AppendEscaped(out, parameter->NameText(), true);
        out += "\" Type=\"";
        AppendNumber(out, parameter->Type());
        out += "\">";
        if (const std::string* text = parameter->Content().TextIfAny()) {
            AppendEscaped(out, *text, false);
        } else {
            AppendEscaped(out, parameter->Content().ToText(), false);
        }
        out += "</Parameter>";
    }
    out += "</Parameters>";
}

std::size_t EstimatedSize(std::string_view name, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::size_t size = 128 + name.size();
    for (const auto& parameter : parameters) {
        const std::string* text = parameter->Content().TextIfAny();
        size += 64 + parameter->NameText().size() + (text ? text->size() : 0);
    }
    return size;
}

} // namespace

std::string WriteRequest(std::string_view type, std::int32_t mode,
                         const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::string out;
    out.reserve(EstimatedSize(type, parameters));
    out += "<Request Type=\"";
    AppendEscaped(out, type, true);
    out += "\" Mode=\"";
    AppendNumber(out, mode);
    out += "\">";
    AppendParameters(out, parameters);
    out += "</Request>";
    return out;
}

std::string WriteEvent(std::int32_t objectType, std::string_view name, std::int32_t category,
                       std::int32_t level, const std::vector<std::shared_ptr<Parameter>>& parameters) {
    std::string out;
    out.reserve(EstimatedSize(name, parameters));
    out += "<Event ObjectType=\"";
    AppendNumber(out, objectType);
    out += "\" Name=\"";
    AppendEscaped(out, name, true);
    out += "\" Category=\"";
    AppendNumber(out, category);
    out += "\" Level=\"";
    AppendNumber(out, level);
    out += "\">";
    AppendParameters(out, parameters);
    out += "</Event>";
    return out;
}

} // namespace arvon::host::messageXml
