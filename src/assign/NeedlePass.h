// SPDX-License-Identifier: Apache-2.0
/// Many names against one column of texts in one pass.
#pragma once

#include "assign/FoldedTexts.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace zov {

/// What separates the texts that a name must equal: records' texts only, or also the keywords in
/// them, which stand between semicolons.
enum class EPieces
{
    Whole,
    Keywords
};

/// Told of a place where needle `index` stands in the text of a record; true: this needle is done.
/// Records come in rising order for each needle; the same record may come more than once.
using FNeedleHit = std::function<bool(std::uint32_t index, std::uint32_t record)>;

/// Every record one of whose pieces equals a needle. Needles are folded; equal ones may stand more
/// than once.
void FindEqual(const CFoldedTexts& texts, EPieces pieces, std::span<const std::string_view> needles,
               const FNeedleHit& hit);

/// Every record whose text holds a needle. Needles are folded, valid UTF-8, not empty and without
/// zero bytes.
void FindParts(const CFoldedTexts& texts, std::span<const std::string_view> needles,
               const FNeedleHit& hit);

/// The same for one needle, in the order of the records.
void FindPart(const CFoldedTexts& texts, std::string_view needle,
              const std::function<bool(std::uint32_t record)>& hit);

/// The same in some of the segments.
void FindPart(const CFoldedTexts& texts, std::span<const CFoldedTexts::SSegment> segments,
              std::string_view needle, const std::function<bool(std::uint32_t record)>& hit);

/// For one name: the first record among those that `wanted` takes with a piece that equals the
/// needle; when there is none, the first with a text that holds it.
struct SBestPart
{
    static constexpr std::uint32_t kNone = UINT32_MAX;
    std::uint32_t exact = kNone;
    std::uint32_t partial = kNone; ///< not looked for behind an exact one
};
[[nodiscard]] SBestPart FindBest(const CFoldedTexts& texts, EPieces pieces, std::string_view needle,
                                 const std::function<bool(std::uint32_t record)>& wanted);

} // namespace zov
