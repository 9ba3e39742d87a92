// SPDX-License-Identifier: Apache-2.0
/// [Test Load].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"

#include <string_view>

namespace zov::ibischk {

struct STestLoad
{
    std::string_view name;
    SPlace place;
    std::string_view type;
    std::string_view receiver;
    std::string_view receiverInverting;
    SPlace receiverPlace;
    SPlace receiverInvertingPlace;
    bool hasLine = false; ///< Td and Zo
    bool hasFar = false;  ///< any element behind the line
    bool used = false;    ///< by a [Test Data]
};

extern const SFamily kTestloadFamily;

} // namespace zov::ibischk
