// SPDX-License-Identifier: Apache-2.0
/// What a column may feed: the properties offered for each component type, with label, library
/// property, default unit and the units that may be chosen.
#pragma once

#include "core/RecordTypes.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov::batch {

enum class EField : std::uint8_t
{
    ModelName,
    MfgPartNo,
    Manufacturer,
    Size,
    SizeUnit,
    Cnom,
    ComponentCost,
    MountingCost,
    BomPenaltyCost,
    UpperTolerance,
    LowerTolerance,
    Volt,
    Tcc,
    Preference,
    Comment,
    ModelType,
    Resistance,
    Inductance,
    Cact,
    LookupKeyword,
    MaxCurrent,
    FileName,
    FilePath,
    NodeAssignment
};
constexpr std::size_t kFieldCount = 24;

/// A value for each field.
template <class T>
class CPerField
{
public:
    T& operator[](EField field) { return m_values[static_cast<std::size_t>(field)]; }
    const T& operator[](EField field) const { return m_values[static_cast<std::size_t>(field)]; }

private:
    std::array<T, kFieldCount> m_values{};
};

struct SFieldInfo
{
    EField field;
    std::string_view label;     ///< as shown in the mapping table
    std::string_view attribute; ///< the library's own name of it, empty where there is none
    EPropId id; ///< property of the record; of no meaning when the field only steers generation
    EQuantity quantity;
    std::string_view defaultUnit; ///< empty where the field has no unit
    /// Units that may be chosen, in the order in which they are offered; empty when there is
    /// nothing to choose. The dialog offers "From File" (kFromFile) beside those of a quantity.
    std::span<const std::string_view> units;
};

/// "From File": the cell carries its own unit, or its own size-system letter.
constexpr std::string_view kFromFile = "From File";

[[nodiscard]] const SFieldInfo& InfoOf(EField field);
/// All fields, in the order of EField.
[[nodiscard]] std::span<const SFieldInfo> Fields();
/// Those offered for a component type, in the order of the mapping table; empty for other types.
[[nodiscard]] std::span<const EField> FieldsOf(ERecordType type);
[[nodiscard]] bool IsFieldOf(EField field, ERecordType type);

/// By label or library attribute, without regard to case and to blanks beside punctuation; "Part
/// NO." is the model name.
[[nodiscard]] std::optional<EField> FindField(std::string_view name);
/// The labels of a type's fields, comma separated, for messages.
[[nodiscard]] std::string FieldList(ERecordType type);

/// "Capacitor", "Inductor", "Resistor", without regard to case; none for anything else.
[[nodiscard]] std::optional<ERecordType> FindComponentType(std::string_view word);

/// Spelling of the unit in the field's list that equals `name` without regard to case; none when
/// the list has no such unit. "mOhm" before "MOhm" is no question: no list has both.
[[nodiscard]] std::optional<std::string_view> FindListedUnit(EField field, std::string_view name);

// --- words of cells --------------------------------------------------------------------------

enum class EModelKind : std::uint8_t
{
    Rlc,
    Circuit,
    Sparameter
};
constexpr std::array<std::string_view, 3> kModelKindWords = {"RLC", "Circuit", "Sparameter"};
[[nodiscard]] std::optional<EModelKind> FindModelKind(std::string_view word);

enum class ESizeSystem : std::uint8_t
{
    FromFile,
    English,
    Metric
};
constexpr std::array<std::string_view, 3> kSizeSystemWords = {kFromFile, "English", "Metric"};
[[nodiscard]] std::optional<ESizeSystem> FindSizeSystem(std::string_view word);

enum class ENodeAssignment : std::uint8_t
{
    Series,
    Shunt
};
constexpr std::array<std::string_view, 2> kNodeAssignmentWords = {"Series", "Shunt"};
[[nodiscard]] std::optional<ENodeAssignment> FindNodeAssignment(std::string_view word);

} // namespace zov::batch
