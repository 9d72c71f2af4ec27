#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvtm::test {

/// What comes of one command, undisturbed and with a call of the host failing.
struct CommandOutcomes {
    std::string command;
    std::string undisturbed;
    struct Calls {
        std::string operation;
        std::size_t first, last;
    };
    std::map<std::string, std::vector<Calls>> failures; // by outcome

    /// The calls of an operation come one after the other.
    void Add(const std::string& outcome, const std::string& operation, std::size_t call);
    /// For a person: the undisturbed outcome, then a paragraph an outcome with the calls that lead to it.
    std::string Text() const;
};

// The file beside the sources that holds what is expected: "[NAME]" and the text below it.

inline constexpr std::string_view neverCalled = "operations that no command calls";

std::string SectionText(std::string_view name, const std::string& text);
/// Empty for a section that is not there.
std::string ExpectedSection(std::string_view name);
void WriteExpectedFile(const std::string& text);

} // namespace kvtm::test
