#pragma once

#include "base/Collection.h"
#include "base/Value.h"
#include "options/ToolOption.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
struct Services;
}

namespace kvtm {

/// The option sets of an options text, keyed by their "ID", in document order.
///
/// The sets are the children of the first "ToolOptions" element, wherever it stands. No public operation
/// throws.
class ToolOptions {
public:
    using Record = std::shared_ptr<ToolOption>;

    /// Walks the records as they stood when the enumerator was made.
    class Enumerator {
    public:
        /// The next record; null behind the last one.
        Record Next() { return next_ < records_.size() ? records_[next_++] : nullptr; }
        void Reset() noexcept { next_ = 0; }
        auto begin() const noexcept { return records_.begin(); }
        auto end() const noexcept { return records_.end(); }

    private:
        friend class ToolOptions;
        explicit Enumerator(std::vector<Record> records) : records_(std::move(records)) {}
        std::vector<Record> records_;
        std::size_t next_ = 0;
    };

    /// `services`: where Save finds the files; must outlive this object.
    explicit ToolOptions(const platform::Services& services) : services_(services) {}

    /// The record under a key (text, exact) or at a position from 1 (a number); null when there is none.
    Record Item(const base::Value& vntIndexKey) const;
    std::size_t Count() const noexcept;
    Enumerator NewEnum() const;
    /// Replaces the records by those of a text. False when it is not well-formed (nothing changes then), and
    /// for a text without "ToolOptions", a child of it that is no element, a repeated "ID" or a repeated
    /// property name: the records before the fault stay, XML keeps its earlier text.
    bool Load(std::string_view OptionSchema);
    /// Writes the records' values back into the elements that they were read from, saves the document of
    /// `OptionSchema` (not those elements) to `URLPath` in one step and loads that text. False, and nothing
    /// saved, when the text is not well-formed, one of its option sets is no record here, or the file cannot
    /// be written.
    bool Save(std::string_view OptionSchema, std::string_view URLPath);
    void Clear() noexcept;
    /// The whole text of the last successful Load.
    const std::string& XML() const noexcept { return msXML; }

    std::string msXML;

private:
    friend class ToolMain;        // reports what Load and Save only answer with false
    friend class OptionsDocument; // asks whether they need to be made at all

    Record Add(std::string_view identifier, std::string_view key);
    void Remove(std::string_view key) noexcept;
    void LoadOrThrow(std::string_view OptionSchema);
    void SaveOrThrow(std::string_view OptionSchema, std::string_view URLPath);
    /// Calls `work` while the disk is waited for.
    void SaveText(std::string_view text, std::string_view URLPath, const std::function<void()>& work);
    /// Whether Load reads every set below a "ToolOptions" element, and Save then finds every value in it. No
    /// sets at all are as well. A false may be too strict.
    static bool AreSound(const base::XmlNode& sets);
    static bool IsSound(const base::XmlNode& set);

    const platform::Services& services_;
    base::Collection<Record> records_;
};

} // namespace kvtm
