// SPDX-License-Identifier: Apache-2.0
/// The columns of model lists: what a cell shows, and what it is sorted by.
#pragma once

#include "core/Units.h"
#include "core/ZovRcdProps.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zov::app {

/// Kept in the user's settings by number: never renumber one.
enum class EModelColumn : std::uint32_t
{
    Name = 0,
    Type = 1,
    Manufacturer = 2,
    PartNumber = 3,
    Size = 4,
    Value = 5, ///< Cnom, Inductance or Resistance
    Voltage = 6,
    Current = 7,
    UpTolerance = 8,
    LowTolerance = 9,
    Characteristic = 10,
    Model = 11,
    Note = 12, ///< comment of a discrete, description of others
    Prefer = 13,
    PriceA = 14,
    PriceB = 15,
    PriceC = 16,
    PriceBook = 17,
    Lookup = 18,
    SubModel = 19,
    DcBias = 20,
    Temperature = 21,
    Missing = 22, ///< what the record lacks
    ModelC = 23,  ///< of the record's model, by the electrical truth check
    ModelEsr = 24,
    ModelResonance = 25
};
/// Columns whose cells are computed from model files, see TruthCache.h.
constexpr bool IsOfModelFile(EModelColumn column)
{
    return column >= EModelColumn::ModelC && column <= EModelColumn::ModelResonance;
}

struct SModelColumn
{
    EModelColumn column;
    const char* title;
    int width = 80; ///< pixels at 96 dpi
    bool shown = true;
    bool isNumber = false; ///< right-aligned
};

/// All of them in the order in which a new user sees them.
std::span<const SModelColumn> ModelColumns();

QString ModelCell(const CZovRcdProps& record, EModelColumn column, const CDisplayUnits& units);

/// What a column is sorted by: the text, without regard to case, then the number. Neither: the
/// record has no value there and comes last in both directions.
struct SSortKey
{
    std::optional<double> number;
    std::string_view text;

    [[nodiscard]] bool IsEmpty() const { return !number && text.empty(); }
};
SSortKey ModelSortKey(const CZovRcdProps& record, EModelColumn column);

} // namespace zov::app
