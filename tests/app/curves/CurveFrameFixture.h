// SPDX-License-Identifier: Apache-2.0
/// A curve frame with files to open, whose boxes and dialogs take scripted answers.
#pragma once

#include "app/curves/CurveCommands.h"
#include "app/curves/GeneralCurveFrm.h"
#include "base/File.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {

inline const std::string kHead = "*******Frequency Domain Parameters*********\n";
inline const std::string kEnd = "**************End***************\n";

inline std::string Block(const std::string& header, const std::string& points)
{
    return "**************Curve***************\n" + header + "\n" + points + kEnd;
}

struct SCurveFrameFixture : testing::Test
{
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    void Open(const std::filesystem::path& path)
    {
        frame.OpenFiles({Text(path)});
        WaitIdle();
    }
    void WaitIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !frame.Job().IsRunning() && !frame.Page().Plot().IsPreparing(); }));
    }
    void Trigger(unsigned command) { frame.Actions().Action(command)->trigger(); }
    bool IsEnabled(unsigned command)
    {
        frame.OnIdleUpdateCmdUI();
        return frame.Actions().Action(command)->isEnabled();
    }
    QTableView& List() const { return *frame.findChild<QTableView*>(QStringLiteral("CurveList")); }
    std::filesystem::path Impedance(const std::string& name = "z.cur") const
    {
        return folder.Write(name, kHead + Block("Z Z0_real_imag REAL first",
                                                "Freq(Hz) Real(Ohm) Imag(Ohm)\n1e6 3 4\n"
                                                "1e7 6 8\n1e9 0.3 0.4\n"));
    }
    std::filesystem::path TwoPort() const
    {
        return folder.Write("part.s2p", "# MHz S RI R 50\n"
                                        "1 0.5 0 0.5 0 0.5 0 0.5 0\n"
                                        "10 0.25 0 0.75 0 0.75 0 0.25 0\n");
    }

    test::CTempFolder folder;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CUiGeneralCurveFrm frame{log};
};

} // namespace zov::app
