// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/WidgetPicker.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QWidget>

namespace zov::ui::replay {

CWidgetPicker::~CWidgetPicker()
{
    Cancel();
}

void CWidgetPicker::Start()
{
    if (!m_picking) {
        m_picking = true;
        m_hit = nullptr;
        QApplication::setOverrideCursor(Qt::CrossCursor);
        QApplication::instance()->installEventFilter(this);
    }
}

void CWidgetPicker::Cancel()
{
    if (m_picking) {
        End();
    }
}

void CWidgetPicker::End()
{
    m_picking = false;
    QApplication::restoreOverrideCursor();
    QApplication::instance()->removeEventFilter(this);
    Q_EMIT Ended();
}

QWidget* CWidgetPicker::Meant(QWidget* hit)
{
    QWidget* parent = hit == nullptr ? nullptr : hit->parentWidget();
    if (qobject_cast<QAbstractScrollArea*>(parent) != nullptr ||
        qobject_cast<QAbstractSpinBox*>(parent) != nullptr ||
        qobject_cast<QComboBox*>(parent) != nullptr) {
        return Meant(parent);
    }
    return hit;
}

bool CWidgetPicker::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_hit = m_hit == nullptr ? widget : m_hit;
        return true;
    case QEvent::MouseButtonRelease:
        // The release ends it, so that it does not reach a widget that saw no press.
        if (m_hit != nullptr) {
            QWidget* meant = Meant(m_hit);
            End();
            Q_EMIT Picked(meant);
        }
        return true;
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
        return true;
    case QEvent::KeyPress:
        return true;
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            End();
        }
        return true;
    default:
        return false;
    }
}

} // namespace zov::ui::replay
