// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/RecordFields.h"

namespace zov::ui::replay {
namespace {

using F = SEventFields;

constexpr SField<F> kMouse[] = {
    {"Pos", &F::pos},       {"WndPos", &F::wndPos},       {"GlobalPos", &F::globalPos},
    {"Button", &F::button}, {"Buttons", &F::buttons},     {"Modifiers", &F::modifiers},
    {"Source", &F::source}, {"Timestamp", &F::timestamp},
};
constexpr SField<F> kKey[] = {
    {"Key", &F::key},
    {"Modifiers", &F::modifiers},
    {"NativeScanCode", &F::nativeScanCode},
    {"NativeVirtualKey", &F::nativeVirtualKey},
    {"NativeModifiers", &F::nativeModifiers},
    {"Text", &F::text},
    {"AutoRepeat", &F::autoRepeat},
    {"Count", &F::count},
    {"Timestamp", &F::timestamp},
};
constexpr SField<F> kFocus[] = {{"FocusReason", &F::focusReason}};
constexpr SField<F> kWheel[] = {
    {"PosF", &F::posF},
    {"GlobalPosF", &F::globalPosF},
    {"PixelDelta", &F::pixelDelta},
    {"AngleDelta", &F::angleDelta},
    {"Delta", &F::delta},
    {"Orientation", &F::orientation},
    {"Buttons", &F::buttons},
    {"Modifiers", &F::modifiers},
    {"Phase", &F::phase},
    {"Source", &F::source},
    {"Inverted", &F::inverted},
    {"Timestamp", &F::timestamp},
};
constexpr SField<F> kContextMenu[] = {
    {"Pos", &F::pos},
    {"GlobalPos", &F::globalPos},
    {"Reason", &F::reason},
    {"Modifiers", &F::modifiers},
    {"Timestamp", &F::timestamp},
};
constexpr SField<F> kInputMethod[] = {
    {"Preedit", &F::preedit},
    {"Commit", &F::commit},
    {"ReplaceStart", &F::replaceStart},
    {"ReplaceLength", &F::replaceLength},
};
constexpr SField<SInputAttribute> kAttribute[] = {
    {"Type", &SInputAttribute::type},
    {"Start", &SInputAttribute::start},
    {"Length", &SInputAttribute::length},
    {"Value", &SInputAttribute::value},
};
constexpr SField<SRecordHeader> kHeader[] = {
    {"OSVersion", &SRecordHeader::osVersion},
    {"OSPrettyName", &SRecordHeader::osPrettyName},
    {"CPUCount", &SRecordHeader::cpuCount},
    {"PhysicalMemory", &SRecordHeader::physicalMemory},
    {"DPI", &SRecordHeader::dpi},
    {"Resolution", &SRecordHeader::resolution},
    {"EnvVarList", &SRecordHeader::envVarList},
    {"ToolVersion", &SRecordHeader::toolVersion},
    {"MainWindowSize", &SRecordHeader::mainWindowSize},
};

} // namespace

std::span<const SField<SEventFields>> FieldsOf(EEvent type)
{
    switch (type) {
    case EEvent::MouseButtonPress:
    case EEvent::MouseButtonRelease:
    case EEvent::MouseButtonDblClick:
    case EEvent::MouseMove:
        return kMouse;
    case EEvent::KeyPress:
    case EEvent::KeyRelease:
        return kKey;
    case EEvent::FocusOut:
        return kFocus;
    case EEvent::Wheel:
        return kWheel;
    case EEvent::ContextMenu:
        return kContextMenu;
    case EEvent::InputMethod:
        return kInputMethod;
    }
    return {};
}

std::span<const SField<SInputAttribute>> AttributeFields()
{
    return kAttribute;
}

std::span<const SField<SRecordHeader>> HeaderFields()
{
    return kHeader;
}

} // namespace zov::ui::replay
