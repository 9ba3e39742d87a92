// SPDX-License-Identifier: Apache-2.0
/// The assignment frame over libraries on disk.
#pragma once

#include "app/BoxQuestions.h"
#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignFrm.h"
#include "app/assignment/DlgFindModel.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/Models.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>
#include <map>

namespace zov::app::test {

using zov::test::CTempFolder;
using zov::test::SModel;

class CAssignFrameTest : public testing::Test
{
protected:
    CAssignFrameTest() { EXPECT_TRUE(frame.OnCreate().Ok()); }

    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    std::filesystem::path Library(const std::string& name, const std::vector<SModel>& models) const
    {
        const CZovLibrary library = zov::test::LibraryOf(models);
        CNullLog silent;
        const std::filesystem::path path = folder.Path() / (name + ".zov");
        EXPECT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
        return path;
    }
    void OpenProject(const std::filesystem::path& path)
    {
        session.OpenProject(path, questions);
        Settle();
    }
    void AddExternal(const std::filesystem::path& path)
    {
        session.AddExternals({path}, CLibraryTree::kRoot);
        Settle();
    }
    void OpenDesign(const std::string& lines)
    {
        frame.OpenDesign(Text(folder.Write("board.csv", lines)));
        Settle();
    }
    /// Until nothing works beside the window any more.
    void Settle()
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !session.Job().IsRunning() && !frame.View().IsBusy(); }, 20000));
    }
    void Trigger(unsigned command)
    {
        frame.Actions().Action(command)->trigger();
        Settle();
    }
    bool IsEnabled(unsigned command)
    {
        frame.OnIdleUpdateCmdUI();
        return frame.Actions().Action(command)->isEnabled();
    }
    void Select(std::initializer_list<int> rows)
    {
        QItemSelectionModel& selection = *frame.View().selectionModel();
        selection.clear();
        for (const int row : rows) {
            selection.setCurrentIndex(frame.View().model()->index(row, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
    /// A column of all rows: "C1=model|R1=|".
    QString Cells(EAssignColumn column = EAssignColumn::AssignedModels)
    {
        const QAbstractItemModel& rows = *frame.View().model();
        QString out;
        for (int i = 0; i < rows.rowCount(); ++i) {
            out += rows.index(i, 0).data().toString() + QLatin1Char('=') +
                   rows.index(i, static_cast<int>(column)).data().toString() + QLatin1Char('|');
        }
        return out;
    }
    /// Finds a model by the dialog and takes the first hit.
    void Find(const QString& text)
    {
        answers.ThenDialog([text](QDialog& dialog) { TakeFirst(dialog, text); });
        Trigger(ID_FIND_MODEL);
    }
    static void TakeFirst(QDialog& dialog, const QString& text)
    {
        auto& find = dynamic_cast<CDlgFindModel&>(dialog);
        find.findChild<QComboBox*>(QStringLiteral("ui_IDC_FIND_TYPE"))->setCurrentIndex(0);
        find.findChild<QLineEdit*>(QStringLiteral("ui_IDC_FIND_TEXT"))->setText(text);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !find.IsSearching(); }));
        find.accept();
    }
    QString LastPrompt() const
    {
        return answers.Shown().empty() ? QString() : answers.Shown().back().text;
    }
    QString Output() const
    {
        QTest::qWait(1);
        return frame.findChild<QPlainTextEdit*>(QStringLiteral("Output"))->toPlainText();
    }

    CTempFolder folder;
    QSettings layout{Text(folder.Path() / "layout.ini"), QSettings::IniFormat};
    CMemorySettings store;
    CVectorLog log;
    std::map<std::string, std::string> variables;
    FEnvironment environment = [this](const char* name) {
        const auto at = variables.find(name);
        return at == variables.end() ? std::nullopt : std::optional(at->second);
    };
    ui::CScriptedAnswers answers;
    CZovSession session{store, log, environment};
    CAssignFrm frame{session, layout, environment};
    CBoxQuestions questions{frame};
};

} // namespace zov::app::test
