// SPDX-License-Identifier: Apache-2.0
/// Which records a list shows, and in which order: found by a query, not hidden by the settings,
/// sorted by a column. Works on any thread; the libraries must not change meanwhile.
#pragma once

#include "app/ModelColumns.h"
#include "core/RecordQuery.h"
#include "core/Settings.h"
#include "core/ZovLibrary.h"

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace zov::app {

/// Where a row comes from. A list over one library has source 0 everywhere.
struct SModelRow
{
    std::uint32_t source = 0; ///< position in the list of libraries
    std::uint32_t record = 0; ///< position in the library
    bool operator==(const SModelRow&) const = default;
};

/// Numbers of a column that records don't hold themselves.
using TColumnValues = std::unordered_map<const CZovRcdProps*, double>;

struct SRowOrder
{
    bool sorted = false; ///< false: the order of the libraries
    EModelColumn column = EModelColumn::Name;
    bool descending = false;
    /// Of a column of model files; a record that is not in it comes last.
    std::shared_ptr<const TColumnValues> values = nullptr;
};

/// Decoupling capacitors outside these limits are not shown; other records always are.
struct SHideRules
{
    SHideLimit capacitanceLess;
    SHideLimit capacitanceMore;
    SHideLimit voltageLess;
    SHideLimit voltageMore;

    static SHideRules Of(const SZovSettings& settings);
    [[nodiscard]] bool Any() const
    {
        return capacitanceLess.on || capacitanceMore.on || voltageLess.on || voltageMore.on;
    }
    /// A capacitor without the value in question is shown.
    [[nodiscard]] bool Hides(const CZovRcdProps& record) const;
};

struct SRowRequest
{
    CRecordQuery query;
    ERecordType type = ERecordType::Any; ///< the only one that is shown
    SHideRules hide;
    SRowOrder order;
};

/// Rows that are taken in this order when they match, in place of all records: those of a query
/// without words, sorted before.
using TBaseRows = std::shared_ptr<const std::vector<SModelRow>>;

/// Called every few thousand records with what share is done; false ends the work.
using RowProgress = std::function<bool(double)>;

/// The rows; what was found so far when the work was ended.
/// @param base  of the same hide rules and order; null for all records
std::vector<SModelRow> SelectRows(const std::vector<const CZovLibrary*>& libraries,
                                  const SRowRequest& request, const RowProgress& progress,
                                  const TBaseRows& base = nullptr);

} // namespace zov::app
