#include "suite/programs/catalogue/CatalogueBuilder.h"

#include "base/ComponentError.h"

#include <libxml/tree.h>
#include <map>
#include <memory>
#include <set>

namespace suite {
namespace {

class Builder {
public:
    explicit Builder(const base::XmlDocument& previous) : root_(catalogue_.document.CreateRoot("Tools")) {
        if (previous.IsEmpty()) return;
        for (const base::XmlNode& tool : previous.Select("//Tool")) {
            if (tool.HasAttribute("ShowInList"))
                shown_.emplace(tool.Attribute("VREX"), tool.Attribute("ShowInList"));
        }
    }

    void Add(const ProgramDescriptor& descriptor) {
        const base::XmlNode program = descriptor.document.Root();
        if (program.Name() != "Program") {
            catalogue_.problems.push_back(descriptor.folder + ": the root should be \"Program\", found \"" +
                                          program.Name() + "\"");
            return;
        }
        AddTools(program, ParentFor(program.Attribute("Group")), descriptor.folder);
    }

    Catalogue Take() { return std::move(catalogue_); }

private:
    base::XmlNode ParentFor(const std::string& group) {
        if (group.empty()) return root_;
        base::XmlNode& element = groups_[group];
        if (!element) {
            element = root_.AppendElement("Group");
            element.SetAttribute("Name", group);
        }
        return element;
    }

    void AddTools(const base::XmlNode& from, base::XmlNode to, const std::string& folder) {
        for (const base::XmlNode& tool : from.Children()) {
            if (tool.Name() == "Tool" && IsAcceptable(tool, folder))
                AddTools(tool, AddTool(tool, to), folder);
        }
    }

    bool IsAcceptable(const base::XmlNode& tool, const std::string& folder) {
        for (const char* attribute : {"Name", "VREX"}) {
            if (tool.Attribute(attribute).empty()) {
                catalogue_.problems.push_back(folder + ": a tool without \"" + attribute + "\" is left out");
                return false;
            }
        }
        if (!names_.insert(tool.Attribute("Name")).second || !vrexes_.insert(tool.Attribute("VREX")).second) {
            catalogue_.problems.push_back(folder + ": the tool \"" + tool.Attribute("Name") + "\" (" +
                                          tool.Attribute("VREX") + ") is in the catalogue already");
            return false;
        }
        return true;
    }

    base::XmlNode AddTool(const base::XmlNode& tool, base::XmlNode& to) {
        base::XmlNode added = to.AppendElement("Tool");
        for (const auto& [name, value] : tool.Attributes())
            added.SetAttribute(name.c_str(), value);
        const auto shown = shown_.find(tool.Attribute("VREX"));
        if (shown != shown_.end()) added.SetAttribute("ShowInList", shown->second);
        return added;
    }

    Catalogue catalogue_;
    base::XmlNode root_;
    std::map<std::string, base::XmlNode> groups_;
    std::map<std::string, std::string> shown_; // "ShowInList" by VREX
    std::set<std::string> names_, vrexes_;
};

} // namespace

Catalogue BuildCatalogue(std::span<const ProgramDescriptor> descriptors, const base::XmlDocument& previous) {
    Builder builder(previous);
    for (const ProgramDescriptor& descriptor : descriptors)
        builder.Add(descriptor);
    return builder.Take();
}

std::string CatalogueText(const base::XmlDocument& catalogue) {
    xmlChar* memory = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(catalogue.Raw(), &memory, &size, "UTF-8", 1);
    const std::unique_ptr<xmlChar, void (*)(void*)> text(memory, xmlFree);
    if (!text)
        throw base::ComponentError(base::errors::InvalidCall, "BuildToolXML",
                                   "the catalogue cannot be written");
    return {reinterpret_cast<const char*>(text.get()), static_cast<std::size_t>(size)};
}

} // namespace suite
