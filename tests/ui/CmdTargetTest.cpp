// SPDX-License-Identifier: Apache-2.0
#include "ui/CmdTarget.h"

#include <QObject>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zov::ui {
namespace {

enum : unsigned
{
    ID_SAVE = 100,
    ID_CLOSE,
    ID_ABOUT,
    ID_UP,
    ID_DOWN,
    ID_NOBODY
};

std::vector<std::string>& Calls()
{
    static std::vector<std::string> calls;
    return calls;
}

class CApp : public CCmdTargetBase
{
    ZOV_DECLARE_MESSAGE_MAP()
    void OnAbout() { Calls().push_back("app about"); }
    void OnSave() { Calls().push_back("app save"); }
};

ZOV_BEGIN_MESSAGE_MAP(CApp, CCmdTargetBase)
ZOV_ON_COMMAND(ID_ABOUT, About)
ZOV_ON_COMMAND(ID_SAVE, Save)
ZOV_END_MESSAGE_MAP()

class CFrame : public QObject, public CCmdTargetBase
{
    ZOV_DECLARE_MESSAGE_MAP()
public:
    void OnFrameExit() { Calls().push_back("frame exit"); }
    CCmdTargetBase* FirstTarget() override { return m_view; }
    CCmdTargetBase* NextTarget() override { return m_app; }

    CCmdTargetBase* m_view = nullptr;
    CCmdTargetBase* m_app = nullptr;
    bool m_modified = false;

private:
    void OnSave() { Calls().push_back("frame save"); }
    void OnUpdateSave(CCmdUI& ui)
    {
        ui.Enable(m_modified);
        ui.SetText(m_modified ? QStringLiteral("Save *") : QStringLiteral("Save"));
    }
};

ZOV_BEGIN_MESSAGE_MAP(CFrame, CCmdTargetBase)
ZOV_ON_COMMAND_UPDATE(ID_SAVE, Save)
ZOV_END_MESSAGE_MAP()

class CAssignFrm : public CFrame
{
    ZOV_DECLARE_MESSAGE_MAP()
    void OnMoveUp() { Calls().push_back("up"); }
    void OnMoveDown() { Calls().push_back("down"); }
    void OnUpdateMove(CCmdUI& ui)
    {
        ui.Enable(ui.Command() == ID_UP);
        ui.SetCheck(ui.Command() == ID_UP);
    }
};

ZOV_BEGIN_MESSAGE_MAP(CAssignFrm, CFrame)
ZOV_ON_BASE_COMMAND(ID_CLOSE, CFrame, FrameExit)
ZOV_ON_COMMAND_UPDATE_BY(ID_UP, MoveUp, OnUpdateMove)
ZOV_ON_COMMAND_UPDATE_BY(ID_DOWN, MoveDown, OnUpdateMove)
ZOV_END_MESSAGE_MAP()

class CView : public CCmdTargetBase
{
    ZOV_DECLARE_MESSAGE_MAP()
    void OnAbout() { Calls().push_back("view about"); }
};

ZOV_BEGIN_MESSAGE_MAP(CView, CCmdTargetBase)
ZOV_ON_COMMAND(ID_ABOUT, About)
ZOV_END_MESSAGE_MAP()

struct CmdTargetTest : testing::Test
{
    CmdTargetTest()
    {
        Calls().clear();
        frame.m_view = &view;
        frame.m_app = &app;
    }
    CApp app;
    CView view;
    CAssignFrm frame;
};

TEST_F(CmdTargetTest, ViewThenFrameThenItsBaseThenApplication)
{
    for (const unsigned command : {ID_ABOUT, ID_CLOSE, ID_SAVE, ID_UP}) {
        EXPECT_TRUE(frame.RouteCommand(command));
    }
    EXPECT_EQ(Calls(), (std::vector<std::string>{"view about", "frame exit", "frame save", "up"}));
    frame.m_view = nullptr;
    EXPECT_TRUE(frame.RouteCommand(ID_ABOUT));
    EXPECT_EQ(Calls().back(), "app about");
}

TEST_F(CmdTargetTest, NobodysCommandDoesNothingAndIsDisabled)
{
    EXPECT_FALSE(frame.RouteCommand(ID_NOBODY));
    CCmdUI ui(ID_NOBODY);
    EXPECT_FALSE(frame.RouteUpdate(ui));
    EXPECT_FALSE(ui.IsEnabled());
    EXPECT_TRUE(Calls().empty());
}

TEST_F(CmdTargetTest, UpdateHandlersSeeTheirCommand)
{
    struct SCase
    {
        unsigned command;
        bool modified, enabled, checked;
        const char* text;
    };
    for (const SCase& c :
         {SCase{ID_SAVE, false, false, false, "Save"}, SCase{ID_SAVE, true, true, false, "Save *"},
          SCase{ID_UP, false, true, true, ""}, SCase{ID_DOWN, false, false, false, ""},
          SCase{ID_CLOSE, false, true, false, ""}}) {
        frame.m_modified = c.modified;
        CCmdUI ui(c.command);
        EXPECT_TRUE(frame.RouteUpdate(ui));
        EXPECT_EQ(ui.IsEnabled(), c.enabled) << c.command;
        EXPECT_EQ(ui.IsChecked(), c.checked) << c.command;
        EXPECT_EQ(ui.Text().toStdString(), c.text);
    }
}

TEST_F(CmdTargetTest, EntriesTellTheirHandlers)
{
    const SMessageMap& map = frame.MessageMap();
    EXPECT_STREQ(map.Find(ID_CLOSE)->handlerText, "&ThisClass::CFrame::OnFrameExit");
    EXPECT_STREQ(map.Find(ID_CLOSE)->updateText, "");
    EXPECT_STREQ(map.Find(ID_SAVE)->handlerText, "&ThisClass::OnSave");
    EXPECT_STREQ(map.Find(ID_SAVE)->updateText, "&ThisClass::OnUpdateSave");
    EXPECT_STREQ(map.Find(ID_DOWN)->updateText, "&ThisClass::OnUpdateMove");
    EXPECT_EQ(map.Find(ID_NOBODY), nullptr);
}

TEST_F(CmdTargetTest, TargetsThatNameEachOtherEnd)
{
    CFrame other;
    frame.m_view = &other;
    other.m_app = &frame;
    EXPECT_FALSE(frame.RouteCommand(ID_NOBODY));
    EXPECT_TRUE(frame.RouteCommand(ID_UP));
}

} // namespace
} // namespace zov::ui
