#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

struct _xmlNode;

namespace kvtm {

/// The options of all tools under the few names that are looked for in the whole document, in document order.
class NamedOptions {
public:
    void Add(_xmlNode* option); // in document order
    /// Takes in an option that was appended somewhere in the tree.
    void Insert(_xmlNode* option);
    void Clear() noexcept;

    /// What optionAddress::OfName selects; null for a name that is not kept, and where options stand within
    /// options, so that children of theirs may stand in another order than they do.
    const std::vector<_xmlNode*>* Of(std::string_view optionName) const noexcept;

private:
    static constexpr std::size_t nameCount = 9;
    std::array<std::vector<_xmlNode*>, nameCount> options_; // in the order of the names
    bool areNested_ = false;
};

} // namespace kvtm
