// SPDX-License-Identifier: Apache-2.0
/// One parameter of a parameter file: its leaves, and the rules that hold for every parameter.
///
///     SAmiParameter p = ReadAmiParameter(ami, node, "Ignore_Bits", kRules);
///     if (const SAmiToken* value = p.FixedValue()) ...
#pragma once

#include "ibischk/AmiFacts.h"
#include "ibischk/AmiTree.h"
#include "ibischk/AmiWords.h"
#include "ibischk/Check.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zov::ibischk {

/// One parameter file under check.
struct SAmiCheck
{
    SCheck& check;
    CReport& report;
    const CAmiTree& tree;
    EFileType type = EFileType::Ami;
    std::string_view versionText = "5.0";
    double version = 5.0;
    bool implicitVersion = true;      ///< the file has no AMI_Version
    bool resolves = false;            ///< Resolve_Exists is True
    EAmiSide side = EAmiSide::Open;   ///< by the parameters that were seen
    EAmiSide preset = EAmiSide::Open; ///< by the model that names the file

    [[nodiscard]] bool AtLeast(double first) const { return version >= first; }
    /// Is the file known to be of this side?
    [[nodiscard]] bool Is(EAmiSide which) const
    {
        return (side == EAmiSide::Open ? preset : side) == which;
    }
};

enum class EAmiDefault : std::uint8_t
{
    Optional, ///< beside a format, or in place of Value
    AsValue,  ///< in place of Value only
    Refused
};

/// What a parameter may be made of.
struct SAmiSets
{
    AmiSet usages;
    AmiSet types;
    AmiSet formats;
    EAmiDefault defaults;
    bool reserved; ///< a format outside of the set is an illegal word; else it misfits the Type
};

struct SAmiParameter
{
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    const CAmiTree* tree = nullptr;
    std::uint32_t node = kNone; ///< kNone: the file doesn't have it
    std::string_view name;      ///< as messages show it
    EAmiUsage usage = EAmiUsage::None;
    std::span<const SAmiToken> typeWords;
    std::optional<EAmiType> type; ///< of all values, or of the first column
    EAmiFormat format = EAmiFormat::None;
    std::uint32_t formatNode = kNone;
    std::span<const SAmiToken> values; ///< of the format
    const SAmiToken* defaultValue = nullptr;
    SPlace place;

    [[nodiscard]] bool Present() const { return node != kNone; }
    /// Value, else Default, else the first of the format's values; null for tables, distributions
    /// and parameters without any.
    [[nodiscard]] const SAmiToken* FixedValue() const;
    [[nodiscard]] bool IsTrue() const;
    /// Is the fixed value a string with this text?
    [[nodiscard]] bool IsString(std::string_view text) const;
    /// The values that a user may get: not the width or number of steps. Default not among them.
    [[nodiscard]] std::span<const SAmiToken> Choices() const;
    /// The library or the tool puts the real value in its place.
    [[nodiscard]] bool IsPlaceHolder() const
    {
        return usage == EAmiUsage::Out || usage == EAmiUsage::Dep;
    }
    /// Calls f with every choice and the default.
    template <class F>
    void ForEachChoice(F f) const
    {
        for (const SAmiToken& token : Choices()) {
            f(token);
        }
        if (defaultValue != nullptr) {
            f(*defaultValue);
        }
    }
};

/// Reads the leaves of a node without reporting anything.
[[nodiscard]] SAmiParameter FindAmiParameter(const CAmiTree& tree, std::uint32_t node,
                                             std::string_view name);

/// Reads the leaves of a node and checks shape, words, values, default and tips, in this order.
[[nodiscard]] SAmiParameter ReadAmiParameter(SAmiCheck& ami, std::uint32_t node,
                                             std::string_view name, const SAmiSets& sets);

/// Is it a node with leaves that only parameters have?
[[nodiscard]] bool IsAmiParameter(const CAmiTree& tree, std::uint32_t node);

/// The text is one quoted string: 4663.
void CheckAmiDescription(SAmiCheck& ami, std::uint32_t leaf, std::string_view owner);

/// 4648 when a value does not fit the type.
/// @param where  the leaf or format that it stands in
/// @return whether it fits
bool AcceptAmiValue(SAmiCheck& ami, const SAmiParameter& p, std::string_view where, SAmiToken value,
                    EAmiType type);

/// Number and order of the values of every format, with its own rules; tables in CheckAmiTable.
void CheckAmiValues(SAmiCheck& ami, const SAmiParameter& p);
void CheckAmiTable(SAmiCheck& ami, const SAmiParameter& p);
/// The default against the format's values.
void CheckAmiDefault(SAmiCheck& ami, const SAmiParameter& p, const SAmiSets& sets);

/// The number of a token; none when it is none or out of range.
[[nodiscard]] std::optional<double> AmiNumber(const CAmiTree& tree, SAmiToken token);

} // namespace zov::ibischk
