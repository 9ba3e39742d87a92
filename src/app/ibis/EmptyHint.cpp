// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/EmptyHint.h"

#include <QAbstractItemView>
#include <QEvent>

namespace zov::app {

CEmptyHint::CEmptyHint(QAbstractItemView& list, const QString& text)
    : QLabel(text, list.viewport())
    , m_list(list)
{
    setObjectName(QStringLiteral("EmptyHint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(16);
    setEnabled(false);
    list.viewport()->installEventFilter(this);
    const QAbstractItemModel* model = list.model();
    connect(model, &QAbstractItemModel::modelReset, this, &CEmptyHint::Place);
    connect(model, &QAbstractItemModel::layoutChanged, this, &CEmptyHint::Place);
    connect(model, &QAbstractItemModel::rowsInserted, this, &CEmptyHint::Place);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &CEmptyHint::Place);
    Place();
}

bool CEmptyHint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        Place();
    }
    return QLabel::eventFilter(watched, event);
}

void CEmptyHint::Place()
{
    setGeometry(m_list.viewport()->rect());
    setVisible(m_list.model() == nullptr || m_list.model()->rowCount() == 0);
}

} // namespace zov::app
