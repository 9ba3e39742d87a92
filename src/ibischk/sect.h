// SPDX-License-Identifier: Apache-2.0
/// Sections of package stubs and board paths: Len L R C, Fork, Endfork, Pin, Node.
#pragma once

#include "ibischk/Tokens.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SCheck;

enum class EPathItem : std::uint8_t
{
    Nothing,
    Section,
    Fork,
    Endfork,
    Pin,
    Node
};

/// Totals when the length is zero, else per unit of length.
struct SSection
{
    double length = 0.0;
    double l = 0.0;
    double r = 0.0;
    double c = 0.0;
    SPlace place;
};

/// A stub or a path while its lines are read; a section may span lines.
struct SPath
{
    std::string_view name;
    SPlace place;
    EPathItem first = EPathItem::Nothing;
    EPathItem last = EPathItem::Nothing;
    SSection section;               ///< the last one
    std::vector<std::size_t> forks; ///< sections inside each open fork
    std::size_t sections = 0;
    std::uint8_t seen = 0;  ///< bits: L, R, C of the open section
    bool inSection = false; ///< "/" is awaited
};

/// First numbers of the rules of sections.
constexpr int kStubRules = 3420;
constexpr int kPathRules = 4330;

/// Takes sections, Fork and Endfork off the front of a line, up to its end or to a word that is
/// none of them (which stays), such as a pin's name.
/// @param base  kStubRules or kPathRules; only the branches of paths must end in a pin or node
void TakeSections(SCheck& check, const SLine& line, std::string_view& rest, SPath& path, int base);
/// What needs the whole stub or path: open sections and forks.
void ClosePath(SCheck& check, SPath& path, int base);
/// A pin or node of a path: what stands between it and the item before is complete.
void AddPathItem(SPath& path, EPathItem kind);

} // namespace zov::ibischk
