#include "tests/sweep/Expected.h"

#include "tests/support/TestFolder.h"

namespace kvtm::test {

namespace {

constexpr std::size_t lineLength = 106;

constexpr const char* heading = "# What comes of each command when one call of the host fails: first "
                                "undisturbed, then each outcome with the\n"
                                "# calls that lead to it. \"LaunchTool reports\": an error report of that "
                                "procedure; \"thrown\": the host gets\n"
                                "# the failure; a number and a text stand beside both only where they are "
                                "not those of the provoked failure.\n"
                                "# Written by sweep_tests --write-expected; review every difference.\n";

std::string Written(const CommandOutcomes::Calls& calls) {
    const std::string text = calls.operation + " " + std::to_string(calls.first);
    return calls.first == calls.last ? text : text + "-" + std::to_string(calls.last);
}

/// On as many lines as it takes.
std::string Folded(const std::vector<CommandOutcomes::Calls>& all) {
    std::string folded, line;
    for (const CommandOutcomes::Calls& calls : all) {
        const std::string text = Written(calls);
        if (!line.empty() && line.size() + 2 + text.size() > lineLength) {
            folded += "    " + line + ",\n";
            line.clear();
        }
        line += (line.empty() ? "" : ", ") + text;
    }
    return folded + "    " + line + "\n";
}

} // namespace

void CommandOutcomes::Add(const std::string& outcome, const std::string& operation, std::size_t call) {
    std::vector<Calls>& calls = failures[outcome];
    if (!calls.empty() && calls.back().operation == operation && calls.back().last + 1 == call) {
        calls.back().last = call;
    } else {
        calls.push_back({operation, call, call});
    }
}

std::string CommandOutcomes::Text() const {
    std::string text = "undisturbed: " + undisturbed + "\n";
    for (const auto& [outcome, calls] : failures)
        text += outcome + "\n" + Folded(calls);
    return text;
}

std::string SectionText(std::string_view name, const std::string& text) {
    return "\n[" + std::string(name) + "]\n" + text;
}

std::string ExpectedSection(std::string_view name) {
    static const std::string file = ReadWholeFile(SWEEP_EXPECTED) + "\n[";
    const std::string head = "\n[" + std::string(name) + "]\n";
    const std::size_t start = file.find(head);
    if (start == std::string::npos) return {};
    const std::size_t end = file.find("\n[", start + head.size() - 1);
    return file.substr(start + head.size(), end - start - head.size());
}

void WriteExpectedFile(const std::string& text) {
    WriteWholeFile(SWEEP_EXPECTED, heading + text);
}

} // namespace kvtm::test
