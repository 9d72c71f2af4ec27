#pragma once

#include "base/XmlDocument.h"

#include <span>
#include <string>
#include <vector>

namespace suite {

/// The "Program.xml" of one program folder: a root "Program", perhaps with a "Group", and below it the tools
/// of that folder, "Tool" elements with the attributes that the catalogue has. A tool may hold further tools.
struct ProgramDescriptor {
    std::string folder; // for people
    base::XmlDocument document;
};

struct Catalogue {
    base::XmlDocument document;        // root "Tools"
    std::vector<std::string> problems; // what was left out, and why
};

/// Puts the tools of all descriptors into one catalogue, in the order given; the tools of one group come
/// together, in a "Group" element where its first one stands. A tool without "Name" or "VREX", or with one
/// that an earlier tool has already, is left out. Where the previous catalogue (perhaps empty) has a tool of
/// the same VREX, its "ShowInList" is taken over: that is the user's choice.
Catalogue BuildCatalogue(std::span<const ProgramDescriptor> descriptors, const base::XmlDocument& previous);

/// The catalogue as it stands on the disk: UTF-8, indented.
std::string CatalogueText(const base::XmlDocument& catalogue);

} // namespace suite
