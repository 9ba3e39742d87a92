// SPDX-License-Identifier: Apache-2.0
#include "app/manager/ToolWindows.h"

#include "app/ibis/ComposeWizard.h"
#include "app/ibis/IbisTextEdit.h"
#include "app/manager/CommandIds.h"
#include "app/manager/MainFrame.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

struct ToolWindowsTest : testing::Test
{
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    void Trigger(unsigned command) { frame.Actions().Action(command)->trigger(); }
    CModelListView& Models() const
    {
        return *frame.findChild<CModelListView*>(QStringLiteral("Models"));
    }
    void OpenProject()
    {
        folder.Write("z.s1p", "# MHz S RI R 50\n1 0.5 0\n10 0.25 0\n");
        folder.Write("gone.txt", "");
        CZovLibrary library;
        for (const char* file : {"z.s1p", ""}) {
            CZovRcdProps& record = library.Add(ERecordType::Capacitor);
            record.SetString(EPropId::ModelName, *file != '\0' ? "measured" : "plain");
            record.SetDouble(EPropId::Cnom, 1e-7);
            SDiscreteModel model;
            if (*file != '\0') {
                model.isCircuit = true;
                model.cktDef = file;
            } else {
                model.capacitance = 1e-7;
                model.resistance = 0.1;
            }
            record.SetDiscreteModel(model);
        }
        CNullLog log;
        ASSERT_TRUE(SaveLibrary(library, folder.Path() / "board.zov", {}, log).Ok());
        frame.Open(Text(folder.Path() / "board.zov"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return frame.IsIdle(); }));
    }
    CUiGeneralCurveFrm* Curves() const { return frame.findChild<CUiGeneralCurveFrm*>(); }
    CIbisEditorFrm* Editor() const { return frame.findChild<CIbisEditorFrm*>(); }

    test::CTempFolder folder;
    QSettings layout{Text(folder.Path() / "layout.ini"), QSettings::IniFormat};
    CMemorySettings store;
    ui::CScriptedAnswers answers;
    CZovMainFrm frame{layout, store, [](const char*) { return std::nullopt; }};
};

TEST_F(ToolWindowsTest, CommandsOpenTheirWindowsOnce)
{
    Trigger(ID_VIEW_CURVES);
    CUiGeneralCurveFrm* curves = Curves();
    ASSERT_NE(curves, nullptr);
    EXPECT_TRUE(curves->isVisible());
    curves->close();
    Trigger(ID_VIEW_CURVES);
    EXPECT_EQ(Curves(), curves);
    EXPECT_TRUE(curves->isVisible());
    Trigger(ID_TOOLS_IBIS_EDITOR);
    EXPECT_NE(Editor(), nullptr);
    Trigger(ID_TOOLS_IBIS_EDITOR);
    EXPECT_EQ(frame.findChildren<CIbisEditorFrm*>().size(), 1);
    answers.ThenDialog(
        [](QDialog& dialog) { EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Load IBIS")); });
    Trigger(ID_LOAD_IBIS);
    answers.ThenPath(Text(folder.Write("c.ibs", "[IBIS Ver] 4.2\n[End]\n")));
    Trigger(ID_CHECK_IBIS);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Editor()->IsIdle(); }));
    EXPECT_TRUE(Editor()->Path().endsWith(QStringLiteral("c.ibs")));
    Trigger(ID_TOOLS_COMPOSE_IBIS);
    EXPECT_NE(frame.findChild<CComposeWizard*>(), nullptr);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ToolWindowsTest, FilesOpenInTheWindowOfTheirKind)
{
    const std::filesystem::path ibis = folder.Write("a.ibs", "[IBIS Ver] 4.2\n[End]\n");
    EXPECT_TRUE(OpenModelFile(Text(ibis)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Editor()->IsIdle(); }));
    EXPECT_EQ(Editor()->Path(), Text(ibis));
    EXPECT_TRUE(OpenModelFile(Text(ibis)));
    EXPECT_EQ(frame.findChildren<CIbisEditorFrm*>().size(), 1) << "the editor that shows it";
    EXPECT_TRUE(OpenModelFile(Text(folder.Write("b.ibs", "[IBIS Ver] 4.2\n[End]\n"))));
    EXPECT_EQ(frame.findChildren<CIbisEditorFrm*>().size(), 2);
    EXPECT_FALSE(OpenModelFile(QStringLiteral("notes.txt")));
}

TEST_F(ToolWindowsTest, RecordsShowTheirImpedanceAndTheirFile)
{
    OpenProject();
    EXPECT_FALSE(frame.Actions().Action(ID_SHOW_IMPEDANCE)->isEnabled());
    Models().Table().selectAll();
    Trigger(ID_SHOW_IMPEDANCE);
    ASSERT_NE(Curves(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Curves()->Job().IsRunning(); }));
    EXPECT_EQ(Curves()->Page().Set().Curves().size(), 2U);

    Models().Table().selectRow(0);
    answers.ThenDialog([](QDialog& dialog) { dialog.accept(); });
    Trigger(ID_OPEN_MODEL_FILE);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Curves()->Job().IsRunning(); }));
    EXPECT_EQ(Curves()->Page().Set().Curves().back()->Header().name, "S11");
    Models().Table().selectRow(1);
    Trigger(ID_OPEN_MODEL_FILE);
    EXPECT_TRUE(answers.Shown().back().text.startsWith(QStringLiteral("The model names no")));
}

TEST_F(ToolWindowsTest, AnEditedIbisFileKeepsTheProgramOpen)
{
    EXPECT_TRUE(OpenModelFile(Text(folder.Write("a.ibs", "[IBIS Ver] 4.2\n[End]\n"))));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Editor()->IsIdle(); }));
    QTest::keyClicks(Editor()->findChild<CIbisTextEdit*>(), QStringLiteral("|"));
    answers.Then(ui::EAnswer::Cancel);
    EXPECT_FALSE(frame.close());
    answers.Then(ui::EAnswer::No);
    EXPECT_TRUE(frame.close());
}

} // namespace
} // namespace zov::app
