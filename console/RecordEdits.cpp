#include "console/RecordEdits.h"

#include "base/ComponentError.h"

#include <utility>

namespace arvon::console {

namespace {

using Values = std::vector<std::pair<std::string, base::Value>>;

/// A property that refused its new value holds the old one still.
void TakeBack(IToolRecord& record, Values& before) {
    for (; !before.empty(); before.pop_back()) {
        try {
            record.Set(before.back().first, before.back().second);
        } catch (const base::ComponentError&) {
        }
    }
}

} // namespace

void RecordEdits::Plan(std::string name, std::vector<NamedValue> changes) {
    planned_ = {std::move(name), std::move(changes)};
}

bool RecordEdits::Answer(IToolRecord& record) {
    if (!planned_) return false;
    const Planned planned = *std::exchange(planned_, {});
    const std::string name = record.Name();
    if (name != planned.name) {
        problem_ = "the record to be edited is \"" + name + "\", expected \"" + planned.name + "\"";
        return false;
    }
    Values before;
    for (const auto& [property, value] : planned.changes) {
        try {
            before.emplace_back(property, record.Get(property));
            record.Set(property, base::Value(value));
        } catch (const base::ComponentError& error) {
            problem_ = "the record \"" + name + "\" was not edited: " + property + "=" + value +
                       " is refused: " + error.Description();
            TakeBack(record, before);
            return false;
        }
    }
    return true;
}

std::string RecordEdits::TakeProblem() {
    return std::exchange(problem_, {});
}

} // namespace arvon::console
