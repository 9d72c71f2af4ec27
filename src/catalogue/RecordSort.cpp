#include "catalogue/RecordSort.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kvtm {

namespace {

/// A text that compares by its first eight bytes before the rest is looked at. UTF-8 orders by bytes as by
/// character codes.
class TextKey {
public:
    explicit TextKey(std::string text) : text_(std::move(text)) {
        for (std::size_t at = 0; at < sizeof start_; ++at)
            start_ = start_ << 8 | (at < text_.size() ? static_cast<unsigned char>(text_[at]) : 0U);
    }
    friend bool operator<(const TextKey& left, const TextKey& right) noexcept {
        return left.start_ != right.start_ ? left.start_ < right.start_ : left.text_ < right.text_;
    }
    friend bool operator>(const TextKey& left, const TextKey& right) noexcept { return right < left; }

private:
    std::uint64_t start_ = 0;
    std::string text_;
};

template <class Key> struct Sortable {
    Key key;
    const ToolRecord* record;
};

std::string TextOf(const ToolRecord& record, const RecordOrder& order) {
    return record->Get(order.property).ToText();
}

std::vector<Sortable<TextKey>> ReadTexts(const ToolCollection& records, const RecordOrder& order) {
    std::vector<Sortable<TextKey>> read;
    read.reserve(records.Count());
    for (const ToolRecord& record : records)
        read.push_back({TextKey(TextOf(record, order)), &record});
    return read;
}

// The second record is the first that is compared: the first one's text is converted after its own.
std::vector<Sortable<base::Date>> ReadDates(const ToolCollection& records, const RecordOrder& order) {
    std::vector<Sortable<base::Date>> read;
    read.reserve(records.Count());
    std::string firstText;
    for (const ToolRecord& record : records) {
        std::string text = TextOf(record, order);
        if (read.empty()) {
            firstText = std::move(text);
            read.push_back({base::Date{}, &record});
            continue;
        }
        read.push_back({base::Value(std::move(text)).ToDate(), &record});
        if (read.size() == 2) read.front().key = base::Value(std::move(firstText)).ToDate();
    }
    return read;
}

template <class Key, class Before>
ToolCollection InOrder(std::vector<Sortable<Key>> read, Before goesBefore) {
    std::stable_sort(read.begin(), read.end(), [&](const Sortable<Key>& left, const Sortable<Key>& right) {
        return goesBefore(left.key, right.key);
    });
    ToolCollection sorted;
    for (const Sortable<Key>& next : read)
        sorted.Add(*next.record);
    return sorted;
}

} // namespace

ToolCollection SortRecords(const ToolCollection& records, const RecordOrder& order) {
    if (order.asDates && order.descending) {
        const auto nothingIsDecided = [](const TextKey&, const TextKey&) { return false; };
        return InOrder(ReadTexts(records, order), nothingIsDecided);
    }
    if (order.asDates) return InOrder(ReadDates(records, order), std::less<>());
    if (order.descending) return InOrder(ReadTexts(records, order), std::greater<>());
    return InOrder(ReadTexts(records, order), std::less<>());
}

} // namespace kvtm
