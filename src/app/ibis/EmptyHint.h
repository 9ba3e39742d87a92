// SPDX-License-Identifier: Apache-2.0
/// What a list says while it is empty: what to do next.
#pragma once

#include <QLabel>

class QAbstractItemView;

namespace zov::app {

class CEmptyHint : public QLabel
{
    Q_OBJECT

public:
    /// @param list owns the hint, and has its model already
    CEmptyHint(QAbstractItemView& list, const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Place();

    QAbstractItemView& m_list;
};

} // namespace zov::app
