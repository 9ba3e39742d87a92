// SPDX-License-Identifier: Apache-2.0
/// A set of curves that are drawn together, with what it was loaded from.
#pragma once

#include "curve/Curve.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

class CCurveSet
{
public:
    std::string name;
    std::string description;
    EKind kind = EKind::FrequencyDomain;
    EUnitClass unitClass = EUnitClass::None;

    [[nodiscard]] std::span<const TCurvePtr> Curves() const { return m_curves; }
    /// That of the first curve that has one.
    [[nodiscard]] EValueClass ValueClass() const;
    /// Paths of the files that were loaded.
    [[nodiscard]] std::span<const std::string> Sources() const { return m_sources; }
    /// Without regard to case.
    [[nodiscard]] bool HasSource(std::string_view path) const;

    void Add(TCurvePtr curve) { m_curves.push_back(std::move(curve)); }
    void Remove(const CCurve& curve);
    void AddSource(std::string path) { m_sources.push_back(std::move(path)); }
    /// The file may be loaded again. Without regard to case.
    void RemoveSource(std::string_view path);
    /// The kind of what joins, unless this set keeps its own.
    void TakeKind(EKind joining);

    /// Called after each load, so that views draw again.
    std::function<void()> onChanged;

private:
    std::vector<TCurvePtr> m_curves;
    std::vector<std::string> m_sources;
};

} // namespace zov::curve
