// SPDX-License-Identifier: Apache-2.0
/// The user points at a widget: the next click picks it and does nothing else, Esc picks none.
#pragma once

#include <QObject>

class QWidget;

namespace zov::ui::replay {

class CWidgetPicker : public QObject
{
    Q_OBJECT

public:
    ~CWidgetPicker() override;

    void Start();
    void Cancel();
    [[nodiscard]] bool IsPicking() const { return m_picking; }

    /// What a click on the widget means: a view for its inside, a control for its parts.
    static QWidget* Meant(QWidget* hit);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void Picked(QWidget* widget);
    void Ended();

private:
    void End();

    bool m_picking = false;
    QWidget* m_hit = nullptr;
};

} // namespace zov::ui::replay
