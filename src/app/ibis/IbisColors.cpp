// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisColors.h"

#include "ibis/DataObject.h"

namespace zov::app {
namespace {

bool IsNumber(const QString& line, int start, int end)
{
    const QChar first = line.at(start);
    if (!first.isDigit() && first != QLatin1Char('-') && first != QLatin1Char('+') &&
        first != QLatin1Char('.')) {
        return false;
    }
    return ibis::ReadIPNumber(line.mid(start, end - start).toStdString()).Has();
}

bool IsGap(QChar c)
{
    return c.isSpace() || c == QLatin1Char('=') || c == QLatin1Char(',') || c == QLatin1Char('/') ||
           c == QLatin1Char('(') || c == QLatin1Char(')');
}

} // namespace

std::vector<SInkSpan> InksOf(const QString& line, QChar comment)
{
    std::vector<SInkSpan> spans;
    int end = line.indexOf(comment);
    if (end < 0) {
        end = line.size();
    }
    int at = 0;
    while (at < end && line.at(at).isSpace()) {
        ++at;
    }
    if (at < end && line.at(at) == QLatin1Char('[')) {
        const int close = line.indexOf(QLatin1Char(']'), at);
        const int behind = close < 0 || close >= end ? end : close + 1;
        spans.push_back({at, behind - at, EIbisInk::Keyword});
        at = behind;
    }
    while (at < end) {
        while (at < end && IsGap(line.at(at))) {
            ++at;
        }
        const int start = at;
        while (at < end && !IsGap(line.at(at))) {
            ++at;
        }
        if (at > start && IsNumber(line, start, at)) {
            spans.push_back({start, at - start, EIbisInk::Number});
        }
    }
    if (end < line.size()) {
        spans.push_back({end, line.size() - end, EIbisInk::Comment});
    }
    return spans;
}

QColor ColorOf(EIbisInk ink, const QPalette& palette)
{
    const bool dark = palette.color(QPalette::Base).lightness() < 128;
    switch (ink) {
    case EIbisInk::Keyword:
        return dark ? QColor(0x6C, 0xB2, 0xF5) : QColor(0x0B, 0x4F, 0x9E);
    case EIbisInk::Comment:
        return dark ? QColor(0x8F, 0xB5, 0x8A) : QColor(0x4B, 0x70, 0x46);
    default:
        return dark ? QColor(0xE5, 0xB5, 0x7A) : QColor(0x9A, 0x4B, 0x06);
    }
}

} // namespace zov::app
