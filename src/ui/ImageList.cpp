// SPDX-License-Identifier: Apache-2.0
#include "ui/ImageList.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>

namespace zov::ui {
namespace {

constexpr qreal kField = 24.0;
constexpr qreal kPenWidth = 1.6;

struct SDrawing
{
    QPainterPath filled;
    QPainterPath stroked;
};

SDrawing Draw(const char* strokes)
{
    const QStringList words =
        QString::fromUtf8(strokes).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    SDrawing drawing;
    int at = 0;
    const auto number = [&] { return at < words.size() ? words[at++].toDouble() : 0.0; };
    const auto point = [&] {
        const qreal x = number();
        return QPointF(x, number());
    };
    while (at < words.size()) {
        const QString word = words[at++];
        QPainterPath& path = drawing.stroked;
        if (word == QLatin1String("M")) {
            path.moveTo(point());
        } else if (word == QLatin1String("L")) {
            path.lineTo(point());
        } else if (word == QLatin1String("C")) {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
        } else if (word == QLatin1String("O")) {
            const QPointF centre = point();
            const qreal radius = number();
            path.addEllipse(centre, radius, radius);
        } else if (word == QLatin1String("R")) {
            const QPointF corner = point();
            const qreal width = number();
            path.addRect(QRectF(corner, QSizeF(width, number())));
        } else if (word == QLatin1String("Z")) {
            path.closeSubpath();
        } else if (word == QLatin1String("F")) {
            drawing.filled.addPath(path);
            path = {};
        }
    }
    return drawing;
}

class COutlineEngine final : public QIconEngine
{
public:
    explicit COutlineEngine(const char* strokes)
        : m_strokes(strokes)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QApplication::palette();
        const QColor color = palette.color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        const SDrawing drawing = Draw(m_strokes);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kField, rect.height() / kField);
        painter->fillPath(drawing.filled, color);
        painter->strokePath(drawing.stroked,
                            QPen(color, kPenWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return image;
    }

    QIconEngine* clone() const override { return new COutlineEngine(m_strokes); }

private:
    const char* m_strokes;
};

} // namespace

QIcon CQtImageList::Icon(const QString& name) const
{
    const auto at = std::ranges::find_if(m_outlines, [&](const SImageOutline& outline) {
        return name == QLatin1String(outline.name);
    });
    return at == m_outlines.end() ? QIcon() : QIcon(new COutlineEngine(at->strokes));
}

} // namespace zov::ui
