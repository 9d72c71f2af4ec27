#include "console/Table.h"

#include "console/PrintableText.h"

#include <algorithm>
#include <map>

namespace arvon::console {

namespace {

constexpr std::size_t WidestCell = 60;

bool HoldsEntries(const Json& value) {
    return value.is_array() && !value.empty() && value.front().is_object();
}

std::string CellOf(const Json& value) {
    if (value.is_string()) return Shortened(value.get_ref<const std::string&>(), WidestCell);
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    if (value.is_array()) {
        std::string joined;
        for (const Json& element : value)
            joined += (joined.empty() ? "" : ", ") + CellOf(element);
        return joined;
    }
    return value.dump();
}

/// One entry of the state, its cells by column.
struct Row {
    std::size_t level = 0;
    std::map<std::string, std::string> cells;
};

class Table {
public:
    void AddEntries(const Json& entries, std::size_t level) {
        for (const Json& entry : entries)
            AddEntry(entry, level);
    }

    std::vector<std::string> Lines() const {
        std::vector<std::string> heading;
        std::vector<std::size_t> widths;
        for (const std::string& column : columns_) {
            std::size_t width = 0;
            for (const Row& row : rows_)
                width = std::max(width, Width(CellAt(row, column)));
            if (width == 0) continue;
            heading.push_back(column);
            widths.push_back(std::max(width, Width(column)));
        }
        std::vector<std::string> lines{LineOf(heading, widths, [](const std::string& c) { return c; })};
        for (const Row& row : rows_)
            lines.push_back(LineOf(heading, widths, [&](const std::string& c) { return CellAt(row, c); }));
        return lines;
    }

private:
    void AddEntry(const Json& entry, std::size_t level) {
        Row& row = rows_.emplace_back();
        row.level = level;
        std::vector<const Json*> below;
        for (const auto& [name, value] : entry.items()) {
            if (HoldsEntries(value)) {
                below.push_back(&value);
                continue;
            }
            if (std::find(columns_.begin(), columns_.end(), name) == columns_.end()) columns_.push_back(name);
            row.cells[name] = CellOf(value);
        }
        for (const Json* entries : below)
            AddEntries(*entries, level + 1);
    }

    std::string CellAt(const Row& row, const std::string& column) const {
        const auto cell = row.cells.find(column);
        const std::string text = cell == row.cells.end() ? std::string() : cell->second;
        return column == columns_.front() ? std::string(2 * row.level, ' ') + text : text;
    }

    template <class CellOfColumn> static std::string LineOf(const std::vector<std::string>& columns,
                                                            const std::vector<std::size_t>& widths,
                                                            CellOfColumn cellOf) {
        std::string line;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::string cell = cellOf(columns[i]);
            line += cell + std::string(widths[i] - Width(cell) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        return line;
    }

    std::vector<std::string> columns_;
    std::vector<Row> rows_;
};

} // namespace

std::vector<std::string> TableOf(const Json& state) {
    if (state.empty()) return {"(none)"};
    if (HoldsEntries(state)) {
        Table table;
        table.AddEntries(state, 0);
        return table.Lines();
    }
    std::vector<std::string> lines;
    for (const Json& value : state)
        lines.push_back(CellOf(value));
    return lines;
}

} // namespace arvon::console
