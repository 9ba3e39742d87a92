// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveSet.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::curve {

EValueClass CCurveSet::ValueClass() const
{
    for (const TCurvePtr& curve : m_curves) {
        if (const EValueClass found = curve->ValueClass(); found != EValueClass::None) {
            return found;
        }
    }
    return EValueClass::None;
}

bool CCurveSet::HasSource(std::string_view path) const
{
    return std::any_of(m_sources.begin(), m_sources.end(),
                       [&](const std::string& source) { return EqualsNoCase(source, path); });
}

void CCurveSet::Remove(const CCurve& curve)
{
    std::erase_if(m_curves, [&](const TCurvePtr& held) { return held.get() == &curve; });
}

void CCurveSet::RemoveSource(std::string_view path)
{
    std::erase_if(m_sources, [&](const std::string& source) { return EqualsNoCase(source, path); });
}

void CCurveSet::TakeKind(EKind joining)
{
    if (kind != EKind::Fixed) {
        kind = joining;
    }
}

} // namespace zov::curve
