// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/RecordedEvent.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zov::ui::replay {
namespace {

constexpr std::pair<EEvent, const char*> kEventNames[] = {
    {EEvent::MouseButtonPress, "MouseButtonPress"},
    {EEvent::MouseButtonRelease, "MouseButtonRelease"},
    {EEvent::MouseButtonDblClick, "MouseButtonDblClick"},
    {EEvent::MouseMove, "MouseMove"},
    {EEvent::KeyPress, "KeyPress"},
    {EEvent::KeyRelease, "KeyRelease"},
    {EEvent::FocusOut, "FocusOut"},
    {EEvent::Wheel, "Wheel"},
    {EEvent::ContextMenu, "ContextMenu"},
    {EEvent::InputMethod, "InputMethod"},
};

constexpr std::pair<std::int64_t, const char*> kOsNames[] = {
    {22, "Windows Server 2008"},   {23, "Windows 7"},
    {24, "Windows Server 2008R2"}, {25, "Windows 8"},
    {26, "Windows Server 2012"},   {27, "Windows 8.1"},
    {28, "Windows Server 2012R2"}, {29, "Windows 10"},
    {30, "Windows Server 2016"},
};

} // namespace

const char* EventName(EEvent type)
{
    const auto at = std::ranges::find(kEventNames, type, [](const auto& one) { return one.first; });
    return at == std::end(kEventNames) ? nullptr : at->second;
}

const char* OsName(std::int64_t code)
{
    if (code == 0) {
        return "LINUX/UNIX";
    }
    const auto at = std::ranges::find(kOsNames, code, [](const auto& one) { return one.first; });
    if (at != std::end(kOsNames)) {
        return at->second;
    }
    return code < kOsNames[0].first ? "Old version Windows" : "New version Windows";
}

} // namespace zov::ui::replay
