// SPDX-License-Identifier: Apache-2.0
#include "MainFrameFixture.h"
#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignFrm.h"
#include "app/editor/RecordEditor.h"
#include "core/LibraryLock.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>

namespace zov::app {
namespace {

TEST_F(MainFrameTest, MenusAreInTheirOrder)
{
    QStringList titles;
    for (const QAction* action : frame.menuBar()->actions()) {
        titles += action->text();
    }
    EXPECT_EQ(titles.join(QLatin1Char(' ')), QStringLiteral("&Library &Edit &View &Tools &Help"));
    QStringList entries;
    for (const QAction* action : frame.menuBar()->actions()[0]->menu()->actions()) {
        entries += action->isSeparator() ? QStringLiteral("-") : action->text();
    }
    EXPECT_EQ(entries.join(QLatin1Char('|')),
              QStringLiteral("&New Library...|&Open Library...|Open &Folder...|Open &Recent|"
                             "&VELDA Library|-|&Save|Sa&ve As...|-|E&xit"));
}

TEST_F(MainFrameTest, OpensAProjectLibraryAndAsksBeforeItIsReplaced)
{
    answers.ThenPath(Text(Library("first", 3)));
    Trigger(ID_FILE_OPEN);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 3);
    EXPECT_TRUE(frame.windowTitle().startsWith(QStringLiteral("first (")));

    const std::filesystem::path second = Library("second", 5);
    answers.Then(ui::EAnswer::No);
    OpenProject(second);
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Cannot open multiple top level Project Libraries.\n"
                             "Replace existing project library with '%1'?")
                  .arg(Text(second)));
    EXPECT_EQ(Models().Model().rowCount(), 3);
    answers.Then(ui::EAnswer::Yes);
    OpenProject(second);
    EXPECT_EQ(Models().Model().rowCount(), 5);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, NewLibrariesAreWrittenAtOnce)
{
    answers.ThenPath(Text(folder.Path() / "board"));
    Trigger(ID_FILE_NEW);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "board.zov"));
    ASSERT_NE(frame.Session().ProjectLibrary(), nullptr);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Name(), "board");
    EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("board"));
    answers.ThenPath(Text(folder.Path() / "parts v1.2"));
    Trigger(ID_NEW_ZOV_LIB_FILE);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "parts v1.2.zov"));
    EXPECT_EQ(Tree().currentIndex().data().toString(), QStringLiteral("parts v1.2"));
}

TEST_F(MainFrameTest, NewLibrariesDontReplaceOpenOnes)
{
    const std::filesystem::path path = Library("project", 3);
    OpenProject(path);
    for (const int command : {ID_FILE_NEW, ID_NEW_ZOV_LIB_FILE}) {
        answers.ThenPath(Text(path)).Then(ui::EAnswer::Ok);
        Trigger(command);
        WaitIdle();
        ASSERT_FALSE(answers.Shown().empty());
        EXPECT_TRUE(
            answers.Shown().back().text.contains(QStringLiteral("is open as another library")));
        ASSERT_NE(frame.Session().ProjectLibrary(), nullptr);
        EXPECT_EQ(frame.Session().ProjectLibrary()->Count(), 3U);
    }
    EXPECT_GT(std::filesystem::file_size(path), 3U * 20U) << "the models are still in the file";
}

TEST_F(MainFrameTest, ExternalLibrariesAreArrangedInCollections)
{
    OpenProject(Library("project", 1));
    Trigger(ID_CREATE_NEW_LIB_SET);
    QTest::keyClick(&Tree(), Qt::Key_Escape);
    const auto collections = frame.Session().Tree().Collections();
    ASSERT_EQ(collections.size(), 1U);
    EXPECT_EQ(collections[0].second, "New_Collection");

    answers.ThenPaths({Text(Library("a", 2)), Text(Library("b", 4))});
    Trigger(ID_IMPORT_LIB_FILE);
    WaitIdle();
    EXPECT_EQ(frame.Session().Tree().LibrariesOf(collections[0].first).size(), 2U)
        << "into the selected collection";
    const QModelIndex collection = Tree().model()->index(1, 0);
    Tree().setCurrentIndex(collection);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 6) << "the models of all its libraries";
    EXPECT_FALSE(IsEnabled(ID_EXPLORE_LIB));
    EXPECT_TRUE(IsEnabled(ID_RENAME_LIB_SET));

    Tree().setCurrentIndex(Tree().model()->index(1, 0, collection));
    EXPECT_TRUE(IsEnabled(ID_LIB_MOVE_UP));
    EXPECT_FALSE(IsEnabled(ID_LIB_MOVE_DOWN));
    Trigger(ID_LIB_MOVE_UP);
    EXPECT_EQ(frame.Session().Set().Externals()[0].path.stem(), "b");
    EXPECT_FALSE(IsEnabled(ID_LIB_MOVE_UP)) << "it is at the top and still selected";

    answers.Then(ui::EAnswer::No);
    Trigger(ID_REMOVE_LIB);
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Remove the selected libraries or library collections?"));
    EXPECT_EQ(frame.Session().Set().Externals().size(), 2U);
    answers.Then(ui::EAnswer::Yes);
    Trigger(ID_REMOVE_LIB);
    EXPECT_EQ(frame.Session().Set().Externals().size(), 1U);
}

TEST_F(MainFrameTest, DeletedModelsAreSavedWhenTheUserSaysSo)
{
    const std::filesystem::path path = Library("project", 10);
    OpenProject(path);
    EXPECT_FALSE(IsEnabled(ID_FILE_SAVE));
    EXPECT_FALSE(IsEnabled(ID_DELETE_MODELS));
    Models().Table().selectRow(3);
    EXPECT_TRUE(IsEnabled(ID_DELETE_MODELS));
    answers.Then(ui::EAnswer::Yes);
    Trigger(ID_DELETE_MODELS);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 9);
    EXPECT_TRUE(frame.isWindowModified());
    EXPECT_TRUE(IsEnabled(ID_EDIT_UNDO));
    EXPECT_EQ(frame.Actions().Action(ID_EDIT_UNDO)->text(), QStringLiteral("&Undo Delete Model"));
    Trigger(ID_EDIT_UNDO);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 10);
    EXPECT_FALSE(frame.isWindowModified());
    Trigger(ID_EDIT_REDO);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 9);

    answers.Then(ui::EAnswer::Cancel);
    EXPECT_FALSE(frame.close()) << "modified: the user is asked";
    Trigger(ID_FILE_SAVE);
    EXPECT_FALSE(IsEnabled(ID_FILE_SAVE));
    auto* output = frame.findChild<QPlainTextEdit*>(QStringLiteral("Output"));
    const QString told = QStringLiteral("'project' was saved to '%1'.").arg(Text(path));
    EXPECT_TRUE(QTest::qWaitFor([&] { return output->toPlainText().contains(told); }));
    EXPECT_TRUE(frame.close());
    CNullLog log;
    EXPECT_EQ(LoadLibrary(path, {}, log)->Count(), 9U);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, TheEditorFollowsTheSelectionAndKeepsItWhileChangesAreUnsettled)
{
    OpenProject(Library("project", 3));
    auto* editor = frame.findChild<CRecordEditor*>();
    EXPECT_TRUE(editor->Records().empty());
    Models().Table().selectRow(1);
    ASSERT_EQ(editor->Records().size(), 1U);
    const CZovRcdProps* edited = editor->Records().front();
    auto* maker = editor->PageOf("General")->findChild<QLineEdit*>(QStringLiteral("ui_IDC_Manuf"));
    QTest::keyClicks(maker, QStringLiteral("Norvik"));
    EXPECT_TRUE(IsEnabled(ID_FILE_SAVE));
    answers.Then(ui::EAnswer::Cancel);
    Models().Table().selectRow(2);
    EXPECT_EQ(editor->Records().front(), edited);
    EXPECT_EQ(Models().Selected(), editor->Records()) << "the list goes back to it";
    answers.Then(ui::EAnswer::Yes);
    Models().Table().selectRow(2);
    WaitIdle();
    EXPECT_EQ(edited->GetString(EPropId::Manuf), "Norvik");
    EXPECT_EQ(editor->Records(), Models().Selected());
    EXPECT_NE(editor->Records().front(), edited);
    Trigger(ID_EDIT_UNDO);
    WaitIdle();
    EXPECT_FALSE(edited->Has(EPropId::Manuf));
    EXPECT_EQ(editor->Records(), Models().Selected()) << "the selection outlives the edit";

    answers.ThenDialog([](QDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_Manuf")),
                         QStringLiteral("Tesal"));
        dialog.accept();
    });
    Trigger(ID_EDIT_MODELS);
    EXPECT_EQ(editor->Records().front()->GetString(EPropId::Manuf), "Tesal");
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, ModelsAreAddedCopiedAndMovedAndColumnsChosen)
{
    OpenProject(Library("project", 2));
    answers.ThenDialog([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_NAME"))
            ->setText(QStringLiteral("mine"));
        dialog.accept();
    });
    Trigger(ID_ADD_MODEL);
    WaitIdle();
    ASSERT_EQ(Models().Selected().size(), 1U);
    EXPECT_EQ(Models().Selected().front()->Name(), "mine") << "the new one is selected";

    answers.ThenPaths({Text(Library("other", 1))});
    Trigger(ID_IMPORT_LIB_FILE);
    WaitIdle();
    Models().Table().selectRow(2);
    answers.ThenDialog([](QDialog& dialog) {
        dialog.findChild<QCheckBox*>(QStringLiteral("ui_IDC_MOVE"))->setChecked(true);
        dialog.accept();
    });
    Trigger(ID_COPY_TO_LIBRARY);
    WaitIdle();
    EXPECT_EQ(frame.Session().ProjectLibrary()->Count(), 2U);
    EXPECT_EQ(frame.Session().Set().Externals().front().library->At(1).Name(), "mine");
    EXPECT_EQ(frame.Session().ModifiedLibraries().size(), 2U);

    answers.ThenDialog([](QDialog& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_ALL"))->click();
        dialog.accept();
    });
    Trigger(ID_MANAGE_COLUMNS);
    EXPECT_FALSE(Models().Table().isColumnHidden(Models().Model().columnCount() - 1));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, WhatABadEndLeftIsOffered)
{
    struct
    {
        ui::EAnswer answer;
        int rows;
        bool copyStays;
    } const cases[] = {
        {ui::EAnswer::Cancel, 2, true}, {ui::EAnswer::Yes, 5, true}, {ui::EAnswer::No, 2, false}};
    for (const auto& test : cases) {
        const std::filesystem::path path = Library("project", 2);
        const std::filesystem::path copy = folder.Path() / ".project.zov.autosave";
        std::filesystem::copy(Library("unsaved", 5), copy,
                              std::filesystem::copy_options::overwrite_existing);
        CZovMainFrm another(layout, store, [](const char*) { return std::nullopt; });
        answers.Then(test.answer);
        another.Open(Text(path));
        auto& list = *another.findChild<CModelListView*>(QStringLiteral("Models"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return list.Model().rowCount() == test.rows; }));
        EXPECT_TRUE(
            answers.Shown().back().text.startsWith(QStringLiteral("'project' holds changes of ")));
        EXPECT_EQ(std::filesystem::exists(copy), test.copyStays);
    }
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, PagesPanesAndThemesSwitch)
{
    auto* pages = frame.findChild<QStackedWidget*>(QStringLiteral("Pages"));
    for (const unsigned page : {ID_NAV_PAGE_SEARCH, ID_NAV_PAGE_EXT_LIBS, ID_NAV_PAGE_PROJECT}) {
        Trigger(page);
        EXPECT_TRUE(frame.Actions().Action(page)->isChecked());
    }
    EXPECT_EQ(pages->currentIndex(), 0);
    frame.show();
    auto* output = frame.findChild<QDockWidget*>(QStringLiteral("OutputPane"));
    EXPECT_TRUE(output->isVisible());
    Trigger(ID_VIEW_PANE_OUTPUT);
    EXPECT_FALSE(output->isVisible());
    EXPECT_FALSE(frame.Actions().Action(ID_VIEW_PANE_OUTPUT)->isChecked());
    Trigger(ID_THEME_DARK);
    const QColor dark = frame.palette().color(QPalette::Window);
    Trigger(ID_THEME_LIGHT);
    EXPECT_GT(frame.palette().color(QPalette::Window).lightness(), dark.lightness());
    Trigger(ID_THEME_DARK);
    const QSettings stored(Text(folder.Path() / "layout.ini"), QSettings::IniFormat);
    EXPECT_TRUE(stored.value(QStringLiteral("MainFrame/DarkTheme")).toBool()) << "at once";
    Trigger(ID_THEME_LIGHT);
}

TEST_F(MainFrameTest, WhatCannotBeOpenedIsTold)
{
    folder.Write("bad.zov", "no library at all");
    OpenProject(folder.Path() / "bad.zov");
    OpenProject(folder.Path() / "absent.zov");
    ASSERT_EQ(answers.Shown().size(), 2U);
    EXPECT_TRUE(answers.Shown()[0].text.contains(QStringLiteral("bad.zov")));
    EXPECT_TRUE(answers.Shown()[1].text.contains(QStringLiteral("absent.zov")));
    EXPECT_EQ(frame.Session().ProjectLibrary(), nullptr);
}

TEST_F(MainFrameTest, WhatAnotherProgramWroteIsNotOverwrittenUnasked)
{
    const std::filesystem::path path = Library("project", 3);
    OpenProject(path);
    EXPECT_TRUE(std::filesystem::exists(LockPathOf(path)));
    const auto deleteFirst = [&] {
        Models().Table().selectRow(0);
        answers.Then(ui::EAnswer::Yes);
        Trigger(ID_DELETE_MODELS);
        WaitIdle();
    };
    deleteFirst();
    ASSERT_TRUE(WriteFileAtomic(path, "of another program"));
    Trigger(ID_FILE_SAVE);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("changed by another program")));
    EXPECT_EQ(answers.Unexpected(), 1) << "a question came, and cancelling it saves nothing";
    EXPECT_EQ(folder.Read("project.zov"), "of another program");

    answers.ThenChoice(QStringLiteral("Save As...")).ThenPath(Text(folder.Path() / "mine.zov"));
    Trigger(ID_FILE_SAVE);
    EXPECT_EQ(folder.Read("project.zov"), "of another program");
    EXPECT_EQ(frame.Session().ProjectLibrary()->Path(), folder.Path() / "mine.zov");
    EXPECT_FALSE(std::filesystem::exists(LockPathOf(path)));

    deleteFirst();
    Library("mine", 9);
    answers.ThenChoice(QStringLiteral("Reload"));
    Trigger(ID_FILE_SAVE);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 9);
    EXPECT_FALSE(IsEnabled(ID_FILE_SAVE));

    deleteFirst();
    Library("mine", 4);
    answers.ThenChoice(QStringLiteral("Overwrite"));
    Trigger(ID_FILE_SAVE);
    CNullLog log;
    EXPECT_EQ(LoadLibrary(folder.Path() / "mine.zov", {}, log)->Count(), 8U);
    EXPECT_EQ(answers.Unexpected(), 1);
}

TEST_F(MainFrameTest, ALibraryThatSomebodyHasForWritingIsToldAndPassed)
{
    const std::filesystem::path path = Library("project", 3);
    SLockOwner owner = MyLockOwner();
    owner.user = "ann";
    owner.host = "another-machine";
    folder.Write("project.zov.lock", FormatLock(owner));
    answers.Then(ui::EAnswer::No);
    OpenProject(path);
    QCoreApplication::processEvents();
    EXPECT_TRUE(answers.Shown().back().text.startsWith(
        QStringLiteral("'project' is opened for writing by ann on another-machine since ")));
    EXPECT_EQ(Models().Model().rowCount(), 3) << "it can be read";
    EXPECT_EQ(ParseLock(folder.Read("project.zov.lock")), owner);

    Models().Table().selectRow(0);
    answers.Then(ui::EAnswer::Yes).ThenChoice(QStringLiteral("Overwrite"));
    Trigger(ID_DELETE_MODELS);
    WaitIdle();
    Trigger(ID_FILE_SAVE);
    EXPECT_EQ(ParseLock(folder.Read("project.zov.lock"))->user, MyLockOwner().user);
    EXPECT_FALSE(IsEnabled(ID_FILE_SAVE));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(MainFrameTest, TheAssignmentFrameWorksOnTheSameLibraries)
{
    frame.show();
    OpenProject(Library("board", 3));
    Trigger(ID_TOOLS_ASSIGN);
    CAssignFrm* assign = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        assign = assign == nullptr ? qobject_cast<CAssignFrm*>(window) : assign;
    }
    ASSERT_NE(assign, nullptr);
    EXPECT_TRUE(assign->isVisible());
    frame.hide();
    assign->Actions().Action(ID_VIEW_ZVMGR)->trigger();
    EXPECT_TRUE(frame.isVisible());
    assign->View().SetDesign({{{"board1", {"R1"}, "", ERecordType::Any, false, false}}},
                             QStringLiteral("host"), {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !assign->View().IsBusy(); }));
    EXPECT_EQ(assign->View().Table()->Rows()[0]->assigned.size(), 1U);
    EXPECT_TRUE(frame.close());
    EXPECT_FALSE(assign->isVisible()) << "it ends with the library manager";
}

} // namespace
} // namespace zov::app
