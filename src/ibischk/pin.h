// SPDX-License-Identifier: Apache-2.0
/// [Pin] and [Pin Mapping].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"

#include <cstdint>
#include <string_view>

namespace zov::ibischk {

enum class EPinKind : std::uint8_t
{
    Signal, ///< has a [Model] or [Model Selector]
    Power,
    Gnd,
    NoConnect,
    CircuitCall
};

struct SPin
{
    std::string_view name;
    std::string_view signal;
    std::string_view model;
    double r = kAbsent; ///< ohm; absent: the [Package] value
    double l = kAbsent; ///< henry
    double c = kAbsent; ///< farad
    SPlace place;       ///< of the model name, which most findings are about
    EPinKind kind = EPinKind::Signal;

    [[nodiscard]] bool IsRail() const { return kind == EPinKind::Power || kind == EPinKind::Gnd; }
};

/// Is it a pin that a buffer stands behind?
[[nodiscard]] constexpr bool HasBuffer(const SPin& pin)
{
    return pin.kind == EPinKind::Signal;
}
/// "POWER", "GND", "NC", "CIRCUITCALL" or "a signal".
[[nodiscard]] std::string_view PinKindText(EPinKind kind);

struct SPinMapping
{
    std::string_view pin;
    std::string_view pulldown;
    std::string_view pullup;
    std::string_view gndClamp;   ///< empty when the row is short
    std::string_view powerClamp; ///< empty when the row is short
    std::string_view extRef;     ///< empty when the row is short
    SPlace place;
};

extern const SFamily kPinFamily;

} // namespace zov::ibischk
