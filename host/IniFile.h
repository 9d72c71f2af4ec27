#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

/// The text of a settings file: "[Section]" lines, "name=value" lines, lines that open with ";" or "#" are
/// comments. Names of sections and items are found without regard to letter case; the first of several
/// counts. Blanks around names and values do not count. Writing changes the one line and keeps all the others
/// as they are.
class IniFile {
public:
    IniFile() = default;
    explicit IniFile(std::string_view text);

    bool HasSection(std::string_view section) const;
    std::optional<std::string> Get(std::string_view section, std::string_view item) const;
    /// Adds section and item where they are missing.
    void Set(std::string_view section, std::string_view item, std::string_view value);
    std::string Text() const;
    /// Lines that are nothing of the above, with their numbers from 1.
    const std::vector<std::string>& Problems() const noexcept { return problems_; }

private:
    struct Line {
        std::string text; // as it stands, without the line's end
        std::string section;
        std::string item; // empty: no item line
        std::string value;
        bool opensSection = false;
    };
    const Line* Find(std::string_view section, std::string_view item) const;

    std::vector<Line> lines_;
    std::string lineEnd_ = "\n";
    std::string byteOrderMark_;
    std::vector<std::string> problems_;
};

} // namespace arvon::host
