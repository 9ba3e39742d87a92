// SPDX-License-Identifier: Apache-2.0
/// The elements of events and headers as tables, which reader and writer walk.
#pragma once

#include "ui/replay/RecordedEvent.h"

#include <span>
#include <variant>

namespace zov::ui::replay {

template <typename TOwner>
struct SField
{
    const char* element;
    std::variant<std::int64_t TOwner::*, std::uint64_t TOwner::*, SPoint TOwner::*,
                 SPointF TOwner::*, std::string TOwner::*>
        member;
};

/// The fields of an event type in their order; those of an input method event without its
/// attributes, which stand before them.
std::span<const SField<SEventFields>> FieldsOf(EEvent type);
std::span<const SField<SInputAttribute>> AttributeFields();
std::span<const SField<SRecordHeader>> HeaderFields();

} // namespace zov::ui::replay
