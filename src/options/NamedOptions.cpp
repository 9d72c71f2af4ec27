#include "options/NamedOptions.h"

#include "options/OptionNames.h"
#include "options/TreeNodes.h"

#include <libxml/xpath.h>

#include <algorithm>
#include <bitset>
#include <optional>
#include <string>

namespace kvtm {

using namespace treeNodes;

namespace {

constexpr auto names = [] {
    std::array<std::string_view, optionName::Pricing.size() + 3> all{};
    std::copy(optionName::Pricing.begin(), optionName::Pricing.end(), all.begin());
    all[all.size() - 3] = optionName::UnitOfMeasure;
    all[all.size() - 2] = optionName::DefaultPrinter;
    all[all.size() - 1] = optionName::Language;
    return all;
}();

/// Calls `take` with the place of each of the names that an option has, once.
template <class Take> void ForEachName(const xmlNode* option, Take&& take) {
    std::bitset<names.size()> taken;
    for (const xmlNode* name = FirstChildNamed(option, "Name"); name; name = NextSiblingNamed(name, "Name")) {
        const std::optional<std::string_view> whole = TextInOnePiece(name);
        const std::string joined = whole ? std::string() : Text(name);
        const auto found = std::find(names.begin(), names.end(), whole ? *whole : std::string_view(joined));
        const auto place = static_cast<std::size_t>(found - names.begin());
        if (place == names.size() || taken[place]) continue;
        taken.set(place);
        take(place);
    }
}

} // namespace

void NamedOptions::Add(xmlNode* option) {
    areNested_ = areNested_ || AncestorNamed(option, "Option");
    ForEachName(option, [&](std::size_t place) { options_[place].push_back(option); });
}

void NamedOptions::Insert(xmlNode* option) {
    static_assert(names.size() == nameCount);
    const auto isBefore = [](xmlNode* a, xmlNode* b) { return xmlXPathCmpNodes(a, b) == 1; };
    areNested_ = areNested_ || AncestorNamed(option, "Option");
    ForEachName(option, [&](std::size_t place) {
        std::vector<xmlNode*>& options = options_[place];
        options.insert(std::upper_bound(options.begin(), options.end(), option, isBefore), option);
    });
}

void NamedOptions::Clear() noexcept {
    options_ = {};
    areNested_ = false;
}

const std::vector<xmlNode*>* NamedOptions::Of(std::string_view optionName) const noexcept {
    const auto name = std::find(names.begin(), names.end(), optionName);
    if (areNested_ || name == names.end()) return nullptr;
    return &options_[static_cast<std::size_t>(name - names.begin())];
}

} // namespace kvtm
