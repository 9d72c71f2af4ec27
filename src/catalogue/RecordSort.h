#pragma once

#include "core/ToolMain.h"

#include <string_view>

namespace kvtm {

/// How records are put in order.
struct RecordOrder {
    std::string_view property; // by name, letter case ignored
    bool descending = false;
    bool asDates = false; // else as text, character code by character code
};

/// The records in order, without keys; equal ones stay as they stood. Descending by dates keeps the whole
/// order as it stood: only the property is read then.
///
/// Fails as a sort by insertion does, at the record that it would place next: with what reading the property
/// throws; by ascending dates, with what converting its text throws, which happens as soon as there is
/// another record to compare with; the failure names the record's tool. One record alone is read, but never
/// converted.
ToolCollection SortRecords(const ToolCollection& collection, const RecordOrder& order);

} // namespace kvtm
