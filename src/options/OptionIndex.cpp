#include "options/OptionIndex.h"

#include "options/TextHash.h"
#include "options/TreeNodes.h"

#include <random>
#include <string>
#include <utility>

namespace kvtm {

using namespace treeNodes;

namespace {

/// Whoever writes the documents cannot choose keys that collide.
std::uint64_t Seed() {
    static const std::uint64_t seed = [] {
        std::random_device random;
        return (std::uint64_t{random()} << 32) | random();
    }();
    return seed;
}

/// Whether a key's element stands for a tool.
struct IsTool {
    std::string_view toolId;
    bool operator()(const xmlNode* keeper) const {
        return IsNamed(keeper, "Tool") && Attribute(keeper, "ID") == toolId;
    }
};

/// Whether a key's element stands for an option of a tool.
struct IsOption {
    std::string_view toolId, optionName;
    bool operator()(const xmlNode* keeper) const {
        return IsNamed(keeper, "Name") && Attribute(keeper->parent->parent, "ID") == toolId &&
               TextEquals(keeper, optionName);
    }
};

} // namespace

void OptionIndex::AddTool(xmlNode* tool) {
    const std::optional<std::string_view> toolId = Attribute(tool, "ID");
    if (toolId) Insert(TextHash(*toolId, Seed()), tool, IsTool{*toolId});
}

void OptionIndex::AddOption(xmlNode* option) {
    const xmlNode* tool = option->parent;
    if (!tool || !IsNamed(tool, "Tool")) return;
    const std::optional<std::string_view> toolId = Attribute(tool, "ID");
    if (!toolId) return;
    const std::uint64_t toolHash = TextHash(*toolId, Seed());
    for (xmlNode* name = FirstChildNamed(option, "Name"); name; name = NextSiblingNamed(name, "Name")) {
        const std::optional<std::string_view> text = TextInOnePiece(name);
        InsertOption(toolHash, *toolId, text ? *text : std::string_view(Text(name)), name);
    }
}

void OptionIndex::InsertOption(std::uint64_t toolHash, std::string_view toolId, std::string_view optionName,
                               xmlNode* name) {
    Insert(TextHash(optionName, toolHash), name, IsOption{toolId, optionName});
}

void OptionIndex::Clear() noexcept {
    slots_ = {};
    used_ = 0;
}

xmlNode* OptionIndex::FindTool(std::string_view toolId) const {
    const Slot* slot = const_cast<OptionIndex*>(this)->Find(TextHash(toolId, Seed()), IsTool{toolId});
    return slot ? slot->keeper : nullptr;
}

xmlNode* OptionIndex::FindOption(std::string_view toolId, std::string_view optionName) const {
    const std::uint64_t hash = TextHash(optionName, TextHash(toolId, Seed()));
    const Slot* slot = const_cast<OptionIndex*>(this)->Find(hash, IsOption{toolId, optionName});
    return slot && slot->keeper ? slot->keeper->parent : nullptr;
}

/// The slot of a key, or the free one where it belongs; null while there are none.
template <class IsKeyOf> OptionIndex::Slot* OptionIndex::Find(std::uint64_t hash, IsKeyOf&& isKeyOf) {
    if (slots_.empty()) return nullptr;
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].keeper) {
        if (slots_[at].hash == hash && isKeyOf(slots_[at].keeper)) break;
        at = (at + 1) & mask;
    }
    return &slots_[at];
}

template <class IsKeyOf> void OptionIndex::Insert(std::uint64_t hash, xmlNode* keeper, IsKeyOf&& isKeyOf) {
    if (used_ * 4 >= slots_.size() * 3) Grow();
    Slot& slot = *Find(hash, isKeyOf);
    if (slot.keeper) return;
    slot = {hash, keeper};
    ++used_;
}

void OptionIndex::Grow() {
    constexpr std::size_t smallest = 16;
    const std::vector<Slot> old =
        std::exchange(slots_, std::vector<Slot>(slots_.empty() ? smallest : slots_.size() * 2));
    const auto nobody = [](const xmlNode*) { return false; };
    for (const Slot& slot : old) {
        if (slot.keeper) *Find(slot.hash, nobody) = slot;
    }
}

} // namespace kvtm
