// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/WidgetFacts.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QToolButton>
#include <QVariant>

#include <algorithm>

namespace zov::ui::replay {
namespace {

constexpr int kMaxTitle = 120; ///< a label may hold a page of text

} // namespace

bool HasFlag(const QWidget& widget, const char* property)
{
    return widget.property(property).toBool();
}

const QWidget* FlaggedOf(const QWidget& widget, const char* property)
{
    if (HasFlag(widget, property)) {
        return &widget;
    }
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
    const bool isInside = area != nullptr && area->viewport() == &widget;
    return isInside && HasFlag(*area, property) ? area : nullptr;
}

QString PlainText(const QString& text)
{
    QString plain;
    const QString entry = text.section(QLatin1Char('\t'), 0, 0);
    for (int i = 0; i < entry.size(); ++i) {
        // "&&" shows one ampersand.
        if (entry[i] == QLatin1Char('&') && ++i >= entry.size()) {
            break;
        }
        plain += entry[i];
    }
    return plain;
}

QString NameOf(const QWidget& widget)
{
    const auto* button = qobject_cast<const QToolButton*>(&widget);
    if (widget.objectName().isEmpty() && button != nullptr && button->defaultAction() != nullptr) {
        return button->defaultAction()->objectName();
    }
    return widget.objectName();
}

QString TitleOf(const QWidget& widget)
{
    QString title = widget.windowTitle();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        title = PlainText(button->text());
    } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        title = PlainText(label->text());
    } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        title = PlainText(group->title());
    } else if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
        title = PlainText(menu->title());
    }
    return title.left(kMaxTitle);
}

std::vector<const QWidget*> ChainOf(const QWidget& widget)
{
    std::vector<const QWidget*> chain{&widget};
    while (!chain.back()->isWindow() && chain.back()->parentWidget() != nullptr) {
        chain.push_back(chain.back()->parentWidget());
    }
    std::ranges::reverse(chain);
    return chain;
}

SWidgetLevel LevelOf(const QWidget& widget)
{
    return {widget.metaObject()->className(), NameOf(widget).toStdString(),
            TitleOf(widget).toStdString(), PointOf(widget.pos()), HasFlag(widget, kRecKeyTitle)};
}

QString Shown(const QWidget& widget)
{
    const QString name = NameOf(widget).isEmpty() ? TitleOf(widget) : NameOf(widget);
    const QString type = QString::fromLatin1(widget.metaObject()->className());
    return name.isEmpty() ? type : type + QLatin1Char(' ') + name;
}

QString InputText(const QWidget& widget)
{
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
        return edit->text() + QLatin1String("");
    }
    if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
        return box->currentText() + QLatin1String("");
    }
    if (const auto* plain = qobject_cast<const QPlainTextEdit*>(&widget)) {
        return plain->toPlainText() + QLatin1String("");
    }
    if (const auto* rich = qobject_cast<const QTextEdit*>(&widget)) {
        return rich->toPlainText() + QLatin1String("");
    }
    return {};
}

} // namespace zov::ui::replay
