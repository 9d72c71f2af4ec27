#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

struct _xmlNode;

namespace kvtm {

/// Finds tools and their options in a document tree without a search: what optionAddress::OfTool and
/// optionAddress::Of select, the first match in document order.
///
/// A table of open addressing over the tree: a slot is a hash and the element that holds the key (a "Tool",
/// or the "Name" of an option); keys are compared in the tree. 22 to 43 bytes an entry. The table holds
/// pointers into the tree: whoever changes tools, options or their names tells it, or fills it anew.
class OptionIndex {
public:
    /// Elements come in document order. A key that an earlier element has stays that one's own.
    void AddTool(_xmlNode* tool);
    void AddOption(_xmlNode* option);
    void Clear() noexcept;

    /// The "Tool" element; null when there is none.
    _xmlNode* FindTool(std::string_view toolId) const;
    /// The "Option" element; null when there is none.
    _xmlNode* FindOption(std::string_view toolId, std::string_view optionName) const;

    std::size_t Bytes() const noexcept { return slots_.capacity() * sizeof(Slot); }

private:
    struct Slot {
        std::uint64_t hash = 0;
        _xmlNode* keeper = nullptr; // of the key; null: free
    };

    template <class IsKeyOf> Slot* Find(std::uint64_t hash, IsKeyOf&& isKeyOf);
    template <class IsKeyOf> void Insert(std::uint64_t hash, _xmlNode* keeper, IsKeyOf&& isKeyOf);
    void InsertOption(std::uint64_t toolHash, std::string_view toolId, std::string_view optionName,
                      _xmlNode* name);
    void Grow();

    std::vector<Slot> slots_; // a power of two of them, at most three quarters in use
    std::size_t used_ = 0;
};

} // namespace kvtm
