#include "suite/tools/components/PackageComparison.h"

#include "base/Text.h"

#include <algorithm>
#include <unordered_map>

namespace suite {
namespace {

bool IsNumber(std::string_view piece) {
    return std::ranges::all_of(piece, [](char c) { return c >= '0' && c <= '9'; });
}

/// Both hold digits only.
int CompareNumbers(std::string_view first, std::string_view second) {
    first.remove_prefix(std::min(first.find_first_not_of('0'), first.size()));
    second.remove_prefix(std::min(second.find_first_not_of('0'), second.size()));
    if (first.size() != second.size()) return first.size() < second.size() ? -1 : 1;
    return first.compare(second);
}

std::string TextBelow(const base::XmlNode& node, const char* element) {
    const base::XmlNode found = node.SelectSingle(element);
    return found ? found.Text() : std::string();
}

} // namespace

int CompareVersions(std::string_view first, std::string_view second) {
    const std::vector<std::string> firstPieces = base::Split(first, '.');
    const std::vector<std::string> secondPieces = base::Split(second, '.');
    for (std::size_t i = 0; i < std::max(firstPieces.size(), secondPieces.size()); ++i) {
        const std::string a = i < firstPieces.size() ? firstPieces[i] : "0";
        const std::string b = i < secondPieces.size() ? secondPieces[i] : "0";
        const int order = IsNumber(a) && IsNumber(b) ? CompareNumbers(a, b)
                                                     : base::UpperCase(a).compare(base::UpperCase(b));
        if (order != 0) return order;
    }
    return 0;
}

std::vector<OfferedProgram> OfferedPrograms(const base::XmlDocument& catalogue,
                                            std::span<const base::XmlDocument> packages, bool showNew) {
    std::unordered_map<std::string, std::string> installed; // version by VREX in upper case
    for (const base::XmlNode& tool : catalogue.Select("//Tool"))
        installed.emplace(base::UpperCase(tool.Attribute("VREX")), tool.Attribute("version"));

    std::vector<OfferedProgram> offered;
    for (const base::XmlDocument& package : packages) {
        const base::XmlNode tool = package.SelectSingle("/Package/Tool");
        if (!tool || tool.Attribute("VREX").empty()) continue;
        OfferedProgram program{tool.Attribute("Name"),
                               tool.Attribute("VREX"),
                               tool.Attribute("version"),
                               tool.Attribute("LastUpdated"),
                               TextBelow(package.Root(), "Description"),
                               {}};
        const auto found = installed.find(base::UpperCase(program.vrex));
        if ((found == installed.end()) != showNew) continue;
        if (!showNew) {
            program.installedVersion = found->second;
            if (CompareVersions(program.version, program.installedVersion) <= 0) continue;
        }
        const auto same = std::ranges::find_if(offered, [&](const OfferedProgram& other) {
            return base::EqualIgnoringCase(other.vrex, program.vrex);
        });
        if (same == offered.end()) {
            offered.push_back(std::move(program));
        } else if (CompareVersions(program.version, same->version) > 0) {
            *same = std::move(program);
        }
    }
    return offered;
}

std::string OfferXml(std::span<const OfferedProgram> programs, bool showNew) {
    base::XmlDocument document;
    base::XmlNode updates = document.CreateRoot("Updates");
    updates.SetAttribute("ShowNew", showNew ? "-1" : "0");
    for (const OfferedProgram& program : programs) {
        base::XmlNode tool = updates.AppendElement("Tool");
        tool.SetAttribute("Name", program.name);
        tool.SetAttribute("VREX", program.vrex);
        tool.SetAttribute("version", program.version);
        if (!program.installedVersion.empty()) tool.SetAttribute("installed", program.installedVersion);
        tool.SetAttribute("LastUpdated", program.lastUpdated);
        tool.SetText(program.description);
    }
    return document.Text();
}

} // namespace suite
