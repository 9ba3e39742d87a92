// SPDX-License-Identifier: Apache-2.0
/// What other families have to know of a parameter file.
#pragma once

#include <cstdint>

namespace zov::ibischk {

/// Which end of a channel a file describes.
enum class EAmiSide : std::uint8_t
{
    Open, ///< both, or not known yet
    Tx,
    Rx
};

struct SAmiFacts
{
    bool read = false;     ///< its tree could be read
    bool getWave = false;  ///< GetWave_Exists is True
    bool resolve = false;  ///< Resolve_Exists is True
    bool impulse = false;  ///< BCI_Training_Mode offers Impulse
    bool repeater = false; ///< Repeater_Type is given
};

} // namespace zov::ibischk
