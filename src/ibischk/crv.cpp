// SPDX-License-Identifier: Apache-2.0
#include "ibischk/crv.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::Pulldown, nullptr, &PassOver, nullptr},
    {EKeyword::Pullup, nullptr, &PassOver, nullptr},
    {EKeyword::GNDClamp, nullptr, &PassOver, nullptr},
    {EKeyword::POWERClamp, nullptr, &PassOver, nullptr},
    {EKeyword::SeriesCurrent, nullptr, &PassOver, nullptr},
    {EKeyword::SeriesMOSFET, nullptr, &PassOver, nullptr},
    {EKeyword::ISSOPD, nullptr, &PassOver, nullptr},
    {EKeyword::ISSOPU, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelPulldown, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelPullup, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelGNDClamp, nullptr, &PassOver, nullptr},
    {EKeyword::SubmodelPOWERClamp, nullptr, &PassOver, nullptr},
};

} // namespace

const SFamily kCrvFamily = {"crv", kHandlers, {}, nullptr};

void SCurve::Clear(EKeyword of, SPlace at)
{
    keyword = of;
    place = at;
    vds = kAbsent;
    voltage.clear();
    line.clear();
    for (auto& column : current) {
        column.clear();
    }
}

} // namespace zov::ibischk
