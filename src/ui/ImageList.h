// SPDX-License-Identifier: Apache-2.0
/// Images of commands and tree rows, drawn from outlines: sharp at every size and scaling, and in
/// the text colour of the theme that is on.
#pragma once

#include <QIcon>
#include <QString>

#include <span>

namespace zov::ui {

/// An outline in a field of 24 by 24.
struct SImageOutline
{
    const char* name;
    /// Strokes: "M x y" move, "L x y" line, "C x1 y1 x2 y2 x y" curve, "O x y r" circle, "R x y w
    /// h" rectangle, "Z" close, "F" fill what was drawn so far. Numbers are absolute.
    const char* strokes;
};

class CQtImageList
{
public:
    /// @param outlines live as long as the icons
    explicit CQtImageList(std::span<const SImageOutline> outlines)
        : m_outlines(outlines)
    {
    }

    /// A null icon for a name that is not in the list.
    [[nodiscard]] QIcon Icon(const QString& name) const;
    [[nodiscard]] std::span<const SImageOutline> Outlines() const { return m_outlines; }

private:
    std::span<const SImageOutline> m_outlines;
};

} // namespace zov::ui
