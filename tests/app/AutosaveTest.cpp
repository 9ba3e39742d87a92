// SPDX-License-Identifier: Apache-2.0
#include "app/Autosave.h"

#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/KilledChild.h"
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

using test::CKilledChild;

struct CYes final : CQuestions
{
    bool YesNo(std::string_view /*text*/) override { return true; }
};

/// A run of the program on one project library.
struct SRun
{
    explicit SRun(const fs::path& path)
    {
        QObject::connect(
            &autosave, &CAutosave::Offered, &autosave,
            [this](const CZovSession::TLibrary&, const QString& text) { offers += text; });
        session.OpenProject(path, questions);
        EXPECT_TRUE(QTest::qWaitFor([&] { return session.ProjectLibrary() != nullptr; }));
        QCoreApplication::processEvents();
        library = session.ProjectLibrary();
    }
    void Add(const char* name)
    {
        CLibraryChange change(library);
        change.Insert(ERecordType::Ic).SetString(EPropId::ModelName, name);
        session.Edits().Apply(change, QStringLiteral("Add"));
    }
    CMemorySettings store;
    CNullLog log;
    CYes questions;
    CZovSession session{store, log, [](const char*) { return std::nullopt; }};
    CAutosave autosave{session, 20};
    CZovSession::TLibrary library;
    QStringList offers;
};

struct AutosaveTest : testing::Test
{
    AutosaveTest()
    {
        CZovLibrary library;
        library.Add(ERecordType::Ic).SetString(EPropId::ModelName, "saved");
        CNullLog log;
        EXPECT_TRUE(SaveLibrary(library, path, {}, log).Ok());
    }
    bool CopyComes() const
    {
        return QTest::qWaitFor([this] { return fs::exists(CAutosave::PathOf(path)); });
    }
    QString Folder() const { return QString::fromStdString(PathText(folder.Path())); }
    test::CTempFolder folder;
    fs::path path = folder.Path() / "board.zov";
};

TEST_F(AutosaveTest, TheCopyComesAfterAnEditAndGoesWithTheNeed)
{
    EXPECT_EQ(CAutosave::PathOf(path).filename(), ".board.zov.autosave");
    const fs::path copy = CAutosave::PathOf(path);
    {
        SRun run(path);
        EXPECT_TRUE(run.offers.isEmpty());
        run.Add("new");
        ASSERT_TRUE(CopyComes());
        EXPECT_EQ(CAutosave::Read(copy)->Count(), 2U);
        run.session.Edits().Undo();
        EXPECT_FALSE(fs::exists(copy)) << "undone to what was saved";
        run.session.Edits().Redo();
        ASSERT_TRUE(CopyComes());
        EXPECT_TRUE(run.session.Save(run.library).Ok());
        EXPECT_FALSE(fs::exists(copy));
        run.Add("more");
        ASSERT_TRUE(CopyComes());
        run.autosave.Close();
        EXPECT_FALSE(fs::exists(copy)) << "the user left it unsaved on purpose";
    }
    CNullLog log;
    EXPECT_EQ(LoadLibrary(path, {}, log)->Count(), 2U);
}

TEST_F(AutosaveTest, EditsOneAfterTheOtherEndInTheLastState)
{
    SRun run(path);
    for (int i = 0; i < 60; ++i) {
        run.Add("x");
        QTest::qWait(i % 7);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] {
        const CResult<CZovLibrary> copy = CAutosave::Read(CAutosave::PathOf(path));
        return copy && copy->Count() == 61;
    }));
    run.autosave.Close();
}

TEST_F(AutosaveTest, ABrokenCopyIsToldAndChangesNothing)
{
    folder.Write(".board.zov.autosave", "no library");
    SRun run(path);
    ASSERT_EQ(run.offers.size(), 1);
    QSignalSpy failed(&run.session, &CZovSession::Failed);
    run.autosave.Restore(run.library);
    ASSERT_TRUE(QTest::qWaitFor([&] { return failed.count() == 1; }));
    EXPECT_EQ(run.library->Count(), 1U);
    EXPECT_TRUE(fs::exists(CAutosave::PathOf(path))) << "who can repair it still has it";
    run.autosave.Discard(run.library);
    EXPECT_FALSE(fs::exists(CAutosave::PathOf(path)));
}

/// Not a test: the process that the next one kills. Edits until it dies.
TEST(AutosaveChild, DISABLED_EditsUntilKilled)
{
    const fs::path folder = TextPath(CKilledChild::Folder().toStdString());
    SRun run(folder / "board.zov");
    for (;;) {
        run.Add("unsaved");
        QTest::qWait(30);
    }
}

TEST_F(AutosaveTest, KilledAtAnyMomentNothingSavedIsLostAndTheRestIsOffered)
{
    const std::string saved = folder.Read("board.zov");
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        CKilledChild child("AutosaveChild.DISABLED_Edits*", Folder());
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return fs::exists(CAutosave::PathOf(path)); }, 30'000));
        QTest::qWait(17 * round); // somewhere in the middle of edits and copies
        child.Kill();

        EXPECT_EQ(folder.Read("board.zov"), saved);
        SRun run(path);
        ASSERT_EQ(run.offers.size(), 1);
        EXPECT_TRUE(run.offers.front().startsWith(QStringLiteral("'board' holds changes of ")));
        run.autosave.Restore(run.library);
        ASSERT_TRUE(QTest::qWaitFor([&] { return run.library->Count() > 1; }));
        EXPECT_EQ(run.library->At(0).Name(), "saved");
        EXPECT_EQ(run.library->At(run.library->Count() - 1).Name(), "unsaved");
        EXPECT_EQ(run.session.Edits().UndoText(), QStringLiteral("Restore Unsaved Changes"));
        EXPECT_TRUE(run.session.IsModified(*run.library));
        run.session.Edits().Undo();
        EXPECT_EQ(run.library->Count(), 1U);
        run.autosave.Close();
        EXPECT_FALSE(fs::exists(CAutosave::PathOf(path)));
    }
}

/// Not a test. Adds a record and saves, again and again; the library is large enough for a save
/// to take its time. Each second edit is left to the next one's save, so that copies come and go.
TEST(AutosaveChild, DISABLED_SavesUntilKilled)
{
    const fs::path folder = TextPath(CKilledChild::Folder().toStdString());
    SRun run(folder / "board.zov");
    for (;;) {
        run.Add("more");
        QTest::qWait(25);
        run.Add("more");
        if (run.session.Save(run.library)) {
            CKilledChild::Say("saved");
        }
    }
}

TEST_F(AutosaveTest, KilledWhileItSavesTheFileIsTheOldOneOrTheNewOne)
{
    constexpr std::size_t kLarge = 20'000;
    CZovLibrary large;
    for (std::size_t i = 0; i < kLarge; ++i) {
        large.Add(ERecordType::Ic).SetString(EPropId::ModelName, "saved" + std::to_string(i));
    }
    CNullLog log;
    ASSERT_TRUE(SaveLibrary(large, path, {}, log).Ok());
    for (int round = 0; round < 4; ++round) {
        SCOPED_TRACE(round);
        const std::size_t before = LoadLibrary(path, {}, log)->Count();
        CKilledChild child("AutosaveChild.DISABLED_Saves*", Folder());
        ASSERT_TRUE(child.WaitFor("saved"));
        QTest::qWait(13 * round + 3);
        child.Kill();

        const CResult<CZovLibrary> found = LoadLibrary(path, {}, log);
        ASSERT_TRUE(found.Ok()) << found.Error().Full();
        const auto told = static_cast<std::size_t>(child.Count("saved"));
        EXPECT_GE(found->Count(), before + 2 * told) << "what was saved is there";
        EXPECT_LE(found->Count(), before + 2 * told + 2)
            << "and at most the save that was under way";
        EXPECT_EQ(found->Count() % 2, 0U) << "whole: two records a save";
        EXPECT_EQ(found->At(0).Name(), "saved0");
        EXPECT_EQ(found->At(found->Count() - 1).Name(), "more");
        SRun run(path); // a copy that is left is of a state that was not saved; it can be had
        if (!run.offers.isEmpty()) {
            run.autosave.Restore(run.library);
            ASSERT_TRUE(QTest::qWaitFor([&] {
                return run.session.IsModified(*run.library) || !fs::exists(CAutosave::PathOf(path));
            }));
            const bool isOld = run.offers.front().contains(QStringLiteral("written later"));
            EXPECT_TRUE(isOld || run.library->Count() >= found->Count());
            if (isOld) { // killed between the save and the end of the copy
                run.session.Edits().Undo();
                EXPECT_EQ(run.library->Count(), found->Count());
            }
        }
        run.autosave.Close();
    }
}

TEST_F(AutosaveTest, SeveralLibrariesAreRestoredOneAfterTheOther)
{
    const fs::path second = folder.Path() / "second.zov";
    fs::copy_file(path, second);
    for (const fs::path& one : {path, second}) {
        CKilledChild child("AutosaveChild.DISABLED_Edits*", Folder());
        ASSERT_TRUE(QTest::qWaitFor([&] { return fs::exists(CAutosave::PathOf(path)); }, 30'000));
        child.Kill();
        if (one == path) { // the child knows one name only
            fs::rename(CAutosave::PathOf(path), CAutosave::PathOf(second));
        }
    }
    SRun run(path);
    run.session.AddExternals({second}, CLibraryTree::kRoot);
    ASSERT_TRUE(QTest::qWaitFor([&] { return run.offers.size() == 2; }));
    const CZovSession::TLibrary other = run.session.Set().Externals().front().library;
    run.autosave.Restore(run.library);
    run.autosave.Restore(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return run.library->Count() > 1 && other->Count() > 1; }));
    run.autosave.Close();
}

} // namespace
} // namespace zov::app
