// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveAxes.h"

#include "base/Text.h"
#include "curve/CurveLines.h"

#include <QCoreApplication>

#include <algorithm>
#include <vector>

namespace zov::app {
namespace {

using curve::EKind;
using curve::EUnitClass;

QString Tr(const char* text)
{
    return QCoreApplication::translate("CurveAxes", text);
}

struct STitle
{
    QString name;
    QString unit;
};

/// "Freq(Hz)" is Freq in Hz.
STitle TitleOf(std::string_view token)
{
    const std::size_t open = token.find('(');
    const std::size_t close = token.rfind(')');
    const std::string_view name = token.substr(0, open);
    const bool hasUnit = open != token.npos && close != token.npos && close > open;
    const std::string_view unit = hasUnit ? token.substr(open + 1, close - open - 1) : "";
    return {QString::fromUtf8(name.data(), static_cast<int>(name.size())),
            QString::fromUtf8(unit.data(), static_cast<int>(unit.size()))};
}

/// Of the values of a curve that is not complex; empty when its points have no titles.
STitle RealTitleOf(const curve::CCurve& curve)
{
    std::string_view titles = curve.Header().columnTitles;
    static_cast<void>(curve::NextToken(titles));
    return TitleOf(curve::NextToken(titles));
}

void TakeX(const curve::CCurveSet& set, const std::vector<const SShownCurve*>& seen,
           SPlotAxes& axes)
{
    const bool byFrequency = HasComplexValues(set.kind) || set.kind == EKind::Vswr;
    axes.xName = byFrequency ? Tr("Frequency") : Tr("x");
    axes.xUnit = byFrequency ? QStringLiteral("Hz") : QString();
    if (!seen.empty()) {
        std::string_view titles = seen.front()->curve->Header().columnTitles;
        const STitle title = TitleOf(curve::NextToken(titles));
        if (!title.name.isEmpty() && !title.unit.isEmpty()) {
            axes.xName =
                title.name.startsWith(QStringLiteral("Freq")) ? Tr("Frequency") : title.name;
            axes.xUnit = title.unit;
        }
    }
}

QString UnitText(EUnitClass unit, EKind kind)
{
    if (unit == EUnitClass::Ohm) {
        return QStringLiteral("\u03a9");
    }
    if (unit == EUnitClass::Siemens) {
        return QStringLiteral("S");
    }
    return kind == EKind::Voltage || kind == EKind::VoltageFullHeader ? QStringLiteral("V")
           : kind == EKind::Erl                                       ? QStringLiteral("dB")
                                                                      : QString();
}

/// Decibels of different quantities are still decibels.
QString CommonUnit(const QString& one, const QString& other)
{
    const QString decibel = QStringLiteral("dB");
    const bool areDecibels = one.startsWith(decibel) && other.startsWith(decibel);
    return one == other ? one : areDecibels ? decibel : QString();
}

QString QuantityOf(EKind kind)
{
    switch (kind) {
    case EKind::Voltage:
    case EKind::VoltageFullHeader:
        return Tr("Voltage");
    case EKind::Erl:
        return QStringLiteral("ERL");
    case EKind::Vswr:
        return QStringLiteral("VSWR");
    default:
        return Tr("Value");
    }
}

QString QuantityOf(ECurveView view)
{
    switch (view) {
    case ECurveView::Magnitude:
    case ECurveView::Db:
        return Tr("Magnitude");
    case ECurveView::Phase:
        return Tr("Phase");
    case ECurveView::Real:
        return Tr("Real part");
    default:
        return Tr("Imaginary part");
    }
}

} // namespace

EUnitClass UnitOf(const curve::CCurve& curve, EUnitClass ofSet)
{
    std::string_view titles = curve.Header().columnTitles;
    static_cast<void>(curve::NextToken(titles));
    const std::string_view unit = curve::NextToken(titles);
    return EqualsNoCase(unit, "Real(Ohm)") ? EUnitClass::Ohm
           : EqualsNoCase(unit, "Real(S)") ? EUnitClass::Siemens
                                           : ofSet;
}

QString ValueUnit(const SShownCurve& entry, EKind kind, ECurveView view)
{
    const bool isComplex = !entry.curve->Points().Column(2).empty();
    if (isComplex && view == ECurveView::Phase) {
        return QStringLiteral("\u00b0");
    }
    if (!isComplex && entry.unit == EUnitClass::None) {
        if (const STitle title = RealTitleOf(*entry.curve); !title.name.isEmpty()) {
            return title.unit;
        }
    }
    const QString unit = UnitText(entry.unit, isComplex ? EKind::FrequencyDomain : kind);
    return isComplex && view == ECurveView::Db ? QStringLiteral("dB") + unit : unit;
}

SPlotAxes AxesOf(const curve::CCurveSet& set, const std::vector<SShownCurve>& entries,
                 ECurveView view)
{
    const bool anyShown = std::ranges::any_of(entries, &SShownCurve::shown);
    std::vector<const SShownCurve*> seen;
    for (const SShownCurve& entry : entries) {
        if (entry.shown || !anyShown) {
            seen.push_back(&entry);
        }
    }
    SPlotAxes axes;
    TakeX(set, seen, axes);
    if (seen.empty()) {
        axes.yName = QuantityOf(view);
        return axes;
    }
    axes.yUnit = ValueUnit(*seen.front(), set.kind, view);
    bool anyComplex = false;
    for (const SShownCurve* entry : seen) {
        anyComplex = anyComplex || !entry->curve->Points().Column(2).empty();
        axes.yUnit = CommonUnit(axes.yUnit, ValueUnit(*entry, set.kind, view));
    }
    const QString title = RealTitleOf(*seen.front()->curve).name;
    axes.yName = anyComplex ? QuantityOf(view) : title.isEmpty() ? QuantityOf(set.kind) : title;
    return axes;
}

} // namespace zov::app
