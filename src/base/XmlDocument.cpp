#include "base/XmlDocument.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/XmlEncoding.h"
#include "base/XmlReader.h"
#include "base/XmlText.h"
#include "base/XmlTree.h"
#include "base/XmlWriter.h"

#include <array>
#include <fstream>
#include <new>
#include <system_error>

namespace base {

namespace {

std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    // File names may be any bytes.
    return FromCodePoints(ToCodePoints(std::string(text.begin(), text.end())));
}

std::string ReadBytes(const std::filesystem::path& file) {
    const auto raise = [&file](std::int32_t number, const char* fault) {
        throw ComponentError(number, "XmlDocument", "\"" + PathText(file) + "\" " + fault);
    };
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) raise(errors::FileNotFound, "does not exist");
    if (error) raise(errors::FileAccess, "cannot be reached");
    // A pipe or device could block or never end.
    if (status.type() != std::filesystem::file_type::regular)
        raise(errors::FileAccess, "is not a regular file");
    // UTF-16 takes up to twice the bytes of UTF-8.
    constexpr std::uintmax_t maximum = 2 * std::uintmax_t{XmlDocument::MaximumBytes};
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (!error && size > maximum) raise(errors::InvalidCall, "is too large for an XML document");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) raise(errors::FileAccess, "cannot be opened for reading");
    std::string bytes;
    std::array<char, 65536> piece;
    while (bytes.size() <= maximum && (stream.read(piece.data(), piece.size()), stream.gcount() > 0))
        bytes.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    if (stream.bad()) raise(errors::FileAccess, "cannot be read");
    return bytes;
}

} // namespace

void XmlDocument::LoadText(std::string_view text) {
    tree_ = ReadXml(text);
}

void XmlDocument::LoadFile(const std::filesystem::path& file) {
    std::string bytes = ReadBytes(file);
    try {
        tree_ = ReadXml(DecodeXml(std::move(bytes)));
    } catch (const ComponentError& error) {
        throw ComponentError(error.Number(), error.Source(), PathText(file) + ": " + error.Description());
    }
}

XmlNode XmlDocument::CreateRoot(const char* name) {
    if (!IsXmlName(name) || std::string_view(name).find(':') != std::string_view::npos)
        throw ComponentError(errors::InvalidCall, "XmlDocument",
                             "\"" + FromCodePoints(ToCodePoints(name)) + "\" is no name of a root element");
    xmlDoc* document = xmlNewDoc(XmlText("1.0"));
    if (!document) throw std::bad_alloc();
    auto tree = std::make_shared<XmlTree>(document, false);
    xmlNode* root = xmlNewDocNode(document, nullptr, XmlText(name), nullptr);
    if (!root) throw std::bad_alloc();
    xmlDocSetRootElement(document, root);
    tree_ = std::move(tree);
    return Root();
}

XmlNode XmlDocument::DocumentNode() const {
    return tree_ ? XmlNode(tree_, tree_->DocumentNode()) : XmlNode();
}

XmlNode XmlDocument::Root() const {
    xmlNode* root = tree_ ? xmlDocGetRootElement(tree_->Document()) : nullptr;
    return root ? XmlNode(tree_, root) : XmlNode();
}

XmlNode XmlDocument::SelectSingle(const std::string& xpath) const {
    return tree_ ? DocumentNode().SelectSingle(xpath) : XmlNode();
}

std::vector<XmlNode> XmlDocument::Select(const std::string& xpath) const {
    return tree_ ? DocumentNode().Select(xpath) : std::vector<XmlNode>();
}

std::string XmlDocument::Text() const {
    if (!tree_) return {};
    const std::string body = WriteXml(tree_->DocumentNode());
    return tree_->HasDeclaration() ? WriteXmlDeclaration(*tree_->Document()) + body : body;
}

bool XmlDocument::HasDeclaration() const noexcept {
    return tree_ && tree_->HasDeclaration();
}

_xmlDoc* XmlDocument::Raw() const noexcept {
    return tree_ ? tree_->Document() : nullptr;
}

XmlNode XmlDocument::NodeAt(_xmlNode* node) const {
    return tree_ && node ? XmlNode(tree_, node) : XmlNode();
}

} // namespace base
