// SPDX-License-Identifier: Apache-2.0
#include "base/FileState.h"

#include "base/File.h"
#include "base/Process.h"
#include "support/TempFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>

namespace zov {
namespace {

namespace fs = std::filesystem;

TEST(FileState, NoticesOtherBytesAndNothingElse)
{
    const test::CTempFolder folder;
    const fs::path path = folder.Write("a", "some bytes");
    const CResult<SFileState> before = FileStateOf(path);
    ASSERT_TRUE(before);
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::None);

    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(5));
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::None) << "merely touched";
    ASSERT_TRUE(WriteFileAtomic(path, "some bytes"));
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::None) << "replaced by the same";

    ASSERT_TRUE(WriteFileAtomic(path, "same count"));
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::Changed);
    folder.Write("a", "longer than before");
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::Changed);
    fs::remove(path);
    EXPECT_EQ(ChangeSince(*before, path), EFileChange::Gone);
    EXPECT_EQ(FileStateOf(path).Error().code, EErr::NotFound);
}

TEST(FileState, HashesDifferForEveryByteAndLength)
{
    std::set<std::uint64_t> hashes;
    std::string text(100, '\0');
    for (std::size_t length = 0; length <= text.size(); ++length) {
        hashes.insert(ContentHash(std::string_view(text).substr(0, length)));
    }
    for (char& c : text) {
        c = 'x';
        hashes.insert(ContentHash(text));
    }
    EXPECT_EQ(hashes.size(), 201U);
}

TEST(Process, ThisOneRunsAndALaterOneOfItsNumberIsAnother)
{
    SProcess process = ThisProcess();
    EXPECT_TRUE(MayRun(process));
    EXPECT_FALSE(MayRun({}));
    EXPECT_FALSE(MayRun({std::int64_t{1} << 40U, 0}));
#ifdef __linux__
    ++process.started;
    EXPECT_FALSE(MayRun(process));
#endif
}

} // namespace
} // namespace zov
