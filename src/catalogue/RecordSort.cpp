#include "catalogue/RecordSort.h"

#include "base/DateText.h"
#include "catalogue/ToolFailure.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace kvtm {

namespace {

using Records = std::vector<ToolRecord>;
using Texts = std::vector<std::string>;

/// What decides first between two records, and which record it is.
template <class Start> struct Sortable {
    Start start;
    std::size_t index;
};

Texts ReadTexts(const Records& records, const RecordOrder& order) {
    Texts texts;
    texts.reserve(records.size());
    for (const ToolRecord& record : records)
        texts.push_back(record->Get(order.property).ToText());
    return texts;
}

std::size_t CommonStart(const Texts& texts) {
    if (texts.empty()) return 0;
    std::size_t length = texts.front().size();
    for (const std::string& text : texts) {
        const std::size_t limit = std::min(length, text.size());
        const auto differing = std::mismatch(text.data(), text.data() + limit, texts.front().data());
        length = static_cast<std::size_t>(differing.first - text.data());
    }
    return length;
}

/// The eight bytes behind what all texts have in common: most pairs differ there. UTF-8 orders by bytes as by
/// character codes.
std::vector<Sortable<std::uint64_t>> StartsOf(const Texts& texts) {
    const std::size_t common = CommonStart(texts);
    std::vector<Sortable<std::uint64_t>> starts;
    starts.reserve(texts.size());
    for (const std::string& text : texts) {
        std::array<unsigned char, sizeof(std::uint64_t)> bytes = {};
        std::memcpy(bytes.data(), text.data() + common, std::min(text.size() - common, bytes.size()));
        std::uint64_t start = 0;
        for (const unsigned char byte : bytes)
            start = start << 8 | byte;
        starts.push_back({start, starts.size()});
    }
    return starts;
}

// The second record is the first that is compared: the first one's text is converted after its own.
std::vector<Sortable<base::Date>> ReadDates(const Records& records, const RecordOrder& order) {
    const auto dateOf = [](const ToolRecord& record, const base::Value& text) {
        return NamingToolOnFailure(record, [&] { return base::ToRecordDate(text); });
    };
    std::vector<Sortable<base::Date>> dates;
    dates.reserve(records.size());
    base::Value firstText;
    for (const ToolRecord& record : records) {
        base::Value text(record->Get(order.property).ToText());
        if (dates.empty()) {
            firstText = std::move(text);
            dates.push_back({base::Date{}, 0});
            continue;
        }
        dates.push_back({dateOf(record, text), dates.size()});
        if (dates.size() == 2) dates.front().start = dateOf(records.front(), firstText);
    }
    return dates;
}

/// `compare(left, right)` is below 0 where left goes first, 0 where both stay as they were listed.
template <class Start, class Compare>
ToolCollection InOrder(Records records, std::vector<Sortable<Start>> sortables, Compare compare) {
    using Element = Sortable<Start>;
    std::sort(sortables.begin(), sortables.end(), [&](const Element& left, const Element& right) {
        const auto order = compare(left, right);
        return order != 0 ? order < 0 : left.index < right.index;
    });
    ToolCollection sorted;
    for (const Sortable<Start>& next : sortables)
        sorted.Add(std::move(records[next.index]));
    return sorted;
}

} // namespace

ToolCollection SortRecords(const ToolCollection& collection, const RecordOrder& order) {
    using Text = Sortable<std::uint64_t>;
    using Date = Sortable<base::Date>;
    Records records = collection.Snapshot();
    if (order.asDates && !order.descending) {
        auto dates = ReadDates(records, order);
        return InOrder(std::move(records), std::move(dates),
                       [](const Date& left, const Date& right) { return left.start <=> right.start; });
    }
    const Texts texts = ReadTexts(records, order);
    if (order.asDates) { // nothing is decided
        ToolCollection unchanged;
        for (ToolRecord& record : records)
            unchanged.Add(std::move(record));
        return unchanged;
    }
    const auto compare = [&](const Text& left, const Text& right) {
        const std::strong_ordering starts = left.start <=> right.start;
        return starts != 0 ? starts : texts[left.index] <=> texts[right.index];
    };
    if (order.descending) {
        return InOrder(std::move(records), StartsOf(texts),
                       [&](const Text& left, const Text& right) { return compare(right, left); });
    }
    return InOrder(std::move(records), StartsOf(texts), compare);
}

} // namespace kvtm
