// SPDX-License-Identifier: Apache-2.0
#include "ui/ListHint.h"

#include <QAbstractItemView>
#include <QPainter>

namespace zov::ui {

void PaintListHint(QAbstractItemView& list, const QString& hint)
{
    if (hint.isEmpty() || (list.model() != nullptr && list.model()->rowCount() > 0)) {
        return;
    }
    QPainter painter(list.viewport());
    painter.setPen(list.palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(list.viewport()->rect().adjusted(16, 16, -16, -16),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace zov::ui
