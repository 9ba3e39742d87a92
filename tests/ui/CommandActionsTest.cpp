// SPDX-License-Identifier: Apache-2.0
#include "ui/CommandActions.h"

#include "ui/EventFilters.h"
#include "ui/IdleUpdate.h"

#include <QEventLoop>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace zov::ui {
namespace {

enum : unsigned
{
    ID_SAVE = 1,
    ID_DARK,
    ID_FREE
};

constexpr SCommand kCommands[] = {
    {ID_SAVE, "OnFileSave", "&Save", "Save Library\n Save Library", "save", "Ctrl+S"},
    {ID_DARK, "OnThemeDark", "Dark", "", "", ""},
    {ID_FREE, "OnFree", "Free", "Only status", "", ""},
};

class CFrame : public QMainWindow, public CCmdTargetBase
{
    ZOV_DECLARE_MESSAGE_MAP()
public:
    int m_saved = 0;
    bool m_modified = true;
    bool m_dark = false;

private:
    void OnFileSave()
    {
        ++m_saved;
        m_modified = false;
    }
    void OnUpdateFileSave(CCmdUI& ui) { ui.Enable(m_modified); }
    void OnThemeDark() { m_dark = !m_dark; }
    void OnUpdateThemeDark(CCmdUI& ui) { ui.SetCheck(m_dark); }
};

ZOV_BEGIN_MESSAGE_MAP(CFrame, CCmdTargetBase)
ZOV_ON_COMMAND_UPDATE(ID_SAVE, FileSave)
ZOV_ON_COMMAND_UPDATE(ID_DARK, ThemeDark)
ZOV_END_MESSAGE_MAP()

struct CommandActionsTest : testing::Test
{
    CFrame frame;
    CCommandActions actions{kCommands, frame, frame};
};

TEST_F(CommandActionsTest, TextsComeFromTheTable)
{
    const QAction* save = actions.Action(ID_SAVE);
    EXPECT_EQ(save->statusTip(), QStringLiteral("Save Library"));
    EXPECT_EQ(save->toolTip(), QStringLiteral("Save Library"));
    EXPECT_EQ(save->shortcut(), QKeySequence(QStringLiteral("Ctrl+S")));
    EXPECT_EQ(save->objectName(), QStringLiteral("OnFileSave"));
    EXPECT_EQ(actions.Action(ID_FREE)->toolTip(), QStringLiteral("Free"));
    EXPECT_EQ(actions.Action(99), nullptr);
}

TEST_F(CommandActionsTest, MenuAndToolBarShareTheActionAndItsState)
{
    QMenu menu;
    QToolBar bar;
    actions.FillMenu(menu, {ID_SAVE, kSeparator, ID_DARK});
    actions.FillToolBar(bar, {ID_DARK});
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_TRUE(menu.actions()[1]->isSeparator());
    EXPECT_EQ(bar.actions().first(), menu.actions()[2]);

    actions.UpdateAll();
    EXPECT_FALSE(actions.Action(ID_FREE)->isEnabled()) << "nobody handles it";
    actions.Action(ID_DARK)->trigger();
    EXPECT_TRUE(frame.m_dark);
    EXPECT_TRUE(bar.actions().first()->isChecked());
}

TEST_F(CommandActionsTest, ACommandThatBecameDisabledIsNotRun)
{
    actions.UpdateAll();
    frame.m_modified = false; // no update since: the entry still looks enabled
    actions.Action(ID_SAVE)->trigger();
    EXPECT_EQ(frame.m_saved, 0);
    EXPECT_FALSE(actions.Action(ID_SAVE)->isEnabled());
}

TEST_F(CommandActionsTest, ShortcutAndBoundButtonRunTheCommand)
{
    auto* button = new QPushButton(QStringLiteral("Save"), &frame);
    frame.setCentralWidget(button);
    actions.Bind(*button, ID_SAVE);
    frame.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    QTest::keyClick(button, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(frame.m_saved, 1);
    EXPECT_FALSE(button->isEnabled()) << "saved: the command is disabled, its button follows";
    frame.m_modified = true;
    actions.UpdateAll();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(frame.m_saved, 2);
}

TEST_F(CommandActionsTest, IdleTimeBringsEntriesUpToDate)
{
    int idles = 0;
    const CIdleUpdate idle(&frame, [&] {
        ++idles;
        actions.UpdateAll();
    });
    actions.UpdateAll();
    ASSERT_TRUE(actions.Action(ID_SAVE)->isEnabled());
    frame.m_modified = false;
    // A loop that really sleeps, unlike QTest::qWait.
    QEventLoop loop;
    QTimer::singleShot(4 * CIdleUpdate::kIdleIntervalMs, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_FALSE(actions.Action(ID_SAVE)->isEnabled());
    EXPECT_GE(idles, 1);
    // Asleep it stays asleep: no timer that keeps firing.
    EXPECT_LT(idles, 8);
}

TEST(EventFilters, ForwardCommandsEnterAndHelp)
{
    CFrame frame;
    auto* panel = new QWidget(&frame);
    auto* edit = new QLineEdit(panel);
    frame.setCentralWidget(panel);
    int entered = 0;
    QString topic;
    new CQtEnterKeyPressEventFilter(*edit, [&] { ++entered; });
    new CQtHelpTopicEventFilter(*edit, [&](const QString& t) { topic = t; });
    new CQtObjectEventFilterWithCmdTarget(*edit, QEvent::MouseButtonDblClick, frame, ID_SAVE);
    int changes = 0;
    new CQtSubClassEventFilter(*edit, [&](QEvent& event) {
        changes += event.type() == QEvent::EnabledChange ? 1 : 0;
        return false;
    });
    CQtHelpTopicEventFilter::SetTopic(*panel, QStringLiteral("ZOVWorkflowIC"));

    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_Enter);
    QTest::keyClick(edit, Qt::Key_A);
    EXPECT_EQ(entered, 2);
    EXPECT_EQ(edit->text(), QStringLiteral("a"));
    QTest::keyClick(edit, Qt::Key_F1);
    EXPECT_EQ(topic, QStringLiteral("ZOVWorkflowIC")) << "of the nearest parent";
    QTest::mouseDClick(edit, Qt::LeftButton);
    EXPECT_EQ(frame.m_saved, 1);
    edit->setEnabled(false);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace zov::ui
