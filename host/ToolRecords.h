#pragma once

#include "base/Collection.h"
#include "host/ToolRecord.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace platform {
class Files;
}

namespace arvon::host {

/// The catalogue Tools.xml as a collection of records.
class ToolRecords final : public IToolRecords {
public:
    using Editor = std::function<bool(IToolRecord& record)>;

    /// Reads the catalogue. A missing or broken file is a problem, and an empty catalogue until it can be
    /// read. The editor may come and go with its owner.
    ToolRecords(Trace& trace, platform::Files& files, std::filesystem::path file, const Editor& editor);

    std::size_t Count() const override;
    std::shared_ptr<IToolRecord> Item(std::size_t position) const override;
    std::shared_ptr<IToolRecord> Item(std::string_view name) const override;
    /// From the collection; the file follows with Save.
    void Remove(const std::shared_ptr<IToolRecord>& record) override;
    /// Writes what was changed and removed into the file as it stands on the disk by now: everything else in
    /// it stays as it is, but a file in another encoding is one in UTF-8 then. A changed record that the file
    /// does not hold any more is a problem. Throws when the file cannot be read or written, or is damaged.
    void Save() override;
    /// A file that cannot be read is a problem; the records stay as they were, with their changes.
    void Reload() override;
    void Edit(const std::shared_ptr<IToolRecord>& record, std::string_view caller) override;

    /// Without a call's record; null when there is none.
    std::shared_ptr<ToolRecord> Find(std::string_view name) const;
    /// The first record whose VREX or identifier (exact) it is; null when there is none.
    std::shared_ptr<ToolRecord> FindById(std::string_view id) const;
    std::vector<model::Tool> Snapshot() const;

private:
    /// The file as it stands on the disk.
    struct Catalogue {
        std::string text; // UTF-8
        std::vector<base::XmlNode> tools;
    };
    Catalogue Load() const;
    void Read();
    /// The first record of which `test` is true; null when there is none.
    template <class Test> std::shared_ptr<ToolRecord> FindIf(const Test& test) const;
    void Take(std::shared_ptr<ToolRecord> record) const;
    /// The position of the record from 1; 0 for one that is not in the collection.
    std::size_t PositionOf(const IToolRecord& record) const;
    /// Hands the changes of a record that is not in the collection any more to the one in its place.
    void HandOver(ToolRecord& edited);
    void KeyByName() const;

    Trace& trace_;
    platform::Files& files_;
    std::filesystem::path file_;
    const Editor& editor_;
    /// Keyed by name; a repeated name gets a key of its own, which repeated_ holds by name. Keyed anew when
    /// asked for a name after a record got another one.
    mutable base::Collection<std::shared_ptr<ToolRecord>> records_;
    mutable std::unordered_map<std::string, std::deque<std::string>> repeated_;
    std::shared_ptr<bool> renamed_ = std::make_shared<bool>(false);
    std::vector<std::shared_ptr<ToolRecord>> removed_; // since the last save
};

} // namespace arvon::host
