// SPDX-License-Identifier: Apache-2.0
/// Values as engineers write them: "4.7 nH", "1.5 GHz", and axes labelled so.
#pragma once

#include <QString>
#include <qwt_scale_draw.h>

namespace zov::app {

/// With an exponent in steps of three, as prefix letter from f to T where there is one.
/// @param unit    behind the prefix; may be empty
/// @param digits  significant ones
[[nodiscard]] QString EngineeringText(double value, const QString& unit, int digits = 5);

/// Labels of an axis: number and prefix; the unit stands in the axis title.
class CEngineeringScaleDraw final : public QwtScaleDraw
{
public:
    QwtText label(double value) const override;
};

} // namespace zov::app
