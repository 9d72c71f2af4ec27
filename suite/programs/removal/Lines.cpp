#include "suite/programs/removal/Lines.h"

#include "base/Text.h"

#include <algorithm>

namespace suite {

std::vector<std::string> SplitLines(std::string_view text) {
    if (text.empty()) return {};
    std::vector<std::string> lines = base::Split(text, '\n');
    if (lines.back().empty()) lines.pop_back();
    for (std::string& line : lines) {
        if (line.ends_with('\r')) line.pop_back();
    }
    return lines;
}

bool IsFileName(std::string_view text) {
    if (text.empty() || text == "." || text == ".." || text.ends_with(' ') || text.ends_with('.'))
        return false;
    return std::ranges::none_of(text, [](unsigned char c) {
        return c < 0x20 || c == 0x7F ||
               std::string_view("\\/:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
    });
}

} // namespace suite
