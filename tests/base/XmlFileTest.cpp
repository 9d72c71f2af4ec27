#include "base/XmlDocument.h"
#include "tests/base/XmlFileFixture.h"
#include "tests/support/OrdinaryUser.h"

#include <string>

namespace {

using base::XmlDocument;
using namespace std::string_literals;

class XmlFile : public XmlFileFixture {};

TEST_F(XmlFile, IsRefusedWithItsNameAndPlace) {
    const auto file = folder.Write("OPTIONS.XML", "<Options>\n  <Tool>\n</Options>");
    const Refusal refusal = RefusalOf([&] { XmlDocument().LoadFile(file); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_TRUE(refusal.description.starts_with(file.string() + ": line 3, column 11: "))
        << refusal.description;
}

TEST_F(XmlFile, IsRefusedWhenItIsEmpty) {
    EXPECT_NE(RefusalOfBytes("").description.find("line 1, column 1: the text is empty"), std::string::npos);
    EXPECT_NE(RefusalOfBytes("\xFF\xFE"s).description.find("the text is empty"), std::string::npos);
}

TEST_F(XmlFile, IsNotFoundWhenItIsMissing) {
    for (const auto& path : {folder.Path() / "missing.xml", folder.Path() / "no folder" / "missing.xml",
                             folder.Write("plain", "<a/>") / "below.xml", std::filesystem::path()}) {
        const Refusal refusal = RefusalOf([&] { XmlDocument().LoadFile(path); });
        EXPECT_EQ(refusal.number, base::errors::FileNotFound) << path;
        EXPECT_NE(refusal.description.find(path.string()), std::string::npos);
    }
}

TEST_F(XmlFile, IsNoFolderAndNoDevice) {
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(folder.Path()); }).number, base::errors::FileAccess);
    const std::filesystem::path device = "/dev/zero";
    if (!std::filesystem::exists(device)) GTEST_SKIP() << "this system has no such device";
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(device); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, CannotBeReadThroughALinkToItself) {
    const std::filesystem::path link = folder.Path() / "link.xml";
    std::filesystem::create_symlink(link, link);
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(link); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, CannotBeReadWithoutPermission) {
    const auto file = folder.Write("secret.xml", "<a/>");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    const OrdinaryUser user(folder.Path());
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(file); }).number, base::errors::FileAccess);
}

TEST_F(XmlFile, IsRefusedWhenItIsFarTooLarge) {
    const auto file = folder.Write("large.xml", "<a/>");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
    EXPECT_EQ(RefusalOf([&] { XmlDocument().LoadFile(file); }).number, base::errors::InvalidCall);
}

TEST_F(XmlFile, LeavesTheDocumentAsItWasWhenItIsRefused) {
    XmlDocument document;
    document.LoadText("<a/>");
    RefusalOf([&] { document.LoadFile(folder.Path() / "missing.xml"); });
    RefusalOf([&] { document.LoadFile(folder.Write("file.xml", "<b")); });
    EXPECT_EQ(document.Text(), "<a/>");
}

TEST_F(XmlFile, MayHaveAnyName) {
    XmlDocument document;
    document.LoadFile(folder.Write("grün 😀 %20 &.xml", "<a/>"));
    EXPECT_EQ(document.Text(), "<a/>");
}

} // namespace
