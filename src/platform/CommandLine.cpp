#include "platform/CommandLine.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::string_view Blanks = " \t";

bool IsBlank(char character) noexcept {
    return Blanks.find(character) != std::string_view::npos;
}

std::string_view WithoutLeadingBlanks(std::string_view text) noexcept {
    return text.substr(std::min(text.find_first_not_of(Blanks), text.size()));
}

} // namespace

std::vector<ProgramReading> ProgramReadings(std::string_view commandLine) {
    const std::string_view line = WithoutLeadingBlanks(commandLine.substr(0, commandLine.find('\0')));
    if (line.empty()) return {};
    if (line.front() == '"') {
        const std::size_t close = std::min(line.find('"', 1), line.size());
        const std::string_view behind = line.substr(std::min(close + 1, line.size()));
        return {{line.substr(1, close - 1), WithoutLeadingBlanks(behind)}};
    }
    std::vector<ProgramReading> readings;
    for (std::size_t i = 1; i <= line.size(); ++i) {
        const bool pieceEnds = i == line.size() || IsBlank(line[i]);
        if (pieceEnds && !IsBlank(line[i - 1]))
            readings.push_back({line.substr(0, i), WithoutLeadingBlanks(line.substr(i))});
    }
    return readings;
}

std::string WithProgramExtension(std::string_view program) {
    const std::size_t nameAt = program.find_last_of("\\/:") + 1; // 0 when there is none
    const bool hasExtension = program.find('.', nameAt) != std::string_view::npos;
    return std::string(program) + (hasExtension || nameAt == program.size() ? "" : ".exe");
}

std::vector<std::string> SplitArguments(std::string_view text) {
    std::vector<std::string> arguments;
    bool inQuotes = false, inArgument = false;
    for (std::size_t i = 0; i < text.size();) {
        if (!inQuotes && IsBlank(text[i])) {
            inArgument = false;
            ++i;
            continue;
        }
        if (!inArgument) arguments.emplace_back();
        inArgument = true;
        std::string& argument = arguments.back();

        const std::size_t slashes = std::min(text.find_first_not_of('\\', i), text.size()) - i;
        i += slashes;
        if (i == text.size() || text[i] != '"') {
            argument.append(slashes, '\\');
            if (slashes == 0) argument += text[i++];
            continue;
        }
        argument.append(slashes / 2, '\\');
        ++i;
        if (slashes % 2 == 1) {
            argument += '"';
        } else if (inQuotes && i < text.size() && text[i] == '"') {
            argument += '"';
            ++i;
        } else {
            inQuotes = !inQuotes;
        }
    }
    return arguments;
}

} // namespace platform
