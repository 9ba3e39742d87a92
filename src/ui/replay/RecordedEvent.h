// SPDX-License-Identifier: Apache-2.0
/// What a record holds: one entry per input of the user, with a description of the widget that got
/// it, and the machine on which it was made. Plain data, without Qt.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zov::ui::replay {

struct SPoint
{
    int x = 0;
    int y = 0;
    bool operator==(const SPoint&) const = default;
};

struct SPointF
{
    double x = 0.0;
    double y = 0.0;
    bool operator==(const SPointF&) const = default;
};

/// Numbers are those of the toolkit's event types.
enum class EEvent : int
{
    MouseButtonPress = 2,
    MouseButtonRelease = 3,
    MouseButtonDblClick = 4,
    MouseMove = 5,
    KeyPress = 6,
    KeyRelease = 7,
    FocusOut = 9,
    Wheel = 31,
    ContextMenu = 82,
    InputMethod = 83
};

/// "MouseButtonPress" and so on; null for a number that is none of them.
const char* EventName(EEvent type);

/// A mark of the toolkit on a part of a text that is being composed.
struct SInputAttribute
{
    std::int64_t type = 0;
    std::int64_t start = 0;
    std::int64_t length = 0;
    std::string value;
    bool operator==(const SInputAttribute&) const = default;
};

/// The fields of all event types; which of them count depends on the type. Enumerations of the
/// toolkit stand as their numbers.
struct SEventFields
{
    EEvent type = EEvent::MouseButtonPress;
    SPoint pos;       ///< in the target
    SPoint wndPos;    ///< in its window
    SPoint globalPos; ///< on the screen
    SPointF posF;
    SPointF globalPosF;
    SPoint pixelDelta;
    SPoint angleDelta;
    std::int64_t button = 0;
    std::int64_t buttons = 0;
    std::int64_t modifiers = 0;
    std::int64_t source = 0;
    std::int64_t key = 0;
    std::int64_t nativeScanCode = 0;
    std::int64_t nativeVirtualKey = 0;
    std::int64_t nativeModifiers = 0;
    std::string text;
    std::int64_t autoRepeat = 0;
    std::int64_t count = 1;
    std::int64_t focusReason = 0;
    std::int64_t delta = 0;
    std::int64_t orientation = 0;
    std::int64_t phase = 0;
    std::int64_t inverted = 0;
    std::int64_t reason = 0; ///< what asked for a context menu
    std::vector<SInputAttribute> attributes;
    std::string preedit;
    std::string commit;
    std::int64_t replaceStart = 0;
    std::int64_t replaceLength = 0;
    std::int64_t timestamp = 0; ///< milliseconds of the windowing system
    bool operator==(const SEventFields&) const = default;

    [[nodiscard]] bool IsMouse() const
    {
        return type >= EEvent::MouseButtonPress && type <= EEvent::MouseMove;
    }
    [[nodiscard]] bool IsKey() const
    {
        return type == EEvent::KeyPress || type == EEvent::KeyRelease;
    }
};

/// One widget of the chain from the top-level window down to the target.
struct SWidgetLevel
{
    std::string className;
    std::string objectName;
    std::string windowTitle; ///< of a button or label: its text
    SPoint pos;              ///< in its parent
    bool keyTitle = false;   ///< the title identifies the widget
    bool operator==(const SWidgetLevel&) const = default;
};

struct SLocator
{
    bool topIsMain = false;
    std::vector<SWidgetLevel> widgets; ///< never empty in a record that was read
    SPoint ptRefToTop;                 ///< the point in the top-level window
    std::string extraIndex;            ///< see ExtraIndex.h
    bool operator==(const SLocator&) const = default;
};

/// One row of the way from the root of a tree or list to an item.
struct STreeNode
{
    int row = 0;
    std::string title;
    bool operator==(const STreeNode&) const = default;
};

/// What an item view showed where the event went: column titles, and the rows down to the item.
struct SInsideItemView
{
    std::vector<std::string> columns;
    std::vector<STreeNode> path;
    bool operator==(const SInsideItemView&) const = default;
};

struct SRecordedEvent
{
    bool isCheckPoint = false; ///< compared, not played
    SEventFields fields;
    std::int64_t delayMs = 0; ///< since the event before
    bool hasExtraInfo = false;
    std::string extraInfo;
    SPointF realPos; ///< scene or world position
    bool async = false;
    SLocator target;
    std::optional<SInsideItemView> item;
    bool operator==(const SRecordedEvent&) const = default;
};

/// Where a record was made.
struct SRecordHeader
{
    std::int64_t osVersion = 0; ///< see OsName
    std::string osPrettyName;
    std::int64_t cpuCount = 0;
    std::uint64_t physicalMemory = 0; ///< bytes
    SPoint dpi;
    SPoint resolution;
    std::string envVarList;
    std::string toolVersion;
    SPoint mainWindowSize;
    bool operator==(const SRecordHeader&) const = default;
};

constexpr int kRecordVersion = 5;
constexpr int kHeaderVersion = 4;

struct SRecord
{
    int version = kRecordVersion;
    int headerVersion = kHeaderVersion;
    SRecordHeader header;
    std::vector<SRecordedEvent> events;
};

/// The operating system of a header: the name of its code, or that it lies below or above the
/// codes known.
const char* OsName(std::int64_t code);

} // namespace zov::ui::replay
