// SPDX-License-Identifier: Apache-2.0
/// What a user types into a search field, as a test of records.
///
///     0402 x7r                 both words somewhere in the record's texts, wherever they stand
///     GRM*104?                 * any text, ? one character, within one text
///     maker:mur  size=0402     one property: contains, is
///     Cnom 90nF..110nF         value between, both ends included; "90nF.." and "..110nF" are open
///     volt>=16  l<2.2uH        value compared
///     type:ind                 record type
///     is:incomplete            lacks what its type requires, or has no model
///     -tantal  -maker:acme     not
///     "low loss"               one text with its blanks
///
/// Words are compared without regard to case. All terms have to hold.
#pragma once

#include "base/Result.h"
#include "core/ZovRcdProps.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// One condition.
struct SQueryTerm
{
    enum class EKind : std::uint8_t
    {
        Word,     ///< contained in any text
        Property, ///< contained in one text property
        PropertyIs,
        Range, ///< value of one property between low and high
        Type,
        Incomplete
    };
    EKind kind = EKind::Word;
    bool negated = false;
    bool openLow = false;  ///< Range: low itself is out
    bool openHigh = false; ///< Range: high itself is out
    EPropId property = EPropId::ModelName;
    std::string text; ///< as typed, wildcards included
    double low = 0.0;
    double high = 0.0;
    bool operator==(const SQueryTerm&) const = default;
};

class CRecordQuery
{
public:
    /// An empty query matches every record. Errors (Argument) say which word can't be understood
    /// and what is expected, pos.column where: a number without meaning in a range, a
    /// quote that is not closed, an unknown word after "is:".
    static CResult<CRecordQuery> Parse(std::string_view text);

    [[nodiscard]] bool Matches(const CZovRcdProps& record) const;
    [[nodiscard]] bool IsEmpty() const { return m_terms.empty(); }
    [[nodiscard]] const std::vector<SQueryTerm>& Terms() const { return m_terms; }

private:
    std::vector<SQueryTerm> m_terms;
};

/// What the record's type requires and the record lacks, as a user reads it ("Cnom", "Size of at
/// least four characters", "model"); empty when it is complete.
[[nodiscard]] std::vector<std::string> MissingIn(const CZovRcdProps& record);

/// The property that a user means: its name, or a usual short one ("maker", "mpn", "c", "v"). None
/// for any other word. The case does not count.
[[nodiscard]] const SPropInfo* FindPropertyByWord(std::string_view word);

} // namespace zov
