#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Builds libraries of string resources by hand, so that a test can give them any shape.
class ModuleBuilder {
public:
    static constexpr std::uint32_t SectionAddress = 0x1000, SectionOffset = 0x200;

    /// Sets the block of sixteen strings with this number (from 1) in a language.
    ModuleBuilder& Block(std::uint32_t number, std::uint32_t language,
                         const std::vector<std::u16string>& strings) {
        std::string data;
        for (std::size_t i = 0; i < 16; ++i) {
            const std::u16string text = i < strings.size() ? strings[i] : u"";
            Add(data, static_cast<std::uint32_t>(text.size()), 2);
            for (const char16_t unit : text)
                Add(data, unit, 2);
        }
        blocks_[number][language] = data;
        return *this;
    }

    /// The whole library, 32 or 64 bit.
    std::string Build(bool is64) const { return WithSection(is64, Resources()); }

    /// A library around any bytes for its resources.
    static std::string WithSection(bool is64, std::string section) {
        const std::uint32_t sectionSize = static_cast<std::uint32_t>(section.size());
        std::string file = "MZ";
        file.resize(0x3C);
        Add(file, 0x40, 4);
        file += std::string("PE\0\0", 4);
        Add(file, is64 ? 0x8664 : 0x14C, 2);
        Add(file, 1, 2); // sections
        file.resize(0x40 + 4 + 16);
        const std::uint32_t optionalSize = (is64 ? 112 : 96) + 16 * 8;
        Add(file, optionalSize, 2);
        Add(file, 0x2002, 2);
        const std::size_t optional = file.size();
        Add(file, is64 ? 0x20B : 0x10B, 2);
        file.resize(optional + optionalSize - 16 * 8 - 4);
        Add(file, 16, 4); // directories
        file.resize(file.size() + 2 * 8);
        Add(file, SectionAddress, 4);
        Add(file, sectionSize, 4);
        file.resize(optional + optionalSize);
        file += std::string(".rsrc\0\0\0", 8);
        Add(file, sectionSize, 4);
        Add(file, SectionAddress, 4);
        Add(file, sectionSize, 4);
        Add(file, SectionOffset, 4);
        file.resize(SectionOffset);
        return file + section;
    }

    /// A directory's head and entries (id, target), the `named` first ones by name.
    static std::string Directory(const std::vector<std::array<std::uint32_t, 2>>& entries,
                                 std::uint32_t named = 0, std::uint32_t claimed = 0) {
        std::string bytes(12, '\0');
        Add(bytes, named, 2);
        Add(bytes, claimed != 0 ? claimed : static_cast<std::uint32_t>(entries.size()) - named, 2);
        for (const auto& entry : entries) {
            Add(bytes, entry[0], 4);
            Add(bytes, entry[1], 4);
        }
        return bytes;
    }
    static void Add(std::string& bytes, std::uint32_t number, int count) {
        for (; count-- > 0; number >>= 8)
            bytes += static_cast<char>(number & 0xFF);
    }
    static constexpr std::uint32_t Below = 0x80000000; // in a target: a directory

private:
    /// Root, names, languages, data entries, data: in this order.
    std::string Resources() const {
        using Entries = std::vector<std::array<std::uint32_t, 2>>;
        const auto sizeOf = [](std::size_t entries) { return static_cast<std::uint32_t>(16 + 8 * entries); };
        const std::uint32_t names = sizeOf(1);
        std::uint32_t language = names + sizeOf(blocks_.size());
        std::uint32_t entry = language, count = 0;
        for (const auto& [number, languages] : blocks_) {
            entry += sizeOf(languages.size());
            count += static_cast<std::uint32_t>(languages.size());
        }
        std::uint32_t data = entry + 16 * count;
        Entries nameEntries;
        std::string languageBytes, entryBytes, dataBytes;
        for (const auto& [number, languages] : blocks_) {
            nameEntries.push_back({number, language | Below});
            language += sizeOf(languages.size());
            Entries languageEntries;
            for (const auto& [id, bytes] : languages) {
                languageEntries.push_back({id, entry});
                entry += 16;
                Add(entryBytes, SectionAddress + data, 4);
                Add(entryBytes, static_cast<std::uint32_t>(bytes.size()), 4);
                Add(entryBytes, 0, 4);
                Add(entryBytes, 0, 4);
                dataBytes += bytes;
                data += static_cast<std::uint32_t>(bytes.size());
            }
            languageBytes += Directory(languageEntries);
        }
        return Directory({{6, names | Below}}) + Directory(nameEntries) + languageBytes + entryBytes +
               dataBytes;
    }

    std::map<std::uint32_t, std::map<std::uint32_t, std::string>> blocks_;
};
