// SPDX-License-Identifier: Apache-2.0
/// Colours of the text of IBIS files: keywords, comments, numbers.
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

#include <vector>

namespace zov::app {

enum class EIbisInk
{
    Keyword,
    Comment,
    Number
};

struct SInkSpan
{
    int start = 0;
    int length = 0;
    EIbisInk ink = EIbisInk::Keyword;
    bool operator==(const SInkSpan&) const = default;
};

/// The coloured parts of one line.
[[nodiscard]] std::vector<SInkSpan> InksOf(const QString& line, QChar comment);
/// Readable on the palette's base, light or dark.
[[nodiscard]] QColor ColorOf(EIbisInk ink, const QPalette& palette);

} // namespace zov::app
