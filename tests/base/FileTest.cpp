// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace zov {
namespace {

namespace fs = std::filesystem;
using test::CTempFolder;

std::size_t FilesIn(const fs::path& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

TEST(File, OpensRegularFilesOnly)
{
    const CTempFolder folder;
    EXPECT_EQ(CFileView::Open(folder.Path() / "none").Error().code, EErr::NotFound);
    const auto onFolder = CFileView::Open(folder.Path());
    ASSERT_FALSE(onFolder);
    EXPECT_NE(onFolder.Error().text.find("it is a folder"), std::string::npos)
        << onFolder.Error().text;
    EXPECT_EQ(CFileView::Open(folder.Write("empty", "")).Value().Bytes(), "");
    EXPECT_EQ(CFileView::Open(folder.Write("µ.txt", "abc")).Value().Bytes(), "abc");
    EXPECT_EQ(ReadWholeFile(folder.Path() / "µ.txt", 2).Error().code, EErr::Limit);
#ifndef _WIN32
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(CFileView::Open(folder.Path() / "pipe")); // and does not wait for a writer
#endif
}

TEST(AtomicFile, ReplacesOnCommitOnly)
{
    const CTempFolder folder;
    const fs::path target = folder.Write("lib", "old");
    {
        auto file = CAtomicFile::Create(target);
        ASSERT_TRUE(file);
        (*file)->Append("new");
        EXPECT_EQ(folder.Read("lib"), "old");
    }
    EXPECT_EQ(folder.Read("lib"), "old");
    EXPECT_EQ(FilesIn(folder.Path()), 1U);
    const std::string large(3'000'000, 'x');
    ASSERT_TRUE(WriteFileAtomic(target, large));
    EXPECT_EQ(folder.Read("lib"), large);
    EXPECT_EQ(FilesIn(folder.Path()), 1U);
    EXPECT_FALSE(WriteFileAtomic(folder.Path() / "no such folder" / "lib", "x"));
    EXPECT_FALSE(WriteFileAtomic(folder.Path(), "x"));
}

#ifndef _WIN32

TEST(AtomicFile, KeepsPermissionsAndLinks)
{
    const CTempFolder folder;
    const fs::path target = folder.Write("lib", "old");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("lib", folder.Path() / "link");
    ASSERT_TRUE(WriteFileAtomic(folder.Path() / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
    EXPECT_EQ(folder.Read("lib"), "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

/// A limit on the file size stands in for a full disk: write fails in the middle in the same way.
TEST(AtomicFile, FullDiskLeavesTheOldFile)
{
    const CTempFolder folder;
    const fs::path target = folder.Write("lib", "old");
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1 << 20, 1 << 20};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto result = WriteFileAtomic(target, std::string(5'000'000, 'x'));
        _exit(!result && result.Error().code == EErr::Io ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("lib"), "old");
    EXPECT_EQ(FilesIn(folder.Path()), 1U);
}

/// A writer that is killed at any moment leaves the old file or the new one.
TEST(AtomicFile, KilledWriterLeavesOldOrNew)
{
    const CTempFolder folder;
    const std::string before(200'000, 'o');
    const std::string after(8'000'000, 'n');
    const fs::path target = folder.Write("lib", before);
    int interrupted = 0;
    for (int round = 0; round < 12; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                if (!WriteFileAtomic(target, after)) {
                    _exit(1);
                }
                static_cast<void>(WriteFileAtomic(target, before));
            }
        }
        usleep(static_cast<useconds_t>(3000 + round * 2500));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        interrupted += WIFSIGNALED(status) ? 1 : 0;
        const std::string found = folder.Read("lib");
        EXPECT_TRUE(found == before || found == after)
            << "round " << round << ", " << found.size() << " bytes";
    }
    EXPECT_EQ(interrupted, 12);
}

#endif

} // namespace
} // namespace zov
