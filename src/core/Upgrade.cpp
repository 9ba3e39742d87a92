// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <cmath>
#include <fmt/format.h>

namespace zov {

namespace {

/// A value that an older file held as text: with a unit suffix it says itself what it is, without
/// one it is in the unit that the user works in.
std::optional<double> ValueOfOldText(const SOldValue& old, const CDisplayUnits& units)
{
    const EQuantity quantity = FindProperty(old.id)->quantity;
    const bool hasSuffix = !old.text.empty() && !IsDigit(old.text.back()) && old.text.back() != '.';
    std::string text(Trim(old.text));
    if (!hasSuffix && quantity != EQuantity::None) {
        text += units.Of(quantity).suffix;
    }
    return ParseQuantity(text, quantity);
}

} // namespace

CResult<void> UpgradeLibrary(CZovLibrary& library, const std::vector<SOldValue>& oldValues,
                             const CDisplayUnits& units)
{
    for (const SOldValue& old : oldValues) {
        CZovRcdProps& record = library.At(old.record);
        const auto value = ValueOfOldText(old, units);
        if (!value) {
            return Fail(EErr::Format,
                        fmt::format("'{}': {} is '{}', expected a number", record.Name(),
                                    FindProperty(old.id)->name, old.text));
        }
        record.SetDouble(old.id, *value);
    }
    for (const CZovRcdProps* record : library.Records()) {
        for (std::uint64_t rest = record->Mask() & DoubleProperties(); rest != 0;
             rest &= rest - 1) {
            const auto id = static_cast<EPropId>(std::countr_zero(rest));
            if (!std::isfinite(*record->GetDouble(id))) {
                return Fail(EErr::Format, fmt::format("'{}': {} is not a finite number",
                                                      record->Name(), FindProperty(id)->name));
            }
        }
    }
    return {};
}

} // namespace zov
