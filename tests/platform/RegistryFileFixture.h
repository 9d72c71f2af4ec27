#pragma once

#include "platform/linux/RegistryFile.h"
#include "tests/base/RefusalOf.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// Reads registry files from their bytes.
class RegistryFileTest : public testing::Test {
protected:
    static inline const std::string Header = "Windows Registry Editor Version 5.00\r\n\r\n";
    static inline const std::string Key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane\\Arvon11";

    platform::RegistryFile Read(std::string_view bytes) const {
        return platform::RegistryFile(bytes, *codePage, "/x/registry.reg");
    }
    /// A file with these lines below the key.
    platform::RegistryFile ReadKey(const std::string& lines) const {
        return Read(Header + "[" + Key + "]\r\n" + lines);
    }

    std::string DataOf(const platform::RegistryFile& file, std::string_view name,
                       std::uint32_t type = 1) const {
        const auto value = file.Find(Key, name);
        if (!value) return "(none)";
        EXPECT_EQ(value->type, type) << name;
        return value->data;
    }
    /// The file as a whole is refused, and why.
    void ExpectBroken(std::string_view bytes, const std::string& what) const {
        const Refusal refusal = RefusalOf([&] { Read(bytes); });
        EXPECT_EQ(refusal.number, base::errors::FileAccess);
        EXPECT_NE(refusal.description.find("registry file \"/x/registry.reg\", " + what), std::string::npos)
            << refusal.description;
    }
    /// One statement is passed over, and why; one behind it is read.
    void ExpectProblem(std::string_view bytes, const std::string& what) const {
        const platform::RegistryFile file =
            Read(std::string(bytes) + "\r\n[HKLM\\Behind]\r\n\"v\"=\"1\"\r\n");
        ASSERT_EQ(file.Problems().size(), 1U) << bytes;
        EXPECT_NE(file.Problems()[0].find("registry file \"/x/registry.reg\", " + what), std::string::npos)
            << file.Problems()[0];
        EXPECT_TRUE(file.Find("HKEY_LOCAL_MACHINE\\Behind", "v")) << bytes;
    }
    static std::string Utf16(const std::u16string& text) { return "\xFF\xFE" + platform::BytesOf(text); }

    std::unique_ptr<platform::CodePage> codePage = platform::CodePage::Create();
};
