// SPDX-License-Identifier: Apache-2.0
#include "app/curves/EngineeringText.h"

#include "base/Number.h"

#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace zov::app {
namespace {

constexpr int kLeastPower = -15;
constexpr int kMostPower = 12;
constexpr int kLabelDigits = 6;
const QString& Prefixes()
{
    static const QString prefixes = QStringLiteral("fpn\u00b5m kMGT");
    return prefixes;
}

} // namespace

QString EngineeringText(double value, const QString& unit, int digits)
{
    int power = 0;
    // Decibels and degrees have no prefixes.
    const bool isPlain = unit.startsWith(QStringLiteral("dB")) || unit == QStringLiteral("\u00b0");
    if (!isPlain && value != 0.0 && std::isfinite(value)) {
        // Rounded first: 999.9999 of five digits is 1000, which is 1 k.
        const double rounded = *ParseDouble(FormatG(value, digits));
        power = static_cast<int>(std::floor(std::log10(std::abs(rounded)) / 3.0 + 1e-12)) * 3;
    }
    const bool hasPrefix = power >= kLeastPower && power <= kMostPower;
    QString text = QString::fromStdString(
        FormatG(hasPrefix ? ScaleByPowerOfTen(value, -power) : value, digits));
    const QString prefix =
        hasPrefix && power != 0 ? QString(Prefixes().at((power - kLeastPower) / 3)) : QString();
    if (!prefix.isEmpty() || !unit.isEmpty()) {
        text += QLatin1Char(' ') + prefix + unit;
    }
    return text;
}

QwtText CEngineeringScaleDraw::label(double value) const
{
    // What is left of a sum of steps that should be 0; a logarithmic scale has none.
    const bool isLinear = scaleMap().transformation() == nullptr;
    const double step = isLinear ? scaleDiv().range() * 1e-9 : 0.0;
    return EngineeringText(std::abs(value) < step ? 0.0 : value, {}, kLabelDigits)
        .remove(QLatin1Char(' '));
}

} // namespace zov::app
