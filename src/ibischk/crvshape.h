// SPDX-License-Identifier: Apache-2.0
/// What an I-V table means for the buffer that it is part of.
#pragma once

#include "ibischk/mdlparts.h"

namespace zov::ibischk {

/// What a table is, whichever section it stands in.
struct SShape
{
    const SCurve& curve;
    EKeyword kind;  ///< as in a model
    int slope;      ///< of the current over the table voltage: 1 rises, -1 falls, 0 either
    SRails rails;   ///< typ; not complete in a submodel, which has those of its models
    double supply;  ///< the table's own, typ; kAbsent when not known
    double ground;  ///< the reference that the table voltage counts from; kAbsent alike
    bool fromAbove; ///< the table voltage counts downwards from it

    [[nodiscard]] bool IsDriver() const
    {
        return kind == EKeyword::Pulldown || kind == EKeyword::Pullup;
    }
    /// Voltage of the pad in a row.
    [[nodiscard]] double PadAt(std::size_t row) const
    {
        return fromAbove ? ground - curve.voltage[row] : ground + curve.voltage[row];
    }
};

/// No current in any row of any column.
[[nodiscard]] bool AllZero(const SCurve& curve);
/// The largest current, anywhere and between the supplies.
void CheckCurveSize(SCheck& check, const SShape& shape);
/// Range, values and columns of a table of a model.
void CheckCurveValues(SCheck& check, const SShape& shape, const SModelInfo& info);

} // namespace zov::ibischk
