// SPDX-License-Identifier: Apache-2.0
/// Command targets: frames, views and dialogs that declare which commands they handle in a table.
///
///     class CLibFrame : public QMainWindow, public CCmdTargetBase
///     {
///         ZOV_DECLARE_MESSAGE_MAP()
///         void OnFileSave();
///         void OnUpdateFileSave(CCmdUI& ui);
///     };
///
///     ZOV_BEGIN_MESSAGE_MAP(CLibFrame, CCmdTargetBase)
///     ZOV_ON_COMMAND_UPDATE(ID_FILE_SAVE, FileSave)   // OnFileSave with OnUpdateFileSave
///     ZOV_ON_COMMAND(ID_APP_ABOUT, AppAbout)          // OnAppAbout, always enabled
///     ZOV_ON_BASE_COMMAND(ID_EXIT, CFrame, FrameExit) // the handler of a base class
///     ZOV_END_MESSAGE_MAP()
///
/// A command is offered to a target's own map, then to the maps of its base classes, then to the
/// next target of the chain (view, frame, application). The first that has an entry ends it.
#pragma once

#include "ui/CmdUI.h"

#include <span>

namespace zov::ui {

class CCmdTargetBase;

using CmdHandler = void (CCmdTargetBase::*)();
using CmdUpdateHandler = void (CCmdTargetBase::*)(CCmdUI&);

struct SMessageMapEntry
{
    unsigned command = 0;
    CmdHandler handler = nullptr;
    CmdUpdateHandler update = nullptr; ///< null: the command is always enabled
    const char* handlerText = "";      ///< "&ThisClass::OnClose"
    const char* updateText = "";       ///< "&ThisClass::OnUpdateClose", empty without one
};

struct SMessageMap
{
    const SMessageMap* base = nullptr; ///< the map of the base class, null at the root
    std::span<const SMessageMapEntry> entries;

    /// The entry of a command in this map or in those of the base classes; null if there is none.
    [[nodiscard]] const SMessageMapEntry* Find(unsigned command) const;
};

/// The base of every command target.
class CCmdTargetBase
{
public:
    CCmdTargetBase() = default;
    CCmdTargetBase(const CCmdTargetBase&) = delete;
    CCmdTargetBase& operator=(const CCmdTargetBase&) = delete;
    virtual ~CCmdTargetBase() = default;

    /// Runs the command in the first target of the chain that has it.
    /// @return false when none has
    bool RouteCommand(unsigned command);
    /// Brings an entry up to date; an entry whose command nobody handles is disabled.
    /// @return whether a target has the command
    bool RouteUpdate(CCmdUI& ui);
    /// The target that would handle the command, null when none would.
    [[nodiscard]] CCmdTargetBase* FindTarget(unsigned command);

    [[nodiscard]] virtual const SMessageMap& MessageMap() const { return RootMessageMap(); }
    static const SMessageMap& RootMessageMap();

protected:
    /// Who is asked after this target: a frame gives the application. A frame that asks its active
    /// view first overrides FirstTarget instead.
    [[nodiscard]] virtual CCmdTargetBase* NextTarget() { return nullptr; }
    /// Who is asked before this target, null for nobody.
    [[nodiscard]] virtual CCmdTargetBase* FirstTarget() { return nullptr; }

private:
    CCmdTargetBase* FindTarget(unsigned command, int depth);
};

} // namespace zov::ui

#define ZOV_DECLARE_MESSAGE_MAP()                                                                  \
public:                                                                                            \
    [[nodiscard]] const ::zov::ui::SMessageMap& MessageMap() const override                        \
    {                                                                                              \
        return StaticMessageMap();                                                                 \
    }                                                                                              \
    static const ::zov::ui::SMessageMap& StaticMessageMap();                                       \
                                                                                                   \
private:

/// For classes whose base declares no map of its own, BASE is CCmdTargetBase.
#define ZOV_BEGIN_MESSAGE_MAP(CLASS, BASE)                                                         \
    const ::zov::ui::SMessageMap& CLASS::StaticMessageMap()                                        \
    {                                                                                              \
        using ThisClass = CLASS;                                                                   \
        static const ::zov::ui::SMessageMap* const base = &::zov::ui::BaseMessageMap<BASE>();      \
        static const ::zov::ui::SMessageMapEntry entries[] = {

#define ZOV_ON_COMMAND(ID, NAME)                                                                   \
    {ID, static_cast<::zov::ui::CmdHandler>(&ThisClass::On##NAME), nullptr,                        \
     "&ThisClass::On" #NAME, ""},

#define ZOV_ON_COMMAND_UPDATE(ID, NAME)                                                            \
    {ID, static_cast<::zov::ui::CmdHandler>(&ThisClass::On##NAME),                                 \
     static_cast<::zov::ui::CmdUpdateHandler>(&ThisClass::OnUpdate##NAME), "&ThisClass::On" #NAME, \
     "&ThisClass::OnUpdate" #NAME},

/// Several commands that share one update handler.
#define ZOV_ON_COMMAND_UPDATE_BY(ID, NAME, UPDATE)                                                 \
    {ID, static_cast<::zov::ui::CmdHandler>(&ThisClass::On##NAME),                                 \
     static_cast<::zov::ui::CmdUpdateHandler>(&ThisClass::UPDATE), "&ThisClass::On" #NAME,         \
     "&ThisClass::" #UPDATE},

/// A handler whose name does not begin with "On".
#define ZOV_ON_FUNCTION_UPDATE_BY(ID, FUNCTION, UPDATE)                                            \
    {ID, static_cast<::zov::ui::CmdHandler>(&ThisClass::FUNCTION),                                 \
     static_cast<::zov::ui::CmdUpdateHandler>(&ThisClass::UPDATE), "&ThisClass::" #FUNCTION,       \
     "&ThisClass::" #UPDATE},

#define ZOV_ON_BASE_COMMAND(ID, BASE, NAME)                                                        \
    {ID, static_cast<::zov::ui::CmdHandler>(&ThisClass::BASE::On##NAME), nullptr,                  \
     "&ThisClass::" #BASE "::On" #NAME, ""},

#define ZOV_END_MESSAGE_MAP()                                                                      \
    }                                                                                              \
    ;                                                                                              \
    static const ::zov::ui::SMessageMap map{base, entries};                                        \
    return map;                                                                                    \
    }

namespace zov::ui {

template <typename Base>
const SMessageMap& BaseMessageMap()
{
    if constexpr (requires { Base::StaticMessageMap(); }) {
        return Base::StaticMessageMap();
    } else {
        return CCmdTargetBase::RootMessageMap();
    }
}

} // namespace zov::ui
