#pragma once

#include "base/XmlDocument.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace suite {

/// A program that the update folder offers.
struct OfferedProgram {
    std::string name, vrex, version, lastUpdated, description;
    std::string installedVersion; // empty for a new program
};

/// Below 0, 0 or above 0 as the first version is older than, equal to or newer than the second. Pieces
/// between points are compared one by one, as numbers of any length where both are, else as text without
/// regard to letter case; a missing piece counts as 0.
int CompareVersions(std::string_view first, std::string_view second);

/// What packages ("Package" documents, each with one "Tool") offer to an installation with this catalogue:
/// programs that it does not have (`showNew`), else newer versions of those that it has. Of several packages
/// of one program the newest counts. In the order of the packages; a package without a VREX offers nothing.
/// VREX values are compared without regard to letter case.
std::vector<OfferedProgram> OfferedPrograms(const base::XmlDocument& catalogue,
                                            std::span<const base::XmlDocument> packages, bool showNew);

/// The offer as XML: <Updates ShowNew="-1"><Tool Name= VREX= version= .../></Updates>.
std::string OfferXml(std::span<const OfferedProgram> programs, bool showNew);

} // namespace suite
