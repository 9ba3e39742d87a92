// SPDX-License-Identifier: Apache-2.0
#include "ui/EventFilters.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QVariant>
#include <QWidget>

namespace zov::ui {
namespace {

constexpr const char* kTopicProperty = "zovHelpTopic";

} // namespace

CQtObjectEventFilter::CQtObjectEventFilter(QObject& watched)
    : QObject(&watched)
{
    watched.installEventFilter(this);
}

bool CQtObjectEventFilter::eventFilter(QObject* watched, QEvent* event)
{
    return OnEvent(*watched, *event);
}

CQtObjectEventFilterWithCmdTarget::CQtObjectEventFilterWithCmdTarget(QObject& watched,
                                                                     int eventType,
                                                                     CCmdTargetBase& target,
                                                                     unsigned command)
    : CQtObjectEventFilter(watched)
    , m_eventType(eventType)
    , m_target(target)
    , m_command(command)
{
}

bool CQtObjectEventFilterWithCmdTarget::OnEvent(QObject&, QEvent& event)
{
    return event.type() == m_eventType && m_target.RouteCommand(m_command);
}

CQtEnterKeyPressEventFilter::CQtEnterKeyPressEventFilter(QObject& watched,
                                                         std::function<void()> onEnter)
    : CQtObjectEventFilter(watched)
    , m_onEnter(std::move(onEnter))
{
}

bool CQtEnterKeyPressEventFilter::OnEvent(QObject&, QEvent& event)
{
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent&>(event).key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) {
        return false;
    }
    m_onEnter();
    return true;
}

CQtHelpTopicEventFilter::CQtHelpTopicEventFilter(QObject& watched,
                                                 std::function<void(const QString&)> onHelp)
    : CQtObjectEventFilter(watched)
    , m_onHelp(std::move(onHelp))
{
}

void CQtHelpTopicEventFilter::SetTopic(QWidget& widget, const QString& topic)
{
    widget.setProperty(kTopicProperty, topic);
}

QString CQtHelpTopicEventFilter::TopicOf(const QWidget& widget)
{
    for (const QWidget* at = &widget; at != nullptr; at = at->parentWidget()) {
        const QString topic = at->property(kTopicProperty).toString();
        if (!topic.isEmpty()) {
            return topic;
        }
    }
    return {};
}

bool CQtHelpTopicEventFilter::OnEvent(QObject& watched, QEvent& event)
{
    if (event.type() != QEvent::KeyPress || static_cast<QKeyEvent&>(event).key() != Qt::Key_F1) {
        return false;
    }
    const auto* window = qobject_cast<QWidget*>(&watched);
    const QWidget* focus = window == nullptr ? nullptr : window->focusWidget();
    if (focus == nullptr) {
        focus = window;
    }
    m_onHelp(focus == nullptr ? QString() : TopicOf(*focus));
    return true;
}

CQtSubClassEventFilter::CQtSubClassEventFilter(QObject& watched,
                                               std::function<bool(QEvent&)> onEvent)
    : CQtObjectEventFilter(watched)
    , m_onEvent(std::move(onEvent))
{
}

bool CQtSubClassEventFilter::OnEvent(QObject&, QEvent& event)
{
    return m_onEvent(event);
}

} // namespace zov::ui
