// SPDX-License-Identifier: Apache-2.0
/// What a design's texts say of a capacitor, inductor or resistor: "100nF 16V 0402", "R_4k7",
/// "4u7/10V".
#pragma once

#include "assign/Design.h"
#include "core/ZovRcdProps.h"

#include <optional>
#include <string>

namespace zov::app {

struct SDiscreteGuess
{
    ERecordType type = ERecordType::Capacitor;
    double value = 0.0;            ///< F, H or ohm
    std::optional<double> voltage; ///< of a capacitor, in V
    std::string size;              ///< case-size code with its system letter; may be empty
    std::string text;              ///< where it was read
};

/// The required type, else that of the designators, which are all C, L or R; none when that is no
/// capacitor, inductor or resistor.
[[nodiscard]] std::optional<ERecordType> DiscreteTypeOf(const SDesignComponent& component);

/// The type is the required one, else that of its designators (all C, L or R), else that of the
/// unit. The value comes from the component's value text, else from its name; it must carry a unit,
/// except for a resistor's value text that is nothing but a number. None when there is no such
/// value.
[[nodiscard]] std::optional<SDiscreteGuess> GuessDiscrete(const SDesignComponent& component);

/// Makes a record of the guess's type an ideal part of its value.
void FillDiscrete(CZovRcdProps& record, std::string_view name, const SDiscreteGuess& guess);

} // namespace zov::app
