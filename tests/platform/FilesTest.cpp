#include "platform/Files.h"

#include "tests/base/RefusalOf.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = std::filesystem;
using platform::Files;

namespace {

class FilesTest : public testing::Test {
protected:
    static mode_t ModeOf(const fs::path& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_mode & 07777;
    }
    static void ExpectNames(const Refusal& refusal, const fs::path& file, const std::string& reason) {
        EXPECT_NE(refusal.description.find(file.string()), std::string::npos) << refusal.description;
        EXPECT_NE(refusal.description.find(reason), std::string::npos) << refusal.description;
    }
    TestFolder folder;
    std::unique_ptr<Files> files = Files::Create();
};

TEST_F(FilesTest, ReadsAWholeFile) {
    std::string content(200'000, 'x');
    content[70'000] = '\0';
    EXPECT_EQ(files->Read(folder.Write("a", content)), content);
    EXPECT_EQ(files->Read(folder.Write("empty", "")), "");
}

TEST_F(FilesTest, ReadsAFileThatDoesNotTellItsSize) {
    EXPECT_NE(files->Read("/proc/self/status"), "");
}

TEST_F(FilesTest, TellsAMissingFileFromAMissingFolder) {
    const Refusal file = RefusalOf([&] { files->Read(folder / "none.txt"); });
    EXPECT_EQ(file.number, base::errors::FileNotFound);
    ExpectNames(file, folder / "none.txt", "no such file");
    EXPECT_TRUE(file.description.starts_with("cannot read \"")) << file.description;
    EXPECT_EQ(RefusalOf([&] { files->Read(folder / "none/none.txt"); }).number, base::errors::PathNotFound);
    folder.Write("file", "");
    EXPECT_EQ(RefusalOf([&] { files->Read(folder / "file/none.txt"); }).number, base::errors::PathNotFound);
}

TEST_F(FilesTest, RefusesToReadMoreThanTheLimit) {
    const fs::path file = folder.Write("a", "12345");
    EXPECT_EQ(files->Read(file, 5), "12345");
    const Refusal refusal = RefusalOf([&] { files->Read(file, 4); });
    EXPECT_EQ(refusal.number, base::errors::FileAccess);
    ExpectNames(refusal, file, "at most 4 bytes");
}

TEST_F(FilesTest, RefusesWhatIsNoRegularFile) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_directory(folder / "sub");
    for (const char* name : {"pipe", "sub"}) {
        EXPECT_EQ(RefusalOf([&] { files->Read(folder / name); }).number, base::errors::FileAccess) << name;
        EXPECT_EQ(RefusalOf([&] { files->Write(folder / name, "x"); }).number, base::errors::FileAccess)
            << name;
        EXPECT_EQ(RefusalOf([&] { files->Replace(folder / name, "x"); }).number, base::errors::FileAccess)
            << name;
    }
    EXPECT_EQ(RefusalOf([&] { files->Read("/dev/zero"); }).number, base::errors::FileAccess);
    EXPECT_EQ(RefusalOf([&] { files->Write("/dev/full", "x"); }).number, base::errors::FileAccess);
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"pipe", "sub"}));
}

TEST_F(FilesTest, RefusesANulInAName) {
    const fs::path file = folder.Path() / std::string("a\0b", 3);
    EXPECT_EQ(RefusalOf([&] { files->Read(file); }).number, base::errors::FileAccess);
    EXPECT_EQ(RefusalOf([&] { files->Write(file, ""); }).number, base::errors::FileAccess);
    EXPECT_EQ(RefusalOf([&] { files->Replace(file, ""); }).number, base::errors::FileAccess);
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(FilesTest, RefusesAFileThatItMayNotRead) {
    const fs::path file = folder.Write("secret", "x");
    fs::permissions(file, fs::perms::none);
    const OrdinaryUser user(folder.Path());
    const Refusal refusal = RefusalOf([&] { files->Read(file); });
    EXPECT_EQ(refusal.number, base::errors::FileAccess);
    ExpectNames(refusal, file, "permission denied");
}

TEST_F(FilesTest, WritesInPlace) {
    files->Write(folder / "a", "long content");
    files->Write(folder / "a", "short");
    EXPECT_EQ(folder.Read("a"), "short");
    EXPECT_EQ(RefusalOf([&] { files->Write(folder / "none/a", ""); }).number, base::errors::PathNotFound);
}

TEST_F(FilesTest, ReplacesAndLeavesNothingBeside) {
    folder.Write("a", "old");
    files->Replace(folder / "a", "new");
    files->Replace(folder / "b", "fresh");
    EXPECT_EQ(folder.Read("a"), "new");
    EXPECT_EQ(folder.Read("b"), "fresh");
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(FilesTest, ReplacesInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    files->Replace("bare", "x");
    fs::current_path(before);
    EXPECT_EQ(folder.Read("bare"), "x");
}

TEST_F(FilesTest, KeepsTheModeOfAReplacedFile) {
    const fs::path file = folder.Write("a", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    files->Replace(file, "new");
    EXPECT_EQ(ModeOf(file), 0640u);
}

TEST_F(FilesTest, KeepsTheOwnerOfAReplacedFileWhereItMay) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the super-user has files of others to replace";
    const fs::path file = folder.Write("a", "old");
    ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
    files->Replace(file, "new");
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 65534u);
    EXPECT_EQ(status.st_gid, 65534u);
}

TEST_F(FilesTest, GivesANewFileTheModeThatTheUserChose) {
    const mode_t before = ::umask(027);
    files->Replace(folder / "a", "x");
    ::umask(before);
    EXPECT_EQ(ModeOf(folder / "a"), 0640u);
}

TEST_F(FilesTest, ReplacesTheFileBehindAChainOfLinks) {
    const fs::path file = folder.Write("real/file", "old");
    fs::create_symlink("real/file", folder / "inner");
    fs::create_symlink(folder / "inner", folder / "outer");
    files->Replace(folder / "outer", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "outer"));
    EXPECT_TRUE(fs::is_symlink(folder / "inner"));
    EXPECT_FALSE(fs::is_symlink(file));
    EXPECT_EQ(folder.Read("real/file"), "new");
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"inner", "outer", "real"}));
}

TEST_F(FilesTest, CreatesTheFileThatALinkLeadsTo) {
    fs::create_symlink("later", folder / "link");
    files->Replace(folder / "link", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(folder.Read("later"), "new");
}

TEST_F(FilesTest, RefusesACircleOfLinks) {
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    const Refusal refusal = RefusalOf([&] { files->Replace(folder / "a", "x"); });
    EXPECT_EQ(refusal.number, base::errors::FileAccess);
    ExpectNames(refusal, folder / "a", "symbolic links");
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(FilesTest, RefusesToReplaceWhereAFolderIsMissing) {
    const Refusal refusal = RefusalOf([&] { files->Replace(folder / "none/a", "x"); });
    EXPECT_EQ(refusal.number, base::errors::PathNotFound);
    ExpectNames(refusal, folder / "none/a", "no such file");
}

TEST_F(FilesTest, DoesNotGetPastAWriteProtection) {
    const fs::path file = folder.Write("a", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    const OrdinaryUser user(folder.Path());
    const Refusal refusal = RefusalOf([&] { files->Replace(file, "new"); });
    EXPECT_EQ(refusal.number, base::errors::FileAccess);
    ExpectNames(refusal, file, "permission denied");
    EXPECT_EQ(folder.Read("a"), "old");
}

TEST_F(FilesTest, LeavesTheFileWholeInAFolderThatItMayNotWrite) {
    const fs::path file = folder.Write("sub/a", "old");
    ASSERT_EQ(::chmod((folder / "sub").c_str(), 0555), 0);
    {
        const OrdinaryUser user(folder.Path());
        EXPECT_EQ(RefusalOf([&] { files->Replace(file, "new"); }).number, base::errors::FileAccess);
    }
    EXPECT_EQ(folder.Read("sub/a"), "old");
}

TEST_F(FilesTest, ReplacesAFileOfTheLongestNameAllowed) {
    const std::string name(255, 'n');
    files->Replace(folder / name, "x");
    EXPECT_EQ(folder.Read(name), "x");
}

TEST_F(FilesTest, PassesOverNewNamesThatAreTaken) {
    // What a killed process left behind stands in the way of the next names.
    files->Replace(folder / "a", "1");
    const std::string start = ".a." + std::to_string(::getpid()) + ".";
    for (int i = 0; i < 60; ++i)
        folder.Write(start + std::to_string(i) + ".new", "left behind");
    const auto before = folder.Names().size();
    files->Replace(folder / "a", "2");
    EXPECT_EQ(folder.Read("a"), "2");
    EXPECT_EQ(folder.Names().size(), before);
}

} // namespace
