#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The system's printers: local ones and connections, names in ANSI bytes, in the system's order.
class Printers {
public:
    virtual ~Printers() = default;
    /// On Linux: CUPS, asked with a bounded wait.
    static std::unique_ptr<Printers> Create();
    /// `level`: 4 or 1, the record form to ask for. Nothing when the enumeration failed.
    virtual std::optional<std::vector<std::string>> Enumerate(int level) = 0;
    /// Empty when there is none.
    virtual std::string DefaultName() = 0;
};

} // namespace platform
