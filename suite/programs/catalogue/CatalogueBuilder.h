#pragma once

#include "base/XmlDocument.h"

#include <span>
#include <string>
#include <vector>

namespace suite {

/// The "Program.xml" of one program folder: a root "Program", perhaps with a "Group" and with "Inside", the
/// VREX of a tool, and below it the tools of that folder, "Tool" elements with the attributes that the
/// catalogue has. A tool may hold further tools.
struct ProgramDescriptor {
    std::string folder; // for people
    base::XmlDocument document;
};

struct Catalogue {
    base::XmlDocument document;        // root "Tools"
    std::vector<std::string> problems; // what was left out, and why
    std::vector<std::string> dropped;  // what of the previous catalogue was not taken over, a line a tool
};

/// Puts the tools of all descriptors into one catalogue, in the order given; the tools of one group come
/// together, in a "Group" element where its first one stands. Those of a program inside a tool stand in that
/// tool, when it came before; else in the program's group. A tool without "Name" or "VREX", or with one that
/// a tool of the catalogue has already, is left out. Where the previous catalogue (perhaps empty) has a tool
/// of the same VREX, its "ShowInList" is taken over: that is the user's choice. Another "Name" or
/// "CommandLine" there is not, because it may as well come from an older program: `dropped` tells.
Catalogue BuildCatalogue(std::span<const ProgramDescriptor> descriptors, const base::XmlDocument& previous);

/// The catalogue as it stands on the disk: UTF-8, indented.
std::string CatalogueText(const base::XmlDocument& catalogue);

} // namespace suite
