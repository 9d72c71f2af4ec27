#include "desktop/controls/OptionSheet.h"

#include <algorithm>
#include <compare>
#include <map>
#include <utility>

namespace desktop {

namespace {

struct Place {
    std::size_t page, field;
};

/// What makes an option the same one in another text. Nothing forbids tools of the same ID, or options of the
/// same name: they are told apart by their order.
struct FieldKey {
    std::string toolId;
    std::size_t nthTool;
    std::string name;
    std::size_t nthField;
    auto operator<=>(const FieldKey&) const = default;
};

std::map<FieldKey, Place> PlacesOf(const std::vector<OptionPage>& pages) {
    std::map<FieldKey, Place> places;
    std::map<std::string, std::size_t> tools;
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const std::size_t nthTool = tools[pages[page].toolId]++;
        std::map<std::string, std::size_t> names;
        for (std::size_t field = 0; field < pages[page].fields.size(); ++field) {
            const std::string& name = pages[page].fields[field].name;
            places.emplace(FieldKey{pages[page].toolId, nthTool, name, names[name]++}, Place{page, field});
        }
    }
    return places;
}

bool LooksTheSame(const OptionField& a, const OptionField& b) {
    const auto hasLines = [](const OptionField& field) {
        return field.value.find('\n') != std::string::npos;
    };
    return a.name == b.name && a.label == b.label && a.kind == b.kind && a.editable == b.editable &&
           a.radioGroup == b.radioGroup && hasLines(a) == hasLines(b) &&
           (a.kind != OptionKind::Note || a.value == b.value);
}

bool LookTheSame(const std::vector<OptionPage>& a, const std::vector<OptionPage>& b) {
    return std::ranges::equal(a, b, [](const OptionPage& one, const OptionPage& other) {
        return one.toolId == other.toolId && one.title == other.title &&
               std::ranges::equal(one.fields, other.fields, LooksTheSame);
    });
}

} // namespace

OptionSheet::Rebased OptionSheet::Rebase(const std::string& text) {
    OptionSheet fresh;
    fresh.Load(text);
    Rebased rebased;
    const std::map<FieldKey, Place> places = PlacesOf(fresh.pages_);
    std::vector<std::pair<Place, std::string>> turnedOn;
    for (const auto& [key, place] : PlacesOf(pages_)) {
        const OptionField& field = Field(place.page, place.field);
        if (!field.IsChanged()) continue;
        const auto found = places.find(key);
        if (found == places.end() || !fresh.Field(found->second.page, found->second.field).editable) {
            rebased.lost.push_back(field.label);
        } else if (field.radioGroup >= 0 && IsOn(field.value)) {
            turnedOn.emplace_back(found->second, field.value);
        } else {
            fresh.Store(found->second.page, found->second.field, field.value);
        }
    }
    for (auto& [place, value] : turnedOn) // last: they turn off what others have turned on meanwhile
        fresh.SetValue(place.page, place.field, std::move(value));
    rebased.looksTheSame = LookTheSame(pages_, fresh.pages_);
    *this = std::move(fresh);
    return rebased;
}

} // namespace desktop
