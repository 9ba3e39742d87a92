// SPDX-License-Identifier: Apache-2.0
#include "app/Autosave.h"

#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

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

const char* const kChildPath = "ZOV_AUTOSAVE_TEST_LIBRARY";

/// Not a test: the process that the next one kills. Edits until it dies.
TEST(AutosaveChild, DISABLED_EditsUntilKilled)
{
    SRun run(TextPath(qEnvironmentVariable(kChildPath).toStdString()));
    for (;;) {
        run.Add("unsaved");
        QTest::qWait(30);
    }
}

TEST_F(AutosaveTest, KilledAtAnyMomentNothingSavedIsLostAndTheRestIsOffered)
{
    CNullLog log;
    const std::string saved = folder.Read("board.zov");
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(kChildPath), QString::fromStdString(PathText(path)));
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--gtest_also_run_disabled_tests"),
                     QStringLiteral("--gtest_filter=AutosaveChild.*")});
        ASSERT_TRUE(child.waitForStarted());
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return fs::exists(CAutosave::PathOf(path)); }, 30'000));
        QTest::qWait(17 * round); // somewhere in the middle of edits and copies
        child.kill();
        ASSERT_TRUE(child.waitForFinished());

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

} // namespace
} // namespace zov::app
