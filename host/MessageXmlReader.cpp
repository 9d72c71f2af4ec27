#include "host/MessageXml.h"

#include "base/Utf8.h"
#include "base/XmlFault.h"
#include "host/Errors.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace arvon::host::messageXml {

namespace {

std::string_view View(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

struct NumberAttribute {
    std::string_view name;
    std::size_t place; // in Content::numbers
};
constexpr std::array requestNumbers{NumberAttribute{"Mode", 0}};
constexpr std::array eventNumbers{NumberAttribute{"ObjectType", 0}, NumberAttribute{"Category", 1},
                                  NumberAttribute{"Level", 2}};

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Takes the parser's events in and builds the content; refuses at the first that does not fit. What the
/// parser hands over is its own memory, which is gone once it is stopped: so the one who calls stops it,
/// after the event was taken in.
class Reader {
public:
    Reader(Root root, const xmlParserCtxt& parser) : root_(root), parser_(parser) {}

    void Start(std::string_view name, std::span<const xmlChar*> attributes) {
        switch (place_) {
        case Place::Outside:
            if (name != RootName())
                return Refuse("expected the root \"" + std::string(RootName()) + "\", found \"" +
                              std::string(name) + "\"");
            place_ = Place::Root;
            return ReadRoot(attributes);
        case Place::Root:
            if (name != "Parameters" || hasParameters_ || !attributes.empty()) return RefuseElement(name);
            hasParameters_ = true;
            place_ = Place::Parameters;
            return;
        case Place::Parameters:
            if (name != "Parameter") return RefuseElement(name);
            place_ = Place::Parameter;
            return ReadParameter(attributes);
        case Place::Parameter:
            return RefuseElement(name);
        }
    }

    void End() {
        switch (place_) {
        case Place::Parameter:
            place_ = Place::Parameters;
            return AddParameter();
        case Place::Parameters:
            place_ = Place::Root;
            return;
        default:
            place_ = Place::Outside;
        }
    }

    void Characters(std::string_view text) {
        if (place_ == Place::Parameter) {
            text_.append(text);
        } else if (!IsBlank(text)) {
            Refuse("text between elements");
        }
    }

    void Refuse(std::string reason) {
        if (!problem_.empty()) return;
        problem_ = std::move(reason);
        line_ = parser_.input ? parser_.input->line : 0;
    }

    bool HasRefused() const { return !problem_.empty(); }
    const std::string& Problem() const { return problem_; }
    int Line() const { return line_; }
    Content Take() { return std::move(content_); }

private:
    enum class Place { Outside, Root, Parameters, Parameter };

    std::string_view RootName() const { return root_ == Root::Request ? "Request" : "Event"; }
    std::span<const NumberAttribute> Numbers() const {
        if (root_ == Root::Request) return requestNumbers;
        return eventNumbers;
    }

    void RefuseElement(std::string_view name) { Refuse("unexpected element \"" + std::string(name) + "\""); }

    /// Calls take(name, value) for each attribute up to the first that is refused; refuses the ones that it
    /// does not take, and prefixed ones.
    template <class Take> void ForEachAttribute(std::span<const xmlChar*> attributes, Take take) {
        for (std::size_t index = 0; index + 5 <= attributes.size() && !HasRefused(); index += 5) {
            const std::string_view name = View(attributes[index]);
            const char* begin = reinterpret_cast<const char*>(attributes[index + 3]);
            const char* end = reinterpret_cast<const char*>(attributes[index + 4]);
            const std::string_view value(begin, static_cast<std::size_t>(end - begin));
            if (attributes[index + 1] || !take(name, value))
                return Refuse("unexpected attribute \"" + std::string(name) + "\"");
        }
    }

    std::int32_t Integer(std::string_view name, std::string_view text) {
        std::int32_t number = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        if (error != std::errc() || stop != end) {
            Refuse("\"" + std::string(name) + "\" is no 32-bit integer: \"" +
                   std::string(text.substr(0, 40)) + "\"");
        }
        return number;
    }

    void ReadRoot(std::span<const xmlChar*> attributes) {
        ForEachAttribute(attributes, [this](std::string_view name, std::string_view value) {
            if (name == (root_ == Root::Request ? "Type" : "Name")) {
                content_.name = value;
                return true;
            }
            for (const NumberAttribute& number : Numbers()) {
                if (number.name != name) continue;
                content_.numbers[number.place] = Integer(name, value);
                return true;
            }
            return false;
        });
    }

    void ReadParameter(std::span<const xmlChar*> attributes) {
        name_.clear();
        type_ = 0;
        text_.clear();
        ForEachAttribute(attributes, [this](std::string_view name, std::string_view value) {
            if (name == "Name") {
                name_ = value;
            } else if (name == "Type") {
                type_ = Integer(name, value);
            } else {
                return false;
            }
            return true;
        });
    }

    void AddParameter() {
        Value value = type_ == static_cast<std::int32_t>(ParameterType::Integer)
                          ? Value(Integer(name_, text_))
                          : Value(std::move(text_));
        content_.parameters.push_back(std::make_shared<Parameter>(type_, std::move(name_), std::move(value)));
    }

    Root root_;
    const xmlParserCtxt& parser_;
    Place place_ = Place::Outside;
    bool hasParameters_ = false;
    Content content_;
    std::string name_;
    std::int32_t type_ = 0;
    std::string text_;
    std::string problem_;
    int line_ = 0;
};

// The parser is a C library: nothing may be thrown through it.
template <class Step> void Guarded(void* context, Step step) noexcept {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    auto* reader = static_cast<Reader*>(parser->_private);
    if (reader->HasRefused()) return;
    try {
        step(*reader);
        if (!reader->HasRefused()) return;
    } catch (const std::exception&) {
        parser->wellFormed = 0;
    }
    xmlStopParser(parser);
}

xmlSAXHandler Handlers() {
    xmlSAXHandler handlers{};
    handlers.initialized = XML_SAX2_MAGIC;
    handlers.startElementNs = [](void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar*,
                                 int namespaces, const xmlChar**, int attributeCount, int,
                                 const xmlChar** attributes) {
        Guarded(context, [&](Reader& reader) {
            if (prefix || namespaces > 0) return reader.Refuse("unexpected namespace");
            reader.Start(View(name), std::span(attributes, static_cast<std::size_t>(attributeCount) * 5));
        });
    };
    handlers.endElementNs = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
        Guarded(context, [](Reader& reader) { reader.End(); });
    };
    const auto characters = [](void* context, const xmlChar* text, int length) {
        Guarded(context, [&](Reader& reader) {
            reader.Characters({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
        });
    };
    handlers.characters = characters;
    handlers.ignorableWhitespace = characters;
    handlers.cdataBlock = characters;
    handlers.comment = [](void* context, const xmlChar*) {
        Guarded(context, [](Reader& reader) { reader.Refuse("unexpected comment"); });
    };
    handlers.processingInstruction = [](void* context, const xmlChar*, const xmlChar*) {
        Guarded(context, [](Reader& reader) { reader.Refuse("unexpected processing instruction"); });
    };
    handlers.internalSubset = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
        Guarded(context, [](Reader& reader) { reader.Refuse("unexpected document type declaration"); });
    };
    handlers.reference = [](void* context, const xmlChar*) {
        Guarded(context, [](Reader& reader) { reader.Refuse("unexpected entity"); });
    };
    handlers.serror = [](void*, base::XmlErrorArgument) {};
    return handlers;
}

struct FreeParser {
    void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, FreeParser>;

Parser NewParser() {
    Parser parser(xmlNewParserCtxt());
    if (!parser) throw std::bad_alloc();
    *parser->sax = Handlers();
    return parser;
}

[[noreturn]] void Refuse(Root root, int line, const std::string& reason) {
    Raise(base::errors::InvalidCall,
          std::string(root == Root::Request ? "malformed request" : "malformed event") + ", line " +
              std::to_string(line) + ": " + reason);
}

int LineAt(std::string_view xml, std::size_t offset) {
    return 1 +
           static_cast<int>(std::count(xml.begin(), xml.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

/// Refuses tags with more attributes than any of the form: the parser would compare each with each before it
/// tells of the first. Reads only the well-formed beginning of the text right, which is as far as the parser
/// gets.
void CheckAttributeCounts(Root root, std::string_view xml) {
    constexpr int most = 8;
    constexpr std::string_view section = "<![CDATA[";
    std::size_t at = 0;
    while ((at = xml.find('<', at)) != std::string_view::npos) {
        if (xml.substr(at, section.size()) == section) {
            at = std::min(xml.find("]]>", at), xml.size());
            continue;
        }
        int attributes = 0;
        char found = ' ';
        while (found != '>' && (at = xml.find_first_of("=\"'>", at)) != std::string_view::npos) {
            found = xml[at++];
            if (found == '=' && ++attributes > most)
                Refuse(root, LineAt(xml, at),
                       "an element with more than " + std::to_string(most) + " attributes");
            if (found == '"' || found == '\'') at = std::min(xml.find(found, at), xml.size() - 1) + 1;
        }
    }
}

Content ReadWith(xmlParserCtxt& parser, Root root, std::string_view xml) {
    const base::QuietLibrary quiet;
    Reader reader(root, parser);
    parser._private = &reader;
    // NOENT: without it "&amp;" in an attribute arrives as "&#38;". Documents that declare entities are
    // refused.
    constexpr int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOCDATA |
                            XML_PARSE_IGNORE_ENC | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    xmlCtxtReadMemory(&parser, xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, options);
    parser._private = nullptr;
    if (reader.HasRefused()) Refuse(root, reader.Line(), reader.Problem());
    if (!parser.wellFormed) {
        auto* error = xmlCtxtGetLastError(&parser);
        Refuse(root, error ? error->line : 1, error ? base::ReasonOf(error) : "not well-formed");
    }
    return reader.Take();
}

} // namespace

Content Read(Root root, std::string_view xml) {
    if (xml.size() > MaximumBytes)
        Refuse(root, 1, std::to_string(xml.size()) + " bytes, more than " + std::to_string(MaximumBytes));
    if (xml.empty()) Refuse(root, 1, "empty text");
    // the parser would take a NUL for the end, and bytes that look like another encoding for text in it
    if (const std::size_t at = xml.find('\0'); at != std::string_view::npos)
        Refuse(root, LineAt(xml, at), "unexpected NUL");
    if (const std::size_t at = base::IllFormedUtf8At(xml); at != std::string_view::npos)
        Refuse(root, LineAt(xml, at), "the bytes are not well-formed UTF-8");
    CheckAttributeCounts(root, xml);

    // Making a parser costs more than parsing a message with it, so one is kept for the next message: unless
    // that message was refused, for a parser remembers every name that it ever saw, or was large.
    static thread_local Parser kept;
    constexpr std::size_t largeBytes = 65536;
    Parser parser = kept ? std::move(kept) : NewParser();
    Content content = ReadWith(*parser, root, xml);
    if (xml.size() <= largeBytes) kept = std::move(parser);
    return content;
}

} // namespace arvon::host::messageXml
