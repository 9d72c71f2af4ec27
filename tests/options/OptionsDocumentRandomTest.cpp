#include "options/OptionsDocument.h"

#include "base/ComponentError.h"
#include "options/ToolOptions.h"
#include "platform/Services.h"
#include "tests/options/PlainOptions.h"
#include "tests/options/RandomOptions.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>

namespace kvtm::test {
namespace {

using base::XmlNode;

/// Where a node stands, for comparing nodes of two documents.
std::string PlaceOf(const XmlNode& node) {
    if (!node) return "nowhere";
    xmlChar* path = xmlGetNodePath(node.Raw());
    std::string text(reinterpret_cast<const char*>(path));
    xmlFree(path);
    return text;
}

/// The place of what `find` gives, or what it raises.
template <class Find> std::string Found(Find&& find) {
    try {
        return PlaceOf(find());
    } catch (const base::ComponentError& error) {
        return error.Description();
    }
}

class FilesInMemory final : public platform::Files {
public:
    std::string Read(const std::filesystem::path&, std::size_t) override { return content; }
    void Write(const std::filesystem::path&, std::string_view text) override { content = text; }
    void Replace(const std::filesystem::path&, std::string_view text) override { content = text; }
    std::string content = "never saved";
};

class SamePaths final : public platform::FilePaths {
public:
    std::filesystem::path ToSystem(std::string_view path) const override { return path; }
    std::string FromSystem(const std::filesystem::path& path) const override { return path; }
    bool Exists(std::string_view) const override { return true; }
    std::filesystem::path Installation() const override { return {}; }
};

/// A document that is read and changed by index, and the same one by plain paths.
class Both {
public:
    explicit Both(unsigned seed) : random_(seed) {
        const std::string text = random_.Document();
        indexed_.LoadText(text);
        plain_.LoadText(text);
        services_.filePaths = std::make_unique<SamePaths>();
        auto files = std::make_unique<FilesInMemory>();
        files_ = files.get();
        services_.files = std::move(files);
    }

    void CompareReads() {
        const std::string_view id = random_.ToolId();
        const std::string_view name = random_.Name();
        const auto option = [&](const auto& d) { return Found([&] { return d.Option(id, name); }); };
        EXPECT_EQ(option(indexed_), option(plain_)) << "option " << name << " of " << id;
        const auto tool = [&](const auto& d) { return Found([&] { return d.Tool(id); }); };
        EXPECT_EQ(tool(indexed_), tool(plain_)) << "tool " << id;
        const auto first = [&](const auto& d) { return Found([&] { return d.FirstOption(name); }); };
        EXPECT_EQ(first(indexed_), first(plain_)) << "first option " << name;
        const char* child = random_.OneIn(2) ? "Value" : "Visible";
        const auto in = [&](const auto& d) { return Found([&] { return d.FirstInOptions(name, child); }); };
        EXPECT_EQ(in(indexed_), in(plain_)) << child << " in options " << name;
        CompareValues(id, name);
    }

    void CompareTexts() {
        const std::string expected = plain_.Text();
        ASSERT_EQ(*indexed_.Text(), expected);
        base::XmlDocument again;
        again.LoadText(expected);
        ASSERT_EQ(again.Text(), expected);
    }

    void ChangeSomething() {
        switch (random_.Below(4)) {
        case 0: {
            const std::string_view id = random_.ToolId(), name = random_.Name();
            Change([&](auto& d) {
                if (const XmlNode tool = d.Tool(id)) d.AppendOption(tool, name);
            });
            break;
        }
        case 1: {
            const std::string_view name = random_.Name();
            Change([&](auto& d) {
                const XmlNode option = d.FirstOption(name);
                if (option && !d.FirstInOptions(name, "Visible")) d.AppendElement(option, "Visible");
            });
            break;
        }
        default:
            SetSomeText();
        }
    }

    /// A document that is said to be sound is one that the records take and save whole.
    void CheckSoundness() {
        const std::string text = plain_.Text();
        ToolOptions records(services_);
        const bool isRead = records.Load(text);
        files_->content = "never saved";
        const bool isSaved = records.Save(text, "OPTIONS.XML");
        if (indexed_.HasSoundSets()) {
            EXPECT_TRUE(isRead || !plain_.document.SelectSingle("//ToolOptions")) << text;
            EXPECT_TRUE(isSaved) << text;
            EXPECT_EQ(files_->content, text);
        } else if (!HasEmptyKeys(text)) {
            EXPECT_FALSE(isRead) << "too strict: " << text;
        }
    }

    std::size_t SoundOnes() const { return indexed_.HasSoundSets() ? 1 : 0; }

private:
    void CompareValues(std::string_view id, std::string_view name) {
        std::string text;
        auto reading = OptionsDocument::Reading::NoOption;
        XmlNode option;
        try {
            option = plain_.Option(id, name);
            reading = indexed_.ReadValue(id, name, text);
        } catch (const base::ComponentError&) {
            return; // compared already
        }
        const XmlNode value = option ? option.SelectSingle("Value") : XmlNode();
        EXPECT_EQ(reading == OptionsDocument::Reading::NoOption, !option);
        EXPECT_EQ(reading == OptionsDocument::Reading::Read, static_cast<bool>(value));
        if (value) {
            EXPECT_EQ(text, value.Text());
        }
    }

    static bool HasEmptyKeys(std::string_view text) {
        for (const std::string_view key : {"ID=\"\"", "<Option><Name/>", "<Option><Value/>"}) {
            if (text.find(key) != std::string_view::npos) return true;
        }
        return false;
    }

    void SetSomeText() {
        const std::string_view id = random_.ToolId(), name = random_.Name(), text = random_.Text();
        const int where = random_.Below(3);
        Change([&](auto& d) {
            XmlNode node;
            if (where == 0) node = d.FirstInOptions(name, "Value");
            if (where == 1) node = d.FirstInOptions(name, "Visible");
            const XmlNode option = where == 2 ? d.Option(id, name) : XmlNode();
            if (option) node = option.SelectSingle("Value");
            if (node) d.SetText(node, text);
        });
    }

    template <class Operation> void Change(Operation&& operation) {
        const auto attempt = [&](auto& document) -> std::string {
            try {
                operation(document);
                return "done";
            } catch (const base::ComponentError& error) {
                return error.Description();
            }
        };
        EXPECT_EQ(attempt(indexed_), attempt(plain_));
    }

    RandomOptions random_;
    OptionsDocument indexed_;
    PlainOptions plain_;
    platform::Services services_;
    FilesInMemory* files_ = nullptr;
};

TEST(OptionsDocument, FindsAndChangesWhatThePlainPathsDo) {
    std::size_t sound = 0;
    constexpr unsigned documents = 400;
    for (unsigned seed = 0; seed < documents; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Both both(seed);
        for (int step = 0; step < 12; ++step) {
            both.CompareReads();
            both.CompareTexts();
            both.CheckSoundness();
            both.ChangeSomething();
            if (testing::Test::HasFailure()) return;
        }
        both.CompareTexts();
        sound += both.SoundOnes();
    }
    EXPECT_GT(sound, documents / 10); // else the soundness went untested
    EXPECT_LT(sound, documents * 9 / 10);
}

} // namespace
} // namespace kvtm::test
