// SPDX-License-Identifier: Apache-2.0
/// A main frame over libraries in a folder of the test's own, driven as by a user.
#pragma once

#include "app/manager/MainCommands.h"
#include "app/manager/MainFrame.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QSettings>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace zov::app {

struct MainFrameTest : testing::Test
{
    std::filesystem::path Library(const std::string& name, int count) const
    {
        CZovLibrary library;
        for (int i = 0; i < count; ++i) {
            library.Add(ERecordType::Resistor)
                .SetString(EPropId::ModelName, name + std::to_string(i));
        }
        CNullLog log;
        const std::filesystem::path path = folder.Path() / (name + ".zov");
        EXPECT_TRUE(SaveLibrary(library, path, {}, log).Ok());
        return path;
    }
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    void Trigger(unsigned command) { frame.Actions().Action(command)->trigger(); }
    bool IsEnabled(unsigned command)
    {
        frame.OnIdleUpdateCmdUI();
        return frame.Actions().Action(command)->isEnabled();
    }
    void WaitIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !frame.Session().Job().IsRunning() && !Models().Model().IsFilling(); }));
    }
    CModelListView& Models() const
    {
        return *frame.findChild<CModelListView*>(QStringLiteral("Models"));
    }
    QTreeView& Tree() const { return *frame.findChild<QTreeView*>(QStringLiteral("LibraryTree")); }
    void OpenProject(const std::filesystem::path& path)
    {
        frame.Open(Text(path));
        WaitIdle();
    }

    test::CTempFolder folder;
    QSettings layout{Text(folder.Path() / "layout.ini"), QSettings::IniFormat};
    CMemorySettings store;
    ui::CScriptedAnswers answers;
    CZovMainFrm frame{layout, store, [](const char*) { return std::nullopt; }};
};

} // namespace zov::app
