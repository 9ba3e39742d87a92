// SPDX-License-Identifier: Apache-2.0
/// Sections of package stubs and board paths: Len L R C, Fork, Endfork, Pin, Node.
#pragma once

#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class EPathItem : std::uint8_t
{
    Section,
    Fork,
    Endfork,
    Pin,
    Node
};

struct SPathItem
{
    EPathItem kind = EPathItem::Section;
    double length = 0.0;
    double l = 0.0;
    double r = 0.0;
    double c = 0.0;
    std::string_view name; ///< of a pin or node
    SPlace place;
};

/// A stub or a path while its lines are read; a section may span lines.
struct SPath
{
    std::string_view name;
    SPlace place;
    std::vector<SPathItem> items;
    std::size_t forkDepth = 0;
    bool inSection = false; ///< "/" is awaited
};

} // namespace zov::ibischk
