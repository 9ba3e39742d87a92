// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisCurves.h"

#include <QCoreApplication>

#include <array>
#include <cmath>

namespace zov::app {
namespace {

constexpr const char* kCorners[] = {"typ", "min", "max"};
constexpr curve::ELineStyle kStyles[] = {curve::ELineStyle::Solid, curve::ELineStyle::Dash,
                                         curve::ELineStyle::Dot};

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString Tr(const char* text)
{
    return QCoreApplication::translate("IbisCurves", text);
}

void AddTable(const ibis::CIPDataTable& table, std::size_t number, bool isAlone, SIbisCurves& out)
{
    for (std::size_t corner = 0; corner < std::size(kCorners); ++corner) {
        if (!table.HasCorner(corner)) {
            continue;
        }
        auto made = std::make_shared<curve::CCurve>();
        made->Header().legend = std::string(table.Name()) + ' ' + kCorners[corner];
        made->Header().style = kStyles[corner];
        const auto axis = table.Axis();
        const auto values = table.Corner(corner);
        for (std::size_t i = 0; i < axis.size(); ++i) {
            if (std::isfinite(axis[i]) && std::isfinite(values[i])) {
                made->Points().Add(std::array{axis[i], values[i]});
            }
        }
        out.curves.push_back({std::move(made),
                              curve::EUnitClass::None,
                              CurveColor(number),
                              true,
                              {},
                              isAlone || corner == 0});
    }
}

SPlotAxes AxesOfTable(const ibis::CIPDataTable& table)
{
    const auto* wave = dynamic_cast<const ibis::CIPDataWaveForm*>(&table);
    const SPlotAxes volts = {Tr("Voltage"), QStringLiteral("V"), Tr("Current"),
                             QStringLiteral("A")};
    if (wave == nullptr) {
        return volts;
    }
    return {Tr("Time"), QStringLiteral("s"), wave->IsCurrent() ? volts.yName : volts.xName,
            wave->IsCurrent() ? volts.yUnit : volts.xUnit};
}

template <class TTable>
void AddAll(const ibis::CIPDataObject& object, SIbisCurves& out)
{
    const std::vector<const TTable*> tables = object.All<TTable>();
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (i == 0) {
            out.axes = AxesOfTable(*tables[i]);
        }
        AddTable(*tables[i], i, tables.size() == 1, out);
    }
}

} // namespace

SIbisCurves CurvesOfObject(const ibis::CIPDataObject& object)
{
    SIbisCurves out;
    if (const ibis::CIPDataTable* table = object.Table()) {
        out.axes = AxesOfTable(*table);
        AddTable(*table, 0, true, out);
    } else {
        AddAll<ibis::CIPDataCurve>(object, out);
        if (out.curves.empty()) {
            AddAll<ibis::CIPDataWaveForm>(object, out);
        }
    }
    if (!out.curves.empty()) {
        out.title = (Text(object.Name()) + QLatin1Char(' ') + Text(object.Value())).trimmed();
    }
    return out;
}

} // namespace zov::app
