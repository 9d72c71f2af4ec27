#include "suite/programs/catalogue/CatalogueBuilder.h"

#include "base/ComponentError.h"

#include <libxml/tree.h>
#include <map>
#include <memory>
#include <set>
#include <utility>

namespace suite {
namespace {

class Builder {
public:
    explicit Builder(const base::XmlDocument& previous) : root_(catalogue_.document.CreateRoot("Tools")) {
        if (previous.IsEmpty()) return;
        for (const base::XmlNode& tool : previous.Select("//Tool"))
            previous_.emplace(tool.Attribute("VREX"), tool);
    }

    void Add(const ProgramDescriptor& descriptor) {
        const base::XmlNode program = descriptor.document.Root();
        if (program.Name() != "Program") {
            catalogue_.problems.push_back(descriptor.folder + ": the root should be \"Program\", found \"" +
                                          program.Name() + "\"");
            return;
        }
        AddTools(program, ParentFor(program), descriptor.folder);
    }

    Catalogue Take() { return std::move(catalogue_); }

private:
    base::XmlNode ParentFor(const base::XmlNode& program) {
        const auto holder = tools_.find(program.Attribute("Inside"));
        if (holder != tools_.end()) return holder->second;
        const std::string group = program.Attribute("Group");
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
        if (names_.contains(tool.Attribute("Name")) || tools_.contains(tool.Attribute("VREX"))) {
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
        const auto before = previous_.find(tool.Attribute("VREX"));
        if (before != previous_.end()) TakeOver(before->second, added);
        names_.insert(tool.Attribute("Name"));
        tools_.emplace(tool.Attribute("VREX"), added);
        return added;
    }

    void TakeOver(const base::XmlNode& before, base::XmlNode& added) {
        if (before.HasAttribute("ShowInList"))
            added.SetAttribute("ShowInList", before.Attribute("ShowInList"));
        std::string dropped;
        for (const auto& [attribute, what] :
             {std::pair{"Name", "the name"}, {"CommandLine", "the command line"}}) {
            const std::string old = before.Attribute(attribute);
            const std::string now = added.Attribute(attribute);
            if (!before.HasAttribute(attribute) || old == now) continue;
            dropped += dropped.empty() ? ": " : ", ";
            dropped += std::string(what) + " \"" + old + "\" goes back to \"" + now + "\"";
        }
        if (!dropped.empty()) catalogue_.dropped.push_back(added.Attribute("VREX") + dropped);
    }

    Catalogue catalogue_;
    base::XmlNode root_;
    std::map<std::string, base::XmlNode> groups_;
    std::map<std::string, base::XmlNode> previous_, tools_; // by VREX
    std::set<std::string> names_;
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
