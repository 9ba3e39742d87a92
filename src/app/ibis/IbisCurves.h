// SPDX-License-Identifier: Apache-2.0
/// The tables of IBIS objects as curves: I-V and V-t with their corners.
#pragma once

#include "app/curves/CurvePage.h"
#include "ibis/DataFile.h"

namespace zov::app {

struct SIbisCurves
{
    /// Line styles: typ solid, min dashed, max dotted; a colour a table. Of several tables the
    /// legend names the typical curves only.
    std::vector<SShownCurve> curves;
    SPlotAxes axes;
    QString title; ///< what is shown; empty when the object has no tables
};

/// Of a table its corners; of a model or submodel the corners of all its I-V tables, or of its
/// waveforms when it has no others; of a waveform table the same.
[[nodiscard]] SIbisCurves CurvesOfObject(const ibis::CIPDataObject& object);

} // namespace zov::app
