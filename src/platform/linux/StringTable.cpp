#include "platform/linux/StringTable.h"

#include <algorithm>
#include <vector>

namespace platform {

namespace {

constexpr std::uint32_t StringBlocks = 6; // the resource type
constexpr std::uint32_t NeutralLanguage = 0;
constexpr std::uint32_t HighBit = 0x80000000; // in a directory entry: a name, or a directory below
constexpr std::uint16_t Magic32 = 0x10B, Magic64 = 0x20B;
constexpr std::size_t StringsPerBlock = 16;

/// Bytes that say nothing where they end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    std::optional<std::uint16_t> Short(std::size_t offset) const {
        if (!Holds(offset, 2)) return std::nullopt;
        return static_cast<std::uint16_t>(At(offset) | At(offset + 1) << 8);
    }
    std::optional<std::uint32_t> Long(std::size_t offset) const {
        if (!Holds(offset, 4)) return std::nullopt;
        return At(offset) | At(offset + 1) << 8 | At(offset + 2) << 16 | At(offset + 3) << 24;
    }
    std::size_t Size() const noexcept { return bytes_.size(); }

private:
    bool Holds(std::size_t offset, std::size_t count) const {
        return offset <= bytes_.size() && count <= bytes_.size() - offset;
    }
    std::uint32_t At(std::size_t offset) const { return static_cast<unsigned char>(bytes_[offset]); }

    std::string_view bytes_;
};

/// Where a section lies in memory and in the file.
struct Section {
    std::uint32_t address = 0, fileOffset = 0, fileSize = 0;
};

struct DirectoryEntry {
    std::uint32_t id = 0, target = 0;
    bool HasName() const noexcept { return (id & HighBit) != 0; }
    bool IsDirectory() const noexcept { return (target & HighBit) != 0; }
    std::uint32_t Offset() const noexcept { return target & ~HighBit; }
};

/// Headers and resource directories of one library. Offsets of directories count from the resources' start.
class Library {
public:
    explicit Library(std::string_view file) : bytes_(file) {
        if (bytes_.Short(0) != 0x5A4D) return; // "MZ"
        const auto header = bytes_.Long(0x3C);
        if (!header || bytes_.Long(*header) != 0x00004550) return; // "PE", two NULs
        const std::size_t coff = std::size_t{*header} + 4;
        const std::size_t optional = coff + 20;
        const auto sectionCount = bytes_.Short(coff + 2);
        const auto optionalSize = bytes_.Short(coff + 16);
        const auto magic = bytes_.Short(optional);
        if (!sectionCount || !optionalSize || (magic != Magic32 && magic != Magic64)) return;
        ReadSections(optional + *optionalSize, *sectionCount);

        const std::size_t directories = optional + (magic == Magic32 ? 96 : 112);
        constexpr std::uint32_t ResourceDirectory = 2; // a pair of numbers each: address, size
        const auto directoryCount = bytes_.Long(directories - 4);
        const auto address = bytes_.Long(directories + 8 * ResourceDirectory);
        if (!directoryCount || *directoryCount <= ResourceDirectory || !address || *address == 0) return;
        resources_ = FileOffset(*address, 1);
    }

    std::optional<std::size_t> Resources() const noexcept { return resources_; }

    /// The file offset of `size` bytes at a memory address; nothing unless all of them lie in one section.
    std::optional<std::size_t> FileOffset(std::uint32_t address, std::uint32_t size) const {
        for (const Section& section : sections_) {
            if (address < section.address || address - section.address >= section.fileSize) continue;
            const std::uint32_t inside = address - section.address;
            const std::size_t offset = std::size_t{section.fileOffset} + inside;
            if (size > section.fileSize - inside || offset > bytes_.Size() || size > bytes_.Size() - offset)
                return std::nullopt;
            return offset;
        }
        return std::nullopt;
    }

    std::uint32_t NamedEntries(std::uint32_t directory) const {
        return bytes_.Short(At(directory) + 12).value_or(0);
    }
    std::uint32_t Entries(std::uint32_t directory) const {
        return NamedEntries(directory) + bytes_.Short(At(directory) + 14).value_or(0);
    }
    std::optional<DirectoryEntry> Entry(std::uint32_t directory, std::uint32_t index) const {
        const std::size_t offset = At(directory) + 16 + std::size_t{8} * index;
        const auto id = bytes_.Long(offset), target = bytes_.Long(offset + 4);
        if (!id || !target) return std::nullopt;
        return DirectoryEntry{*id, *target};
    }
    /// Address and size of the data that an entry of the last level names.
    std::optional<std::pair<std::uint32_t, std::uint32_t>> Data(std::uint32_t entry) const {
        const auto address = bytes_.Long(At(entry)), size = bytes_.Long(At(entry) + 4);
        if (!address || !size) return std::nullopt;
        return std::pair{*address, *size};
    }

private:
    std::size_t At(std::uint32_t offset) const { return resources_.value() + offset; }

    void ReadSections(std::size_t offset, std::uint16_t count) {
        constexpr std::uint16_t MaximumSections = 96; // as the system that the format comes from
        constexpr std::size_t HeaderSize = 40;
        if (count > MaximumSections) return;
        for (std::size_t i = 0; i < count; ++i, offset += HeaderSize) {
            const auto address = bytes_.Long(offset + 12), fileSize = bytes_.Long(offset + 16),
                       fileOffset = bytes_.Long(offset + 20);
            if (!address || !fileSize || !fileOffset) return;
            sections_.push_back({*address, *fileOffset, *fileSize});
        }
    }

    Bytes bytes_;
    std::vector<Section> sections_;
    std::optional<std::size_t> resources_;
};

/// The directory of the type "string block".
std::optional<std::uint32_t> FindStringBlocks(const Library& library) {
    for (std::uint32_t i = library.NamedEntries(0), end = library.Entries(0); i < end; ++i) {
        const auto entry = library.Entry(0, i);
        if (!entry) return std::nullopt;
        if (entry->id == StringBlocks && entry->IsDirectory()) return entry->Offset();
    }
    return std::nullopt;
}

/// The entry of a number. The numbers stand in ascending order behind the names.
std::optional<DirectoryEntry> FindEntry(const Library& library, std::uint32_t directory, std::uint32_t id) {
    std::uint32_t begin = library.NamedEntries(directory), end = library.Entries(directory);
    while (begin < end) {
        const std::uint32_t middle = begin + (end - begin) / 2;
        const auto entry = library.Entry(directory, middle);
        if (entry && entry->id == id) return entry;
        if (entry && entry->id < id)
            begin = middle + 1;
        else
            end = middle;
    }
    return std::nullopt;
}

std::optional<DirectoryEntry> ChooseLanguage(const Library& library, std::uint32_t directory,
                                             std::uint16_t language) {
    constexpr std::uint32_t anyCountry = 0x3FF; // the bits of the language alone
    for (const std::uint32_t wanted : {std::uint32_t{language}, language & anyCountry, NeutralLanguage})
        if (const auto entry = FindEntry(library, directory, wanted)) return entry;
    return library.Entries(directory) == 0 ? std::nullopt : library.Entry(directory, 0);
}

} // namespace

StringTable::StringTable(std::string file, std::uint16_t language) : file_(std::move(file)) {
    const Library library(file_);
    if (!library.Resources()) return;
    const auto names = FindStringBlocks(library);
    if (!names) return;
    for (std::uint32_t i = library.NamedEntries(*names), end = library.Entries(*names); i < end; ++i) {
        const auto name = library.Entry(*names, i);
        if (!name) return;
        if (name->HasName() || name->id < 1 || name->id > BlockCount || !name->IsDirectory()) continue;
        Block& block = blocks_[name->id - 1];
        const auto chosen = ChooseLanguage(library, name->Offset(), language);
        if (block.size != 0 || !chosen || chosen->IsDirectory()) continue;
        const auto data = library.Data(chosen->Offset());
        const auto offset = data ? library.FileOffset(data->first, data->second) : std::nullopt;
        if (offset) block = {static_cast<std::uint32_t>(*offset), data->second};
    }
}

std::optional<std::u16string> StringTable::Find(std::uint16_t number) const {
    const Block& block = blocks_[number / StringsPerBlock];
    const std::string_view data = std::string_view(file_).substr(block.offset, block.size);
    const Bytes bytes(data);
    std::size_t offset = 0; // strings with their length before them, empty ones too
    for (std::size_t left = number % StringsPerBlock;; --left) {
        const auto length = bytes.Short(offset);
        if (!length) return std::nullopt;
        offset += 2;
        if (left > 0) {
            offset += std::size_t{2} * *length;
            continue;
        }
        if (*length == 0 || !bytes.Short(offset + std::size_t{2} * (*length - 1u))) return std::nullopt;
        std::u16string text(*length, u'\0');
        for (char16_t& unit : text) {
            unit = static_cast<char16_t>(*bytes.Short(offset));
            offset += 2;
        }
        return text;
    }
}

} // namespace platform
