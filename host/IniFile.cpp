#include "host/IniFile.h"

#include "base/Text.h"

#include <algorithm>

namespace arvon::host {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view Trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

IniFile::IniFile(std::string_view text) {
    if (text.starts_with(byteOrderMark)) {
        byteOrderMark_ = byteOrderMark;
        text.remove_prefix(byteOrderMark.size());
    }
    if (text.find("\r\n") != std::string_view::npos) lineEnd_ = "\r\n";
    std::string section;
    std::vector<std::string> pieces = text.empty() ? std::vector<std::string>() : base::Split(text, '\n');
    if (!pieces.empty() && pieces.back().empty()) pieces.pop_back();
    for (std::string& piece : pieces) {
        if (piece.ends_with('\r')) piece.pop_back();
        Line line{piece, section, {}, {}, false};
        const std::string_view content = Trim(line.text);
        if (content.empty() || content.front() == ';' || content.front() == '#') {
            // a comment
        } else if (!base::IsWellFormedUtf8(content)) {
            problems_.push_back("line " + std::to_string(lines_.size() + 1) +
                                ": the bytes are not well-formed UTF-8");
        } else if (content.front() == '[' && content.back() == ']') {
            section = Trim(content.substr(1, content.size() - 2));
            line.section = section;
            line.opensSection = true;
        } else if (const std::size_t equals = content.find('=');
                   equals != std::string_view::npos && equals > 0) {
            line.item = Trim(content.substr(0, equals));
            line.value = Trim(content.substr(equals + 1));
        } else {
            problems_.push_back("line " + std::to_string(lines_.size() + 1) +
                                ": expected \"[section]\" or \"name=value\", found \"" +
                                std::string(content) + "\"");
        }
        lines_.push_back(std::move(line));
    }
}

bool IniFile::HasSection(std::string_view section) const {
    return std::any_of(lines_.begin(), lines_.end(), [section](const Line& line) {
        return line.opensSection && base::EqualIgnoringCase(line.section, section);
    });
}

const IniFile::Line* IniFile::Find(std::string_view section, std::string_view item) const {
    const auto found = std::find_if(lines_.begin(), lines_.end(), [&](const Line& line) {
        return !line.item.empty() && base::EqualIgnoringCase(line.item, item) &&
               base::EqualIgnoringCase(line.section, section);
    });
    return found == lines_.end() ? nullptr : &*found;
}

std::optional<std::string> IniFile::Get(std::string_view section, std::string_view item) const {
    const Line* line = Find(section, item);
    return line ? std::optional(line->value) : std::nullopt;
}

void IniFile::Set(std::string_view section, std::string_view item, std::string_view value) {
    const std::string text = std::string(item) + "=" + std::string(value);
    if (const Line* found = Find(section, item)) {
        Line& line = lines_[static_cast<std::size_t>(found - lines_.data())];
        line.text = line.item + "=" + std::string(value);
        line.value = value;
        return;
    }
    auto place = std::find_if(lines_.rbegin(), lines_.rend(), [&](const Line& line) {
                     return (line.opensSection || !line.item.empty()) &&
                            base::EqualIgnoringCase(line.section, section);
                 }).base();
    if (place == lines_.begin()) { // no such section
        lines_.push_back({"[" + std::string(section) + "]", std::string(section), {}, {}, true});
        place = lines_.end();
    }
    lines_.insert(place, {text, std::string(section), std::string(item), std::string(value), false});
}

std::string IniFile::Text() const {
    std::string text = byteOrderMark_;
    for (const Line& line : lines_)
        text.append(line.text).append(lineEnd_);
    return text;
}

} // namespace arvon::host
