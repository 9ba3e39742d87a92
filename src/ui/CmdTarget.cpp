// SPDX-License-Identifier: Apache-2.0
#include "ui/CmdTarget.h"

#include <algorithm>

namespace zov::ui {
namespace {

// A chain is view, frame, application; targets that name each other must not hang the window.
constexpr int kMaxChain = 16;

} // namespace

const SMessageMapEntry* SMessageMap::Find(unsigned command) const
{
    for (const SMessageMap* map = this; map != nullptr; map = map->base) {
        const auto at = std::ranges::find(map->entries, command, &SMessageMapEntry::command);
        if (at != map->entries.end()) {
            return &*at;
        }
    }
    return nullptr;
}

const SMessageMap& CCmdTargetBase::RootMessageMap()
{
    static const SMessageMap map;
    return map;
}

CCmdTargetBase* CCmdTargetBase::FindTarget(unsigned command)
{
    return FindTarget(command, 0);
}

CCmdTargetBase* CCmdTargetBase::FindTarget(unsigned command, int depth)
{
    if (depth == kMaxChain) {
        return nullptr;
    }
    if (CCmdTargetBase* first = FirstTarget(); first != nullptr) {
        if (CCmdTargetBase* found = first->FindTarget(command, depth + 1)) {
            return found;
        }
    }
    if (MessageMap().Find(command) != nullptr) {
        return this;
    }
    CCmdTargetBase* next = NextTarget();
    return next == nullptr ? nullptr : next->FindTarget(command, depth + 1);
}

bool CCmdTargetBase::RouteCommand(unsigned command)
{
    CCmdTargetBase* target = FindTarget(command);
    if (target == nullptr) {
        return false;
    }
    (target->*target->MessageMap().Find(command)->handler)();
    return true;
}

bool CCmdTargetBase::RouteUpdate(CCmdUI& ui)
{
    CCmdTargetBase* target = FindTarget(ui.Command());
    if (target == nullptr) {
        ui.Enable(false);
        return false;
    }
    const SMessageMapEntry& entry = *target->MessageMap().Find(ui.Command());
    if (entry.update == nullptr) {
        ui.Enable(true);
    } else {
        (target->*entry.update)(ui);
    }
    return true;
}

} // namespace zov::ui
