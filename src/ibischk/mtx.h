// SPDX-License-Identifier: Apache-2.0
/// [Model Data] and its matrices.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/KeywordCodes.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class EMatrix : std::uint8_t
{
    None,
    Full,
    Banded,
    Sparse
};

/// An off-diagonal value. A full matrix has as many as its file has words, so they are kept small.
struct SSparseEntry
{
    std::uint32_t row;
    std::uint32_t column; ///< place of the pin in [Pin Numbers]
    float value;
    float digit; ///< what its last written digit is worth
};

/// The matrix that is open. Only its diagonal, the row that is open and what the checks of whole
/// matrices need are kept.
struct SMatrix
{
    EKeyword keyword = EKeyword::NotKey;
    EMatrix kind = EMatrix::None;
    SPlace place;
    std::size_t bandwidth = 0;
    bool hasBandwidth = false;
    std::vector<double> diagonal; ///< by pin; kAbsent where none was given
    std::vector<double> digit;    ///< by pin: what the diagonal's last written digit is worth
    std::vector<bool> rowSeen;    ///< by pin
    std::size_t row = 0;          ///< pin of the open row
    bool rowOpen = false;
    SPlace rowPlace;
    std::size_t valuesInRow = 0;
    std::size_t lastRow = 0;                ///< of the row before, from 1; 0 for none
    std::vector<std::uint32_t> rowOfColumn; ///< row that last had the column, from 1
    bool spoiled = false;                   ///< a row was refused: what is missing is not told
    std::vector<SSparseEntry> entries;      ///< off-diagonal ones, all rows
};

extern const SFamily kMtxFamily;

} // namespace zov::ibischk
