// SPDX-License-Identifier: Apache-2.0
// Each command of the table is triggered once and its effect seen; those that have a test of their
// own are named in docs/desktop.md.
#include "MainFrameFixture.h"
#include "app/manager/ExternalLibsPane.h"
#include "app/manager/ToolWindows.h"
#include "app/manager/ZovWorkflow.h"
#include "support/SourcePaths.h"
#include "ui/UiDialog.h"
#include "ui/replay/ReplayBar.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace zov::app {
namespace {

struct CommandsTest : MainFrameTest
{
    template <class Widget>
    Widget& At(const char* name)
    {
        auto* widget = frame.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }
    CLibraryTree::TNode SelectProject()
    {
        const CLibraryTree::TNode node =
            frame.Session().Tree().Find(*frame.Session().ProjectLibrary());
        Tree().setCurrentIndex(Tree().model()->index(0, 0));
        return node;
    }
};

TEST_F(CommandsTest, EveryCommandHasOneHandler)
{
    std::set<unsigned> ids;
    std::set<std::string> names;
    for (const ui::SCommand& command : MainCommands()) {
        EXPECT_TRUE(ids.insert(command.id).second) << command.name;
        EXPECT_TRUE(names.insert(command.name).second) << command.name;
        const bool isMenu = command.id == ID_LIB_MOVE_TO; // a menu of collections
        EXPECT_EQ(frame.FindTarget(command.id) != nullptr, !isMenu) << command.name;
    }
}

/// Every handler stands in the table of the documents, with tests that are there.
TEST_F(CommandsTest, TheDocumentsNameATestForEachCommand)
{
    const auto readAll = [](const std::string& path) {
        std::ifstream in(test::SourceFolder() + path);
        return std::string{std::istreambuf_iterator<char>(in), {}};
    };
    const std::string documents = readAll("/docs/desktop.md");
    std::string tests;
    for (const char* file : {"Commands", "MainFrame", "Options", "Story", "ToolWindows"}) {
        tests += readAll(std::string("/tests/app/manager/") + file + "Test.cpp");
    }
    ASSERT_FALSE(tests.empty());
    std::size_t rows = 0;
    for (const ui::SCommand& command : MainCommands()) {
        const std::size_t at = documents.find('`' + std::string(command.name) + '`');
        ASSERT_NE(at, std::string::npos) << command.name;
        const std::string line = documents.substr(at, documents.find('\n', at) - at);
        const std::size_t cell = line.rfind("| ", line.size() - 3) + 2;
        const std::string named = line.substr(cell, line.size() - 2 - cell);
        EXPECT_NE(tests.find(", " + named + ")"), std::string::npos) << line;
        ++rows;
    }
    EXPECT_EQ(rows, MainCommands().size());
}

TEST_F(CommandsTest, EnabledStatesFollowTheSelection)
{
    const std::set<unsigned> ofLibrary = {ID_ARCHIVE_LIB, ID_EXPLORE_LIB, ID_EXPORT_LIB,
                                          ID_REMOVE_LIB, ID_REFRESH_ZOV_LIB};
    const std::set<unsigned> ofModels = {ID_COPY_TO_LIBRARY, ID_DELETE_MODELS, ID_EDIT_MODELS,
                                         ID_SHOW_IMPEDANCE, ID_OPEN_MODEL_FILE};
    const std::set<unsigned> ofProject = {
        ID_FILE_SAVE_AS, ID_ADD_MODEL, ID_ADD_IC,        ID_ADD_CAPACITOR, ID_ADD_INDUCTOR,
        ID_ADD_RESISTOR, ID_ADD_VRM,   ID_ADD_CONNECTOR, ID_ADD_PACKAGE,   ID_ADD_SPICE};
    const std::set<unsigned> ofTree = {ID_EXPAND_ALL, ID_COLLAPSE_ALL};
    const std::set<unsigned> ofPlace = {ID_LIB_MOVE_UP, ID_LIB_MOVE_DOWN, ID_RENAME_LIB_SET};
    const std::set<unsigned> ofWork = {ID_FILE_SAVE,        ID_EDIT_UNDO,          ID_EDIT_REDO,
                                       ID_OPEN_UNREACHABLE, ID_FORGET_UNREACHABLE, ID_LIB_MOVE_TO};
    const auto expectOnly = [&](const char* when, std::initializer_list<std::set<unsigned>> sets) {
        frame.OnIdleUpdateCmdUI();
        std::set<unsigned> expected;
        for (const std::set<unsigned>& set : sets) {
            expected.insert(set.begin(), set.end());
        }
        for (const auto* set : {&ofLibrary, &ofModels, &ofProject, &ofTree, &ofPlace, &ofWork}) {
            for (const unsigned command : *set) {
                const QAction& action = *frame.Actions().Action(command);
                EXPECT_EQ(action.isEnabled(), expected.contains(command))
                    << when << ": " << action.objectName().toStdString();
            }
        }
    };
    expectOnly("nothing is open", {});
    OpenProject(Library("project", 3));
    expectOnly("a project", {ofProject, ofTree});
    Models().Table().selectRow(0);
    expectOnly("a model", {ofProject, ofTree, ofModels});
    SelectProject();
    WaitIdle();
    Models().Table().clearSelection();
    expectOnly("the project in the tree", {ofProject, ofTree, ofLibrary});
    frame.Session().AddCollection(CLibraryTree::kRoot, "first");
    frame.Session().AddCollection(CLibraryTree::kRoot, "last");
    Tree().setCurrentIndex(Tree().model()->index(1, 0));
    expectOnly("a collection",
               {ofProject, ofTree, {ID_REMOVE_LIB, ID_LIB_MOVE_DOWN, ID_RENAME_LIB_SET}});
    Tree().setCurrentIndex(Tree().model()->index(2, 0));
    expectOnly("the last one",
               {ofProject, ofTree, {ID_REMOVE_LIB, ID_LIB_MOVE_UP, ID_RENAME_LIB_SET}});
    // What is always possible.
    for (const unsigned command :
         {ID_FILE_NEW, ID_FILE_OPEN, ID_FILE_OPEN_FOLDER, ID_ZOV_FRM_EXIT, ID_VELDA_LIBRARY,
          ID_TOOLS_OPTIONS, ID_APP_HELP, ID_APP_ABOUT, ID_IMPORT_LIB_FILE, ID_IMPORT_FROM_FOLDER,
          ID_IMPORT_PREF_FILE, ID_NEW_ZOV_LIB_FILE, ID_CREATE_NEW_LIB_SET}) {
        EXPECT_TRUE(frame.Actions().Action(command)->isEnabled()) << command;
    }
    Trigger(ID_NAV_PAGE_OPTIONS);
    EXPECT_FALSE(IsEnabled(ID_MANAGE_COLUMNS)) << "no list is shown";
}

TEST_F(CommandsTest, AFolderIsOpenedAndALibrarySavedElsewhere)
{
    folder.Write("board/board.txt", "");
    std::filesystem::copy(Library("plain", 2), folder.Path() / "board" / "board.zov");
    answers.ThenPath(Text(folder.Path() / "board"));
    Trigger(ID_FILE_OPEN_FOLDER);
    WaitIdle();
    ASSERT_NE(frame.Session().ProjectLibrary(), nullptr);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Name(), "board");

    answers.ThenPath(Text(folder.Path() / "other.zov"));
    Trigger(ID_FILE_SAVE_AS);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Name(), "other");
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "other.zov"));
    frame.show();
    Trigger(ID_ZOV_FRM_EXIT);
    EXPECT_FALSE(frame.isVisible());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, BarsAndPanesComeAndGo)
{
    frame.show();
    const std::pair<unsigned, const char*> panes[] = {
        {ID_VIEW_PANE_LIBRARIES, "OpenedLibraries"},
        {ID_VIEW_PANE_EDITOR, "EditorPane"},
        {ID_VIEW_PANE_WORKFLOW, "ZOVWorkflow"},
        {ID_VIEW_PANE_OUTPUT, "OutputPane"},
    };
    for (const auto& [command, name] : panes) {
        EXPECT_TRUE(IsEnabled(command));
        EXPECT_TRUE(frame.Actions().Action(command)->isChecked()) << name;
        Trigger(command);
        EXPECT_FALSE(At<QDockWidget>(name).isVisible()) << name;
        EXPECT_FALSE(frame.Actions().Action(command)->isChecked()) << name;
        Trigger(command);
        EXPECT_TRUE(At<QDockWidget>(name).isVisible()) << name;
    }
    // It stands behind the workflow: the first click brings it to the front.
    auto& external = At<QDockWidget>("ExternalLibrariesPane");
    QTest::qWait(1);
    Trigger(ID_VIEW_PANE_EXTERNAL);
    EXPECT_FALSE(external.isHidden());
    QTest::qWait(1);
    EXPECT_FALSE(external.visibleRegion().isEmpty());
    Trigger(ID_VIEW_PANE_EXTERNAL);
    EXPECT_TRUE(external.isHidden());

    Trigger(ID_VIEW_TOOLBAR_MAIN);
    EXPECT_FALSE(At<QToolBar>("ZovMain").isVisible());
    Trigger(ID_ZOV_EVENT_REPLAY);
    EXPECT_TRUE(frame.ReplayBar().isVisible());
    Trigger(ID_ZOV_EVENT_REPLAY);
    EXPECT_FALSE(frame.ReplayBar().isVisible());
    Trigger(ID_NAV_PAGE_SEARCH);
    EXPECT_FALSE(frame.Actions().Action(ID_VIEW_PANE_MODELS)->isChecked());
    Trigger(ID_VIEW_PANE_MODELS);
    EXPECT_TRUE(Models().isVisible()) << "it comes to the front";
    EXPECT_EQ(At<QDockWidget>("ModelsPane").windowTitle(), QStringLiteral("Models"));
    Trigger(ID_VIEW_PANE_MODELS);
    EXPECT_FALSE(Models().isVisible());
    Trigger(ID_VIEW_PANE_MODELS);
    EXPECT_TRUE(Models().isVisible());
}

TEST_F(CommandsTest, LibrariesOfTheTreeAreArchivedExportedAndShownInTheirFolder)
{
    OpenProject(Library("project", 3));
    SelectProject();
    answers.ThenPath(Text(folder.Path() / "kept.zip"));
    Trigger(ID_ARCHIVE_LIB);
    EXPECT_EQ(folder.Read("kept.zip").substr(0, 2), "PK");
    answers.ThenPath(Text(folder.Path() / "out.zovx"));
    Trigger(ID_EXPORT_LIB);
    EXPECT_NE(folder.Read("out.zovx").find("<ZOV_Lib"), std::string::npos);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Name(), "project") << "its own file stays";

    Trigger(ID_EXPLORE_LIB);
    EXPECT_EQ(answers.Shown().back().text, Text(folder.Path()));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, AnArchiveWithMissingFilesIsMadeWhenTheUserSaysSo)
{
    CZovLibrary library;
    CZovRcdProps& record = library.Add(ERecordType::Capacitor);
    record.SetString(EPropId::ModelName, "c");
    SDiscreteModel model;
    model.isCircuit = true;
    model.cktDef = "gone.s2p";
    record.SetDiscreteModel(model);
    CNullLog log;
    ASSERT_TRUE(zov::SaveLibrary(library, folder.Path() / "p.zov", {}, log));
    OpenProject(folder.Path() / "p.zov");
    SelectProject();
    answers.Then(ui::EAnswer::No);
    Trigger(ID_ARCHIVE_LIB);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("gone.s2p (model c)")));
    answers.Then(ui::EAnswer::Yes).ThenPath(Text(folder.Path() / "kept.zip"));
    Trigger(ID_ARCHIVE_LIB);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "kept.zip"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, ExternalLibrariesComeFromFoldersPreferencesAndTheAddDialog)
{
    Library("one", 1);
    Library("two", 2);
    folder.Write("kept.zovp", "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n<ZOVP Version = "
                              "\"1.0\">\n<Library>\n<Lib Path=\"two.zov\" On=\"NO\"/>\n"
                              "</Library>\n</ZOVP>\n");
    const auto& externals = frame.Session().Set().Externals();
    answers.ThenPath(Text(folder.Path() / "kept.zovp"));
    Trigger(ID_IMPORT_PREF_FILE);
    WaitIdle();
    ASSERT_EQ(externals.size(), 1U);
    EXPECT_FALSE(externals[0].on) << "as the file says";
    answers.ThenPath(Text(folder.Path()));
    Trigger(ID_IMPORT_FROM_FOLDER);
    WaitIdle();
    EXPECT_EQ(externals.size(), 2U);

    answers.ThenDialog([&](QDialog& dialog) {
        auto& file = *dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_FILE"));
        file.setText(Text(Library("three", 3)));
        dialog.accept();
    });
    Trigger(ID_ADD_LIB);
    WaitIdle();
    EXPECT_EQ(externals.size(), 3U);
    auto& pane = At<CExternalLibsPane>("ExternalLibraries");
    ASSERT_EQ(pane.model()->rowCount(), 3);
    const QModelIndex first = pane.model()->index(0, 0);
    const bool wasOn = externals[0].on;
    EXPECT_TRUE(
        pane.model()->setData(first, wasOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole));
    EXPECT_NE(externals[0].on, wasOn);

    Trigger(ID_COLLAPSE_ALL);
    EXPECT_FALSE(Tree().isExpanded(Tree().model()->index(0, 0)));
    Trigger(ID_EXPAND_ALL);
    EXPECT_TRUE(Tree().isExpanded(Tree().model()->index(0, 0)));
}

TEST_F(CommandsTest, CollectionsAreNamedAndLibrariesMoveBetweenThem)
{
    answers.ThenPath(Text(folder.Path() / "fresh"));
    Trigger(ID_NEW_ZOV_LIB_FILE);
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("New ZOV Library"));
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "fresh.zov"));
    const CLibraryTree& tree = frame.Session().Tree();
    const auto fresh = frame.Session().Set().Externals()[0].library;
    frame.show();
    Tree().setCurrentIndex({});
    const CLibraryTree::TNode collection =
        frame.Session().AddCollection(CLibraryTree::kRoot, CLibraryTree::kNewCollection);
    const QModelIndex row = Tree().model()->index(1, 0);
    Tree().setCurrentIndex(row);
    Trigger(ID_RENAME_LIB_SET);
    auto* editor = Tree().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Approved"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(tree.NameOf(collection), "Approved");

    // "Move To" is a menu that is made when it is opened.
    Tree().setCurrentIndex(Tree().model()->index(0, 0));
    QTimer::singleShot(20, &frame, [this] {
        auto* menu = frame.findChild<QMenu*>(QStringLiteral("LibraryTreeMenu"));
        auto* moveTo = frame.findChild<QMenu*>(QStringLiteral("MoveToMenu"));
        ASSERT_NE(moveTo, nullptr);
        moveTo->actions().last()->trigger();
        menu->close();
    });
    Q_EMIT Tree().customContextMenuRequested({5, 5});
    EXPECT_EQ(tree.ParentOf(tree.Find(*fresh)), collection);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, ModelsAreDraggedToOtherLibraries)
{
    OpenProject(Library("project", 3));
    frame.Session().AddExternals({Library("other", 4)}, CLibraryTree::kRoot);
    WaitIdle();
    const auto other = frame.Session().Set().Externals()[0].library;
    Tree().setCurrentIndex(Tree().model()->index(1, 0));
    WaitIdle();
    auto& list = Models().Model();
    ASSERT_EQ(list.rowCount(), 4);
    const auto drop = [&](int row, Qt::DropAction action) {
        const std::unique_ptr<QMimeData> data(
            list.mimeData({list.index(row, 0), list.index(row, 1)}));
        const QModelIndex project = Tree().model()->index(0, 0);
        EXPECT_TRUE(Tree().model()->canDropMimeData(data.get(), action, -1, -1, project));
        Tree().model()->dropMimeData(data.get(), action, -1, -1, project);
        WaitIdle();
    };
    drop(0, Qt::CopyAction);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Count(), 4U);
    EXPECT_EQ(other->Count(), 4U);
    drop(1, Qt::MoveAction);
    EXPECT_EQ(frame.Session().ProjectLibrary()->Count(), 5U);
    EXPECT_EQ(other->Count(), 3U) << "moved";
    QMimeData stale;
    stale.setData(QStringLiteral("application/x-zov-records"), "4096 8192 ");
    Tree().model()->dropMimeData(&stale, Qt::CopyAction, -1, -1, Tree().model()->index(0, 0));
    EXPECT_EQ(frame.Session().ProjectLibrary()->Count(), 5U) << "what is gone is not followed";
}

TEST_F(CommandsTest, RefreshReadsTheFileAgain)
{
    OpenProject(Library("project", 3));
    SelectProject();
    Library("project", 5);
    Trigger(ID_REFRESH_ZOV_LIB);
    WaitIdle();
    EXPECT_EQ(Models().Model().rowCount(), 5);
}

TEST_F(CommandsTest, RememberedLibrariesThatAreAwayAreShownTriedAgainAndRemoved)
{
    const std::filesystem::path away = folder.Path() / "away.zov";
    const std::filesystem::path gone = folder.Path() / "gone.zov";
    store.SetText(kZovSection, "External Library",
                  FormatLibraryList({{{away, true}, {gone, true}}}));
    CZovMainFrm started(layout, store, [](const char*) { return std::nullopt; });
    started.OpenAtStart({});
    auto& pane = *started.findChild<CExternalLibsPane*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pane.model()->rowCount() == 2; }));
    const auto cell = [&](int row, int column, int role = Qt::DisplayRole) {
        return pane.model()->index(row, column).data(role).toString();
    };
    EXPECT_EQ(cell(0, 0) + QLatin1Char('|') + cell(0, 1) + QLatin1Char('|') + cell(0, 2),
              QStringLiteral("away|not opened|%1").arg(Text(away)));
    EXPECT_TRUE(cell(0, 0, Qt::ToolTipRole).contains(QStringLiteral("stays remembered")));
    EXPECT_TRUE(answers.Shown().empty()) << "no box at the start";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return started.findChild<COutputPane*>()->toPlainText().contains(Text(away)); }));
    const auto enabled = [&](unsigned command) {
        started.OnIdleUpdateCmdUI();
        return started.Actions().Action(command)->isEnabled();
    };
    EXPECT_FALSE(enabled(ID_OPEN_UNREACHABLE));
    pane.setCurrentIndex(pane.model()->index(0, 0));
    EXPECT_TRUE(enabled(ID_OPEN_UNREACHABLE));
    started.Actions().Action(ID_OPEN_UNREACHABLE)->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return started.IsIdle(); }));
    EXPECT_TRUE(answers.Shown().back().text.contains(Text(away)))
        << "asked for: a box says why not";
    Library("away", 2);
    pane.setCurrentIndex(pane.model()->index(0, 0));
    started.Actions().Action(ID_OPEN_UNREACHABLE)->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return started.IsIdle(); }));
    ASSERT_EQ(started.Session().Set().Externals().size(), 1U);
    EXPECT_EQ(cell(0, 1), QStringLiteral("2"));
    pane.setCurrentIndex(pane.model()->index(1, 0));
    EXPECT_TRUE(enabled(ID_FORGET_UNREACHABLE));
    started.Actions().Action(ID_FORGET_UNREACHABLE)->trigger();
    EXPECT_EQ(pane.model()->rowCount(), 1);
    EXPECT_FALSE(enabled(ID_FORGET_UNREACHABLE));
    EXPECT_TRUE(started.close());
    EXPECT_EQ(ParseLibraryList(*store.Text(kZovSection, "External Library")),
              (std::vector<SListedLibrary>{{away, true}}));
}

TEST_F(CommandsTest, KeysActOnWhatHasTheFocus)
{
    OpenProject(Library("project", 3));
    frame.Session().AddExternals({Library("a", 1), Library("b", 1)}, CLibraryTree::kRoot);
    WaitIdle();
    frame.show();
    frame.activateWindow();
    Tree().setCurrentIndex(Tree().model()->index(0, 0));
    WaitIdle();
    Models().Table().selectRow(0);
    Tree().setCurrentIndex(Tree().model()->index(2, 0));
    WaitIdle();
    Models().Table().selectRow(0);
    frame.OnIdleUpdateCmdUI();
    Models().Table().setFocus();
    QTest::keyClick(&Models().Table(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(frame.Session().Set().Externals()[0].path.stem(), "a") << "the list has the focus";
    Tree().setFocus();
    QTest::keyClick(&Tree(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(frame.Session().Set().Externals()[0].path.stem(), "b");
    QTest::keyClick(&Tree(), Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(frame.Session().Set().Externals()[0].path.stem(), "a");
    answers.Then(ui::EAnswer::No);
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Remove the selected libraries or library collections?"));
    WaitIdle();
    Models().Table().selectRow(0);
    frame.OnIdleUpdateCmdUI();
    Models().Table().setFocus();
    ASSERT_TRUE(IsEnabled(ID_DELETE_MODELS));
    ASSERT_EQ(QApplication::focusWidget(), &Models().Table());
    answers.Then(ui::EAnswer::No);
    QTest::keyClick(&Models().Table(), Qt::Key_Delete);
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("Delete the selected model?"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, ACancelledLoadLetsTheWindowGoOnAtOnce)
{
    const std::filesystem::path large = Library("large", 200000);
    frame.Open(Text(large));
    frame.Session().AddExternals({Library("small", 1)}, CLibraryTree::kRoot);
    QTest::keyClick(&frame, Qt::Key_Escape);
    EXPECT_FALSE(frame.Session().Job().IsRunning());
    WaitIdle();
    EXPECT_EQ(frame.Session().ProjectLibrary(), nullptr);
    EXPECT_TRUE(frame.Session().Set().Externals().empty()) << "what waited was dropped, too";
    OpenProject(Library("next", 2));
    EXPECT_EQ(Models().Model().rowCount(), 2);
}

TEST_F(CommandsTest, EachWorkflowPageHasItsKeyAndItsSteps)
{
    auto& workflow = At<CQZovWorkflow>("ZOVWorkflow");
    const char* keys[] = {"ZOVWorkflowIC",        "ZOVWorkflowDiscrete", "ZOVWorkFlowVRM",
                          "ZOVWorkFlowConnector", "ZOVWorkFlowPage",     "ZOVWorkFlowSpice"};
    for (int page = 0; page < 6; ++page) {
        workflow.SetCurrentPage(page);
        EXPECT_EQ(workflow.ContextKey(), QLatin1String(keys[page]));
    }
    EXPECT_STREQ(CQZovWorkflow::ContextKeyOf(17), "ZOVWorkflowIC");
    frame.OnIdleUpdateCmdUI();
    EXPECT_FALSE(At<QToolButton>("page_step5").isEnabled()) << "there is no library yet";
    EXPECT_FALSE(At<QToolButton>("page_step6").isEnabled()) << "nothing to save";
    EXPECT_FALSE(At<QToolButton>("page_2_step8").isEnabled()) << "no model is selected";
}

/// Every step of every page is clicked, and what it names is there afterwards.
TEST_F(CommandsTest, EachStepOfEachWorkflowPageStartsItsWork)
{
    const std::filesystem::path ibis = folder.Write("c.ibs", "[IBIS Ver] 4.2\n[End]\n");
    const std::filesystem::path touchstone =
        folder.Write("z.s1p", "# MHz S RI R 50\n1 0.5 0\n10 0.25 0\n");
    const auto asksFor = [&](const char* title, const std::filesystem::path& path) {
        answers.ThenPath(Text(path));
        return [this, title, before = answers.Shown().size()] {
            ASSERT_GT(answers.Shown().size(), before);
            EXPECT_EQ(answers.Shown()[before].title, QLatin1String(title));
            WaitIdle();
        };
    };
    const auto shows = [&](const char* form) {
        answers.ThenDialog([form](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QLatin1String(form));
            dialog.reject();
        });
        return [] {};
    };
    const auto adds = [&](ERecordType type) {
        const std::size_t before = frame.Session().ProjectLibrary()->CountOf(type);
        return [this, type, before] {
            WaitIdle();
            EXPECT_EQ(frame.Session().ProjectLibrary()->CountOf(type), before + 1);
            ASSERT_EQ(Models().Selected().size(), 1U);
            EXPECT_EQ(Models().Selected()[0]->Type(), type) << "selected, to be edited";
        };
    };
    /// What is answered before the click; gives what is looked at behind it.
    const std::map<unsigned, std::function<std::function<void()>()>> works = {
        {ID_FILE_OPEN,
         [&] {
             answers.Then(ui::EAnswer::Yes);
             return asksFor("Open Library", Library("opened", 1));
         }},
        {ID_FILE_NEW,
         [&] {
             answers.Then(ui::EAnswer::Yes);
             return asksFor("New ZOV Library", folder.Path() / "made.zov");
         }},
        {ID_CHECK_IBIS,
         [&]() -> std::function<void()> {
             answers.ThenPath(Text(ibis));
             return [&] {
                 auto* editor = frame.findChild<CIbisEditorFrm*>();
                 ASSERT_NE(editor, nullptr);
                 ASSERT_TRUE(QTest::qWaitFor([&] { return editor->IsIdle(); }));
                 EXPECT_EQ(editor->Path(), Text(ibis));
             };
         }},
        {ID_OPEN_CURVE_FILES,
         [&]() -> std::function<void()> {
             answers.ThenPath(Text(touchstone));
             answers.ThenDialog([](QDialog& dialog) { dialog.accept(); });
             return [&] {
                 auto* curves = frame.findChild<CUiGeneralCurveFrm*>();
                 ASSERT_NE(curves, nullptr);
                 ASSERT_TRUE(QTest::qWaitFor([&] { return !curves->Job().IsRunning(); }));
                 EXPECT_EQ(curves->Page().Set().Curves().back()->Header().name, "S11");
             };
         }},
        {ID_SHOW_IMPEDANCE,
         [&]() -> std::function<void()> {
             return [&] {
                 auto* curves = frame.findChild<CUiGeneralCurveFrm*>();
                 ASSERT_NE(curves, nullptr);
                 EXPECT_TRUE(curves->isVisible());
                 ASSERT_TRUE(QTest::qWaitFor([&] { return !curves->Job().IsRunning(); }));
             };
         }},
        {ID_LOAD_IBIS, [&] { return shows("dlg_IDD_ZOV_LOAD_IBIS"); }},
        {ID_VENDOR_DECAP_LIBRARY, [&] { return shows("dlg_IDD_VENDOR_DECAP_LIBRARY"); }},
        {ID_TOOLS_GENERATE, [&] { return shows("dlg_IDD_DLG_ZOVGENMAIN"); }},
        {ID_IMPORT_LIB_FILE,
         [&]() -> std::function<void()> {
             answers.ThenPaths({Text(folder.Write("c.sp", ".SUBCKT one 1 2\nR1 1 2 1\n.ENDS\n"))});
             return [&] {
                 WaitIdle();
                 ASSERT_EQ(frame.Session().Set().Externals().size(), 1U);
                 EXPECT_EQ(frame.Session().Set().Externals()[0].library->At(0).Name(), "one");
             };
         }},
        {ID_FILE_SAVE,
         [&]() -> std::function<void()> {
             return [&] { EXPECT_TRUE(frame.Session().ModifiedLibraries().empty()); };
         }},
        {ID_ADD_IC, [&] { return adds(ERecordType::Ic); }},
        {ID_ADD_CAPACITOR, [&] { return adds(ERecordType::Capacitor); }},
        {ID_ADD_INDUCTOR, [&] { return adds(ERecordType::Inductor); }},
        {ID_ADD_RESISTOR, [&] { return adds(ERecordType::Resistor); }},
        {ID_ADD_VRM, [&] { return adds(ERecordType::Vrm); }},
        {ID_ADD_CONNECTOR, [&] { return adds(ERecordType::Connector); }},
        {ID_ADD_PACKAGE, [&] { return adds(ERecordType::Package); }},
        {ID_ADD_SPICE, [&] { return adds(ERecordType::Spice); }},
    };
    frame.show();
    OpenProject(Library("project", 0));
    for (const SWorkflowPage& page : WorkflowPages()) {
        for (std::size_t i = 0; i < page.steps.size(); ++i) {
            const QString name =
                QStringLiteral("%1_step%2").arg(QLatin1String(page.objectName)).arg(i + 1);
            SCOPED_TRACE(name.toStdString());
            const std::function<void()> look = works.at(page.steps[i].command)();
            frame.OnIdleUpdateCmdUI();
            auto* button = frame.findChild<QToolButton*>(name);
            ASSERT_NE(button, nullptr);
            ASSERT_TRUE(button->isEnabled());
            button->click();
            look();
            EXPECT_EQ(answers.Unexpected(), 0);
        }
    }
    EXPECT_TRUE(answers.AllUsed());
}

TEST_F(CommandsTest, WindowsOpenAndCloseWithTheFrame)
{
    frame.show();
    const int before = QApplication::topLevelWidgets().size();
    Trigger(ID_VIEW_CURVES);
    EXPECT_GT(QApplication::topLevelWidgets().size(), before);
    answers.ThenDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("dlg_IDD_VENDOR_DECAP_LIBRARY"));
    });
    Trigger(ID_VENDOR_DECAP_LIBRARY);
    answers.ThenDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("dlg_IDD_ZOV_ABOUTBOX"));
    });
    Trigger(ID_APP_ABOUT);
    EXPECT_TRUE(frame.close());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CommandsTest, HelpOpensThePageOfWhatHasTheFocus)
{
    qputenv("ZOVRA_DOCUMENTS", QByteArray::fromStdString(test::SourceFolder() + "/docs"));
    frame.show();
    Tree().setFocus();
    QTest::keyClick(&Tree(), Qt::Key_F1);
    auto& help = At<CHelpWindow>("HelpWindow");
    EXPECT_EQ(help.Page(), QStringLiteral("desktop.md#the-library-tree"));
    EXPECT_TRUE(help.findChild<QTextBrowser*>()->toPlainText().contains(
        QStringLiteral("The library tree")));
    Trigger(ID_APP_HELP);
    EXPECT_EQ(help.Page(), QStringLiteral("desktop.md"));
    // Every topic leads to a place that is there.
    for (const char* topic :
         {"ZOVWorkflowIC", "ZOVWorkflowDiscrete", "ZOVWorkFlowVRM", "ZOVWorkFlowConnector",
          "ZOVWorkFlowPage", "ZOVWorkFlowSpice", "LibraryTree", "ModelList", "Options", "Velda",
          "ExternalLibraries"}) {
        help.ShowPage(CHelpWindow::PageOf(QLatin1String(topic)));
        EXPECT_GT(help.findChild<QTextBrowser*>()->textCursor().position(), 0) << topic;
    }
}

} // namespace
} // namespace zov::app
