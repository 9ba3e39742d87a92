// SPDX-License-Identifier: Apache-2.0
/// The numbers of a Touchstone file: one pass over the bytes into matrices.
#pragma once

#include "network/NetworkData.h"

#include <string_view>

namespace zov::network {

struct SBodyLayout
{
    std::uint32_t ports = 1;
    EStorage storage = EStorage::Full;
    EDataFormat format = EDataFormat::Ri;
    int frequencyPower = 0;        ///< of the unit: frequencies are read times ten to it
    bool columnFirst = false;      ///< two-ports whose pairs come as 11, 21, 12, 22
    bool noiseMayFollow = false;   ///< five numbers a line behind the data, of lower frequency
    std::uint64_t frequencies = 0; ///< as announced, 0 when it was not
};

enum class EBodyEnd
{
    Text,    ///< all bytes were read
    Keyword, ///< a '[' where a frequency might stand
    Noise,
    BrokenPoint,  ///< the text ended, or something else than a number came, within a matrix
    BrokenNumber, ///< no number where a frequency might stand
    BadFrequency  ///< negative, or not above the one before
};

struct SBody
{
    std::vector<double> hz;
    CNetworkData::TValues values; ///< real and imaginary parts, row by row
    EBodyEnd end = EBodyEnd::Text;
    std::size_t stop = 0; ///< offset in the text of what ended it
    std::size_t comments = 0;
    std::size_t point = 0; ///< offset of the last frequency that was begun
};

/// @param text  the data; a comment reaches from '!' or '#' to the end of its line
[[nodiscard]] SBody ScanBody(std::string_view text, const SBodyLayout& layout);

/// Numbers on a line and what follows them.
struct SLineShape
{
    std::size_t numbers = 0;
    bool clean = true; ///< nothing but numbers, separators and a comment
    double first = 0.0;
};
[[nodiscard]] SLineShape ShapeOf(std::string_view line);

/// Port count that the data looks made for, by the custom that a frequency begins a line and the
/// others have an even count of numbers; 0 when that leads to nothing.
[[nodiscard]] std::uint32_t GuessPorts(std::string_view text);

} // namespace zov::network
