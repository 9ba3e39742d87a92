// SPDX-License-Identifier: Apache-2.0
/// [Bus Label], and the labels that a component's rails carry.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace zov::ibischk {

struct SBusLabel
{
    std::string_view label;
    std::string_view signal;
    SPlace place;
};

struct SComponent;

/// The rails of a component: signal names of POWER and GND pins, and whose label a bus label is.
/// A label belongs to one signal name; a rail without any has its own signal name as label.
class CRails
{
public:
    explicit CRails(const SComponent& component);

    /// Is it the signal_name of a POWER or GND pin?
    [[nodiscard]] bool IsRailSignal(std::string_view signal) const;
    /// The signal name that [Pin Mapping] gives a label to; empty when it gives none.
    [[nodiscard]] std::string_view MappedSignal(std::string_view label) const;
    /// The signal name that any of the tables gives a label to; empty for none.
    [[nodiscard]] std::string_view SignalOf(std::string_view label) const;
    [[nodiscard]] bool IsLabel(std::string_view label) const;
    /// Gives a label that belongs to nothing to a signal name.
    void Give(std::string_view label, std::string_view signal);

private:
    std::unordered_set<std::string_view> m_signals;
    std::unordered_map<std::string_view, std::string_view> m_mapped;
    std::unordered_map<std::string_view, std::string_view> m_given;
};

extern const SFamily kBuslabelFamily;

} // namespace zov::ibischk
