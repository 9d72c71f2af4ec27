#include "options/OptionsDocument.h"

#include "base/ComponentError.h"
#include "base/XmlText.h"
#include "options/ToolOptions.h"
#include "tests/options/PlainOptions.h"
#include "tests/options/RandomOptions.h"
#include "tests/options/ServicesInMemory.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>

namespace kvtm::test {
namespace {

using base::XmlNode;

constexpr std::string_view file = "OPTIONS.XML";

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

bool AreEqual(const xmlChar* a, const xmlChar* b) {
    return base::ViewOf(a) == base::ViewOf(b);
}

bool AreEqual(const xmlNs* a, const xmlNs* b) {
    return !a == !b && (!a || (AreEqual(a->prefix, b->prefix) && AreEqual(a->href, b->href)));
}

/// Whether two trees are equal in every node.
bool AreEqual(xmlNode* a, xmlNode* b) {
    if (a->type != b->type || !AreEqual(a->name, b->name)) return false;
    if (a->type != XML_ELEMENT_NODE) return AreEqual(a->content, b->content);
    if (!AreEqual(a->ns, b->ns) || xmlChildElementCount(a) != xmlChildElementCount(b)) return false;
    const xmlAttr* other = b->properties;
    for (const xmlAttr* attribute = a->properties; attribute; attribute = attribute->next) {
        if (!other || !AreEqual(attribute->name, other->name) || !AreEqual(attribute->ns, other->ns))
            return false;
        if (!AreEqual(attribute->children ? attribute->children->content : nullptr,
                      other->children ? other->children->content : nullptr))
            return false;
        other = other->next;
    }
    const xmlNode* sibling = b->children;
    for (xmlNode* child = a->children; child; child = child->next) {
        if (!sibling || !AreEqual(child, const_cast<xmlNode*>(sibling))) return false;
        sibling = sibling->next;
    }
    return !other && !sibling;
}

/// A document that is read and changed by index, and the same one by plain paths.
class Both {
public:
    explicit Both(unsigned seed) : random_(seed) {
        const std::string text = random_.Document();
        indexed_.LoadText(text);
        plain_.LoadText(text);
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
        ASSERT_TRUE(AreEqual(again.Root().Raw(), plain_.document.Root().Raw())) << expected;
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
        ToolOptions records(memory_.services);
        const bool isRead = records.Load(text);
        memory_.Remove(file);
        const bool isSaved = records.Save(text, file);
        if (indexed_.HasSoundSets()) {
            EXPECT_TRUE(isRead || !plain_.document.SelectSingle("//ToolOptions")) << text;
            EXPECT_TRUE(isSaved) << text;
            EXPECT_EQ(memory_.File(file), text);
        } else {
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
    ServicesInMemory memory_;
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
