// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryLock.h"

#include "base/File.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

namespace fs = std::filesystem;

SLockOwner Me()
{
    return MyLockOwner([] { return SLocalTime{2026, 11, 21, 16, 40, 0}; });
}

struct LibraryLockTest : testing::Test
{
    void HeldBy(const SLockOwner& owner) const { folder.Write("a.zov.lock", FormatLock(owner)); }
    bool IsLocked() const { return fs::exists(LockPathOf(library)); }

    test::CTempFolder folder;
    fs::path library = folder.Write("a.zov", "");
};

TEST_F(LibraryLockTest, TellsOthersAndEndsWithItsOwner)
{
    {
        const SLockOutcome first = CLibraryLock::Take(library, Me());
        ASSERT_TRUE(first.lock);
        EXPECT_EQ(ParseLock(folder.Read("a.zov.lock")), Me());
        const SLockOutcome second = CLibraryLock::Take(library, Me());
        EXPECT_FALSE(second.lock);
        EXPECT_EQ(second.holder, Me());
        EXPECT_FALSE(second.mayBeOld) << "it runs on this machine";
        EXPECT_TRUE(first.lock->IsStillMine());
    }
    EXPECT_FALSE(IsLocked());
}

TEST_F(LibraryLockTest, WhoIsGoneLosesItAtOnce)
{
    SLockOwner gone = Me();
    gone.user = "ann";
    ++gone.process.started; // the number was given to another process since
    HeldBy(gone);
    const SLockOutcome outcome = CLibraryLock::Take(library, Me());
    EXPECT_TRUE(outcome.lock);
    EXPECT_EQ(outcome.holder, gone);
}

TEST_F(LibraryLockTest, OtherMachinesAndUnreadableLocksArePassedWhenTheUserSaysSo)
{
    SLockOwner elsewhere = Me();
    elsewhere.host = "another-machine";
    for (const std::string& text : {FormatLock(elsewhere), std::string("garbage\xFF"),
                                    std::string(), std::string(100000, 'x')}) {
        folder.Write("a.zov.lock", text);
        const SLockOutcome polite = CLibraryLock::Take(library, Me());
        EXPECT_FALSE(polite.lock);
        EXPECT_TRUE(polite.holder && polite.mayBeOld);
        const SLockOutcome taken = CLibraryLock::Take(library, Me(), CLibraryLock::ETake::Anyway);
        EXPECT_TRUE(taken.lock);
    }
    EXPECT_FALSE(IsLocked());
}

TEST_F(LibraryLockTest, APassedLockIsLeftToItsNewOwner)
{
    SLockOutcome mine = CLibraryLock::Take(library, Me());
    SLockOwner other = Me();
    other.host = "another-machine";
    HeldBy(other);
    EXPECT_FALSE(mine.lock->IsStillMine());
    mine.lock.reset();
    EXPECT_TRUE(IsLocked());
}

TEST_F(LibraryLockTest, WithoutTheRightToWriteThereIsNoLockAndNoHolder)
{
    const SLockOutcome outcome = CLibraryLock::Take(folder.Path() / "none" / "a.zov", Me());
    EXPECT_FALSE(outcome.lock);
    EXPECT_FALSE(outcome.holder);
}

TEST_F(LibraryLockTest, OwnersAreNamedAsFarAsTheyAreKnown)
{
    EXPECT_EQ(OwnerText({"ann", "desk7", {1, 2}, "2026-11-21 16:40:00"}),
              "ann on desk7 since 2026-11-21 16:40:00");
    EXPECT_EQ(OwnerText({}), "somebody");
    EXPECT_EQ(ParseLock("Zovra lock 2\nuser=x\n"), std::nullopt);
}

} // namespace
} // namespace zov
